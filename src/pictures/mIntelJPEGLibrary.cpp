#include "pictures/mIntelJPEGLibrary.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "imaging/JpegLibrary.h"

namespace orv {
namespace {

constexpr int kErrJpegLibrary = 26001;

RuntimeError LibraryError(const QString& words, int code) {
  return {kErrJpegLibrary, words + QString::number(code),
          App::ExeName() + QStringLiteral(".mIntelJPEGLibrary")};
}

void WriteFile(const cDIBSection& section, const QString& path, std::int32_t quality) {
  JPEG_CORE_PROPERTIES record;
  if (const int code = ijlInit(&record); code != IJL_OK) {
    throw LibraryError(QStringLiteral("Failed to initialise the IJL library: "), code);
  }
  const QByteArray name = QFile::encodeName(path);
  record.DIBWidth = section.Width();
  record.DIBHeight = -section.Height();
  record.DIBBytes = section.DIBSectionBitsPtr();
  record.DIBPadBytes = section.BytesPerScanLine() - 3 * section.Width();
  record.JPGFile = name.constData();
  record.JPGWidth = section.Width();
  record.JPGHeight = section.Height();
  record.jquality = quality;
  const int code = ijlWrite(&record, IJL_JFILE_WRITEWHOLEIMAGE);
  ijlFree(&record);
  if (code != IJL_OK) throw LibraryError(QStringLiteral("Failed to save to JPG "), code);
}

// Makes a file look like the one whose place it takes, but for content and size.
void PutBackTimesAndAttributes(const QString& path, const QFileInfo& former) {
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite)) return;
  file.setFileTime(former.lastRead(), QFileDevice::FileAccessTime);
  file.setFileTime(former.lastModified(), QFileDevice::FileModificationTime);
  file.close();
  file.setPermissions(former.permissions());
}

}  // namespace

bool SaveJPG(const cDIBSection& section, const QString& path, std::int32_t quality) {
  ReplaceFile(path, [&](const QString& temporary) {
    QFileInfo former(path);
    former.stat();
    WriteFile(section, temporary, quality);
    if (former.exists()) PutBackTimesAndAttributes(temporary, former);
  });
  return true;
}

}  // namespace orv
