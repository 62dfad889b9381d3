#include "pictures/cDIBSection.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <random>

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"

namespace orv {
namespace {

std::int32_t Checked32(std::int64_t value) {
  if (value > std::numeric_limits<std::int32_t>::max()) throw RuntimeError(kErrOverflow);
  return static_cast<std::int32_t>(value);
}

std::uint8_t Noise(std::mt19937& generator) {
  return static_cast<std::uint8_t>(RoundHalfEven(std::generate_canonical<double, 32>(generator) * 255));
}

// One colour of one pixel between two others, rounded to a whole number.
double Between(double from, double to, float fraction) {
  return RoundHalfEven((1 - fraction) * from + fraction * to);
}

}  // namespace

std::int32_t cDIBSection::BytesPerScanLine() const {
  return Checked32(std::int64_t{width_} * 3 + 3) & ~3;
}

bool cDIBSection::CreateDIB(std::int32_t lWidth, std::int32_t lHeight) {
  if (lWidth < 1 || lHeight < 1) return false;
  width_ = lWidth;
  height_ = lHeight;
  const std::int32_t size = Checked32(std::int64_t{BytesPerScanLine()} * lHeight);
  bits_.assign(static_cast<std::size_t>(size), 0);
  return true;
}

bool cDIBSection::Create(std::int32_t lWidth, std::int32_t lHeight) {
  ClearUp();
  try {
    if (CreateDIB(lWidth, lHeight)) return true;
  } catch (const std::bad_alloc&) {
    ClearUp();
    return false;
  } catch (const RuntimeError&) {
    ClearUp();
    throw;
  }
  ClearUp();
  return false;
}

void cDIBSection::ClearUp() {
  width_ = height_ = 0;
  bits_.clear();
  bits_.shrink_to_fit();
}

void cDIBSection::CreateFromPicture(const Picture& picThis) {
  if (Create(picThis.Width(), picThis.Height())) CopyToRows(picThis, bits_.data(), BytesPerScanLine());
}

Picture cDIBSection::AsPicture() const {
  return bits_.empty() ? Picture() : PictureFromRows(bits_.data(), width_, height_, BytesPerScanLine());
}

void cDIBSection::LoadPictureBlt(const Surface& source, std::int32_t lSrcLeft, std::int32_t lSrcTop,
                                 std::int32_t lSrcWidth, std::int32_t lSrcHeight, std::int32_t eRop) {
  if (bits_.empty() || eRop != kSourceCopy) return;
  const std::int32_t width = lSrcWidth < 0 ? width_ : lSrcWidth;
  const std::int32_t height = lSrcHeight < 0 ? height_ : lSrcHeight;
  Surface canvas;
  canvas.Place(0, 0, width_, height_);
  canvas.SetPicture(AsPicture());
  canvas.PaintPicture(source.Image(), 0, 0, width, height, lSrcLeft, lSrcTop, width, height);
  CopyToRows(canvas.Image(), bits_.data(), BytesPerScanLine());
}

void cDIBSection::PaintPicture(Surface& target, std::int32_t lDestLeft, std::int32_t lDestTop,
                               std::int32_t lDestWidth, std::int32_t lDestHeight, std::int32_t lSrcLeft,
                               std::int32_t lSrcTop, std::int32_t eRop) const {
  if (bits_.empty() || eRop != kSourceCopy) return;
  const std::int32_t width = lDestWidth < 0 ? width_ : lDestWidth;
  const std::int32_t height = lDestHeight < 0 ? height_ : lDestHeight;
  const ScaleMode scale = target.GetScaleMode();
  target.SetScaleMode(ScaleMode::Pixels);
  target.PaintPicture(AsPicture(), lDestLeft, lDestTop, width, height, lSrcLeft, lSrcTop, width, height);
  target.SetScaleMode(scale);
}

bool cDIBSection::CopyToClipboard(bool bAsDIB) const {
  if (bAsDIB) {
    MsgBox(QStringLiteral("I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!"),
           Icon::None, QString());
    return false;
  }
  return !bits_.empty() && Clipboard::SetImage(AsPicture());
}

void cDIBSection::RandomiseBits(bool bGray) {
  if (bits_.empty()) return;
  std::mt19937 generator(std::random_device{}());
  const std::int32_t row_bytes = BytesPerScanLine();
  for (std::int32_t y = 0; y < height_; ++y) {
    std::uint8_t* pixel = bits_.data() + std::ptrdiff_t{y} * row_bytes;
    for (std::int32_t x = 0; x < width_; ++x, pixel += 3) {
      if (bGray) {
        pixel[0] = pixel[1] = pixel[2] = Noise(generator);
      } else {
        pixel[0] = 0;
        pixel[1] = Noise(generator);
        pixel[2] = Noise(generator);
      }
    }
  }
}

std::unique_ptr<cDIBSection> cDIBSection::Resample(std::int32_t lNewHeight, std::int32_t lNewWidth) const {
  auto resampled = std::make_unique<cDIBSection>();
  if (!resampled->Create(lNewWidth, lNewHeight)) return nullptr;
  if (lNewWidth == width_ && lNewHeight == height_) {
    resampled->bits_ = bits_;
  } else {
    ResampleDib(*resampled);
  }
  return resampled;
}

// Bilinear, first down the two columns and then across, with whole numbers in between. The numerator of
// the scale is less one and the denominator is not, which keeps the neighbours within the source.
void cDIBSection::ResampleDib(cDIBSection& destination) const {
  if (width_ < 2 || height_ < 2) throw RuntimeError(kErrSubscript);
  const auto x_scale = static_cast<float>((width_ - 1.0) / destination.width_);
  const auto y_scale = static_cast<float>((height_ - 1.0) / destination.height_);
  const std::int32_t row_bytes = BytesPerScanLine();
  for (std::int32_t y = 0; y < destination.height_; ++y) {
    const float fy = y_scale * static_cast<float>(y);
    const std::int32_t iy = Int(fy);
    const float dy = fy - static_cast<float>(iy);
    const std::uint8_t* row = bits_.data() + std::ptrdiff_t{iy} * row_bytes;
    std::uint8_t* target = destination.bits_.data() + std::ptrdiff_t{y} * destination.BytesPerScanLine();
    for (std::int32_t x = 0; x < destination.width_; ++x, target += 3) {
      const float fx = x_scale * static_cast<float>(x);
      const std::int32_t ix = Int(fx);
      const float dx = fx - static_cast<float>(ix);
      const std::uint8_t* left = row + std::ptrdiff_t{3} * ix;
      for (int colour = 0; colour < 3; ++colour) {
        const double left_value = Between(left[colour], left[row_bytes + colour], dy);
        const double right_value = Between(left[3 + colour], left[row_bytes + 3 + colour], dy);
        target[colour] =
            static_cast<std::uint8_t>(std::clamp(Between(left_value, right_value, dx), 0.0, 255.0));
      }
    }
  }
}

}  // namespace orv
