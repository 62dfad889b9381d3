#include "base/TextOrder.h"

#include <QString>
#include <algorithm>

namespace orv {
namespace {

// Letters that have a base letter in a reader's eye but no decomposition.
QStringView BaseOf(QChar c) {
  switch (c.unicode()) {
    case u'ß':
      return u"ss";
    case u'æ':
      return u"ae";
    case u'œ':
      return u"oe";
    case u'ø':
      return u"o";
    case u'ł':
      return u"l";
    case u'đ':
    case u'ð':
      return u"d";
    case u'þ':
      return u"th";
    case u'ı':
      return u"i";
    default:
      return {};
  }
}

// The letters alone: folded, without accents.
QString BaseLetters(const QString& decomposed) {
  QString base;
  const QString folded = decomposed.toCaseFolded();
  for (const QChar c : folded) {
    if (c.isMark()) continue;
    if (const QStringView letters = BaseOf(c); !letters.isEmpty()) {
      base += letters;
    } else {
      base += c;
    }
  }
  return base;
}

int Sign(int order) {
  return (order > 0) - (order < 0);
}

// Base letters decide; only among equal ones do accents.
int CompareLetters(const QString& a, const QString& b) {
  const QString a_decomposed = a.normalized(QString::NormalizationForm_D);
  const QString b_decomposed = b.normalized(QString::NormalizationForm_D);
  const int order = BaseLetters(a_decomposed).compare(BaseLetters(b_decomposed));
  if (order != 0) return Sign(order);
  return Sign(a_decomposed.toLower().compare(b_decomposed.toLower()));
}

unsigned Lower(unsigned c) {
  return c >= 'A' && c <= 'Z' ? c + 32 : c;
}

// The order of two texts as far as plain ASCII decides it; false if it does not.
template <class Unit>
bool CompareAscii(const Unit* a, qsizetype a_size, const Unit* b, qsizetype b_size, int* order) {
  const qsizetype common = std::min(a_size, b_size);
  for (qsizetype i = 0; i < common; ++i) {
    const unsigned x = a[i], y = b[i];
    if (x > 127 || y > 127) return false;
    if (Lower(x) != Lower(y)) {
      *order = Lower(x) < Lower(y) ? -1 : 1;
      return true;
    }
  }
  // What goes on with an accent still belongs to the last letter.
  if (a_size > common && a[common] > 127) return false;
  if (b_size > common && b[common] > 127) return false;
  *order = (a_size > b_size) - (a_size < b_size);
  return true;
}

}  // namespace

int CompareText(QStringView a, QStringView b) {
  int order = 0;
  if (CompareAscii(a.utf16(), a.size(), b.utf16(), b.size(), &order)) return order;
  return CompareLetters(a.toString(), b.toString());
}

int CompareText(QUtf8StringView a, QUtf8StringView b) {
  const auto bytes = [](QUtf8StringView text) { return reinterpret_cast<const unsigned char*>(text.data()); };
  int order = 0;
  if (CompareAscii(bytes(a), a.size(), bytes(b), b.size(), &order)) return order;
  return CompareLetters(a.toString(), b.toString());
}

}  // namespace orv
