#pragma once

#include <QStringView>
#include <QUtf8StringView>

namespace orv {

// The order of texts for a reader, the same on every machine: without regard to case, accented letters beside
// their base letters and yet different from them. Negative, 0 or positive.
int CompareText(QStringView a, QStringView b);
int CompareText(QUtf8StringView a, QUtf8StringView b);

}  // namespace orv
