#include "forms/inner/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <memory>
#include <utility>

namespace orv {
namespace {

// Draws a picture file anew at each size, by the library itself: the plug-in for such icons is in a package
// of its own on some systems, and a program without it would have empty buttons.
class SvgEngine : public QIconEngine {
 public:
  explicit SvgEngine(std::shared_ptr<QSvgRenderer> renderer) : renderer_(std::move(renderer)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(rect.size() * scale, mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    renderer_->render(&painter);
    painter.end();
    if (mode == QIcon::Normal) return drawn;
    QStyleOption option;
    option.palette = QGuiApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, drawn, &option);
  }

  QIconEngine* clone() const override { return new SvgEngine(renderer_); }

 private:
  std::shared_ptr<QSvgRenderer> renderer_;
};

}  // namespace

QIcon NamedIcon(const QString& name) {
  const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
  if (name.isEmpty() || !QFile::exists(path)) return {};
  return QIcon(new SvgEngine(std::make_shared<QSvgRenderer>(path)));
}

}  // namespace orv
