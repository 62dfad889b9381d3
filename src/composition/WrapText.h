#pragma once

#include <QString>
#include <functional>

#include "forms/Surface.h"

namespace orv {

// Breaks a text into lines that are narrower than `box`, measured on `surface` in its present font, and
// hands each to `place` with its number from 0. Paragraphs end with "\r\n"; an empty one counts as a line
// and is not handed out. A line ends after one of the characters " .:,;-_!?()/&%<>+*@$[]{}", which stays
// on it and may reach over the box; a word that does not fit is cut at the last character that does.
// Nothing is trimmed; the number of lines and the length of one have no limit but 16 bits (RuntimeError 6).
void WrapText(const QString& text, const Label& box, const Surface& surface,
              const std::function<void(const QString& line, int number)>& place);

// As much of a text of any length as a card could show of it, in any font, and as 16 bits can count.
QString WrappablePart(const QString& text);

}  // namespace orv
