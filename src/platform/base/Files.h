#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

namespace orv {

// Folder and name joined by the platform's separator, which is not doubled.
QString JoinPath(const QString& folder, const QString& name);
// The path up to and including its last separator; empty if it has none.
QString FolderPart(const QString& path);
// The name behind the last separator.
QString FilePart(const QString& path);

bool FileExists(const QString& path);
// Makes a file writable for its owner; false if that failed.
bool ClearAttributes(const QString& path);

// The whole file. RuntimeError 53, 76 or 75 as the cause is.
QByteArray ReadWhole(const QString& path);

// Replaces or makes the file at `path`: `write` fills a file under a short temporary name in the same
// folder, which then takes the place of the old one in a single step. Until then the old file stays as
// it is, and after a failure nothing is left behind. The new file is synchronised to the disk first, and
// has the rights of the old one. What a process that was killed has left in the folder is removed.
// An existing target that its owner may not write is refused with error 75 before anything is written,
// also where the user's rights would pass over its mode.
// A name with one of \ / : * ? " < > | or a control character is error 75 on every platform, so that a
// set made on one system gives the same files on another; and so is an empty name.
void ReplaceFile(const QString& path, const std::function<void(const QString& temporary)>& write);
void ReplaceFile(const QString& path, const QByteArray& bytes);

// Makes the file at `path` where there is none, whole or not at all, and on the disk when it returns. An
// existing file stays as it is, also one that another program makes meanwhile; false then.
bool MakeFileIfMissing(const QString& path, const QByteArray& bytes);

// RuntimeError 75 for a path that ReplaceFile would refuse.
void CheckTargetFile(const QString& path);

// Both are on the disk when they return. RuntimeError 53 for a file that isn't there, else 75 or 76.
void RemoveFile(const QString& path);
// Gives a file a new name in its folder, in a single step also where another file had that name.
void RenameFile(const QString& path, const QString& new_path);
// What was written to a file, or which files lie in a folder, is on the disk when it returns.
void Synchronise(const QString& path);

// RuntimeError with the number of the cause that the platform's error code (errno) tells.
[[noreturn]] void ThrowFileError(int error_code);

}  // namespace orv
