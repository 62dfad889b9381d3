// Draws an SVG file as PNG files. Usage: make_icons SVG FOLDER SIZE...
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QTextStream>
#include <cstdio>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  for (const QString& size : arguments.mid(3)) {
    QImageReader reader(arguments[1]);
    reader.setScaledSize({size.toInt(), size.toInt()});
    const QImage image = reader.read();
    if (image.isNull() || !image.save(QStringLiteral("%1/%2.png").arg(arguments[2], size))) {
      QTextStream(stderr) << arguments[1] << " at " << size << ": " << reader.errorString() << Qt::endl;
      return 1;
    }
  }
  return 0;
}
