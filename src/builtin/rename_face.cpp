// Writes a TrueType file anew under another name, so that a face which a program carries is never taken for
// one of the system. Usage: rename_face FILE NEW_FILE NAME NEW_NAME VERSION; both names have the same length,
// and a file of another version is refused.
#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringDecoder>
#include <QTextStream>
#include <QtEndian>
#include <cstdio>
#include <stdexcept>

namespace {

// The part of the file that holds the names: https://learn.microsoft.com/typography/opentype/spec/name.
class NameTable {
 public:
  explicit NameTable(QByteArray& file) : file_(file) {
    for (int i = 0; i < U16(4); ++i) {
      const int entry = 12 + 16 * i;
      if (file.mid(entry, 4) == "name") start_ = qFromBigEndian<quint32>(file.constData() + entry + 8);
    }
    if (start_ == 0) throw std::runtime_error("has no names");
  }

  void Replace(const QByteArray& name, const QByteArray& new_name) {
    ForEach([&](int id, bool wide, qsizetype at, qsizetype size) {
      if (!Names(id)) return;
      QByteArray text = file_.mid(at, size);
      text.replace(wide ? Widened(name) : name, wide ? Widened(new_name) : new_name);
      file_.replace(at, size, text);
    });
  }

  // The version as the file tells it, such as "Version 2.1.5".
  QString Version() {
    QString version;
    ForEach([&](int id, bool wide, qsizetype at, qsizetype size) {
      constexpr int kVersion = 5;
      if (id == kVersion && wide) version = QStringDecoder(QStringDecoder::Utf16BE)(file_.mid(at, size));
    });
    return version;
  }

 private:
  quint16 U16(qsizetype at) const { return qFromBigEndian<quint16>(file_.constData() + at); }

  // Family, unique name, full name, PostScript name and typographic family; copyright and trademark stay.
  static bool Names(int id) { return id == 1 || id == 3 || id == 4 || id == 6 || id == 16; }

  static QByteArray Widened(const QByteArray& text) {
    QByteArray wide;
    for (const char c : text) wide.append('\0').append(c);
    return wide;
  }

  template <class Action>
  void ForEach(Action action) {
    constexpr int kMacintosh = 1;
    const qsizetype texts = start_ + U16(start_ + 4);
    for (int i = 0; i < U16(start_ + 2); ++i) {
      const qsizetype entry = start_ + 6 + 12 * i;
      action(U16(entry + 6), U16(entry) != kMacintosh, texts + U16(entry + 10), U16(entry + 8));
    }
  }

  QByteArray& file_;
  qsizetype start_ = 0;
};

void Rename(const QString& path, const QString& new_path, const QByteArray& name, const QByteArray& new_name,
            const QString& version) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("can't be read");
  QByteArray bytes = file.readAll();
  NameTable names(bytes);
  if (name.size() != new_name.size()) throw std::runtime_error("needs a new name of the same length");
  if (!names.Version().startsWith("Version " + version)) {
    throw std::runtime_error("is " + names.Version().toStdString() + " and not " + version.toStdString());
  }
  names.Replace(name, new_name);
  QFile renamed(new_path);
  if (!renamed.open(QIODevice::WriteOnly) || renamed.write(bytes) != bytes.size() || !renamed.flush()) {
    throw std::runtime_error("can't be written anew");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) return 2;
  try {
    Rename(argv[1], argv[2], argv[3], argv[4], argv[5]);
  } catch (const std::exception& error) {
    QTextStream(stderr) << argv[1] << ": " << error.what() << Qt::endl;
    return 1;
  }
  return 0;
}
