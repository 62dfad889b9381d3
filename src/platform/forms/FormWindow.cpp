#include "forms/inner/FormWindow.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>

#include "forms/inner/ButtonRoles.h"
#include "forms/inner/Keys.h"

namespace orv {
namespace {

bool CanPress(const QAbstractButton* button) {
  return button->isEnabled() && button->isVisible();
}

}  // namespace

bool FormWindow::event(QEvent* event) {
  const bool done = QWidget::event(event);
  if (event->type() == QEvent::LayoutRequest) inside_changed();
  if (event->type() == QEvent::WindowBlocked && usable_beside_modal) JoinModal();
  return done;
}

// A modal window blocks all but those that belong to it.
void FormWindow::JoinModal() {
  QWindow* const modal = QGuiApplication::modalWindow();
  if (modal != nullptr && modal != windowHandle()) windowHandle()->setTransientParent(modal);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  closed();
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  // The rest of a key that has answered a message, and is still held, presses nothing.
  const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->isAutoRepeat() && (enters || event->key() == Qt::Key_Escape)) return;
  if (PressButton(event->key())) return;
  if (const KeyEvent key = KeyEventFrom(*event); key.KeyCode != 0) key_left(key);
}

void FormWindow::dragEnterEvent(QDragEnterEvent* event) {
  const bool taken = takes_drops() && HasDataObject(*event->mimeData());
  if (taken) event->setDropAction(Qt::CopyAction);
  event->setAccepted(taken);
}

void FormWindow::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  dropped(DataObjectFrom(*event->mimeData()));
}

// Enter presses the button with the focus or else the default one, Escape the cancel button.
bool FormWindow::PressButton(int key) const {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!enter && key != Qt::Key_Escape) return false;
  auto* const focused = qobject_cast<QAbstractButton*>(window()->focusWidget());
  const bool presses_itself = qobject_cast<QPushButton*>(focused) != nullptr ||
                              (focused != nullptr && focused->inherits("QToolButton"));
  if (enter && presses_itself && isAncestorOf(focused)) {
    focused->click();
    return true;
  }
  for (QPushButton* const button : findChildren<QPushButton*>()) {
    const bool meant = enter ? button->isDefault() : button->property(kCancelRole).toBool();
    if (!meant || !CanPress(button)) continue;
    button->click();
    return true;
  }
  return false;
}

FormScroller::FormScroller(QWidget* content) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(content);
}

QSize FormScroller::sizeHint() const {
  return widget()->sizeHint().expandedTo(widget()->minimumSize()).boundedTo(widget()->maximumSize());
}

QSize FormScroller::LeastSize() const {
  return widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
}

QSize ChildWindow::WithBars(const QSize& size, const QSize& room) const {
  const auto& scroller = static_cast<const FormScroller&>(*widget());
  const QSize least = scroller.LeastSize() + sizeHint() - scroller.sizeHint();
  const int bar = scroller.verticalScrollBar()->sizeHint().width();
  const int across = least.width() + (room.height() < least.height() ? bar : 0);
  const int down = least.height() + (room.width() < across ? bar : 0);
  return size.expandedTo(QSize(across, down));
}

void FormArea::resizeEvent(QResizeEvent* event) {
  QMdiArea::resizeEvent(event);
  for (QMdiSubWindow* child : subWindowList()) static_cast<ChildWindow*>(child)->area_changed();
}

void ChildWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  closed();
}

}  // namespace orv
