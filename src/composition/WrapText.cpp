#include "composition/WrapText.h"

#include <QList>
#include <QStringView>
#include <algorithm>
#include <limits>

#include "base/RuntimeError.h"

namespace orv {
namespace {

const QString kBreakCharacters = QStringLiteral(" .:,;-_!?()/&%<>+*@$[]{}");

constexpr int kMostCounted = std::numeric_limits<std::int16_t>::max();

// Counts one more, as far as 16 bits do.
void Count(qsizetype& counter) {
  if (++counter > kMostCounted) throw RuntimeError(kErrOverflow);
}

// The length of the line with which a paragraph starts.
qsizetype LineLength(QStringView paragraph, double box_width, const Surface& surface) {
  qsizetype length =
      surface.TextFitting(paragraph.first(std::min<qsizetype>(paragraph.size(), kMostCounted)), box_width);
  if (length == paragraph.size()) return length;
  qsizetype tried = length;
  Count(tried);
  // A break character that itself overflows still ends the line.
  qsizetype last_break = tried;
  while (last_break > 0 && !kBreakCharacters.contains(paragraph[last_break - 1])) --last_break;
  return last_break == 0 ? length : last_break;
}

}  // namespace

QString WrappablePart(const QString& text) {
  return text.left(kMostCounted - 1);
}

void WrapText(const QString& text, const Label& box, const Surface& surface,
              const std::function<void(const QString&, int)>& place) {
  qsizetype lines = 0;
  for (QStringView paragraph : QStringView(text).split(QStringLiteral("\r\n"))) {
    if (paragraph.isEmpty()) Count(lines);
    while (!paragraph.isEmpty()) {
      const qsizetype length = LineLength(paragraph, box.Width(), surface);
      place(paragraph.first(length).toString(), static_cast<int>(lines));
      Count(lines);
      paragraph = paragraph.sliced(length);
    }
  }
}

}  // namespace orv
