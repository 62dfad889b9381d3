#pragma once

#include <QByteArray>
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

// Pictures for devices that would show their dots as squares: smoothly enlarged, or the finer ones that there
// are. The one image of a picture is kept for as long as there is room, so that a file holds it once.
class EnlargedPictures {
 public:
  struct Placed;
  // Each dot becomes at least `times` by `times`, and a finer picture gives at most `share` of the device's
  // dots.
  EnlargedPictures(int times, double share);
  ~EnlargedPictures();
  // Of a part of a picture.
  QImage Of(const Picture& picture, const QRect& part);
  // The same of the finer one; `device` is the device's dots for one of the picture's.
  Placed Of(const Drawing::Fine& fine, const QRect& part, double device);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// The picture, which says as its drawing that there is a finer one. As it is where something shows through
// it.
Picture WithFiner(Drawing::Fine fine);

// How many dots the finest picture of the same has for one of the picture's: 1 where there is no other,
// endless where any number can be had.
double FinenessOf(const Picture& picture);

// Tells two drawings apart that show something else: SHA-256 in hexadecimal digits.
QByteArray DigestOf(const Drawing& drawing);

// A drawing on a painter whose unit is a dot of the drawing, at whatever size its scale gives: texts in their
// faces without hinting, each word where the drawing has it; pictures in the dots of the finer one that there
// is, or smoothly enlarged; fills and outlines as they are. Pictures come from `pictures`, or the painter
// enlarges them itself.
void PlayEnlarged(const Drawing& drawing, QPainter& painter, EnlargedPictures* pictures = nullptr);

// A picture `times` as large as it is, from how it was drawn, or smoothly enlarged where nobody kept that.
Picture Enlarged(const Picture& picture, int times);

// From the top of a text's cell to the base line of its letters; without a blank at its end.
QRect BodyOf(const Drawing::Text& text);

// The words of a line that starts at x, each where the face has it.
std::vector<Drawing::Word> PlaceWords(const Font& font, const QString& line, int x);

}  // namespace orv
