#pragma once

#include <QRect>
#include <QString>
#include <memory>

#include "imaging/Font.h"
#include "imaging/Picture.h"

namespace orv {

// Where a part of a picture goes on a page. Millimetres from the page's upper left corner.
struct PagePlace {
  double x, y;
  double scale;         // millimetres a dot
  QRect part;           // of the picture, in dots
  double bleed = 0;     // so far the part's own edge is drawn on beyond it
  bool turned = false;  // by half a circle
};

// The part of a page that is left when it is cut, and so far its picture goes on beyond. In millimetres from
// the page's upper left corner.
struct PageCut {
  double x, y, width, height;
  double bleed = 0;
};

// Writes a PDF file page by page: texts with embedded faces, pictures without loss, each stored once however
// often it is shown. All places and sizes are in millimetres from the page's upper left corner.
class PageWriter {
 public:
  // RuntimeError if the file can't be made.
  PageWriter(const QString& path, const QString& title);
  ~PageWriter();
  PageWriter(const PageWriter&) = delete;
  PageWriter& operator=(const PageWriter&) = delete;

  // A size in millimetres as a page can have it: whole points, not smaller.
  static double WholePoints(double size);

  void NewPage(double width, double height);
  // Tells in the file where the page is cut.
  void Cut(const PageCut& cut);
  // As it was drawn, where that was kept; its pixels otherwise.
  void Draw(const Picture& picture, const PagePlace& place);
  void Line(double x1, double y1, double x2, double y2, double thickness, Colour colour = kBlack);
  // `height` of a line; (x, y) is its upper left corner.
  void Text(double x, double y, double height, const QString& text);
  // RuntimeError if not all could be written.
  void Finish();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace orv
