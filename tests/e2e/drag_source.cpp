// A window from which a file is dragged, as from a folder on a desktop: drag_source <file> <left> <top>.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

class Source : public QWidget {
 public:
  explicit Source(const QString& file) : file_(file) {}

 private:
  void mousePressEvent(QMouseEvent*) override {
    auto* const drag = new QDrag(this);
    auto* const dragged = new QMimeData;
    dragged->setUrls({QUrl::fromLocalFile(file_)});
    drag->setMimeData(dragged);
    drag->exec(Qt::CopyAction | Qt::MoveAction);
  }

  const QString file_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  Source source(arguments[1]);
  source.setWindowTitle(QStringLiteral("Files"));
  source.setGeometry(arguments[2].toInt(), arguments[3].toInt(), 60, 20);
  source.show();
  return QApplication::exec();
}
