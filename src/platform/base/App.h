#pragma once

#include <QString>

namespace orv::App {

inline constexpr int kMajor = 1;
inline constexpr int kMinor = 2;

// Folder of the executable, without a closing separator (a file system's root keeps its own).
// All files of the program lie directly in it.
QString Path();
// Puts another folder in the place of the executable's, for tools and tests.
void SetPath(const QString& folder);
// Base name of the executable.
QString ExeName();

}  // namespace orv::App
