#include "composition/Composing.h"

#include "base/Rounding.h"

namespace orv {
namespace {

void PrintAt(Surface& surface, double x, double y, const QString& text) {
  surface.SetCurrentX(x);
  surface.SetCurrentY(y);
  surface.Print(text);
}

// Makes a surface and what lies on it measure in pixels for as long as it lives.
class PixelScale {
 public:
  explicit PixelScale(Surface& surface) : surface_(surface), former_(surface.GetScaleMode()) {
    surface_.SetScaleMode(ScaleMode::Pixels);
  }
  ~PixelScale() { surface_.SetScaleMode(former_); }
  PixelScale(const PixelScale&) = delete;
  PixelScale& operator=(const PixelScale&) = delete;

 private:
  Surface& surface_;
  ScaleMode former_;
};

}  // namespace

void PrintLeft(Surface& surface, const Label& label, const QString& text, Origin origin) {
  PrintAt(surface, label.Left() + origin.x, label.Top() + origin.y, text);
}

void PrintCentred(Surface& surface, const Label& label, const QString& text, double text_width,
                  Origin origin) {
  PrintAt(surface, Int(label.Width() / 2 - text_width / 2) + label.Left() + origin.x, label.Top() + origin.y,
          text);
}

void PrintCentred(Surface& surface, const Label& label, const QString& text, Origin origin) {
  PrintCentred(surface, label, text, surface.TextWidth(text), origin);
}

void PrintRight(Surface& surface, const Label& label, const QString& text) {
  PrintAt(surface, label.Width() + label.Left() - surface.TextWidth(text), label.Top(), text);
}

void TakeFontOf(Surface& surface, const Label& label) {
  surface.SetFont(label.GetFont());
  surface.SetForeColor(label.ForeColor());
}

void PaintFramed(Surface& target, const Picture& white, const FramedPicture& framed, Origin origin) {
  const PixelScale frame_scale(framed.frame);
  const PixelScale image_scale(framed.image);
  const Surface& frame = framed.frame;
  const double left = frame.Left() + origin.x;
  const double top = frame.Top() + origin.y;
  target.PaintPicture(white, left, top, frame.Width(), frame.Height());
  if (!framed.has_picture) return;
  const ClipInput input{ToInt16(frame.Width()),
                        ToInt16(frame.Height()),
                        ToInt16(framed.image.Width()),
                        ToInt16(framed.image.Height()),
                        framed.outline,
                        framed.left,
                        framed.top};
  const Clip clip = ClipPicture(input, framed.hug, framed.slack);
  if (!clip.paint) return;
  target.PaintPicture(framed.image.Picture(), left + clip.x, top + clip.y, clip.width, clip.height,
                      clip.source_x, clip.source_y, clip.width, clip.height);
}

void OutlineFrame(Surface& target, const Surface& frame, Origin origin) {
  const double left = frame.Left() + origin.x;
  const double top = frame.Top() + origin.y;
  target.LineB(left, top, left + frame.Width() - 1, top + frame.Height() - 1, kBlack);
}

}  // namespace orv
