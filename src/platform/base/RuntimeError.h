#pragma once

#include <QString>
#include <exception>

namespace orv {

// Numbers of run-time errors, as users of such programs know them.
enum ErrorNumber : int {
  kErrOverflow = 6,
  kErrSubscript = 9,
  kErrTypeMismatch = 13,
  kErrOutOfMemory = 7,
  kErrInternal = 51,
  kErrFileNotFound = 53,
  kErrDiskFull = 61,
  kErrPermissionDenied = 70,
  kErrPathFileAccess = 75,
  kErrPathNotFound = 76,
  kErrObjectNotSet = 91,
  kErrInvalidNull = 94,
  kErrInvalidPicture = 481,
  kErrNoCurrentRecord = 3021,
  kErrItemNotFound = 3265,
  kErrDatabase = 3000,
};

// A run-time error: a number and a description for the user. One that nobody catches is shown in a
// box and ends the program.
class RuntimeError : public std::exception {
 public:
  // Takes the usual description of the number; an unknown number reads "Application-defined error".
  explicit RuntimeError(int number);
  // `source` names the module that raised it, where that matters.
  RuntimeError(int number, const QString& description, const QString& source = {});

  int Number() const { return number_; }
  const QString& Description() const { return description_; }
  const QString& Source() const { return source_; }
  // "<number>, <description>", the form in which message boxes tell a cause.
  QString NumberAndDescription() const;
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  int number_;
  QString description_;
  QString source_;
  QByteArray utf8_;
};

}  // namespace orv
