#include "composition/inner/Composing.h"

#include "base/Rounding.h"
#include "composition/WrapText.h"

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

void OutlineFrame(Surface& target, const Surface& frame, Origin origin) {
  const double left = frame.Left() + origin.x;
  const double top = frame.Top() + origin.y;
  target.LineB(left, top, left + frame.Width() - 1, top + frame.Height() - 1, kBlack);
}

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

void PrintLines(Surface& surface, const Label& box, const QString& text, Origin origin) {
  WrapText(WrappablePart(text), box, surface, [&](const QString& line, int number) {
    PrintLeft(surface, box, line, {origin.x, origin.y + number * surface.TextHeight(line)});
  });
}

void PrintWatermark(Surface& surface, const Label& mark, Origin origin) {
  surface.SetFont(mark.GetFont());
  surface.SetForeColor(mark.ForeColor());
  PrintCentred(surface, mark, mark.Caption(), origin);
}

void PaintFramed(Surface& target, const Picture& white, const PictureFrame& place,
                 const StoredPicture& stored, Origin origin) {
  const PixelScale frame_scale(place.frame);
  const PixelScale image_scale(place.image);
  const Surface& frame = place.frame;
  const double left = frame.Left() + origin.x;
  const double top = frame.Top() + origin.y;
  target.PaintPicture(white, left, top, frame.Width(), frame.Height());
  if (!stored.has_picture) return;
  const ClipInput input{ToInt16(frame.Width()),
                        ToInt16(frame.Height()),
                        ToInt16(place.image.Width()),
                        ToInt16(place.image.Height()),
                        stored.outline,
                        stored.left,
                        stored.top};
  const Clip clip = ClipPicture(input, place.hug, place.slack);
  if (!clip.paint) return;
  target.PaintPicture(place.image.Picture(), left + clip.x, top + clip.y, clip.width, clip.height,
                      clip.source_x, clip.source_y, clip.width, clip.height);
}

void PaintPictureArea(Surface& target, const Picture& white, const PictureFrame& place,
                      const Recordset& record, Origin origin) {
  if (!record["UsePicture"].BoolOrFalse()) return;
  const bool outlined = record["UseFrame"].BoolOrFalse();
  PaintFramed(target, white, place,
              {!record["Picture"].IsNull(), outlined ? 1 : 0, record["PicLeft"].NumberOr(0),
               record["PicTop"].NumberOr(0)},
              origin);
  if (outlined) OutlineFrame(target, place.frame, origin);
}

}  // namespace orv
