#include "imaging/inner/IndexedColours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <tuple>
#include <unordered_map>

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

// A colour, and how many pixels have it.
struct Entry {
  Channels colour;
  double count;
};
using Entries = std::vector<Entry>;

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
      return static_cast<int>((upper << kShift) + (bin.rests[channel] + bin.count / 2) / bin.count);
    };
    entries.push_back({{mean(0), mean(1), mean(2)}, double(bin.count)});
  }
  return entries;
}

// The time grows with the entries. A picture of very many colours is none the worse for coarse
// ones.
Entries ShortHistogram(const QImage& image) {
  constexpr std::size_t kMany = 10'000;
  Entries entries = Histogram<6>(image);
  return entries.size() <= kMany ? entries : Histogram<5>(image);
}

// Counts and sums of some entries.
struct Sums {
  double count = 0;
  std::array<double, kChannels> first = {}, second = {};  // of the values, of their squares

  void Add(const Entry& entry) {
    count += entry.count;
    for (int i = 0; i < kChannels; ++i) {
      first[i] += entry.count * entry.colour[i];
      second[i] += entry.count * entry.colour[i] * entry.colour[i];
    }
  }
  // The squared distances of one channel from its mean, summed up.
  double Error(int channel) const { return second[channel] - first[channel] * first[channel] / count; }
  double Error() const { return Error(0) + Error(1) + Error(2); }
  // By how much an error falls when these are taken together, up to a term that all partitions share.
  double Gain() const {
    double gain = 0;
    for (const double sum : first) gain += sum * sum / count;
    return gain;
  }
  Channels Mean() const {
    Channels mean;
    for (int i = 0; i < kChannels; ++i) mean[i] = static_cast<int>(std::lround(first[i] / count));
    return mean;
  }
};

Sums SumsOf(std::span<const Entry> entries) {
  Sums sums;
  for (const Entry& entry : entries) sums.Add(entry);
  return sums;
}

// A part of the entries that gets one colour of the palette.
struct Box {
  std::span<Entry> entries;
  Sums sums;

  explicit Box(std::span<Entry> some) : entries(some), sums(SumsOf(some)) {}
  bool CanBeCut() const { return entries.size() > 1 && sums.Error() > 0; }
};

// Cuts a box across its widest channel where the two parts have the least error together; the box keeps the
// lower part.
Box Cut(Box& box) {
  int widest = 0;
  for (int i = 1; i < kChannels; ++i) {
    if (box.sums.Error(i) > box.sums.Error(widest)) widest = i;
  }
  std::ranges::sort(box.entries, [widest](const Entry& a, const Entry& b) {
    return std::tie(a.colour[widest], a.colour) < std::tie(b.colour[widest], b.colour);
  });
  Sums lower;
  double best = -1;
  std::size_t at = 1;
  for (std::size_t i = 1; i < box.entries.size(); ++i) {
    lower.Add(box.entries[i - 1]);
    Sums upper = box.sums;
    upper.count -= lower.count;
    for (int channel = 0; channel < kChannels; ++channel) upper.first[channel] -= lower.first[channel];
    const double gain = lower.Gain() + upper.Gain();
    if (gain <= best) continue;
    best = gain;
    at = i;
  }
  const std::span<Entry> all = box.entries;
  box = Box(all.first(at));
  return Box(all.subspan(at));
}

std::vector<Channels> Means(Entries& entries) {
  std::vector<Box> boxes = {Box(entries)};
  while (boxes.size() < kMostColours) {
    const auto worst = std::ranges::max_element(
        boxes, {}, [](const Box& box) { return box.CanBeCut() ? box.sums.Error() : 0; });
    if (!worst->CanBeCut()) break;
    Box upper = Cut(*worst);
    boxes.push_back(upper);
  }
  std::vector<Channels> means;
  for (const Box& box : boxes) means.push_back(box.sums.Mean());
  return means;
}

// The colour that is nearest to an entry's, by their squared distance.
std::size_t NearestTo(const Channels& wanted, const std::vector<Channels>& colours) {
  std::size_t nearest = 0;
  int least = std::numeric_limits<int>::max();
  for (std::size_t i = 0; i < colours.size(); ++i) {
    const Channels& colour = colours[i];
    const int red = colour[0] - wanted[0], green = colour[1] - wanted[1], blue = colour[2] - wanted[2];
    const int distance = red * red + green * green + blue * blue;
    if (distance >= least) continue;
    least = distance;
    nearest = i;
  }
  return nearest;
}

// Moves each colour to the mean of the entries that are nearest to it (k-means).
void Refine(const Entries& entries, std::vector<Channels>& colours) {
  std::vector<Sums> nearest(colours.size());
  for (const Entry& entry : entries) nearest[NearestTo(entry.colour, colours)].Add(entry);
  for (std::size_t i = 0; i < colours.size(); ++i) {
    if (nearest[i].count > 0) colours[i] = nearest[i].Mean();
  }
}

// Our own, since a library's palette changes with its version, and a card is the same on each system. Cuts
// by variance, as in X. Wu, "Color quantization by dynamic programming and principal analysis" (1992), along
// the channels.
std::vector<QRgb> ChoosePalette(const QImage& image) {
  Entries entries = ShortHistogram(image);
  std::vector<Channels> colours = Means(entries);
  Refine(entries, colours);
  std::vector<QRgb> palette;
  for (const Channels& colour : colours) palette.push_back(qRgb(colour[0], colour[1], colour[2]));
  return palette;
}

}  // namespace

IndexedImage ReduceColours(const QImage& image) {
  if (std::optional<IndexedImage> same = TakeAsItIs(image)) return *std::move(same);
  const std::vector<QRgb> palette = ChoosePalette(image);
  return {image.width(), image.height(), palette, Dither(image, palette)};
}

}  // namespace orv
