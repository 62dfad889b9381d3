// Draws an SVG file as PNG files. Usage: make_icons SVG FOLDER SIZE...
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>
#include <cstdio>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  QSvgRenderer icon(arguments[1]);
  for (const QString& size : arguments.mid(3)) {
    QImage image(size.toInt(), size.toInt(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.render(&painter);
    painter.end();
    if (!icon.isValid() || !image.save(QStringLiteral("%1/%2.png").arg(arguments[2], size))) {
      QTextStream(stderr) << arguments[1] << " at " << size << ": can't be drawn or stored" << Qt::endl;
      return 1;
    }
  }
  return 0;
}
