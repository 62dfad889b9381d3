#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "forms/Types.h"

class QFont;
class QImage;

namespace orv {

// Measuring and drawing of one line of text in one font, on whole pixels: the pixel height is points x
// 96 / 72 rounded, hinting is fixed, advances are whole pixels, there is no kerning and no subpixel
// smoothing. So a text is the same on every machine, platform plugin and screen scale.
// A face that is not installed is replaced by its stand-in, and none is higher than 400 pixels (300 points),
// which fills any card.
class TextFace {
 public:
  static const TextFace& For(const Font& font);  // lives as long as the process

  int Width(QStringView text) const;  // pixels
  // How many of the first characters are narrower than `width` together, each count tried in turn; the time
  // grows with the length of what fits.
  qsizetype Fitting(QStringView text, double width) const;
  int Height() const;  // pixels, the same for every text
  int Ascent() const;  // pixels from the cell's top to the base line
  // By how many pixels its ink rises above its cell, as the marks of capital letters do; mostly 0.
  int Rise(QStringView text) const;
  // The corner of the text's cell at (x, y); ink outside of the cell is drawn too. `target` is RGB32 or
  // premultiplied ARGB32.
  void Draw(QImage& target, int x, int y, QStringView text, Colour colour) const;
  // The face so many times the size, without hinting, for text that isn't set on whole pixels.
  QFont Enlarged(int times) const;

 private:
  struct Impl;
  explicit TextFace(std::shared_ptr<Impl> impl);
  std::shared_ptr<Impl> impl_;
};

// What a face is drawn with: itself if it is installed, otherwise its stand-in by the running program's
// table; a letter that this lacks is taken from the program's plain family before the system is asked for it.
QStringList FamiliesFor(const QString& face);

}  // namespace orv
