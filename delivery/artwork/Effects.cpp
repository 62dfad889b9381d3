#include "artwork/Effects.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "artwork/Noise.h"

namespace orv::artwork {
namespace {

using Plane = std::vector<float>;

QPointF Direction(double angle) {
  const double turn = angle * std::numbers::pi / 180;
  return {std::cos(turn), std::sin(turn)};
}

Plane AlphaOf(const QImage& image) {
  Plane plane(static_cast<size_t>(image.width()) * image.height());
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      plane[static_cast<size_t>(y) * image.width() + x] = static_cast<float>(qAlpha(row[x]));
    }
  }
  return plane;
}

// Mean over a window along one line of `count` values that lie `stride` apart; outside counts as 0.
void BoxLine(float* values, int count, size_t stride, int radius, std::vector<float>& scratch) {
  scratch.assign(static_cast<size_t>(count) + 1, 0);
  for (int i = 0; i < count; ++i) scratch[i + 1] = scratch[i] + values[i * stride];
  for (int i = 0; i < count; ++i) {
    const int low = std::max(0, i - radius);
    const int high = std::min(count, i + radius + 1);
    values[i * stride] = (scratch[high] - scratch[low]) / static_cast<float>(2 * radius + 1);
  }
}

// Three boxes come close to a bell.
void BlurPlane(Plane& plane, int width, int height, double radius) {
  const int box = std::max(1, static_cast<int>(std::lround(radius * 0.6)));
  std::vector<float> scratch;
  for (int pass = 0; pass < 3; ++pass) {
    for (int y = 0; y < height; ++y) BoxLine(&plane[static_cast<size_t>(y) * width], width, 1, box, scratch);
    for (int x = 0; x < width; ++x) BoxLine(&plane[x], height, width, box, scratch);
  }
}

float At(const Plane& plane, int width, int height, int x, int y) {
  if (x < 0 || y < 0 || x >= width || y >= height) return 0;
  return plane[static_cast<size_t>(y) * width + x];
}

template <typename Change>
void EachPixel(QImage& image, Change change) {
  for (int y = 0; y < image.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(row[x]) != 0) row[x] = change(row[x], x, y);
    }
  }
}

}  // namespace

QRgb Shaded(QRgb pixel, double factor) {
  const int alpha = qAlpha(pixel);
  const auto channel = [&](int value) {
    const double changed =
        factor <= 1 ? value * std::max(0.0, factor) : value + (alpha - value) * (1 - 1 / factor);
    return std::clamp(static_cast<int>(std::lround(changed)), 0, alpha);
  };
  return qRgba(channel(qRed(pixel)), channel(qGreen(pixel)), channel(qBlue(pixel)), alpha);
}

QRgb Mixed(QRgb a, QRgb b, double part_of_b) {
  const double t = std::clamp(part_of_b, 0.0, 1.0);
  const auto channel = [&](int x, int y) { return static_cast<int>(std::lround(std::lerp(x, y, t))); };
  return qRgba(channel(qRed(a), qRed(b)), channel(qGreen(a), qGreen(b)), channel(qBlue(a), qBlue(b)),
               channel(qAlpha(a), qAlpha(b)));
}

QImage Blurred(const QImage& image, double radius) {
  QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
  const int width = image.width();
  const int height = image.height();
  std::array<Plane, 4> planes;
  for (int c = 0; c < 4; ++c) {
    planes[c].resize(static_cast<size_t>(width) * height);
    for (int y = 0; y < height; ++y) {
      const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
      for (int x = 0; x < width; ++x) {
        planes[c][static_cast<size_t>(y) * width + x] = static_cast<float>((row[x] >> (8 * c)) & 255);
      }
    }
    BlurPlane(planes[c], width, height, radius);
  }
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const size_t i = static_cast<size_t>(y) * width + x;
      const auto channel = [&](int c) {
        return std::clamp(static_cast<int>(std::lround(planes[c][i])), 0, 255);
      };
      const int alpha = channel(3);
      row[x] =
          qRgba(std::min(alpha, channel(2)), std::min(alpha, channel(1)), std::min(alpha, channel(0)), alpha);
    }
  }
  return result;
}

QImage Filled(const QImage& image, const QColor& colour) {
  QImage result = image;
  QPainter painter(&result);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(result.rect(), colour);
  return result;
}

void Emboss(QImage& image, double depth, double shine, double light_angle) {
  const int width = image.width();
  const int height = image.height();
  Plane bulge = AlphaOf(image);
  Plane fine = bulge;
  BlurPlane(bulge, width, height, depth);
  BlurPlane(fine, width, height, depth * 0.35);
  for (size_t i = 0; i < bulge.size(); ++i) bulge[i] = bulge[i] * 0.8f + fine[i] * 0.2f;
  const QPointF light = Direction(light_angle);
  constexpr double kHeight = 0.62;  // of the light over the plane
  const double side = std::sqrt(1 - kHeight * kHeight);
  const double slope = depth / 255 * 1.5;
  EachPixel(image, [&](QRgb pixel, int x, int y) {
    const double nx = -slope * (At(bulge, width, height, x + 1, y) - At(bulge, width, height, x - 1, y));
    const double ny = -slope * (At(bulge, width, height, x, y + 1) - At(bulge, width, height, x, y - 1));
    const double length = std::sqrt(nx * nx + ny * ny + 1);
    const double lit = ((nx * light.x() + ny * light.y()) * side + kHeight) / length;
    QRgb result = Shaded(pixel, 0.28 + 0.72 * std::max(0.0, lit) / kHeight);
    if (shine > 0) {
      const double half = ((nx * light.x() + ny * light.y()) * side + (1 + kHeight)) / length;
      const double spot = std::pow(std::clamp(half / std::sqrt(2 + 2 * kHeight), 0.0, 1.0), 60);
      const bool sloped = nx * nx + ny * ny > 0.01;
      if (sloped) result = Shaded(result, 1 + 2.2 * shine * spot);
    }
    return result;
  });
}

void LightRim(QImage& image, double width, const QColor& colour, double light_angle) {
  Plane alpha = AlphaOf(image);
  BlurPlane(alpha, image.width(), image.height(), std::max(1.0, width * 0.6));
  const QPointF step = Direction(light_angle) * width;
  const int dx = static_cast<int>(std::lround(step.x()));
  const int dy = static_cast<int>(std::lround(step.y()));
  EachPixel(image, [&](QRgb pixel, int x, int y) {
    const double open = 1 - At(alpha, image.width(), image.height(), x + dx, y + dy) / 255.0;
    const int a = qAlpha(pixel);
    const QRgb bright = qRgba(colour.red() * a / 255, colour.green() * a / 255, colour.blue() * a / 255, a);
    return Mixed(pixel, bright, open * colour.alphaF());
  });
}

void Mottle(QImage& image, double strength, double size, QPoint at) {
  EachPixel(image, [&](QRgb pixel, int x, int y) {
    const double n = Fractal((x + at.x()) / size, (y + at.y()) / size, 11, 4);
    return Shaded(pixel, 1 + 2 * strength * (n - 0.5));
  });
}

}  // namespace orv::artwork
