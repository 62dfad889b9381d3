#include "composition/WrapText.h"

#include <QList>
#include <QStringView>
#include <algorithm>
#include <limits>

#include "base/RuntimeError.h"

namespace orv {
namespace {

const QString kBreakCharacters = QStringLiteral(" .:,;-_!?()/&%<>+*@$[]{}");

// More lines than any card shows, and more letters than a line takes: what is beyond is clipped unseen.
constexpr int kMostCounted = std::numeric_limits<std::int16_t>::max();

// The length of the line with which a paragraph starts.
qsizetype LineLength(QStringView paragraph, double box_width, const Surface& surface) {
  const QStringView shown = paragraph.first(std::min<qsizetype>(paragraph.size(), kMostCounted));
  const qsizetype length = surface.TextFitting(shown, box_width);
  if (length == shown.size()) return length;
  // A break character that itself overflows still ends the line.
  qsizetype last_break = length + 1;
  while (last_break > 0 && !kBreakCharacters.contains(paragraph[last_break - 1])) --last_break;
  return last_break == 0 ? length : last_break;
}

}  // namespace

void WrapText(const QString& text, const Label& box, const Surface& surface,
              const std::function<void(const QString&, int)>& place) {
  int lines = 0;
  for (QStringView paragraph : QStringView(text).split(QStringLiteral("\r\n"))) {
    if (paragraph.isEmpty()) ++lines;
    while (!paragraph.isEmpty() && lines < kMostCounted) {
      const qsizetype length = LineLength(paragraph, box.Width(), surface);
      // A letter as wide as the box: line after line would stay empty, until no number is left for one.
      if (length == 0) throw RuntimeError(kErrOverflow);
      place(paragraph.first(length).toString(), lines++);
      paragraph = paragraph.sliced(length);
    }
    if (lines >= kMostCounted) return;
  }
}

}  // namespace orv
