#include "imaging/inner/Dithering.h"

#include <algorithm>
#include <limits>

namespace orv {
namespace {

// The colour of a palette that is nearest to another. The cube of all colours is cut into cells, and for each
// cell that is asked for the colours are noted that are nearest to some point within it.
class NearestColour {
 public:
  explicit NearestColour(const std::vector<QRgb>& palette);
  std::uint8_t Of(const Channels& colour);

 private:
  static constexpr int kCellBits = 5;
  static constexpr int kSide = 1 << kCellBits;
  static constexpr int kCellShift = 8 - kCellBits;
  // Squared distances along one channel from each colour of the palette to a cell's near and far side.
  struct Span {
    std::array<int, kMostColours> least, most;
  };
  struct Cell {
    int first = 0;
    int count = 0;  // 0 before the cell was asked for
  };

  void Fill(const Channels& at, Cell* cell);

  int colours_;
  std::vector<Channels> palette_;
  std::array<std::vector<Span>, kChannels> spans_;  // of each channel, for each place of a cell
  std::vector<Cell> cells_;
  std::vector<std::uint8_t> candidates_;
};

NearestColour::NearestColour(const std::vector<QRgb>& palette)
    : colours_(static_cast<int>(palette.size())), cells_(std::size_t{kSide} * kSide * kSide) {
  for (const QRgb colour : palette) palette_.push_back(ChannelsOf(colour));
  for (int channel = 0; channel < kChannels; ++channel) {
    spans_[channel].resize(kSide);
    for (int place = 0; place < kSide; ++place) {
      const int low = place << kCellShift;
      const int high = low + (1 << kCellShift) - 1;
      for (int i = 0; i < colours_; ++i) {
        const int value = palette_[i][channel];
        const int least = std::max({0, low - value, value - high});
        const int most = std::max(value - low, high - value);
        spans_[channel][place].least[i] = least * least;
        spans_[channel][place].most[i] = most * most;
      }
    }
  }
}

void NearestColour::Fill(const Channels& at, Cell* cell) {
  const Span& red = spans_[0][at[0]];
  const Span& green = spans_[1][at[1]];
  const Span& blue = spans_[2][at[2]];
  int reach = red.most[0] + green.most[0] + blue.most[0];
  for (int i = 1; i < colours_; ++i) reach = std::min(reach, red.most[i] + green.most[i] + blue.most[i]);
  cell->first = static_cast<int>(candidates_.size());
  candidates_.resize(candidates_.size() + colours_);
  std::uint8_t* to = candidates_.data() + cell->first;
  for (int i = 0; i < colours_; ++i) {  // without a branch, which would be foretold wrongly
    to[cell->count] = static_cast<std::uint8_t>(i);
    cell->count += red.least[i] + green.least[i] + blue.least[i] <= reach ? 1 : 0;
  }
  candidates_.resize(cell->first + cell->count);
}

std::uint8_t NearestColour::Of(const Channels& colour) {
  const Channels at = {colour[0] >> kCellShift, colour[1] >> kCellShift, colour[2] >> kCellShift};
  Cell& cell = cells_[(at[0] * kSide + at[1]) * kSide + at[2]];
  if (cell.count == 0) Fill(at, &cell);
  std::uint8_t nearest = candidates_[cell.first];
  int least = std::numeric_limits<int>::max();
  for (int i = cell.first; i < cell.first + cell.count; ++i) {
    const Channels& other = palette_[candidates_[i]];
    int distance = 0;
    for (int c = 0; c < kChannels; ++c) distance += (colour[c] - other[c]) * (colour[c] - other[c]);
    if (distance >= least) continue;
    least = distance;
    nearest = candidates_[i];
  }
  return nearest;
}

// Dithering by diffusion of the error (Floyd and Steinberg), rows to and fro. Only smooth areas need it,
// where bands would show; in texture and at edges it would be nothing but grain.

constexpr int kSmooth = 2;     // up to this difference from the neighbours the whole error is handed on
constexpr int kTextured = 16;  // and from this on none

int Difference(QRgb a, QRgb b) {
  return std::max(
      {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

// The share of the error that a pixel hands on, in 256ths.
class Smoothness {
 public:
  explicit Smoothness(const QImage& image) : image_(image) {}
  void GoTo(int y) {
    row_ = RowOf(image_, y);
    above_ = RowOf(image_, std::max(0, y - 1));
    below_ = RowOf(image_, std::min(image_.height() - 1, y + 1));
  }
  int At(int x) const {
    const QRgb colour = row_[x];
    const int most = std::max({Difference(colour, row_[std::max(0, x - 1)]),
                               Difference(colour, row_[std::min(image_.width() - 1, x + 1)]),
                               Difference(colour, above_[x]), Difference(colour, below_[x])});
    return std::clamp((kTextured - most) * 256 / (kTextured - kSmooth), 0, 256);
  }

 private:
  const QImage& image_;
  const QRgb* row_ = nullptr;
  const QRgb* above_ = nullptr;
  const QRgb* below_ = nullptr;
};

class Ditherer {
 public:
  Ditherer(const QImage& image, const std::vector<QRgb>& palette)
      : image_(image),
        nearest_(palette),
        smoothness_(image),
        palette_(palette),
        errors_(image.width() + 2),
        below_(image.width() + 2) {}

  void DoRow(int y, std::uint8_t* to);

 private:
  void HandOn(const Channels& error, int x, int step);

  const QImage& image_;
  NearestColour nearest_;
  Smoothness smoothness_;
  const std::vector<QRgb>& palette_;
  // What the pixels of this row and the next are given, in sixteenths; one pixel to spare on either side.
  std::vector<Channels> errors_, below_;
};

void Ditherer::DoRow(int y, std::uint8_t* to) {
  const QRgb* from = RowOf(image_, y);
  smoothness_.GoTo(y);
  std::fill(below_.begin(), below_.end(), Channels{});
  const int step = y % 2 == 0 ? 1 : -1;
  for (int x = step > 0 ? 0 : image_.width() - 1; x >= 0 && x < image_.width(); x += step) {
    Channels wanted = ChannelsOf(from[x]);
    for (int c = 0; c < kChannels; ++c) {
      wanted[c] = std::clamp(wanted[c] + ((errors_[x + 1][c] + 8) >> 4), 0, 255);
    }
    to[x] = nearest_.Of(wanted);
    const int share = smoothness_.At(x);
    if (share == 0) continue;
    Channels error = ChannelsOf(palette_[to[x]]);
    for (int c = 0; c < kChannels; ++c) error[c] = (wanted[c] - error[c]) * share / 256;
    HandOn(error, x, step);
  }
  errors_.swap(below_);
}

void Ditherer::HandOn(const Channels& error, int x, int step) {
  const int at = x + 1;
  for (int c = 0; c < kChannels; ++c) {
    errors_[at + step][c] += 7 * error[c];
    below_[at - step][c] += 3 * error[c];
    below_[at][c] += 5 * error[c];
    below_[at + step][c] += error[c];
  }
}

}  // namespace

std::vector<std::uint8_t> Dither(const QImage& image, const std::vector<QRgb>& palette) {
  std::vector<std::uint8_t> pixels(std::size_t(image.width()) * image.height());
  Ditherer ditherer(image, palette);
  for (int y = 0; y < image.height(); ++y) ditherer.DoRow(y, pixels.data() + std::size_t(y) * image.width());
  return pixels;
}

}  // namespace orv
