#pragma once

class QBoxLayout;
class QGridLayout;

namespace orv {

class Control;
class Container;

// Arranges controls in a row or a column, so that they follow the size of their container. A light
// handle: the container owns the arrangement. Sizes are in pixels.
class BoxLayout {
 public:
  enum Direction { Row, Column };
  BoxLayout(Container& container, Direction direction, int margin = 9, int spacing = 6);
  void Add(Control& control, int stretch = 0);
  BoxLayout AddBox(Direction direction, int stretch = 0, int spacing = 6);
  void AddStretch(int stretch = 1);
  void AddSpace(int pixels);

 private:
  explicit BoxLayout(QBoxLayout* layout) : layout_(layout) {}
  friend class GridLayout;
  QBoxLayout* layout_;
};

class GridLayout {
 public:
  explicit GridLayout(Container& container, int margin = 9, int spacing = 6);
  void Add(Control& control, int row, int column, int rows = 1, int columns = 1);
  BoxLayout AddBox(BoxLayout::Direction direction, int row, int column, int rows = 1, int columns = 1);
  void SetColumnStretch(int column, int stretch);
  void SetRowStretch(int row, int stretch);

 private:
  QGridLayout* layout_;
};

// For a control in a layout.
void SetFixedWidth(Control& control, int pixels);
void SetMinimumSize(Control& control, int width, int height);
// The order in which Tab walks.
void SetTabOrder(Control& first, Control& second);

}  // namespace orv
