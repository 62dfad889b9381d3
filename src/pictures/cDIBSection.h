#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "forms/Surface.h"
#include "imaging/Picture.h"

namespace orv {

// The one raster operation that callers pass: copy the source.
inline constexpr std::int32_t kSourceCopy = 0xCC0020;

// A 24-bit device-independent bitmap: blue, green, red, rows bottom-up and padded to four bytes. Code
// reads its pixels by pointer and copies pictures into and out of it. Empty until Create succeeds; a
// failed Create leaves it empty.
class cDIBSection {
 public:
  // Puts the bitmap on the clipboard; true on success. As a DIB it can't be done, which a box says.
  bool CopyToClipboard(bool bAsDIB) const;
  // A section of the picture's size with a copy of its pixels; empty if there is no room.
  void CreateFromPicture(const Picture& picThis);
  // Replaces what the object holds by an empty (black) section, in pixels. False without room and for a
  // size below one; RuntimeError 6 where the sizes in bytes pass 32 bits.
  bool Create(std::int32_t lWidth, std::int32_t lHeight);
  // Width times 3 rounded up to a multiple of 4. RuntimeError 6 past 32 bits.
  std::int32_t BytesPerScanLine() const;
  std::int32_t Width() const { return width_; }
  std::int32_t Height() const { return height_; }
  // Copies from a surface's bitmap to the top left corner; a width or height below 0 is the section's own.
  void LoadPictureBlt(const Surface& source, std::int32_t lSrcLeft = 0, std::int32_t lSrcTop = 0,
                      std::int32_t lSrcWidth = -1, std::int32_t lSrcHeight = -1,
                      std::int32_t eRop = kSourceCopy);
  // Copies from the section to a surface, in pixels.
  void PaintPicture(Surface& target, std::int32_t lDestLeft = 0, std::int32_t lDestTop = 0,
                    std::int32_t lDestWidth = -1, std::int32_t lDestHeight = -1, std::int32_t lSrcLeft = 0,
                    std::int32_t lSrcTop = 0, std::int32_t eRop = kSourceCopy) const;
  // The pixels, valid until the next Create or ClearUp; nothing for an empty section.
  std::uint8_t* DIBSectionBitsPtr() { return bits_.empty() ? nullptr : bits_.data(); }
  const std::uint8_t* DIBSectionBitsPtr() const { return bits_.empty() ? nullptr : bits_.data(); }
  // Fills the pixels with noise: grey, or green and red alone.
  void RandomiseBits(bool bGray);
  void ClearUp();
  // A new section of another size, in this order of arguments, by bilinear interpolation that never
  // reaches the far edge's value; the same size gives an exact copy. Nothing if it could not be made.
  // RuntimeError 9 for a source with a side of one pixel.
  std::unique_ptr<cDIBSection> Resample(std::int32_t lNewHeight, std::int32_t lNewWidth) const;

 private:
  bool CreateDIB(std::int32_t lWidth, std::int32_t lHeight);
  void ResampleDib(cDIBSection& destination) const;
  Picture AsPicture() const;

  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  std::vector<std::uint8_t> bits_;
};

}  // namespace orv
