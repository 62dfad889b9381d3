#pragma once

class QFont;
class QStyle;

namespace orv {

// The look of all windows; follows the colours of the desktop. Owned by the caller.
QStyle* NewStyle();

// The desktop's face at the height for which places in twips are made; a narrower one where the desktop's
// is too wide for them.
QFont InterfaceFont();

}  // namespace orv
