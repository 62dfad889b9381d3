#include "support/Gestures.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QUrl>
#include <QWheelEvent>
#include <QWidget>

namespace orv {
namespace {

bool Choose(QWidget& widget, QContextMenuEvent& event, const QString& caption) {
  QApplication::sendEvent(&widget, &event);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (menu == nullptr) return false;
  bool chosen = false;
  for (QAction* const action : menu->actions()) {
    const QString words = action->text().section(u'\t', 0, 0).remove(u'&');
    if (words != caption || !action->isEnabled()) continue;
    chosen = true;
    action->trigger();
    break;
  }
  menu->close();
  return chosen;
}

}  // namespace

void TurnWheel(const Control& control, double x, double y, int steps) {
  QWidget* const widget = control.Handle();
  const QPointF place(x, y);
  for (int i = 0; i < std::abs(steps); ++i) {
    QWheelEvent event(place, widget->mapToGlobal(place), {}, {0, steps > 0 ? 120 : -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
  }
  QApplication::processEvents();
}

bool DropOn(const Control& control, double x, double y, const QMimeData& data) {
  QWidget* const widget = control.Handle();
  QDragEnterEvent enter(QPoint(int(x), int(y)), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                        Qt::NoModifier);
  QApplication::sendEvent(widget, &enter);
  if (!enter.isAccepted()) return false;
  QDropEvent drop(QPointF(x, y), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &drop);
  return drop.isAccepted();
}

bool DropFiles(const Control& control, double x, double y, const QStringList& files) {
  QList<QUrl> urls;
  for (const QString& file : files) urls += QUrl::fromLocalFile(file);
  QMimeData data;
  data.setUrls(urls);
  return DropOn(control, x, y, data);
}

bool ChooseFromMenu(const Control& control, double x, double y, const QString& caption) {
  QWidget* const widget = control.Handle();
  const QPoint place(static_cast<int>(x), static_cast<int>(y));
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
  return Choose(*widget, event, caption);
}

bool ChooseFromMenuByKey(const Control& control, const QString& caption) {
  QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
  return Choose(*control.Handle(), event, caption);
}

}  // namespace orv
