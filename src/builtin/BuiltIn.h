#pragma once

#include <QByteArray>

namespace orv::builtin {

// The bitmaps that the program carries with it, each as the bytes of a 24-bit BMP file.

QByteArray CardBack2nd();     // 150 x 254
QByteArray CardBack3rd();     // 161 x 245
QByteArray CardFace3rd();     // 161 x 245, the preview's face until a card is drawn
QByteArray CharacterSheet();  // 302 x 254

}  // namespace orv::builtin
