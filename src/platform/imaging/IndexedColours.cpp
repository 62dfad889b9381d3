#include "imaging/inner/IndexedColours.h"

#include <libimagequant.h>
#include <omp.h>

#include <array>
#include <memory>
#include <optional>
#include <unordered_map>

#include "base/RuntimeError.h"

namespace orv {
namespace {

std::optional<IndexedImage> TakeAsItIs(const QImage& image) {
  IndexedImage result{image.width(), image.height(), {}, {}};
  result.pixels.reserve(std::size_t(image.width()) * image.height());
  std::unordered_map<QRgb, std::uint8_t> indices;
  QRgb colour = 0;  // no pixel's, as all are opaque
  std::uint8_t index = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (const QRgb *pixel = RowOf(image, y), *end = pixel + image.width(); pixel != end; ++pixel) {
      if (*pixel != colour) {
        colour = *pixel;
        const auto [place, is_new] = indices.try_emplace(colour, static_cast<std::uint8_t>(indices.size()));
        if (is_new && result.palette.size() == kMostColours) return std::nullopt;
        if (is_new) result.palette.push_back(colour);
        index = place->second;
      }
      result.pixels.push_back(index);
    }
  }
  return result;
}

// The library's own scale from 1, the slowest. Above 7 it leaves out the refinement.
constexpr int kSpeed = 7;

template <auto free>
struct Freer {
  template <typename T>
  void operator()(T* object) const {
    free(object);
  }
};
using LiqAttr = std::unique_ptr<liq_attr, Freer<liq_attr_destroy>>;
using LiqHistogram = std::unique_ptr<liq_histogram, Freer<liq_histogram_destroy>>;
using LiqResult = std::unique_ptr<liq_result, Freer<liq_result_destroy>>;

void Check(bool done) {
  if (!done) throw RuntimeError(kErrInternal, QStringLiteral("The colours could not be reduced"));
}

using Entries = std::vector<liq_histogram_entry>;

// The colours of a picture, each with how often it occurs. Those that share the upper bits of each channel
// are one entry, their mean.
template <int kBits>
Entries Histogram(const QImage& image) {
  constexpr int kShift = 8 - kBits;
  struct Bin {
    std::uint32_t count = 0;
    std::array<std::uint32_t, kChannels> rests = {};  // sums of the lower bits
  };
  std::vector<Bin> bins(std::size_t{1} << (kChannels * kBits));
  for (int y = 0; y < image.height(); ++y) {
    for (const QRgb *pixel = RowOf(image, y), *end = pixel + image.width(); pixel != end; ++pixel) {
      const Channels values = ChannelsOf(*pixel);
      std::size_t at = 0;
      for (const int value : values) at = at << kBits | static_cast<std::size_t>(value >> kShift);
      ++bins[at].count;
      for (int i = 0; i < kChannels; ++i) bins[at].rests[i] += values[i] & ((1 << kShift) - 1);
    }
  }
  Entries entries;
  for (std::size_t at = 0; at < bins.size(); ++at) {
    const Bin& bin = bins[at];
    if (bin.count == 0) continue;
    const auto mean = [&](int channel) {
      const std::size_t upper = at >> (kBits * (kChannels - 1 - channel)) & ((1 << kBits) - 1);
      return static_cast<uchar>((upper << kShift) + (bin.rests[channel] + bin.count / 2) / bin.count);
    };
    entries.push_back({{mean(0), mean(1), mean(2), 255}, bin.count});
  }
  return entries;
}

// The library's time grows with the entries. A picture of very many colours is none the worse for coarse
// ones.
Entries ShortHistogram(const QImage& image) {
  constexpr std::size_t kMany = 10'000;
  Entries entries = Histogram<6>(image);
  return entries.size() <= kMany ? entries : Histogram<5>(image);
}

// The library's threads cost more than they win on pictures of a card's size, and sum up in no fixed order.
class OneThread {
 public:
  OneThread() : before_(omp_get_max_threads()) { omp_set_num_threads(1); }
  ~OneThread() { omp_set_num_threads(before_); }
  OneThread(const OneThread&) = delete;
  OneThread& operator=(const OneThread&) = delete;

 private:
  int before_;
};

std::vector<QRgb> ChoosePalette(const QImage& image) {
  const OneThread one_thread;
  const LiqAttr attr(liq_attr_create());
  Check(attr != nullptr && liq_set_speed(attr.get(), kSpeed) == LIQ_OK);
  const LiqHistogram histogram(liq_histogram_create(attr.get()));
  Check(histogram != nullptr);
  const Entries entries = ShortHistogram(image);
  Check(liq_histogram_add_colors(histogram.get(), attr.get(), entries.data(),
                                 static_cast<int>(entries.size()), 0) == LIQ_OK);
  liq_result* raw = nullptr;
  Check(liq_histogram_quantize(histogram.get(), attr.get(), &raw) == LIQ_OK);
  const LiqResult result(raw);
  const liq_palette& chosen = *liq_get_palette(result.get());
  std::vector<QRgb> palette;
  for (unsigned i = 0; i < chosen.count; ++i) {
    palette.push_back(qRgb(chosen.entries[i].r, chosen.entries[i].g, chosen.entries[i].b));
  }
  return palette;
}

}  // namespace

IndexedImage ReduceColours(const QImage& image) {
  if (std::optional<IndexedImage> same = TakeAsItIs(image)) return *std::move(same);
  const std::vector<QRgb> palette = ChoosePalette(image);
  return {image.width(), image.height(), palette, Dither(image, palette)};
}

}  // namespace orv
