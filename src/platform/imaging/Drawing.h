#pragma once

#include <QRect>
#include <QString>
#include <variant>
#include <vector>

#include "imaging/Font.h"
#include "imaging/Picture.h"

namespace orv {

// What was drawn, as operations in their order: a value. Places and sizes are in dots of the bitmap that it
// was drawn on, from its upper left corner; what lies outside of it is cut off. A picture in it may hold a
// drawing of its own.
struct Drawing {
  struct Fill {
    QRect box;
    Colour colour;
  };
  // Of a rectangle, one dot wide, inside of the box.
  struct Outline {
    QRect box;
    Colour colour;
  };
  // A part of a picture stretched over a rectangle.
  struct Paint {
    Picture picture;
    QRectF target;
    QRectF source;
  };
  // A picture turned by a quarter circle, at the upper left corner.
  struct Turned {
    Picture picture;
    bool clockwise;
  };
  struct Word {
    int start, length;  // in the line
    int x;
  };
  // A line of text; (x, y) is the corner of its cell.
  struct Text {
    Font font;
    Colour colour;
    QString line;
    int x, y;
    std::vector<Word> words;
  };
  using Operation = std::variant<Fill, Outline, Paint, Turned, Text>;

  int width = 0, height = 0;
  std::vector<Operation> operations;
};

}  // namespace orv
