#pragma once

#include <QString>

namespace orv {

// How a text stands in an edit field of the toolkit, which would take a lone line feed or carriage return
// for a line end and then hand out another text than it was given. Such a character is shown as a visible
// sign in its place and read back as itself, so that showing a text never changes it. Both ways one
// character stays one character.

// For fields of one line: every line feed and carriage return is such a sign.
QString ToShownLine(const QString& text);
QString FromShown(const QString& shown);

// For fields of several lines: "\r\n" is a line end, which is shown as "\n".
QString ToShownLines(const QString& text);

}  // namespace orv
