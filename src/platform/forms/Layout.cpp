#include "forms/Layout.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QWidget>

#include "forms/Control.h"

namespace orv {
namespace {

QBoxLayout* NewBox(BoxLayout::Direction direction, int spacing) {
  auto* const box =
      new QBoxLayout(direction == BoxLayout::Row ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(spacing);
  return box;
}

QGridLayout* NewGrid(int spacing) {
  auto* const grid = new QGridLayout;
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(spacing);
  return grid;
}

void GiveTo(Container& container, QLayout* layout, int margin) {
  layout->setContentsMargins(margin, margin, margin, margin);
  container.Handle()->setLayout(layout);
}

}  // namespace

BoxLayout::BoxLayout(Container& container, Direction direction, int margin, int spacing)
    : layout_(NewBox(direction, spacing)) {
  GiveTo(container, layout_, margin);
}

void BoxLayout::Add(Control& control, int stretch) {
  layout_->addWidget(control.Handle(), stretch);
}

BoxLayout BoxLayout::AddBox(Direction direction, int stretch, int spacing) {
  QBoxLayout* const box = NewBox(direction, spacing);
  layout_->addLayout(box, stretch);
  return BoxLayout(box);
}

void BoxLayout::AddStretch(int stretch) {
  layout_->addStretch(stretch);
}
void BoxLayout::AddSpace(int pixels) {
  layout_->addSpacing(pixels);
}

GridLayout::GridLayout(Container& container, int margin, int spacing) : layout_(NewGrid(spacing)) {
  GiveTo(container, layout_, margin);
}

void GridLayout::Add(Control& control, int row, int column, int rows, int columns) {
  layout_->addWidget(control.Handle(), row, column, rows, columns);
}

BoxLayout GridLayout::AddBox(BoxLayout::Direction direction, int row, int column, int rows, int columns) {
  QBoxLayout* const box = NewBox(direction, layout_->horizontalSpacing());
  layout_->addLayout(box, row, column, rows, columns);
  return BoxLayout(box);
}

void GridLayout::SetColumnStretch(int column, int stretch) {
  layout_->setColumnStretch(column, stretch);
}
void GridLayout::SetRowStretch(int row, int stretch) {
  layout_->setRowStretch(row, stretch);
}

void SetFixedWidth(Control& control, int pixels) {
  control.Handle()->setFixedWidth(pixels);
}
void SetMinimumSize(Control& control, int width, int height) {
  control.Handle()->setMinimumSize(width, height);
}
void SetTabOrder(Control& first, Control& second) {
  QWidget::setTabOrder(first.Handle(), second.Handle());
}

}  // namespace orv
