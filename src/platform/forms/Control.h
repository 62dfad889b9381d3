#pragma once

#include <QPointer>
#include <QString>

#include "base/Event.h"
#include "forms/DataObject.h"
#include "forms/Types.h"

class QEvent;
class QWidget;
class QObject;

namespace orv {

class Container;

// A control of a form: a handle on a widget that it owns. Places are in twips from the corner of the
// container, 15 to a (device-independent) pixel. Its container must outlive it.
class Control {
 public:
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  void Place(int left, int top, int width, int height);
  bool Enabled() const;  // by itself, whatever its container is
  void SetEnabled(bool enabled);
  bool Visible() const;  // by itself, whether or not its form is shown
  void SetVisible(bool visible);
  void SetFocus();
  bool HasFocus() const;
  void SetToolTip(const QString& text);
  QString ToolTip() const;
  // The name for screen readers; a label in front of a field gives it its own (FormLabel::SetBuddy).
  void SetAccessibleName(const QString& name);
  const QString& Tag() const { return tag_; }
  void SetTag(const QString& tag) { tag_ = tag; }

  // The focus came to the control.
  Event<> GotFocus;

  // For the platform's own rooms and for tests, which send real events. Not owned by the caller.
  QWidget* Handle() const;

 protected:
  Control() = default;
  // Takes the widget over, watches it and, unless it is a window, shows it as soon as its form is shown.
  void Adopt(QWidget* widget);
  // Watches another object, too: a part of the widget, or a neighbour.
  void Watch(QObject* object);
  // Sees the events of the watched objects first; true keeps an event from them.
  virtual bool Filter(QObject* object, QEvent* event);
  // Lives as long as the control: the context for connections to its widget's signals.
  QObject* Watcher() const;

 private:
  friend class ControlWatcher;
  bool FocusEvent(QObject* object, QEvent* event);
  QPointer<QObject> widget_;
  QPointer<QObject> watcher_;
  QString tag_;
  bool had_focus_ = false;
};

// What controls lie in: a form, a panel or a frame.
class Container : public Control {};

// A plain area.
class Panel : public Container {
 public:
  explicit Panel(Container& parent);

  // The user asks for a menu on it, or on a control in it that has none of its own.
  Event<const MenuEvent&> ContextMenu;

 protected:
  bool Filter(QObject* object, QEvent* event) override;
};

// An area in a frame with a caption.
class Frame : public Container {
 public:
  Frame(Container& parent, const QString& caption);
};

}  // namespace orv
