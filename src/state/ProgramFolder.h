#pragma once

#include <QString>

namespace orv {

struct ProgramFolder {
  bool usable = true;
  QString missing;  // what to tell the user where no database can be opened in it
  QString news;     // what to tell the user in any case; mostly empty
};

// The user's own folder for data of the program, which need not be there yet.
QString UsersFolder();

// Settles which folder is the program's, before the first use of any of its files, and sees to it that an
// installed program finds a database there.
//
// A portable program works beside its executable. It is installed where it may not write there, or where the
// delivered database lies in the system's share folder and none beside it: then App::Path() becomes the
// user's own data folder, which is made, and at the first start the delivered database is copied into it.
ProgramFolder SettleProgramFolder();

}  // namespace orv
