#include "forms/inner/ShownText.h"

#include <QStringList>

namespace orv {
namespace {

struct Sign {
  char16_t real;
  char16_t shown;
};

// The signs themselves, and what a text document uses for its own ends, step aside to code points that
// stand for no character.
constexpr Sign kSigns[] = {
    {u'\n', u'\u240A'},     {u'\r', u'\u240D'},     {u'\u2029', u'\uFDD2'}, {u'\u240A', u'\uFDD3'},
    {u'\u240D', u'\uFDD4'}, {u'\uFDD0', u'\uFDD5'}, {u'\uFDD1', u'\uFDD6'},
};

QChar Shown(QChar c) {
  for (const Sign& sign : kSigns) {
    if (c == sign.real) return sign.shown;
  }
  return c;
}

QChar Real(QChar c) {
  for (const Sign& sign : kSigns) {
    if (c == sign.shown) return sign.real;
  }
  return c;
}

}  // namespace

QString ToShownLine(const QString& text) {
  QString shown = text;
  for (QChar& c : shown) c = Shown(c);
  return shown;
}

QString FromShown(const QString& shown) {
  QString text = shown;
  for (QChar& c : text) c = Real(c);
  return text;
}

QString ToShownLines(const QString& text) {
  QStringList lines = text.split(QStringLiteral("\r\n"));
  for (QString& line : lines) line = ToShownLine(line);
  return lines.join(u'\n');
}

}  // namespace orv
