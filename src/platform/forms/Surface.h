#pragma once

#include <QStringView>
#include <memory>
#include <vector>

#include "base/App.h"
#include "base/Event.h"
#include "forms/DataObject.h"
#include "forms/Types.h"
#include "imaging/Drawing.h"
#include "imaging/Picture.h"

class QImage;
class QPainter;

namespace orv {

class Surface;
class SurfaceHost;

// What lies on a surface: a label or another surface. Windowless: it needs no display and costs
// nothing until a SurfaceView shows it. The container must outlive it.
//
// Left, Top, Width and Height are in the scale of the container, or in pixels without one; on a pixel
// scale they are whole numbers, rounded half to even, and read back so. In twips they keep a fraction.
class SurfaceItem {
 public:
  explicit SurfaceItem(Surface* container);
  virtual ~SurfaceItem();
  SurfaceItem(const SurfaceItem&) = delete;
  SurfaceItem& operator=(const SurfaceItem&) = delete;

  double Left() const { return FromPixels(left_); }
  double Top() const { return FromPixels(top_); }
  double Width() const { return FromPixels(width_); }
  double Height() const { return FromPixels(height_); }
  void SetLeft(double left) {
    left_ = ToPixels(left);
    Invalidate();
  }
  void SetTop(double top) {
    top_ = ToPixels(top);
    Invalidate();
  }
  virtual void SetWidth(double width) {
    width_ = ToPixels(width);
    Invalidate();
  }
  virtual void SetHeight(double height) {
    height_ = ToPixels(height);
    Invalidate();
  }
  // All four, in the container's scale.
  void Place(double left, double top, double width, double height);

  bool Visible() const { return visible_; }
  void SetVisible(bool visible) {
    visible_ = visible;
    Invalidate();
  }
  Colour ForeColor() const { return fore_; }
  virtual void SetForeColor(Colour colour) {
    fore_ = colour;
    Invalidate();
  }
  const Font& GetFont() const { return font_; }
  void SetFont(const Font& font) {
    font_ = font;
    Invalidate();
  }
  // What a screen reader and a test call it.
  const QString& Name() const { return name_; }
  void SetName(const QString& name) { name_ = name; }
  // Draws it above its siblings of its kind.
  void BringToFront();
  // The focus goes to it, in the view that shows it, if any.
  void SetFocus();
  bool HasFocus() const;

  Surface* Container() const { return container_; }

  Event<const MouseEvent&> MouseDown;
  Event<const MouseEvent&> MouseMove;
  Event<> Click;
  Event<const KeyEvent&> KeyDown;
  // What an item has no handler for reaches the nearest one around it that has.
  Event<const WheelEvent&> Wheel;
  Event<const MenuEvent&> ContextMenu;
  Event<const DropEvent&> Drop;

 protected:
  friend class Surface;
  friend class SurfaceView;
  virtual void Draw(QPainter& painter) const = 0;  // at (0, 0), in pixels
  // The item under a point given in pixels from this item's corner, itself included.
  virtual SurfaceItem* ItemAt(double x, double y);
  void Invalidate();
  void InvalidatePixels();  // what was drawn alone has changed
  double ToPixels(double value) const;
  double FromPixels(double pixels) const;

  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;  // pixels

 private:
  Surface* container_;
  bool visible_ = true;
  Colour fore_ = kBlack;
  Font font_{App::Running().usual_face, 7, false, false};
  QString name_;
};

// A line of text without a background. Drawn below the surfaces on its container.
class Label : public SurfaceItem {
 public:
  explicit Label(Surface* container) : SurfaceItem(container) {}
  const QString& Caption() const { return caption_; }
  void SetCaption(const QString& caption) {
    caption_ = caption;
    Invalidate();
  }
  void SetAlignment(Alignment alignment) {
    alignment_ = alignment;
    Invalidate();
  }
  // Breaks lines at blanks to its width, and at line ends of the caption.
  void SetWordWrap(bool wrap) { wrap_ = wrap; }
  // A bar to be dragged instead of a text.
  void SetHandle(bool handle) { handle_ = handle; }

 protected:
  void Draw(QPainter& painter) const override;

 private:
  void DrawLine(QImage& target, int left, QStringView line, double y) const;
  QString caption_;
  Alignment alignment_ = Alignment::Left;
  bool wrap_ = false;
  bool handle_ = false;
};

// While one lives, each surface keeps what is drawn on it as operations too, and hands it on with the
// pictures that are made of it (Image): through SetPicture and PaintPicture what is composed is one Drawing.
// Without one nothing is kept.
class KeepDrawings {
 public:
  KeepDrawings() { ++living_; }
  ~KeepDrawings() { --living_; }
  KeepDrawings(const KeepDrawings&) = delete;
  KeepDrawings& operator=(const KeepDrawings&) = delete;
  static bool Asked() { return living_ > 0; }

 private:
  static inline int living_ = 0;
};

// A bitmap that keeps what is drawn on it, with a picture behind the drawing and controls upon it.
//
// Coordinates of the drawing operations are in ScaleMode, from the corner of the inside: the border,
// if there is one, takes one pixel on every side of Width and Height. All colours are opaque.
// Text is smoothed in grey on whole pixels, so that it looks the same everywhere.
class Surface : public SurfaceItem {
 public:
  // A root surface (without a container) measures itself in pixels.
  explicit Surface(Surface* container = nullptr);
  ~Surface() override;

  orv::ScaleMode GetScaleMode() const { return scale_; }
  // Also changes the unit in which what lies upon it tells its place; nothing moves.
  void SetScaleMode(orv::ScaleMode scale) { scale_ = scale; }
  int BorderStyle() const { return border_; }  // 0 none, 1 a line
  void SetBorderStyle(int style);              // the outer size stays
  Colour BackColor() const { return back_; }
  void SetBackColor(Colour colour);  // clears what was drawn; Picture stays behind
  // Follows the size of its picture, plus the border; 0 by 0 for the empty one.
  void SetAutoSize(bool follow) { auto_size_ = follow; }
  void SetWidth(double width) override;
  void SetHeight(double height) override;

  // The picture behind the drawing, unscaled at the corner of the inside. Setting it clears what was drawn.
  const orv::Picture& Picture() const { return picture_; }
  void SetPicture(const orv::Picture& picture);
  // A snapshot of the persistent bitmap, of the inside's size; never of the controls on it.
  orv::Picture Image() const;

  double CurrentX() const { return current_x_; }
  double CurrentY() const { return current_y_; }
  void SetCurrentX(double x) { current_x_ = x; }
  void SetCurrentY(double y) { current_y_ = y; }

  // One line with its corner at the cursor, without a background; the cursor goes to the next line.
  void Print(const QString& text);
  double TextWidth(const QString& text) const;
  // How many of the first characters have a TextWidth below `width`, each count tried in turn.
  qsizetype TextFitting(QStringView text, double width) const;
  double TextHeight(const QString& text) const;

  // At its natural size. The empty picture paints nothing.
  void PaintPicture(const orv::Picture& picture, double x1, double y1);
  // The whole picture stretched over a rectangle.
  void PaintPicture(const orv::Picture& picture, double x1, double y1, double width1, double height1);
  // A source rectangle to a destination rectangle. Where the source reaches past the picture, the
  // destination stays as it is.
  void PaintPicture(const orv::Picture& picture, double x1, double y1, double width1, double height1,
                    double x2, double y2, double width2, double height2);
  // Turned by a quarter circle, at the corner of the inside. Clockwise, what reads from left to right comes
  // to read from top to bottom.
  void PaintTurned(const orv::Picture& picture, bool clockwise);
  // An unfilled rectangle, one pixel wide, both corners inclusive.
  void LineB(double x1, double y1, double x2, double y2, Colour colour);

  // One pixel of the persistent bitmap, in pixels. Outside of it reading gives -1 and writing does nothing.
  Colour GetPixel(int x, int y) const;
  void SetPixel(int x, int y, Colour colour);

  int InsideWidth() const;   // pixels
  int InsideHeight() const;  // pixels

  // The surface with its border and all visible controls upon it, of the outer size: what a view shows.
  orv::Picture Render() const;
  // Shows at once what waits to be shown.
  void Refresh();
  // Whether it takes the focus by Tab and by a click.
  void SetTabStop(bool stop) { tab_stop_ = stop; }
  bool TabStop() const { return tab_stop_; }

  // For the platform's own rooms: the view that shows this root, not owned, or nothing.
  void SetHost(SurfaceHost* host) { host_ = host; }
  SurfaceHost* Host() const { return host_; }
  const std::vector<SurfaceItem*>& Items() const { return items_; }

 protected:
  void Draw(QPainter& painter) const override;
  SurfaceItem* ItemAt(double x, double y) override;

 private:
  friend class SurfaceItem;
  struct Bitmap;
  Bitmap& Persistent() const;
  void Rebuild();
  void Do(const Drawing::Operation& operation);
  int X(double value) const;
  int Y(double value) const;

  std::vector<SurfaceItem*> items_;  // not owned
  orv::ScaleMode scale_ = orv::ScaleMode::Pixels;
  int border_ = 0;
  Colour back_ = kWhite;
  bool auto_size_ = false;
  bool tab_stop_ = false;
  orv::Picture picture_;
  double current_x_ = 0, current_y_ = 0;
  mutable std::unique_ptr<Bitmap> bitmap_;  // made when first needed
  SurfaceHost* host_ = nullptr;
};

// What a root surface tells the view that shows it.
class SurfaceHost {
 public:
  virtual ~SurfaceHost() = default;
  virtual void SurfaceChanged() = 0;
  virtual void PixelsChanged() = 0;  // what was drawn, and neither size, place nor order
  virtual void RefreshNow() = 0;
  virtual void FocusItem(SurfaceItem* item) = 0;
  virtual bool HasFocusOn(const SurfaceItem* item) const = 0;
  virtual void SurfaceGone() = 0;
  virtual void ItemGone(SurfaceItem* item) = 0;
};

}  // namespace orv
