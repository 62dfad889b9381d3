#include "pictures/modDirBrowse.h"

#include "forms/Dialogs.h"

namespace orv {

QString BrowseForFolder(const Form& owner) {
  return BrowseFolder(QStringLiteral("Choose a directory from the list."), &owner);
}

}  // namespace orv
