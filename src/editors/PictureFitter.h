#pragma once

#include <functional>
#include <vector>

#include "editors/ShownRecord.h"
#include "forms/Controls.h"
#include "forms/Surface.h"
#include "pictures/FittedPicture.h"

namespace orv {

// A picture in a frame, and where its record keeps it.
struct FittedFrame {
  ShownRecord& record;
  const char* table;
  const char* column;
  const char* left_column;  // the offset of the picture, in twips
  const char* top_column;
  Surface& frame;
  Surface& image;                // in the frame
  FormLabel& readout;            // shows scale and resolution
  std::function<QSize()> room;   // what a fitting picture fits, in pixels
  std::function<void()> place;   // applies the record to the frame and the picture
  std::function<void()> remove;  // what the button does that takes the picture away
};

// What the user does with the size of a picture in its frame: the wheel, keys, a menu, and pictures that are
// dropped on it or pasted. Each is stored before it is seen.
class PictureFitter {
 public:
  // All in `frame` must outlive the fitter.
  explicit PictureFitter(FittedFrame frame);
  // Subscribes to the frame's wheel, menu and drop.
  void Attach();
  // A record is on show, or its picture was chosen or removed.
  void Show();
  // Its keys while the picture has the focus.
  static QStringList Commands();
  // True where the key is one of them. The editor pastes, wherever the focus is.
  bool KeyDown(const KeyEvent& key);
  // Puts a picture into the record so that it fills the frame; tells of one that can't be read, and changes
  // nothing then.
  void Take(const DataObject& data);
  // What is on the clipboard, if it is a picture. The focus stays where it is.
  void Paste();
  bool HasFocus() const { return frame_.image.HasFocus(); }

 private:
  // A point of the frame's inside, in twips.
  struct Point {
    double x, y;
  };
  Point Middle() const;
  void Step(int steps, const Point& about);
  void Natural();
  enum class Fitting { Inside, Over };
  void Fit(Fitting fitting);
  void FitPrepared(Fitting fitting);
  void Store(double scale, double left, double top);
  bool MayScaleTo(double scale) const;
  bool Fill(const DataObject& data);
  void Copy() const;
  void Save();
  void FillMenu(std::vector<MenuItem>& items);
  void ShowReadout();
  struct Command;
  static const Command kCommands[];
  bool CanRun(const Command& command) const;
  bool HasPicture() const { return !frame_.image.Picture().IsEmpty(); }

  const FittedFrame frame_;
  FittedPicture picture_;
};

// The inside of a frame, in pixels.
QSize InsideOf(const Surface& frame);
// Says what a readout of a fitter tells.
void ExplainScale(FormLabel& readout);

// Lets a surface take pictures that are dropped on it, or pasted by its menu: they fill it to its edges and
// are stored so in a column of the record. `shown` runs after the surface shows it.
void TakeFillingPictures(
    Surface& surface, ShownRecord& record, const char* column, std::function<void()> shown = [] {});

}  // namespace orv
