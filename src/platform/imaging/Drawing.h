#pragma once

#include <QRect>
#include <QString>
#include <functional>
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
  // A picture at the upper left corner, of which there is a finer one.
  struct Fine {
    Picture picture;
    double times;  // dots of the finer one for one of the picture's; 0 for as many as are asked for
    // With that many dots for one of the picture's, or `asked` where any number can be had. Empty where it
    // can't be had any more.
    std::function<Picture(double asked)> finer;
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
  using Operation = std::variant<Fill, Outline, Paint, Fine, Turned, Text>;

  int width = 0, height = 0;
  std::vector<Operation> operations;
};

}  // namespace orv
