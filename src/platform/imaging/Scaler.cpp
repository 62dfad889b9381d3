#include "imaging/Scaler.h"

#include <zimg.h>

#include <QImage>
#include <array>
#include <cmath>
#include <functional>
#include <future>
#include <memory>
#include <optional>

#include "imaging/inner/NewImage.h"

namespace orv {
namespace {

constexpr int kColours = 3;
constexpr int kLobes = 3;
constexpr int kSmallestHalf = 64;  // pixels; below it a half saves nothing
constexpr int kAlignment = 64;     // bytes

// Light from 0 to 65535 of a pixel's value.
const std::array<std::uint16_t, 256>& LightOf() {
  static const auto kTable = [] {
    std::array<std::uint16_t, 256> table;
    for (int i = 0; i < 256; ++i) {
      const double value = i / 255.0;
      const double light = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
      table[i] = static_cast<std::uint16_t>(std::lround(light * 65535));
    }
    return table;
  }();
  return kTable;
}

const std::vector<std::uint8_t>& ValueOf() {
  static const auto kTable = [] {
    std::vector<std::uint8_t> table(65536);
    for (int i = 0; i < 65536; ++i) {
      const double light = i / 65535.0;
      const double value = light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
      table[i] = static_cast<std::uint8_t>(std::lround(value * 255));
    }
    return table;
  }();
  return kTable;
}

struct GraphFree {
  void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
};
using Graph = std::unique_ptr<zimg_filter_graph, GraphFree>;

zimg_image_format FormatOf(int width, int height) {
  zimg_image_format format;
  zimg_image_format_default(&format, ZIMG_API_VERSION);
  format.width = static_cast<unsigned>(width);
  format.height = static_cast<unsigned>(height);
  format.pixel_type = ZIMG_PIXEL_WORD;
  format.depth = 16;
  format.color_family = ZIMG_COLOR_GREY;
  format.pixel_range = ZIMG_RANGE_FULL;
  return format;
}

void Check(zimg_error_code_e code) {
  if (code != ZIMG_ERROR_SUCCESS) BadPicture();
}

Graph ResizingGraph(const zimg_image_format& from, const zimg_image_format& to) {
  zimg_graph_builder_params parameters;
  zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
  parameters.resample_filter = ZIMG_RESIZE_LANCZOS;
  parameters.filter_param_a = kLobes;
  Graph graph(zimg_filter_graph_build(&from, &to, &parameters));
  if (graph == nullptr) BadPicture();
  return graph;
}

int HalfOf(int side) {
  return (side + 1) / 2;
}

// Not filled: the largest would take longer for that than for the filter.
std::unique_ptr<std::uint16_t[]> NewPixels(std::size_t count) {
  return std::make_unique_for_overwrite<std::uint16_t[]>(count);
}

std::uint16_t* Aligned(std::uint16_t* memory) {
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  return memory + (kAlignment - address % kAlignment) % kAlignment / sizeof(std::uint16_t);
}

}  // namespace

Scaler::Plane::Plane(int plane_width, int plane_height)
    : width(plane_width),
      height(plane_height),
      stride((width + kAlignment / 2 - 1) / (kAlignment / 2) * (kAlignment / 2)),
      memory(NewPixels(static_cast<std::size_t>(stride) * height + kAlignment / 2)),
      pixels(Aligned(memory.get())) {}

Scaler::Scaler(const Picture& picture) : picture_(OverWhite(picture.Image())) {
  CheckSize(picture_.Width(), picture_.Height());
  if (std::min(Width(), Height()) < 2 * kSmallestHalf) return;
  halves_.push_back(FirstHalf());
  while (std::min(halves_.back()[0].width, halves_.back()[0].height) >= 2 * kSmallestHalf) {
    Colours next;
    for (const Plane& plane : halves_.back()) next.push_back(Half(plane));
    halves_.push_back(std::move(next));
  }
}

// The means of each four pixels. An odd last row or column counts as if it were there twice.
Scaler::Colours Scaler::FirstHalf() const {
  Colours half;
  for (int i = 0; i < kColours; ++i) half.emplace_back(HalfOf(Width()), HalfOf(Height()));
  const std::array<std::uint16_t, 256>& light = LightOf();
  const QImage& image = picture_.Image();
  for (int y = 0; y < HalfOf(Height()); ++y) {
    const auto* const upper = reinterpret_cast<const QRgb*>(image.constScanLine(2 * y));
    const auto* const lower =
        reinterpret_cast<const QRgb*>(image.constScanLine(std::min(2 * y + 1, Height() - 1)));
    for (int x = 0; x < HalfOf(Width()); ++x) {
      const int left = 2 * x, right = std::min(2 * x + 1, Width() - 1);
      const QRgb four[] = {upper[left], upper[right], lower[left], lower[right]};
      for (int i = 0; i < kColours; ++i) {
        unsigned sum = 2;
        for (const QRgb pixel : four) sum += light[pixel >> (8 * i) & 0xFF];
        half[i].Row(y)[x] = static_cast<std::uint16_t>(sum / 4);
      }
    }
  }
  return half;
}

Scaler::Plane Scaler::Half(const Plane& plane) {
  Plane half(HalfOf(plane.width), HalfOf(plane.height));
  for (int y = 0; y < half.height; ++y) {
    const std::uint16_t* const upper = plane.Row(2 * y);
    const std::uint16_t* const lower = plane.Row(std::min(2 * y + 1, plane.height - 1));
    for (int x = 0; x < half.width; ++x) {
      const int left = 2 * x, right = std::min(2 * x + 1, plane.width - 1);
      half.Row(y)[x] =
          static_cast<std::uint16_t>((upper[left] + upper[right] + lower[left] + lower[right] + 2U) / 4);
    }
  }
  return half;
}

void Scaler::Linear(int colour, int y, int left, int right, std::uint16_t* row) const {
  const std::array<std::uint16_t, 256>& light = LightOf();
  const auto* const from = reinterpret_cast<const QRgb*>(picture_.Image().constScanLine(y));
  for (int x = left; x < right; ++x) row[x] = light[from[x] >> (8 * colour) & 0xFF];
}

// One colour of the picture, from its half of that level; 0 is the picture itself, of which the filter sees a
// few linear rows at a time.
void Scaler::Resize(int colour, int level, Plane& result) const {
  const Plane* const half = level == 0 ? nullptr : &halves_[level - 1][colour];
  zimg_image_format from =
      half != nullptr ? FormatOf(half->width, half->height) : FormatOf(Width(), Height());
  // The picture covers a part of its half from the corner; the rest of a pixel was filled up.
  from.active_region = {0, 0, std::ldexp(Width(), -level), std::ldexp(Height(), -level)};
  const Graph graph = ResizingGraph(from, FormatOf(result.width, result.height));
  std::size_t needed = 0;
  Check(zimg_filter_graph_get_tmp_size(graph.get(), &needed));
  const auto scratch = NewPixels((needed + kAlignment) / sizeof(std::uint16_t) + 1);
  // In a ring of rows, through which the filter goes strip by strip.
  unsigned mask = ZIMG_BUFFER_MAX;
  std::optional<Plane> ring;
  if (half == nullptr) {
    unsigned rows = 0;
    Check(zimg_filter_graph_get_input_buffering(graph.get(), &rows));
    mask = zimg_select_buffer_mask(rows);
    ring.emplace(Width(), mask == ZIMG_BUFFER_MAX ? Height() : static_cast<int>(mask) + 1);
  }
  std::function<void(int, int, int)> fill = [&](int y, int left, int right) {
    Linear(colour, y, left, right, ring->Row(static_cast<int>(static_cast<unsigned>(y) & mask)));
  };
  const auto load = [](void* user, unsigned y, unsigned left, unsigned right) {
    (*static_cast<decltype(fill)*>(user))(static_cast<int>(y), static_cast<int>(left),
                                          static_cast<int>(right));
    return 0;
  };
  const Plane& input = half != nullptr ? *half : *ring;
  zimg_image_buffer_const source = {.version = ZIMG_API_VERSION, .plane = {}};
  source.plane[0] = {input.pixels, static_cast<std::ptrdiff_t>(input.stride * sizeof(std::uint16_t)), mask};
  zimg_image_buffer target = {.version = ZIMG_API_VERSION, .plane = {}};
  target.plane[0] = {result.pixels, static_cast<std::ptrdiff_t>(result.stride * sizeof(std::uint16_t)),
                     ZIMG_BUFFER_MAX};
  Check(zimg_filter_graph_process(graph.get(), &source, &target, Aligned(scratch.get()),
                                  half != nullptr ? nullptr : +load, &fill, nullptr, nullptr));
}

Picture Scaler::Scale(int width, int height) const {
  if (width == Width() && height == Height()) return picture_;
  QImage image = NewImage(width, height, QImage::Format_RGB32);
  CheckSide(width, height);
  // The smallest half that still has two pixels for each.
  int level = 0;
  while (level < static_cast<int>(halves_.size()) && halves_[level][0].width >= 2 * width &&
         halves_[level][0].height >= 2 * height) {
    ++level;
  }
  // Side by side, and the first one here. What is large is allocated here: other threads would keep it.
  Colours colours;
  for (int i = 0; i < kColours; ++i) colours.emplace_back(width, height);
  const auto resize = [&](int colour) { Resize(colour, level, colours[colour]); };
  std::future<void> others[] = {std::async(std::launch::async, resize, 1),
                                std::async(std::launch::async, resize, 2)};
  resize(0);
  for (std::future<void>& other : others) other.get();
  const std::vector<std::uint8_t>& value = ValueOf();
  for (int y = 0; y < height; ++y) {
    auto* const to = reinterpret_cast<QRgb*>(image.scanLine(y));
    const std::uint16_t* const blue_row = colours[0].Row(y);
    const std::uint16_t* const green_row = colours[1].Row(y);
    const std::uint16_t* const red_row = colours[2].Row(y);
    for (int x = 0; x < width; ++x) to[x] = qRgb(value[red_row[x]], value[green_row[x]], value[blue_row[x]]);
  }
  return Picture(image);
}

}  // namespace orv
