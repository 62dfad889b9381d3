#pragma once

#include <QByteArray>
#include <cstdint>
#include <memory>
#include <vector>

#include "imaging/Picture.h"

namespace orv {

// Makes pictures of any size from one, each from the whole of it, by Lanczos' filter over three lobes in
// linear light. What takes long is done once: beside the picture it keeps halves of it, so that a small copy
// of a large picture is cheap. The same size always gives the same pixels.
class Scaler {
 public:
  // Transparent parts are laid over white.
  explicit Scaler(const Picture& picture);
  int Width() const { return picture_.Width(); }    // pixels
  int Height() const { return picture_.Height(); }  // pixels
  // The picture at its own size is the picture. RuntimeError 481 for a size that LoadPicture would refuse.
  Picture Scale(int width, int height) const;

 private:
  // One colour in linear light, 16 bits a pixel, in rows that begin where the filter wants them.
  struct Plane {
    Plane(int plane_width, int plane_height);
    std::uint16_t* Row(int y) { return pixels + stride * y; }
    const std::uint16_t* Row(int y) const { return pixels + stride * y; }
    int width, height;
    std::ptrdiff_t stride;  // pixels
    std::unique_ptr<std::uint16_t[]> memory;
    std::uint16_t* pixels;
    Plane(Plane&&) = default;
    Plane(const Plane&) = delete;
    Plane& operator=(const Plane&) = delete;
  };
  using Colours = std::vector<Plane>;  // blue, green, red

  static Plane Half(const Plane& plane);
  void Linear(int colour, int y, int left, int right, std::uint16_t* row) const;
  void Resize(int colour, int level, Plane& result) const;
  Colours FirstHalf() const;

  Picture picture_;
  std::vector<Colours> halves_;  // a half, a quarter, and so on, of each side
};

}  // namespace orv
