#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "base/App.h"
#include "forms/DataObject.h"
#include "imaging/Picture.h"

namespace orv {

// The process's connection to the desktop; one lives for the whole run, made before any form or surface.
class Application {
 public:
  enum Display { Desktop, Offscreen };
  // Offscreen needs no display at all.
  Application(int& argc, char** argv, Display display, const Program& program);
  ~Application();

  // Runs `main` and then the message loop until Quit; the exit status. A RuntimeError that nobody catches,
  // here or in a handler, is shown in a box with its number and text and ends the process with status 1.
  int Run(const std::function<void()>& main);
  // Runs `action` alone, with the same treatment of errors.
  int RunOnce(const std::function<int()>& action);
  // Deals with what the user has done meanwhile, for a long operation that can be stopped.
  static void HandleInput();
  // Unloads all forms and ends the loop; the exit status is that of the first call.
  static void Quit(int status = 0);
  // Whether a dialog is open that must be dealt with first.
  static bool IsModal();
  // Shows and draws what waits for it, during a long piece of work; what the user does meanwhile waits on.
  static void DrawNow();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

namespace Screen {
int Width();  // of the desktop, in twips
int Height();
inline constexpr int TwipsPerPixelX = 15;
inline constexpr int TwipsPerPixelY = 15;
}  // namespace Screen

// Shows the hourglass while one lives.
class WaitCursor {
 public:
  WaitCursor();
  ~WaitCursor();
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

namespace Clipboard {
// Puts a picture on the clipboard; false where there is none.
bool SetImage(const Picture& picture);
// Whatever a picture may be taken from.
DataObject GetData();
bool HasData();
bool HasText();  // and not an empty one
}  // namespace Clipboard

}  // namespace orv
