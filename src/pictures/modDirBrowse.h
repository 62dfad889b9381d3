#pragma once

#include <QString>

#include "forms/Form.h"

namespace orv {

// The folder that the user chose, with a closing separator, or the empty text.
QString BrowseForFolder(const Form& owner);

}  // namespace orv
