#pragma once

#include <QString>

namespace orv {

// A text for a place that only shows it and has no room for any length: on one line where it is cut to fit
// into others, and never longer than so many letters and an ellipsis.
QString Shortened(const QString& text, qsizetype letters = 80);
// The same that keeps its lines.
QString Clipped(const QString& text, qsizetype letters);

}  // namespace orv
