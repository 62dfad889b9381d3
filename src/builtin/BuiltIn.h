#pragma once

#include <QByteArray>

namespace orv::builtin {

// The bitmaps that the program carries with it, each as the bytes of a 24-bit BMP file.

QByteArray CardBack2nd();     // 150 x 254
QByteArray CardBack3rd();     // 161 x 245
QByteArray CardFace3rd();     // 161 x 245, the preview's face until a card is drawn
QByteArray CharacterSheet();  // 302 x 254

// The licences of the program and of what it links and carries, as its package tells them, in UTF-8.
QByteArray Copyright();

}  // namespace orv::builtin
