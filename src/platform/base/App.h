#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace orv {

// What a program tells the platform of itself at its start.
struct Program {
  struct StandIn {
    QString face;
    QString family;
  };
  QString name;           // the title of boxes that have none of their own
  QString settings_name;  // under which the user's settings are kept
  QString package_name;   // of its package, and so of its folders
  QString desktop_id;     // of its entry in the menu of programs
  QString version;
  QString usual_face;              // of a surface that is given no font
  QStringList faces;               // files of the faces that the program carries
  QString plain_family;            // of these, for a face that is neither installed nor stood in for
  std::vector<StandIn> stand_ins;  // what is drawn for a face that is not installed
};

namespace App {

// The program that runs, once Application was made for it; one without a name before.
const Program& Running();
void SetRunning(const Program& program);

// The program's folder, without a closing separator (a file system's root keeps its own): the one of the
// executable where no other was set. All files of the program lie directly in it.
QString Path();
// Puts another folder in the place of the executable's, for an installed program, tools and tests.
void SetPath(const QString& folder);
// Base name of the executable.
QString ExeName();

}  // namespace App
}  // namespace orv
