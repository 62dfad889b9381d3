#pragma once

#include <QString>

namespace orv::App {

inline constexpr int kMajor = 1;
inline constexpr int kMinor = 2;
// The name of the program's package, of its folders (the user's own, the system's) and its desktop file.
inline constexpr char kPackageName[] = "varnholt-card-set-creator";

// The program's folder, without a closing separator (a file system's root keeps its own): the one of the
// executable where no other was set. All files of the program lie directly in it.
QString Path();
// Puts another folder in the place of the executable's, for an installed program, tools and tests.
void SetPath(const QString& folder);
// Base name of the executable.
QString ExeName();

}  // namespace orv::App
