#pragma once

class QFont;
class QStyle;

namespace orv {

// The look of all windows; follows the colours of the desktop. Owned by the caller.
QStyle* NewStyle();

// The desktop's face, in its size from 8 to 16 points; a narrower one where the desktop's is too wide for
// the forms.
QFont InterfaceFont();
// The same at the height for which places in twips are made.
QFont FontOfPlaces();
// How much larger places must be than they are told for what stands there in the interface's font.
double PlaceScale();

}  // namespace orv
