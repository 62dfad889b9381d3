#include "forms/inner/PageBoxes.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <cerrno>

#include "base/Files.h"
#include "base/RuntimeError.h"

namespace orv {
namespace {

void Require(bool holds) {
  if (!holds) throw RuntimeError(kErrPathFileAccess);
}

// The objects of a PDF file that has one table of them.
class Objects {
 public:
  explicit Objects(const QByteArray& file) : file_(file) {
    start_ = Match(file.last(std::min<qsizetype>(file.size(), 100)), "startxref\\s+(\\d+)").toLongLong();
    Require(start_ > 0 && start_ < file.size());
    const qsizetype end = file.indexOf("trailer", start_);
    Require(end > 0);
    trailer_ = file.mid(end, file.indexOf("startxref", end) - end);
    const QByteArray head = file.mid(start_, 40);
    count_ = Match(head, "xref\\s+0 (\\d+)\\s").toLongLong();
    entries_ = start_ + head.indexOf('\n', head.indexOf('\n') + 1) + 1;
    Require(count_ > 0 && entries_ + count_ * kEntry <= end);
  }

  qsizetype Start() const { return start_; }
  const QByteArray& Trailer() const { return trailer_; }
  // From its number to its end, inclusive.
  QByteArray At(qsizetype number) const {
    Require(number > 0 && number < count_);
    const qsizetype from = file_.mid(entries_ + number * kEntry, 10).toLongLong();
    const qsizetype end = file_.indexOf("endobj", from);
    Require(from > 0 && end > from);
    return file_.mid(from, end + 7 - from);
  }
  // In the order of the pages.
  std::vector<qsizetype> Pages() const {
    const QByteArray root = At(Match(trailer_, "/Root (\\d+) 0 R").toLongLong());
    const QByteArray tree = At(Match(root, "/Pages (\\d+) 0 R").toLongLong());
    const QString kids = QString::fromLatin1(Match(tree, "/Kids\\s*\\[([^\\]]*)\\]"));
    std::vector<qsizetype> pages;
    for (auto kid = QRegularExpression(QStringLiteral("(\\d+) 0 R")).globalMatch(kids); kid.hasNext();) {
      pages.push_back(kid.next().captured(1).toLongLong());
    }
    return pages;
  }

 private:
  static constexpr qsizetype kEntry = 20;  // bytes in the table

  static QByteArray Match(const QByteArray& text, const char* pattern) {
    const auto match = QRegularExpression(QLatin1String(pattern)).match(QString::fromLatin1(text));
    return match.captured(1).toLatin1();
  }

  const QByteArray& file_;
  QByteArray trailer_;
  qsizetype start_, count_, entries_;
};

QByteArray Box(const char* name, const QRectF& box) {
  return QStringLiteral("/%1 [%2 %3 %4 %5]\n")
      .arg(QLatin1String(name))
      .arg(box.left(), 0, 'f', 3)
      .arg(box.top(), 0, 'f', 3)
      .arg(box.right(), 0, 'f', 3)
      .arg(box.bottom(), 0, 'f', 3)
      .toLatin1();
}

QByteArray Update(const QByteArray& file, const std::vector<PageBoxes>& boxes) {
  const Objects objects(file);
  const std::vector<qsizetype> pages = objects.Pages();
  Require(pages.size() == boxes.size());
  QByteArray update, table = "xref\n";
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (boxes[i].trim.isNull()) continue;
    QByteArray page = objects.At(pages[i]);
    page.insert(page.lastIndexOf(">>"), Box("TrimBox", boxes[i].trim) + Box("BleedBox", boxes[i].bleed));
    table += QByteArray::number(pages[i]) + " 1\n" +
             QByteArray::number(file.size() + update.size()).rightJustified(10, '0') + " 00000 n \n";
    update += page;
  }
  if (update.isEmpty()) return update;
  QByteArray trailer = objects.Trailer();
  trailer.insert(trailer.lastIndexOf(">>"), "/Prev " + QByteArray::number(objects.Start()) + '\n');
  const QByteArray start = QByteArray::number(file.size() + update.size());
  return update + table + trailer + "startxref\n" + start + "\n%%EOF\n";
}

}  // namespace

void AddPageBoxes(const QString& path, const std::vector<PageBoxes>& pages) {
  QFile file(path);
  Require(file.open(QIODevice::ReadWrite));
  const qsizetype size = file.size();
  const auto* const bytes = reinterpret_cast<const char*>(file.map(0, size));
  Require(bytes != nullptr);
  const QByteArray update = Update(QByteArray::fromRawData(bytes, size), pages);
  errno = 0;
  if (!file.seek(size) || file.write(update) != update.size() || !file.flush()) {
    ThrowFileError(errno != 0 ? errno : EIO);
  }
}

}  // namespace orv
