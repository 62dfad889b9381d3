#include "forms/Style.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QProxyStyle>

namespace orv {
namespace {

constexpr int kFontHeight = 12;  // pixels

class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStringLiteral("Fusion")) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    // A list under the field, which scrolls, and not a menu over it as high as the screen.
    if (hint == SH_ComboBox_Popup) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }
};

bool IsNarrow(const QFont& font) {
  // A usual caption and the room that the forms have for it.
  constexpr int kRoom = 82;
  return QFontMetrics(font).horizontalAdvance(QStringLiteral("Set as default")) <= kRoom;
}

}  // namespace

QStyle* NewStyle() {
  return new Style;
}

QFont InterfaceFont() {
  QFont font = QGuiApplication::font();
  font.setPixelSize(kFontHeight);
  if (!IsNarrow(font)) font.setFamily(QStringLiteral("Liberation Sans"));
  return font;
}

}  // namespace orv
