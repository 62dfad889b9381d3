#pragma once

#include <memory>
#include <vector>

#include "imaging/Drawing.h"

class QImage;
class QPainter;

// Draws what a Drawing holds: on pixels of its own size, where each operation gives the very pixels that the
// surface has, or enlarged.
namespace orv {

// What a surface does for one operation. Pictures in it are taken as their pixels.
void PlayOperation(const Drawing::Operation& operation, QImage& target);

// A drawing at its own size; drawings of pictures in it are played too.
Picture PlayDrawing(const Drawing& drawing);

// Pictures smoothly enlarged for devices that would show their dots as squares. The one enlargement of a
// picture is kept for as long as there is room, so that a file holds it once.
class EnlargedPictures {
 public:
  // Each dot becomes `times` by `times`.
  explicit EnlargedPictures(int times);
  ~EnlargedPictures();
  // Of a part of a picture.
  QImage Of(const Picture& picture, const QRect& part);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// A drawing on a painter whose unit is a dot of the drawing, at whatever size its scale gives: texts in their
// faces without hinting, each word where the drawing has it; pictures smoothly enlarged; fills and outlines
// as they are. Pictures come from `pictures`, or the painter enlarges them itself.
void PlayEnlarged(const Drawing& drawing, QPainter& painter, EnlargedPictures* pictures = nullptr);

// A picture `times` as large as it is, from how it was drawn, or smoothly enlarged where nobody kept that.
Picture Enlarged(const Picture& picture, int times);

// From the top of a text's cell to the base line of its letters; without a blank at its end.
QRect BodyOf(const Drawing::Text& text);

// The words of a line that starts at x, each where the face has it.
std::vector<Drawing::Word> PlaceWords(const Font& font, const QString& line, int x);

}  // namespace orv
