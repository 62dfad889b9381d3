#include "base/CodePage.h"

#include <algorithm>
#include <array>

namespace orv {
namespace {

// The characters at 0x80 to 0x9F (Unicode consortium, CP1252.TXT); 0 where the page has none.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                            0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char Encode(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  const auto* const place = std::find(kHigh.begin(), kHigh.end(), c);
  if (place == kHigh.end()) return '?';
  return static_cast<char>(0x80 + (place - kHigh.begin()));
}

}  // namespace

QByteArray ToWindows1252(QStringView text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
    bytes.append(Encode(text[i].unicode()));
  }
  return bytes;
}

}  // namespace orv
