#pragma once

#include <QString>
#include <QStringList>

namespace orv::builtin {

// The faces that the program carries, so that a card is the same wherever it is drawn. Their families have
// names that no installed face has.

inline const QString kPlainFamily = QStringLiteral("CardLetter Sans");
inline const QString kAntiqueFamily = QStringLiteral("CardEssays");

// TrueType files in the program's resources: regular, bold, italic and bold italic of each family.
QStringList FaceFiles();

}  // namespace orv::builtin
