#include "imaging/inner/WmfPlayer.h"

#include <algorithm>
#include <cmath>

#include "imaging/inner/Dib.h"
#include "imaging/inner/WmfFields.h"

namespace orv {
namespace {

// Together they bound what the table of objects can hold.
constexpr std::size_t kMaxObjects = 2048;
constexpr qint64 kMaxPatternPixels = qint64{256} * 256;

enum RasterOperation : quint32 {
  kBlackness = 0x00000042,
  kWhiteness = 0x00FF0062,
  kPatCopy = 0x00F00021,
  kSourceAnd = 0x008800C6,
  kSourcePaint = 0x00EE0086,
  kSourceInvert = 0x00660046,
  kDestination = 0x00AA0029,
};

// A pair of "and" with a mask and "or" with a picture cuts a picture out: white leaves the ground in the
// first and black in the second.
WmfBlend BlendOf(quint32 operation) {
  if (operation == kSourceAnd) return WmfBlend::kMaskWhite;
  if (operation == kSourcePaint || operation == kSourceInvert) return WmfBlend::kMaskBlack;
  return WmfBlend::kCopy;
}

}  // namespace

void WmfPlayer::Play(const WmfRecord& record) {
  ByteReader in(record.parameters);
  for (const Step step :
       {&WmfPlayer::PlayLines, &WmfPlayer::PlayShape, &WmfPlayer::PlayObject, &WmfPlayer::PlayState,
        &WmfPlayer::PlayWindow, &WmfPlayer::PlayText, &WmfPlayer::PlayBitmap}) {
    if ((this->*step)(record.function, &in)) return;
  }
}

bool WmfPlayer::PlayWindow(quint16 function, ByteReader* in) {
  if (!owns_window_) return false;
  WmfCanvas::State& state = canvas_.state;
  switch (function) {
    case WmfFunction::kSetWindowOrg:
      state.origin = ReadPoint(in);
      return true;
    case WmfFunction::kOffsetWindowOrg:
      state.origin += ReadPoint(in);
      return true;
    case WmfFunction::kSetWindowExt: {
      const QPointF extent = ReadPoint(in);
      if (extent.x() != 0 && extent.y() != 0) state.extent = {extent.x(), extent.y()};
      return true;
    }
    case WmfFunction::kScaleWindowExt: {
      const double y_divisor = in->I16();
      const double y = state.extent.height() * in->I16() / y_divisor;
      const double x_divisor = in->I16();
      const double x = state.extent.width() * in->I16() / x_divisor;
      const auto usable = [](double v) {
        return std::isfinite(v) && std::abs(v) >= 1e-3 && std::abs(v) < 1e9;
      };
      if (usable(x) && usable(y)) state.extent = {x, y};
      return true;
    }
    default:
      return false;
  }
}

bool WmfPlayer::PlayState(quint16 function, ByteReader* in) {
  WmfCanvas::State& state = canvas_.state;
  switch (function) {
    case WmfFunction::kSaveDC:
      canvas_.Save();
      return true;
    case WmfFunction::kRestoreDC:
      canvas_.Restore(in->I16());
      return true;
    case WmfFunction::kSetBkMode:
      state.opaque_back = in->U16() != 1;
      return true;
    case WmfFunction::kSetRop2:
      state.draws = in->U16() != 11;
      return true;
    case WmfFunction::kSetPolyFillMode:
      state.fill_rule = in->U16() == 2 ? Qt::WindingFill : Qt::OddEvenFill;
      return true;
    case WmfFunction::kSetTextAlign:
      state.align = in->U16();
      return true;
    case WmfFunction::kSetBkColor:
      state.back_colour = ReadColour(in);
      return true;
    case WmfFunction::kSetTextColor:
      state.text_colour = ReadColour(in);
      return true;
    case WmfFunction::kSelectClipRegion:
      canvas_.ResetClip();
      return true;
    case WmfFunction::kIntersectClipRect:
      canvas_.IntersectClip(ReadBox(in));
      return true;
    default:
      return false;
  }
}

// An object takes the lowest free place, and records name it by that.
void WmfPlayer::Add(WmfObject object) {
  while (first_free_ < objects_.size() && !std::holds_alternative<std::monostate>(objects_[first_free_])) {
    ++first_free_;
  }
  if (first_free_ >= kMaxObjects) BadPicture();
  if (first_free_ == objects_.size()) objects_.emplace_back();
  objects_[first_free_++] = std::move(object);
}

bool WmfPlayer::PlayObject(quint16 function, ByteReader* in) {
  switch (function) {
    case WmfFunction::kCreatePenIndirect:
      Add(ReadPen(in));
      return true;
    case WmfFunction::kCreateBrushIndirect:
      Add(ReadBrush(in));
      return true;
    case WmfFunction::kCreateFontIndirect:
      Add(ReadFont(in));
      return true;
    case WmfFunction::kDibCreatePatternBrush:
      Add(ReadPatternBrush(in));
      return true;
    case WmfFunction::kCreatePatternBrush:
      Add(QBrush(Qt::gray));
      return true;
    case WmfFunction::kCreatePalette:
    case WmfFunction::kCreateRegion:
      Add(WmfPlaceholder{});
      return true;
    case WmfFunction::kSelectObject: {
      const std::size_t place = in->U16();
      if (place < objects_.size()) canvas_.Select(objects_[place]);
      return true;
    }
    case WmfFunction::kDeleteObject: {
      const std::size_t place = in->U16();
      if (place < objects_.size()) objects_[place] = std::monostate{};
      first_free_ = std::min(first_free_, place);
      return true;
    }
    default:
      return false;
  }
}

QPolygonF WmfPlayer::ReadPoints(ByteReader* in, int count) {
  if (qsizetype{4} * count > in->Left()) BadPicture();
  QPolygonF points;
  points.reserve(count);
  for (int i = 0; i < count; ++i) {
    const double x = in->I16();
    points << QPointF(x, in->I16());
  }
  return points;
}

std::vector<QPolygonF> WmfPlayer::ReadPolygons(ByteReader* in) {
  std::vector<int> counts(in->U16());
  for (int& count : counts) count = in->U16();
  std::vector<QPolygonF> polygons;
  polygons.reserve(counts.size());
  for (const int count : counts) polygons.push_back(ReadPoints(in, count));
  return polygons;
}

bool WmfPlayer::PlayLines(quint16 function, ByteReader* in) {
  switch (function) {
    case WmfFunction::kMoveTo:
      canvas_.state.position = ReadPoint(in);
      return true;
    case WmfFunction::kLineTo:
      canvas_.LineTo(ReadPoint(in));
      return true;
    case WmfFunction::kPolyline:
      canvas_.Polyline(ReadPoints(in, in->U16()));
      return true;
    case WmfFunction::kPolygon:
      canvas_.Polygons({ReadPoints(in, in->U16())});
      return true;
    case WmfFunction::kPolyPolygon:
      canvas_.Polygons(ReadPolygons(in));
      return true;
    default:
      return false;
  }
}

bool WmfPlayer::PlayShape(quint16 function, ByteReader* in) {
  const auto arc = [&](WmfCanvas::Arc kind) {
    const QPointF end = ReadPoint(in);
    const QPointF start = ReadPoint(in);
    canvas_.DrawArc(kind, ReadBox(in), start, end);
  };
  switch (function) {
    case WmfFunction::kRectangle:
      canvas_.Rectangle(ReadBox(in), 0, 0);
      return true;
    case WmfFunction::kRoundRect: {
      const QPointF corner = ReadPoint(in);
      canvas_.Rectangle(ReadBox(in), corner.x(), corner.y());
      return true;
    }
    case WmfFunction::kEllipse:
      canvas_.Ellipse(ReadBox(in));
      return true;
    case WmfFunction::kArc:
      arc(WmfCanvas::Arc::kOpen);
      return true;
    case WmfFunction::kPie:
      arc(WmfCanvas::Arc::kPie);
      return true;
    case WmfFunction::kChord:
      arc(WmfCanvas::Arc::kChord);
      return true;
    case WmfFunction::kSetPixel: {
      const QColor colour = ReadColour(in);
      canvas_.Pixel(ReadPoint(in), colour);
      return true;
    }
    default:
      return false;
  }
}

void WmfPlayer::TextOut(ByteReader* in) {
  const int length = in->U16();
  const QString text = ReadText(in, length);
  in->Skip(length % 2);
  canvas_.Text(ReadPoint(in), text, {});
}

void WmfPlayer::ExtTextOut(ByteReader* in) {
  constexpr int kOpaque = 2;
  constexpr int kClipped = 4;
  const QPointF at = ReadPoint(in);
  const int length = in->U16();
  const int options = in->U16();
  QRectF box;
  if ((options & (kOpaque | kClipped)) != 0) {
    const double left = in->I16();
    const double top = in->I16();
    const double right = in->I16();
    box = QRectF(QPointF(left, top), QPointF(right, in->I16()));
  }
  const QString text = ReadText(in, length);
  if (length % 2 == 1 && in->Left() > 0) in->Skip(1);
  std::vector<double> advances;
  if (in->Left() >= qsizetype{2} * length) {
    for (int i = 0; i < length; ++i) advances.push_back(in->I16());
  }
  if ((options & kOpaque) != 0) canvas_.Fill(box, canvas_.state.back_colour);
  const QRectF clip = canvas_.state.clip;
  if ((options & kClipped) != 0) canvas_.IntersectClip(box);
  canvas_.Text(at, text, advances);
  if ((options & kClipped) != 0) canvas_.SetClip(clip);
}

bool WmfPlayer::PlayText(quint16 function, ByteReader* in) {
  switch (function) {
    case WmfFunction::kTextOut:
      TextOut(in);
      return true;
    case WmfFunction::kExtTextOut:
      ExtTextOut(in);
      return true;
    default:
      return false;
  }
}

QImage WmfPlayer::ReadDib(ByteReader* in) {
  const Dib dib(in->TakeRest(), 0);
  constexpr double kDecodeWork = 4;
  canvas_.Charge(kDecodeWork * double(dib.Width()) * double(dib.Height()));
  return dib.Decode();
}

QBrush WmfPlayer::ReadPatternBrush(ByteReader* in) {
  in->Skip(4);  // style and the use of the palette
  const QImage pattern = ReadDib(in);
  if (qint64{pattern.width()} * pattern.height() > kMaxPatternPixels) BadPicture();
  return QBrush(pattern);
}

void WmfPlayer::FillByOperation(quint32 operation, const QRectF& target) {
  if (operation == kBlackness) canvas_.Fill(target, Qt::black);
  if (operation == kWhiteness) canvas_.Fill(target, Qt::white);
  if (operation == kPatCopy) canvas_.Fill(target, canvas_.state.brush);
}

// The two records that come with a bitmap or without one; its origin is its upper left corner.
void WmfPlayer::Blit(ByteReader* in, bool stretches) {
  const quint32 operation = in->U32();
  QPointF source_size;
  if (stretches) source_size = ReadPoint(in);
  const QPointF source = ReadPoint(in);
  constexpr qsizetype kBoxBytes = 8;
  const bool has_bitmap = in->Left() > kBoxBytes + 2;
  if (!has_bitmap && in->Left() > kBoxBytes) in->Skip(2);
  const QRectF target = ReadSizedBox(in);
  if (!stretches) source_size = {target.width(), target.height()};
  if (!has_bitmap || operation == kBlackness || operation == kWhiteness) {
    FillByOperation(operation, target);
  } else if (operation != kDestination) {
    const QRect part(source.toPoint(), QSizeF(source_size.x(), source_size.y()).toSize());
    canvas_.Bitmap(target, ReadDib(in), part.normalized(), BlendOf(operation));
  }
}

// The origin is the lower left corner.
void WmfPlayer::StretchDib(ByteReader* in) {
  const quint32 operation = in->U32();
  in->Skip(2);  // use of the palette
  const QRectF source = ReadSizedBox(in).normalized();
  const QRectF target = ReadSizedBox(in);
  const QImage bitmap = ReadDib(in);
  const double top = bitmap.height() - source.y() - source.height();
  canvas_.Bitmap(target, bitmap, QRectF(source.x(), top, source.width(), source.height()).toRect(),
                 BlendOf(operation));
}

// Of a bitmap in bands, only what comes in one piece.
void WmfPlayer::DibToDevice(ByteReader* in) {
  in->Skip(6);  // use of the palette, the band
  const QPointF source = ReadPoint(in);
  const QRectF target = ReadSizedBox(in);
  const QImage bitmap = ReadDib(in);
  const double top = bitmap.height() - source.y() - target.height();
  canvas_.Bitmap(target, bitmap, QRectF(source.x(), top, target.width(), target.height()).toRect(),
                 WmfBlend::kCopy);
}

bool WmfPlayer::PlayBitmap(quint16 function, ByteReader* in) {
  switch (function) {
    case WmfFunction::kPatBlt: {
      const quint32 operation = in->U32();
      FillByOperation(operation, ReadSizedBox(in));
      return true;
    }
    case WmfFunction::kDibBitBlt:
      Blit(in, false);
      return true;
    case WmfFunction::kDibStretchBlt:
      Blit(in, true);
      return true;
    case WmfFunction::kStretchDib:
      StretchDib(in);
      return true;
    case WmfFunction::kSetDibToDev:
      DibToDevice(in);
      return true;
    default:
      return false;
  }
}

}  // namespace orv
