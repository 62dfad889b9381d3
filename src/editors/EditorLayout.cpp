#include "editors/inner/EditorLayout.h"
#include "forms/ControlHelpers.h"

namespace orv {
namespace {

void Fill(BoxLayout box, std::initializer_list<Control*> controls) {
  for (Control* control : controls) box.Add(*control);
  box.AddStretch();
}

}  // namespace

void AddField(GridLayout& grid, int row, FormLabel& label, Control& field) {
  label.SetBuddy(field);
  grid.Add(label, row, 0);
  grid.Add(field, row, 1);
}

void AddRow(GridLayout& grid, int row, FormLabel& label, std::initializer_list<Control*> controls) {
  grid.Add(label, row, 0);
  Fill(grid.AddBox(BoxLayout::Row, row, 1), controls);
}

void AddChecks(GridLayout& grid, std::initializer_list<Control*> boxes) {
  Fill(grid.AddBox(BoxLayout::Row, 0, 0, 1, 2), boxes);
}

void ArrangeColour(Surface& sample, CommandButton& button) {
  sample.Place(0, 0, 48, 20);
  sample.SetBorderStyle(1);
  sample.SetName(QStringLiteral("Card background colour"));
  Explain(button, QStringLiteral("Choose the background colour"));
  SetFixedWidth(button, 32);
}

}  // namespace orv
