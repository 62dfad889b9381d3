#include "base/RuntimeError.h"

namespace orv {
namespace {

QString DescriptionOf(int number) {
  switch (number) {
    case kErrOverflow:
      return QStringLiteral("Overflow");
    case kErrOutOfMemory:
      return QStringLiteral("Out of memory");
    case kErrSubscript:
      return QStringLiteral("Subscript out of range");
    case kErrTypeMismatch:
      return QStringLiteral("Type mismatch");
    case kErrInternal:
      return QStringLiteral("Internal error");
    case kErrFileNotFound:
      return QStringLiteral("File not found");
    case kErrDiskFull:
      return QStringLiteral("Disk full");
    case kErrPermissionDenied:
      return QStringLiteral("Permission denied");
    case kErrPathFileAccess:
      return QStringLiteral("Path/File access error");
    case kErrPathNotFound:
      return QStringLiteral("Path not found");
    case kErrObjectNotSet:
      return QStringLiteral("Object variable not set");
    case kErrInvalidNull:
      return QStringLiteral("Invalid use of Null");
    case kErrInvalidPicture:
      return QStringLiteral("Invalid picture");
    case kErrNoCurrentRecord:
      return QStringLiteral("No current record");
    case kErrItemNotFound:
      return QStringLiteral("Item not found in this collection");
    case kErrDatabase:
      return QStringLiteral("Database error");
    default:
      return QStringLiteral("Application-defined error");
  }
}

}  // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, DescriptionOf(number)) {}

RuntimeError::RuntimeError(int number, const QString& description, const QString& source)
    : number_(number), description_(description), source_(source), utf8_(NumberAndDescription().toUtf8()) {}

QString RuntimeError::NumberAndDescription() const {
  return QString::number(number_) + QStringLiteral(", ") + description_;
}

}  // namespace orv
