#include "forms/Playing.h"

#include <QCache>
#include <QCryptographicHash>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "forms/inner/Palette.h"
#include "forms/inner/TextFace.h"
#include "imaging/Scaler.h"

namespace orv {
namespace {

// Texts are set in a face so many times the size and scaled down, so that no letter's advance is rounded.
constexpr int kFaceScale = 64;
// Between words, of the width of the face's own.
constexpr double kLeastSpace = 0.7;
// Of a finer picture that can have any number of dots, on paper: grain gains nothing from more.
constexpr double kTimesOnPaper = 4;
constexpr qsizetype kKeptBytes = 48'000'000;

void FillOutline(QPainter& painter, const QRect& box, const QColor& ink) {
  painter.fillRect(box.left(), box.top(), box.width(), 1, ink);
  painter.fillRect(box.left(), box.bottom(), box.width(), 1, ink);
  painter.fillRect(box.left(), box.top(), 1, box.height(), ink);
  painter.fillRect(box.right(), box.top(), 1, box.height(), ink);
}

class PixelPlayer {
 public:
  explicit PixelPlayer(QImage& target) : target_(target) {}

  void operator()(const Drawing::Fill& fill) const {
    QPainter(&target_).fillRect(fill.box, ToQColor(fill.colour));
  }
  void operator()(const Drawing::Outline& outline) const {
    QPainter painter(&target_);
    FillOutline(painter, outline.box, ToQColor(outline.colour));
  }
  void operator()(const Drawing::Paint& paint) const {
    QPainter(&target_).drawImage(paint.target, paint.picture.Image(), paint.source);
  }
  void operator()(const Drawing::Fine& fine) const {
    QPainter(&target_).drawImage(0, 0, fine.picture.Image());
  }
  void operator()(const Drawing::Turned& turned) const {
    const QTransform turn = QTransform().rotate(turned.clockwise ? 90 : -90);
    QPainter(&target_).drawImage(0, 0, turned.picture.Image().transformed(turn));
  }
  void operator()(const Drawing::Text& text) const {
    TextFace::For(text.font).Draw(target_, text.x, text.y, text.line, text.colour);
  }

 private:
  QImage& target_;
};

// The same operation with the drawings of its pictures played.
Drawing::Operation Played(Drawing::Operation operation) {
  const auto play = [](auto& step) {
    if constexpr (requires { step.picture; }) {
      if (step.picture.HowDrawn()) step.picture = PlayDrawing(*step.picture.HowDrawn());
    }
  };
  std::visit(play, operation);
  return operation;
}

// Letters can be wider at their own advances than on whole pixels. A word that would come too near to the
// next one is made so much narrower that the two can be told apart.
double Narrowing(const QFontMetricsF& metrics, const QString& word, double room) {
  const double most = room - kLeastSpace * metrics.horizontalAdvance(QChar(u' '));
  const double width = metrics.horizontalAdvance(word);
  return most > 0 && width > most ? most / width : 1;
}

}  // namespace

// An image, and its place in dots of the picture that it shows a part of.
struct EnlargedPictures::Placed {
  QImage image;
  QRectF place;
};

namespace {

// A part of a finer picture, in its own dots unless it has more than `most` for one of the picture's; in
// `asked` of them where any number can be had.
EnlargedPictures::Placed FinerPart(const Drawing::Fine& fine, const QRect& part, double asked, double most) {
  const Picture finer = fine.finer(asked);
  const QImage& whole = finer.IsEmpty() ? fine.picture.Image() : finer.Image();
  const double across = double(whole.width()) / fine.picture.Width();
  const double down = double(whole.height()) / fine.picture.Height();
  const QRectF wanted(part.x() * across, part.y() * down, part.width() * across, part.height() * down);
  const QRect dots = wanted.toAlignedRect() & whole.rect();
  const QRectF place(dots.x() / across, dots.y() / down, dots.width() / across, dots.height() / down);
  const Picture own(whole.copy(dots));
  if (across <= most && down <= most) return {own.Image(), place};
  const auto fewer = [most](double room, int all) {
    return std::clamp(static_cast<int>(std::ceil(room * most)), 1, all);
  };
  return {Scaler(own).Scale(fewer(place.width(), dots.width()), fewer(place.height(), dots.height())).Image(),
          place};
}

// What WithFiner has told of a picture; null for any other.
const Drawing::Fine* FineOf(const Picture& picture) {
  const Drawing* const drawing = picture.HowDrawn().get();
  if (drawing == nullptr || drawing->operations.size() != 1) return nullptr;
  return std::get_if<Drawing::Fine>(&drawing->operations.front());
}

// A picture that nobody composed.
bool IsStored(const Picture& picture) {
  return picture.HowDrawn() == nullptr || FineOf(picture) != nullptr;
}

class LargePlayer {
 public:
  LargePlayer(QPainter& painter, EnlargedPictures* pictures) : painter_(painter), pictures_(pictures) {}

  void Play(const Drawing& drawing) const {
    painter_.save();
    painter_.setClipRect(QRect(0, 0, drawing.width, drawing.height), Qt::IntersectClip);
    for (std::size_t i = 0; i < drawing.operations.size(); ++i) {
      if (i + 1 < drawing.operations.size()) PaintUnder(drawing.operations[i], drawing.operations[i + 1]);
      std::visit(*this, drawing.operations[i]);
    }
    painter_.restore();
  }

  void operator()(const Drawing::Fill& fill) const { painter_.fillRect(fill.box, ToQColor(fill.colour)); }
  void operator()(const Drawing::Outline& outline) const {
    FillOutline(painter_, outline.box, ToQColor(outline.colour));
  }
  void operator()(const Drawing::Paint& paint) const {
    if (paint.source.isEmpty() || paint.target.isEmpty()) return;
    painter_.save();
    painter_.setClipRect(paint.target, Qt::IntersectClip);
    painter_.translate(paint.target.topLeft());
    painter_.scale(paint.target.width() / paint.source.width(),
                   paint.target.height() / paint.source.height());
    painter_.translate(-paint.source.topLeft());
    Show(paint.picture, paint.source.toAlignedRect());
    painter_.restore();
  }
  void operator()(const Drawing::Fine& fine) const {
    constexpr double kRounding = 1e-3;
    const QRectF clip = painter_.clipBoundingRect().adjusted(kRounding, kRounding, -kRounding, -kRounding);
    const QRect part = clip.toAlignedRect() & fine.picture.Image().rect();
    if (part.isEmpty()) return;
    const double device = std::sqrt(std::abs(painter_.deviceTransform().determinant()));
    // The painter brings at most half as many dots to their places without loss.
    const EnlargedPictures::Placed placed =
        pictures_ != nullptr ? pictures_->Of(fine, part, device) : FinerPart(fine, part, device, 2 * device);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.drawImage(placed.place, placed.image);
  }
  void operator()(const Drawing::Turned& turned) const {
    const Picture& picture = turned.picture;
    painter_.save();
    painter_.setTransform(turned.clockwise ? QTransform(0, 1, -1, 0, picture.Height(), 0)
                                           : QTransform(0, -1, 1, 0, 0, picture.Width()),
                          true);
    Show(picture, picture.Image().rect());
    painter_.restore();
  }
  void operator()(const Drawing::Text& text) const {
    const TextFace& face = TextFace::For(text.font);
    painter_.setFont(face.Enlarged(kFaceScale));
    painter_.setPen(ToQColor(text.colour));
    const QFontMetricsF metrics(painter_.font());
    for (std::size_t i = 0; i < text.words.size(); ++i) {
      const Drawing::Word& word = text.words[i];
      const QString letters = text.line.mid(word.start, word.length);
      painter_.save();
      painter_.translate(word.x, text.y + face.Ascent());
      painter_.scale(1.0 / kFaceScale, 1.0 / kFaceScale);
      if (i + 1 < text.words.size()) {
        const double room = (text.words[i + 1].x - word.x) * kFaceScale;
        painter_.scale(Narrowing(metrics, letters, room), 1);
      }
      painter_.drawText(QPointF(0, 0), letters);
      painter_.restore();
    }
  }

 private:
  // Readers of PDF files put a picture on whole dots of theirs, and the ground would show between it and the
  // outline that is drawn next. What is painted there too, larger, the outline covers.
  void PaintUnder(const Drawing::Operation& operation, const Drawing::Operation& next) const {
    constexpr double kUnder = 0.75;  // of the outline's width
    const auto* const paint = std::get_if<Drawing::Paint>(&operation);
    const auto* const outline = std::get_if<Drawing::Outline>(&next);
    if (pictures_ == nullptr || paint == nullptr || outline == nullptr || !IsStored(paint->picture)) return;
    const QRectF inside = QRectF(outline->box).adjusted(1, 1, -1, -1);
    if (!inside.intersects(paint->target)) return;
    const auto more = [](double edge, double line) { return edge == line ? kUnder : 0; };
    const QRectF target = paint->target.adjusted(
        -more(paint->target.left(), inside.left()), -more(paint->target.top(), inside.top()),
        more(paint->target.right(), inside.right()), more(paint->target.bottom(), inside.bottom()));
    if (target != paint->target) (*this)(Drawing::Paint{paint->picture, target, paint->source});
  }

  // The part `seen` of a picture, at its place in it. No dot around it is looked at: it may be undecoded.
  void Show(const Picture& picture, const QRect& seen) const {
    if (picture.HowDrawn()) return Play(*picture.HowDrawn());
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRect part = seen & picture.Image().rect();
    if (pictures_ != nullptr) {
      painter_.drawImage(QRectF(part), pictures_->Of(picture, part));
    } else {
      painter_.drawImage(part, picture.Image().copy(part));
    }
  }

  QPainter& painter_;
  EnlargedPictures* pictures_;
};

QImage Times(const QImage& image, int times) {
  if (times <= 1) return image;
  return image.scaled(image.size() * times, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

class Digester {
 public:
  void Add(const Drawing& drawing) {
    Numbers(drawing.width, drawing.height);
    for (const Drawing::Operation& operation : drawing.operations) {
      Numbers(operation.index());
      std::visit(*this, operation);
    }
  }
  QByteArray Result() const { return hash_.result().toHex(); }

  void operator()(const Drawing::Fill& fill) { Box(fill.box, fill.colour); }
  void operator()(const Drawing::Outline& outline) { Box(outline.box, outline.colour); }
  void operator()(const Drawing::Paint& paint) {
    for (const QRectF& box : {paint.target, paint.source}) {
      Numbers(box.x(), box.y(), box.width(), box.height());
    }
    Shown(paint.picture, paint.source.toAlignedRect());
  }
  void operator()(const Drawing::Fine& fine) {
    Numbers(fine.times);
    Shown(fine.picture, fine.picture.Image().rect());
  }
  void operator()(const Drawing::Turned& turned) {
    Numbers(turned.clockwise);
    Shown(turned.picture, turned.picture.Image().rect());
  }
  void operator()(const Drawing::Text& text) {
    Numbers(text.font.Size, text.font.Bold, text.font.Italic, text.colour, text.x, text.y, text.line.size());
    hash_.addData((text.font.Name + text.line).toUtf8());
  }

 private:
  template <class... Number>
  void Numbers(Number... numbers) {
    const double values[] = {static_cast<double>(numbers)...};
    hash_.addData(QByteArray::fromRawData(reinterpret_cast<const char*>(values), sizeof values));
  }
  void Box(const QRect& box, Colour colour) { Numbers(box.x(), box.y(), box.width(), box.height(), colour); }
  void Shown(const Picture& picture, const QRect& part) {
    if (picture.HowDrawn() != nullptr) return Add(*picture.HowDrawn());
    const QImage image = picture.Image().copy(part).convertToFormat(QImage::Format_ARGB32);
    Numbers(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
      hash_.addData(QByteArray::fromRawData(reinterpret_cast<const char*>(image.constScanLine(y)),
                                            image.width() * qsizetype{4}));
    }
  }

  QCryptographicHash hash_{QCryptographicHash::Sha256};
};

bool RunsRightToLeft(const QString& line) {
  return std::ranges::any_of(
      line, [](QChar c) { return c.direction() == QChar::DirR || c.direction() == QChar::DirAL; });
}

}  // namespace

void PlayOperation(const Drawing::Operation& operation, QImage& target) {
  if (!target.isNull()) std::visit(PixelPlayer(target), operation);
}

Picture PlayDrawing(const Drawing& drawing) {
  QImage image(drawing.width, drawing.height, QImage::Format_RGB32);
  image.fill(Qt::white);
  for (const Drawing::Operation& operation : drawing.operations) PlayOperation(Played(operation), image);
  return Picture(image);
}

struct EnlargedPictures::Impl {
  int times;
  double share;
  QCache<std::pair<qint64, QRect>, Placed> kept{kKeptBytes};

  template <class Make>
  Placed Of(const Picture& picture, const QRect& part, Make make) {
    const std::pair key{picture.Image().cacheKey(), part};
    if (const Placed* const known = kept.object(key)) return *known;
    const Placed placed = make();
    kept.insert(key, new Placed(placed), placed.image.sizeInBytes());
    return placed;
  }
};

EnlargedPictures::EnlargedPictures(int times, double share) : impl_(new Impl{times, share}) {}
EnlargedPictures::~EnlargedPictures() = default;

QImage EnlargedPictures::Of(const Picture& picture, const QRect& part) {
  const auto make = [&]() -> Placed { return {Times(picture.Image().copy(part), impl_->times), part}; };
  return impl_->Of(picture, part, make).image;
}

EnlargedPictures::Placed EnlargedPictures::Of(const Drawing::Fine& fine, const QRect& part, double device) {
  return impl_->Of(fine.picture, part, [&] {
    Placed placed =
        FinerPart(fine, part, kTimesOnPaper, std::max<double>(impl_->times, device * impl_->share));
    const double dots = placed.image.width() / placed.place.width();
    placed.image = Times(placed.image, static_cast<int>(std::ceil(impl_->times / dots - 0.01)));
    return placed;
  });
}

Picture WithFiner(Drawing::Fine fine) {
  const Picture picture = fine.picture;
  // What shows through lies on a ground that the drawing doesn't know.
  if (picture.IsEmpty() || picture.Image().hasAlphaChannel()) return picture;
  return Picture(picture.Image(),
                 std::make_shared<Drawing>(Drawing{picture.Width(), picture.Height(), {std::move(fine)}}));
}

double FinenessOf(const Picture& picture) {
  const Drawing::Fine* const fine = FineOf(picture);
  if (fine == nullptr) return 1;
  return fine->times > 0 ? fine->times : std::numeric_limits<double>::infinity();
}

QByteArray DigestOf(const Drawing& drawing) {
  Digester digester;
  digester.Add(drawing);
  return digester.Result();
}

void PlayEnlarged(const Drawing& drawing, QPainter& painter, EnlargedPictures* pictures) {
  LargePlayer(painter, pictures).Play(drawing);
}

Picture Enlarged(const Picture& picture, int times) {
  QImage image(picture.Image().size() * times, QImage::Format_RGB32);
  if (image.isNull()) return {};
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                         QPainter::SmoothPixmapTransform);
  painter.scale(times, times);
  if (picture.HowDrawn()) {
    PlayEnlarged(*picture.HowDrawn(), painter);
  } else {
    painter.drawImage(0, 0, picture.Image());
  }
  painter.end();
  return Picture(image);
}

QRect BodyOf(const Drawing::Text& text) {
  const TextFace& face = TextFace::For(text.font);
  return {text.x, text.y, face.Width(text.line.trimmed()), face.Ascent()};
}

std::vector<Drawing::Word> PlaceWords(const Font& font, const QString& line, int x) {
  if (RunsRightToLeft(line)) return {{0, static_cast<int>(line.size()), x}};
  const TextFace& face = TextFace::For(font);
  std::vector<Drawing::Word> words;
  for (int start = 0; start < line.size();) {
    int end = start;
    while (end < line.size() && !line[end].isSpace()) ++end;
    if (end > start) words.push_back({start, end - start, x + face.Width(QStringView(line).left(start))});
    start = end + 1;
  }
  return words;
}

}  // namespace orv
