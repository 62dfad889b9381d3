#include "forms/inner/ChildFocus.h"

#include <QApplication>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/WindowKeys.h"
#include "forms/inner/FormWindow.h"

namespace orv {
namespace {

bool Takes(const QWidget& part, const QWidget* control, Qt::FocusPolicy how) {
  return control != nullptr && (control->focusPolicy() & how) == how && control->isEnabled() &&
         part.isAncestorOf(control) && control->isVisibleTo(&part);
}

QWidget* ControlFor(const QWidget& part, Qt::FocusPolicy how) {
  if (QWidget* const last = part.focusWidget(); Takes(part, last, how)) return last;
  for (QWidget* next = part.nextInFocusChain(); next != &part; next = next->nextInFocusChain()) {
    if (Takes(part, next, how)) return next;
  }
  return nullptr;
}

QWidget& InsideOf(const QMdiSubWindow& child) {
  return *static_cast<QScrollArea*>(child.widget())->widget();
}

const QMdiSubWindow* ChildAround(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const auto* const child = qobject_cast<const QMdiSubWindow*>(widget)) return child;
  }
  return nullptr;
}

bool IsOnTheWay(const QMdiSubWindow* child) {
  return child->isVisible() && !static_cast<const ChildWindow*>(child)->stays_behind;
}

bool HasFocus(const QWidget& part) {
  const QWidget* const focus = QApplication::focusWidget();
  return focus == &part || part.isAncestorOf(focus);
}

}  // namespace

void TakeFocus(QWidget& part, Qt::FocusPolicy how) {
  if (HasFocus(part) && QApplication::focusWidget() != &part) return;
  QWidget* const control = ControlFor(part, how);
  (control != nullptr ? control : &part)->setFocus(Qt::ActiveWindowFocusReason);
}

struct ChildFocus::Key {
  const char* keys;
  void (*press)(ChildFocus& focus);
};

const ChildFocus::Key ChildFocus::kKeys[] = {
    {"F6", [](ChildFocus& focus) { focus.Walk(-1); }},
    {"Shift+F6", [](ChildFocus& focus) { focus.Walk(1); }},
    {"Ctrl+Tab", [](ChildFocus& focus) { focus.Turn(1); }},
    {"Ctrl+Shift+Tab", [](ChildFocus& focus) { focus.Turn(-1); }},
};

QStringList WindowKeys() {
  QStringList keys;
  for (const ChildFocus::Key& key : ChildFocus::kKeys) keys += QLatin1String(key.keys);
  keys += QLatin1String(kCloseChildKeys);
  return keys;
}

ChildFocus::ChildFocus(QVBoxLayout& rows, QMdiArea& area) : QObject(&area), rows_(rows), area_(area) {
  for (const Key& key : kKeys) {
    auto* const shortcut = new QShortcut(QKeySequence(QLatin1String(key.keys)), area.window());
    connect(shortcut, &QShortcut::activated, this, [this, press = key.press] { press(*this); });
  }
  QApplication::instance()->installEventFilter(this);
}

// What the toolkit gives the focus to on a click has it by now.
bool ChildFocus::eventFilter(QObject* object, QEvent* event) {
  const bool pressed = event->type() == QEvent::MouseButtonPress;
  if (!object->isWidgetType() || !(pressed || event->type() == QEvent::Hide)) return false;
  const QMdiSubWindow* const child = ChildAround(static_cast<QWidget*>(object));
  if (child == nullptr || child->mdiArea() != &area_) return false;
  if (pressed) {
    if (QWidget& inside = InsideOf(*child); !HasFocus(inside)) TakeFocus(inside, Qt::ClickFocus);
  } else if (object == child && HasFocus(*child)) {
    LeaveChild();
  }
  return false;
}

// The keyboard of a child that is being hidden goes to the one that was active before, or to what is docked.
void ChildFocus::LeaveChild() {
  const QList<QMdiSubWindow*> children = area_.subWindowList(QMdiArea::ActivationHistoryOrder);
  const auto next = std::find_if(children.crbegin(), children.crend(), IsOnTheWay);
  if (next == children.crend()) return Walk(-1);
  area_.setActiveSubWindow(*next);
}

// To the child that is so many places on in the order of their making.
void ChildFocus::Turn(int step) {
  QList<QMdiSubWindow*> children = area_.subWindowList(QMdiArea::CreationOrder);
  children.removeIf([](const QMdiSubWindow* child) { return !IsOnTheWay(child); });
  if (children.isEmpty()) return;
  const qsizetype here = children.indexOf(area_.currentSubWindow());
  const qsizetype count = children.size();
  area_.setActiveSubWindow(children[here < 0 ? 0 : (here + step + count) % count]);
}

void ChildFocus::Walk(int step) {
  const int count = rows_.count();
  int row = count - 1;
  for (int i = 0; i < count; ++i) {
    if (HasFocus(*rows_.itemAt(i)->widget())) row = i;
  }
  for (int i = 1; i < count; ++i) {
    if (Enter((row + step * i + count * count) % count)) return;
  }
}

// False where nothing takes the keys.
bool ChildFocus::Enter(int row) {
  QWidget* part = rows_.itemAt(row)->widget();
  if (part == &area_) {
    const QMdiSubWindow* const child = area_.currentSubWindow();
    if (child == nullptr || child->isHidden()) return false;
    part = &InsideOf(*child);
  } else if (ControlFor(*part, Qt::TabFocus) == nullptr) {
    return false;
  }
  TakeFocus(*part);
  return true;
}

}  // namespace orv
