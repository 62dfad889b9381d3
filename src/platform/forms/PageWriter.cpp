#include "forms/PageWriter.h"

#include <QFile>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <vector>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "forms/Playing.h"
#include "forms/inner/PageBoxes.h"
#include "forms/inner/Palette.h"
#include "forms/inner/TextFace.h"

namespace orv {
namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kMmPerPoint = kMmPerInch / 72;
constexpr int kResolution = 1200;  // units an inch in the file
// A picture of 96 dots an inch comes to 288: few printers smooth what they enlarge.
constexpr int kPictureTimes = 3;
constexpr double kPictureShare = 0.5;  // of a unit: no printer shows more than 600 dots an inch of a picture

// A file that remembers that something could not be written: the PDF writer does not ask.
class CheckedFile : public QFile {
 public:
  using QFile::QFile;
  int Failure() const { return failure_; }

 protected:
  qint64 writeData(const char* bytes, qint64 count) override {
    errno = 0;
    const qint64 written = QFile::writeData(bytes, count);
    if (written != count && failure_ == 0) failure_ = errno != 0 ? errno : EIO;
    return written;
  }

 private:
  int failure_ = 0;
};

bool IsOneColour(const QImage& image) {
  const QRgb first = image.pixel(0, 0);
  for (int y = 0; y < image.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    if (!std::all_of(row, row + image.width(), [first](QRgb pixel) { return pixel == first; })) return false;
  }
  return true;
}

// Stretches a part of an image without a transition between its dots.
void Stretch(QPainter& painter, const QRectF& target, const QImage& image) {
  if (IsOneColour(image)) {
    painter.fillRect(target, QColor(image.pixel(0, 0)));
  } else {
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(target, image);
  }
}

// What lies around a part, made from its outermost dots. In dots, from the part's corner. It goes on under
// the part by a dot, so that no seam shows between them.
void DrawBleed(QPainter& painter, const QImage& part, double bleed) {
  const int width = part.width();
  const int height = part.height();
  const double wide = bleed + 1;
  const struct {
    QRect dots;
    QRectF place;
  } strips[] = {
      {{0, 0, width, 1}, QRectF(0, -bleed, width, wide)},
      {{0, height - 1, width, 1}, QRectF(0, height - 1, width, wide)},
      {{0, 0, 1, height}, QRectF(-bleed, 0, wide, height)},
      {{width - 1, 0, 1, height}, QRectF(width - 1, 0, wide, height)},
      {{0, 0, 1, 1}, QRectF(-bleed, -bleed, wide, wide)},
      {{width - 1, 0, 1, 1}, QRectF(width - 1, -bleed, wide, wide)},
      {{0, height - 1, 1, 1}, QRectF(-bleed, height - 1, wide, wide)},
      {{width - 1, height - 1, 1, 1}, QRectF(width - 1, height - 1, wide, wide)},
  };
  for (const auto& strip : strips) Stretch(painter, strip.place, part.copy(strip.dots));
}

}  // namespace

struct PageWriter::Impl {
  CheckedFile file;
  std::unique_ptr<QPdfWriter> writer;
  QPainter painter;
  QSizeF page;                   // in points
  std::vector<PageBoxes> boxes;  // of each page
  EnlargedPictures pictures{kPictureTimes, kPictureShare};
};

PageWriter::PageWriter(const QString& path, const QString& title) : impl_(std::make_unique<Impl>()) {
  impl_->file.setFileName(path);
  errno = 0;
  if (!impl_->file.open(QIODevice::WriteOnly | QIODevice::Truncate)) ThrowFileError(errno);
  impl_->writer = std::make_unique<QPdfWriter>(&impl_->file);
  impl_->writer->setResolution(kResolution);
  impl_->writer->setTitle(title);
  impl_->writer->setCreator(QStringLiteral("Varnholt Card Set Creator"));
}

PageWriter::~PageWriter() = default;

double PageWriter::WholePoints(double size) {
  // A rounding error is no further point.
  return std::ceil(size / kMmPerPoint - 0.01) * kMmPerPoint;
}

void PageWriter::NewPage(double width, double height) {
  const QSizeF points(std::round(width / kMmPerPoint), std::round(height / kMmPerPoint));
  QPdfWriter& writer = *impl_->writer;
  const QPageSize size(points, QPageSize::Point, QString(), QPageSize::ExactMatch);
  writer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, {}, QPageLayout::Point));
  if (impl_->painter.isActive()) {
    writer.newPage();
  } else if (!impl_->painter.begin(&writer)) {
    throw RuntimeError(kErrPathFileAccess);
  }
  impl_->page = points;
  impl_->boxes.emplace_back();
  impl_->painter.resetTransform();
  impl_->painter.scale(kResolution / kMmPerInch, kResolution / kMmPerInch);
}

void PageWriter::Cut(const PageCut& cut) {
  const auto box = [&](double more) {
    const QRectF wanted((cut.x - more) / kMmPerPoint,
                        impl_->page.height() - (cut.y + cut.height + more) / kMmPerPoint,
                        (cut.width + 2 * more) / kMmPerPoint, (cut.height + 2 * more) / kMmPerPoint);
    return wanted & QRectF(QPointF(), impl_->page);
  };
  impl_->boxes.back() = {box(0), box(cut.bleed)};
}

void PageWriter::Draw(const Picture& picture, const PagePlace& place) {
  QPainter& painter = impl_->painter;
  painter.save();
  painter.translate(place.x, place.y);
  painter.scale(place.scale, place.scale);
  if (place.turned) {
    painter.translate(place.part.width(), place.part.height());
    painter.rotate(180);
  }
  if (place.bleed > 0) {
    const QImage part = picture.Image().copy(place.part).convertToFormat(QImage::Format_RGB32);
    DrawBleed(painter, part, place.bleed / place.scale);
  }
  painter.translate(-place.part.topLeft());
  painter.setClipRect(place.part, Qt::IntersectClip);
  if (picture.HowDrawn()) {
    PlayEnlarged(*picture.HowDrawn(), painter, &impl_->pictures);
  } else {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(0, 0, picture.Image());
  }
  painter.restore();
}

void PageWriter::Line(double x1, double y1, double x2, double y2, double thickness, Colour colour) {
  QPainter& painter = impl_->painter;
  QPen pen(ToQColor(colour), thickness);
  pen.setCapStyle(Qt::FlatCap);
  painter.setPen(pen);
  painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void PageWriter::Text(double x, double y, double height, const QString& text) {
  constexpr int kFaceScale = 64;
  const Font plain{QStringLiteral("Arial"), 7, false, false};
  const TextFace& face = TextFace::For(plain);
  QPainter& painter = impl_->painter;
  painter.save();
  painter.translate(x, y);
  const double scale = height / face.Height();
  painter.scale(scale / kFaceScale, scale / kFaceScale);
  painter.setFont(face.Enlarged(kFaceScale));
  painter.setPen(Qt::black);
  painter.drawText(QPointF(0, face.Ascent() * kFaceScale), text);
  painter.restore();
}

void PageWriter::Finish() {
  const bool ended = !impl_->painter.isActive() || impl_->painter.end();
  errno = 0;
  const bool flushed = impl_->file.flush();
  if (impl_->file.Failure() != 0) ThrowFileError(impl_->file.Failure());
  if (!flushed || !ended) ThrowFileError(errno != 0 ? errno : EIO);
  const bool cut = std::ranges::any_of(impl_->boxes, [](const auto& page) { return !page.trim.isNull(); });
  if (!cut) return;
  impl_->writer.reset();
  impl_->file.close();
  AddPageBoxes(impl_->file.fileName(), impl_->boxes);
}

}  // namespace orv
