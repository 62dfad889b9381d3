#pragma once

#include <QByteArrayView>
#include <vector>

#include "imaging/inner/ByteReader.h"
#include "imaging/inner/WmfCanvas.h"

namespace orv {

// A record of a metafile: what it does, and its parameters.
struct WmfRecord {
  quint16 function = 0;
  QByteArrayView parameters;
};

namespace WmfFunction {
enum : quint16 {
  kEnd = 0x0000,
  kSaveDC = 0x001E,
  kRealizePalette = 0x0035,
  kCreatePalette = 0x00F7,
  kSetBkMode = 0x0102,
  kSetMapMode = 0x0103,
  kSetRop2 = 0x0104,
  kSetPolyFillMode = 0x0106,
  kRestoreDC = 0x0127,
  kSelectClipRegion = 0x012C,
  kSelectObject = 0x012D,
  kSetTextAlign = 0x012E,
  kDibCreatePatternBrush = 0x0142,
  kDeleteObject = 0x01F0,
  kCreatePatternBrush = 0x01F9,
  kSetBkColor = 0x0201,
  kSetTextColor = 0x0209,
  kSetWindowOrg = 0x020B,
  kSetWindowExt = 0x020C,
  kOffsetWindowOrg = 0x020F,
  kLineTo = 0x0213,
  kMoveTo = 0x0214,
  kCreatePenIndirect = 0x02FA,
  kCreateFontIndirect = 0x02FB,
  kCreateBrushIndirect = 0x02FC,
  kPolygon = 0x0324,
  kPolyline = 0x0325,
  kScaleWindowExt = 0x0410,
  kIntersectClipRect = 0x0416,
  kEllipse = 0x0418,
  kRectangle = 0x041B,
  kSetPixel = 0x041F,
  kTextOut = 0x0521,
  kPolyPolygon = 0x0538,
  kRoundRect = 0x061C,
  kPatBlt = 0x061D,
  kCreateRegion = 0x06FF,
  kArc = 0x0817,
  kPie = 0x081A,
  kChord = 0x0830,
  kDibBitBlt = 0x0940,
  kExtTextOut = 0x0A32,
  kDibStretchBlt = 0x0B41,
  kSetDibToDev = 0x0D33,
  kStretchDib = 0x0F43,
};
}  // namespace WmfFunction

// Plays records onto a canvas; those of a kind that it doesn't know are passed over. RuntimeError 481 for
// a record that is too short for what it holds.
class WmfPlayer {
 public:
  // `owns_window` is false where the file's own window was told by nothing but its drawing.
  WmfPlayer(WmfCanvas* canvas, bool owns_window) : canvas_(*canvas), owns_window_(owns_window) {}

  void Play(const WmfRecord& record);

 private:
  using Step = bool (WmfPlayer::*)(quint16 function, ByteReader* in);
  bool PlayWindow(quint16 function, ByteReader* in);
  bool PlayState(quint16 function, ByteReader* in);
  bool PlayObject(quint16 function, ByteReader* in);
  bool PlayShape(quint16 function, ByteReader* in);
  bool PlayLines(quint16 function, ByteReader* in);
  bool PlayText(quint16 function, ByteReader* in);
  bool PlayBitmap(quint16 function, ByteReader* in);

  void TextOut(ByteReader* in);
  void ExtTextOut(ByteReader* in);
  void Blit(ByteReader* in, bool stretches);
  void StretchDib(ByteReader* in);
  void DibToDevice(ByteReader* in);
  void FillByOperation(quint32 operation, const QRectF& target);
  QImage ReadDib(ByteReader* in);
  QBrush ReadPatternBrush(ByteReader* in);
  QPolygonF ReadPoints(ByteReader* in, int count);
  std::vector<QPolygonF> ReadPolygons(ByteReader* in);
  void Add(WmfObject object);

  WmfCanvas& canvas_;
  bool owns_window_;
  std::vector<WmfObject> objects_;  // monostate: a free place
  std::size_t first_free_ = 0;      // no free place lies before it
};

}  // namespace orv
