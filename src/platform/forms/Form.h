#pragma once

#include <functional>
#include <memory>

#include "forms/Control.h"
#include "forms/DataObject.h"
#include "forms/Lifetime.h"

namespace orv {

// Dialog: a window of its own, usually shown modally. Child: lies inside the main window, when there
// is one. Main: the main window with an area for children under what is docked at its top. Aside: a window
// of its own that can be used while another one is modal.
enum class FormKind { Dialog, Child, Main, Aside };

// Fixed: where they are told, with texts of the size for which they are made. WithFont: larger by as much as
// the user's own font is.
enum class Places { Fixed, WithFont };

// A window. A program's form derives from it, has its controls as members and its handlers as functions,
// and exists through a FormInstance.
class Form : public Container {
 public:
  explicit Form(FormKind kind, Places places = Places::Fixed);
  ~Form() override;

  QString Caption() const;
  void SetCaption(const QString& caption);
  // The inside, in twips; `resizable` keeps it as the least size only. For a main window and one aside it is
  // the size to start with.
  void SetClientSize(int width, int height, bool resizable = false);
  // Place and size of the window in twips; for a child within the main window. Width and Height are
  // without the frame that a desktop draws around a window, so that a stored placement is found again.
  int Width() const;
  int Height() const;
  int Left() const;
  int Top() const;
  void SetWidth(int twips);
  void SetHeight(int twips);
  void SetLeft(int twips);
  void SetTop(int twips);
  int WindowState() const;  // 0 normal, 1 minimised, 2 maximised
  void SetWindowState(int state);

  bool IsShown() const;
  // Child: whether it has the keyboard among the children, or had it last.
  bool IsActive() const;
  // Modeless; brings it to the front. The main window grows to show a child as far as the screen allows.
  void Show();
  // Aside, modeless: at the side of another window as far as the screen has room, and without the keyboard.
  void ShowBeside(const Form& other);
  void ShowBehind();   // child, modeless: below the others and without the keyboard
  void ComeToFront();  // of the desktop, also when it was minimised
  void ShowModal();    // returns when the form is hidden or closed
  void Hide();

  // Main: puts a control of a fixed height over the area for children. In the order of the calls.
  void DockTop(Control& control);

  // Through the instance that owns the form: closing by the window frame unloads it (a modal dialog is
  // only hidden, so that its caller can still read it).
  virtual void Form_Load() {}
  virtual void Form_Unload() {}
  // Child: it has become the active one, or is that no more.
  virtual void Form_ActiveChanged() {}
  // Whether a key is a command of the form, and so not for the control with the focus.
  virtual bool Claims(const KeyEvent&) const { return false; }
  // A key that the control with the focus did not use.
  virtual void Form_KeyDown(const KeyEvent&) {}
  // Files or a picture were dropped where no control takes them.
  Event<const DataObject&> Drop;

  // Set by the instance that owns the form.
  void SetCloser(std::function<void()> unload) { unload_ = std::move(unload); }

 private:
  void ClosedByFrame();
  QWidget* Window() const;
  void PlaceFirst();
  void SizeChild();
  void FollowInside();
  void FollowArea();
  void FitChild(bool make_room);
  FormKind kind_;
  bool modal_ = false;
  std::function<void()> unload_;
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// The one instance of a form: comes into being at its first use, which runs Form_Load, and again after
// it was unloaded.
template <class T>
class FormInstance {
 public:
  T* operator->() { return &Get(); }
  T& operator*() { return Get(); }
  bool IsLoaded() const { return form_ != nullptr; }
  bool IsVisible() const { return form_ && form_->IsShown(); }

  void Load() { Get(); }

  void Unload() {
    if (!form_) return;
    std::shared_ptr<T> form = std::move(form_);
    form_.reset();
    form->Hide();
    form->Form_Unload();
    RunLater([form]() mutable { form.reset(); });
  }

 private:
  T& Get() {
    if (!form_) {
      form_ = std::make_shared<T>();
      form_->SetCloser([this] { Unload(); });
      if (!registered_) AtShutdown([this] { Unload(); });
      registered_ = true;
      form_->Form_Load();
    }
    return *form_;
  }

  std::shared_ptr<T> form_;
  bool registered_ = false;
};

}  // namespace orv
