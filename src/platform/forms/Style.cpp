#include "forms/inner/Style.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

#include "base/App.h"
#include "forms/inner/Icons.h"

namespace orv {
namespace {

constexpr int kFontHeight = 12;  // pixels
constexpr double kLeastPoints = 8, kMostPoints = 16;
constexpr double kPointsPerInch = 72;

QString NameOf(QStyle::StandardPixmap which) {
  switch (which) {
    case QStyle::SP_MessageBoxCritical:
      return QStringLiteral("critical");
    case QStyle::SP_MessageBoxQuestion:
      return QStringLiteral("question");
    case QStyle::SP_MessageBoxWarning:
      return QStringLiteral("exclamation");
    case QStyle::SP_MessageBoxInformation:
      return QStringLiteral("information");
    default:
      return {};
  }
}

bool IsDark(const QPalette& palette) {
  return palette.window().color().lightness() < palette.windowText().color().lightness();
}

// The line around a field, which is to be seen on a dark ground, a black one included.
QColor Outline(const QPalette& palette) {
  const QColor ground = palette.window().color();
  if (!IsDark(palette)) return ground.darker(140);
  const QColor ink = palette.windowText().color();
  const auto mixed = [](int from, int to) { return from + (to - from) / 4; };
  return {mixed(ground.red(), ink.red()), mixed(ground.green(), ink.green()),
          mixed(ground.blue(), ink.blue())};
}

// A line of one pixel inside a rectangle, whole at every scale of the screen.
void DrawEdges(QPainter& painter, const QRect& rect, const QColor& colour) {
  painter.fillRect(rect.left(), rect.top(), rect.width(), 1, colour);
  painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, colour);
  painter.fillRect(rect.left(), rect.top(), 1, rect.height(), colour);
  painter.fillRect(rect.right(), rect.top(), 1, rect.height(), colour);
}

void DrawRounded(QPainter& painter, const QRect& rect, double radius, const QColor& colour) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(colour);
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  painter.restore();
}

// The mark of the focus, two pixels wide, however the focus came.
void DrawFocus(QPainter& painter, const QRect& rect, const QPalette& palette) {
  const QColor colour = palette.color(QPalette::Highlight);
  DrawRounded(painter, rect, 2, colour);
  DrawRounded(painter, rect.adjusted(1, 1, -1, -1), 1, colour);
}

class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStringLiteral("Fusion")) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    // A list under the field, which scrolls, and not a menu over it as high as the screen.
    if (hint == SH_ComboBox_Popup) return 0;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    const QColor outline = Outline(option->palette);
    const bool focus = option->state.testFlag(State_HasFocus);
    if (element == PE_FrameFocusRect) {
      return DrawRounded(*painter, option->rect, 2, option->palette.color(QPalette::Highlight));
    }
    if (element == PE_Frame) {
      DrawEdges(*painter, option->rect, outline);
    } else {
      QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    const bool marked =
        element == PE_Frame || element == PE_PanelButtonCommand || element == PE_FrameLineEdit;
    if (focus && marked) DrawFocus(*painter, option->rect, option->palette);
    if (!IsDark(option->palette)) return;
    if ((element == PE_FrameLineEdit && !focus) || element == PE_IndicatorCheckBox) {
      DrawRounded(*painter, option->rect, 2, outline);
    } else if (element == PE_IndicatorRadioButton) {
      DrawRounded(*painter, option->rect, option->rect.width() / 2.0, outline);
    }
  }

  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override {
    if (const auto* const button = qstyleoption_cast<const QStyleOptionToolButton*>(option)) {
      QStyleOptionToolButton bare(*button);
      bare.state.setFlag(State_HasFocus, false);  // one mark, around the whole button
      QProxyStyle::drawComplexControl(control, &bare, painter, widget);
    } else {
      QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
    const bool marked = control == CC_ToolButton || control == CC_ComboBox;
    if (marked && option->state.testFlag(State_HasFocus)) DrawFocus(*painter, option->rect, option->palette);
  }

  // The signs of message boxes in the hand of the other icons.
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override {
    const QIcon own = NamedIcon(NameOf(which));
    return own.isNull() ? QProxyStyle::standardIcon(which, option, widget) : own;
  }
};

bool IsNarrow(const QFont& font) {
  // A usual caption and the room that the forms have for it.
  constexpr int kRoom = 82;
  return QFontMetrics(font).horizontalAdvance(QStringLiteral("Set as default")) <= kRoom;
}

// Of the application's font in pixels, whatever its size is told in.
int InterfaceHeight() {
  const QFont font = QGuiApplication::font();
  const double dots = QGuiApplication::primaryScreen()->logicalDotsPerInch() / kPointsPerInch;
  const double points = font.pixelSize() > 0 ? font.pixelSize() / dots : font.pointSizeF();
  return static_cast<int>(std::lround(std::clamp(points, kLeastPoints, kMostPoints) * dots));
}

}  // namespace

QStyle* NewStyle() {
  return new Style;
}

QFont FontOfPlaces() {
  QFont font = QGuiApplication::font();
  font.setPixelSize(kFontHeight);
  if (!IsNarrow(font)) font.setFamily(App::Running().plain_family);
  return font;
}

QFont InterfaceFont() {
  QFont font = FontOfPlaces();
  font.setPixelSize(InterfaceHeight());
  return font;
}

double PlaceScale() {
  return std::max(1.0, double(InterfaceHeight()) / kFontHeight);
}

}  // namespace orv
