#include "forms/inner/Style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>

#include "forms/Controls.h"
#include "forms/ListView.h"
#include "forms/Toolbar.h"
#include "platform/forms/TestWindow.h"

namespace orv {
namespace {

struct Ground {
  const char* name;
  QColor window, base, ink, highlight;
};

QPalette PaletteOf(const Ground& ground) {
  QPalette palette(ground.window, ground.window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(role, ground.ink);
  palette.setColor(QPalette::Base, ground.base);
  palette.setColor(QPalette::Highlight, ground.highlight);
  return palette;
}

// How many pixels are clearly different.
int Clear(const QImage& one, const QImage& other) {
  int count = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const QColor a = one.pixelColor(x, y), b = other.pixelColor(x, y);
      const int difference =
          std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
      count += difference > 90 ? 1 : 0;
    }
  }
  return count;
}

// The focus goes where a click or the program sends it, without a Tab before.
TEST(StyleTest, TheFocusIsSeenOnEveryControlAndGround) {
  const QPalette before = QApplication::palette();
  for (const Ground& ground :
       {Ground{"light", {0xEF, 0xEF, 0xEF}, Qt::white, Qt::black, {0x30, 0x8C, 0xC6}},
        Ground{"dark", {0x2B, 0x2B, 0x2B}, {0x1E, 0x1E, 0x1E}, {0xE8, 0xE8, 0xE8}, {0x3D, 0x7E, 0xBF}},
        Ground{"black", Qt::black, Qt::black, Qt::white, {0x3D, 0x7E, 0xBF}}}) {
    QApplication::setPalette(PaletteOf(ground));
    TestWindow window;
    CommandButton elsewhere(window, "Elsewhere");
    TextBox line(window), lines(window, TextBox::MultiLine);
    ComboBox list(window), combo(window, ComboBox::DropDownCombo);
    CheckBox box(window, "Box");
    OptionButton option(window, "Option");
    CommandButton button(window, "Button"), first(window, "Default");
    ListView entries(window);
    Toolbar bar(window);
    bar.Add("a", "A", {}, ToolbarStyle::Check, "card");
    first.SetDefault(true);
    option.SetValue(true);
    int top = 600;
    const std::initializer_list<Control*> controls = {&line,   &lines,  &list,  &combo,   &box,
                                                      &option, &button, &first, &entries, &bar};
    for (Control* control : controls) control->Place(0, top += 450, 1800, 420);
    window.Open();
    for (Control* control : controls) {
      const auto grab = [control] { return control->Handle()->grab().toImage(); };
      QWidget* const taker =
          control == &bar ? bar.Handle()->findChildren<QWidget*>().constLast() : control->Handle();
      elsewhere.SetFocus();
      const QImage without = grab();
      taker->setFocus();
      EXPECT_GE(Clear(without, grab()), 30)
          << control->Handle()->metaObject()->className() << " on " << ground.name;
    }
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace orv
