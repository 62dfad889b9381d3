#include "state/modData.h"

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"

namespace orv::modData {
namespace {

// What the program reads and writes. A file that lacks any of it is not ours.
const char* const kSchema = R"(
tblSet: SetID, SetName, LanguageID, EditionID, DefaultCardTypeID, DefaultCardBackID, ArtistColour, PicFormatID, Autonumber, UseSymbol, Symbol, SaveTo, FilenamePrefix, FileCardNr, NoBack, ReplaceSpace, CardTypeFontID, CardNumberFontID, CardTitleFontID, CardBoldFontID, CardInformationFontID, AutonumberFontID, CardLargeTitleFontID, CardLargeInfoFontID, CharacterNameFontID, CharacterSpecialTitleFontID, CharacterSpecialFontID, CharacterInfoFontID, CharacterPieceFontID
tblCard: CardID, SetID, Nr, Title, Copies, CardTypeID, Number, OneLine, UsePicture, Picture, PicTop, PicLeft, PicHeight, Resize, UseFrame, Artist, BoldText, Information, CardBackID, BGColour, Background, FileName
tblCharacter: CharacterID, SetID, Nr, Name, StartingAreaID, IncludeBoard, AlignmentID, Strength, Craft, Gold, Lives, UsePicture, UseFrame, Picture, PicTop, PicLeft, PicHeight, PicWidth, Abilities, CharacterBackID, Background, PlayingPiece, PPTop, PPLeft
tblLargeCard: LargeCardID, SetID, Nr, Title, Information, UsePicture, Picture, PicTop, PicLeft, PicWidth, UseFrame, Resize, BGColour, BGPicture, LargeCardBack, Copies
tblFont: FontID, Font, Size, Bold, Italic, Colour
tblCardType: CardTypeID, UpperLeft, LowerLeft, UpperRight, LowerRight, Number, LanguageID, EditionID, Original, UsedInSet
tblCardBack: CardBackID, BackText, Picture, Original, LanguageID, EditionID
tblCharacterBack: CharacterBackID, BackText, Picture, Original, LanguageID, EditionID
tblArea: AreaID, Board, Area, LanguageID, EditionID
tblAlignment: AlignmentID, Alignment, AlignmentNr, LanguageID
tblLanguage: LanguageID, Language
tblPicFormat: PicFormatID, PicFormat
)";

}  // namespace

QString DatabasePath() {
  return JoinPath(App::Path(), QStringLiteral("orv.mdb"));
}

void OpenDatabase(const std::function<void()>& before_connection, const QString& path) {
  DatabaseFound = false;
  PicFilePath = JoinPath(App::Path(), QStringLiteral("orv.pic"));
  try {
    if (!FileExists(path)) return;
    ClearAttributes(path);
    before_connection();
    Connection connection = Connection::Open(path);
    connection.RequireColumns(QString::fromLatin1(kSchema));
    cn = connection;
    DatabaseFound = true;
  } catch (const RuntimeError&) {
    // The words for the user are the same for a file that is missing and for one that is no database.
  }
}

Recordset OpenSnapshot(const QString& sql) {
  return Recordset::OpenSnapshot(cn, sql);
}

void OpenEditable(const QString& sql, Recordset& recordset) {
  recordset = Recordset();
  recordset = Recordset::OpenEditable(cn, sql);
}

bool RecordExists(const QString& sql) {
  return !OpenSnapshot(sql).IsEmpty();
}

void FindSet(std::int32_t set_id) {
  if (rsSet.IsEmpty()) return;
  rsSet.FindFirst(QStringLiteral("SetID = %1").arg(set_id));
}

}  // namespace orv::modData
