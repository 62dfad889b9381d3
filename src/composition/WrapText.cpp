#include "composition/WrapText.h"

#include <QStringList>
#include <limits>

#include "base/RuntimeError.h"

namespace orv {
namespace {

const QString kBreakCharacters = QStringLiteral(" .:,;-_!?()/&%<>+*@$[]{}");

// The length of the line with which a paragraph starts.
qsizetype LineLength(const QString& paragraph, double box_width, const Surface& surface) {
  qsizetype last_break = 0;
  qsizetype length = 0;
  while (length < paragraph.size()) {
    ++length;
    // A break character that itself overflows still ends the line.
    if (kBreakCharacters.contains(paragraph[length - 1])) last_break = length;
    if (surface.TextWidth(paragraph.left(length)) >= box_width) {
      --length;
      break;
    }
  }
  return length == paragraph.size() || last_break == 0 ? length : last_break;
}

}  // namespace

void WrapText(const QString& text, const Label& box, const Surface& surface,
              const std::function<void(const QString&, int)>& place) {
  int lines = 0;
  const auto next_line = [&lines] {
    if (++lines > std::numeric_limits<std::int16_t>::max()) throw RuntimeError(kErrOverflow);
  };
  for (QString paragraph : text.split(QStringLiteral("\r\n"))) {
    if (paragraph.isEmpty()) next_line();
    while (!paragraph.isEmpty()) {
      const qsizetype length = LineLength(paragraph, box.Width(), surface);
      place(paragraph.left(length), lines);
      next_line();
      paragraph.remove(0, length);
    }
  }
}

}  // namespace orv
