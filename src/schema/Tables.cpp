#include "schema/Tables.h"

#include <algorithm>

namespace orv::schema {

using enum Kind;

bool Table::HasLongBinaries() const {
  return std::ranges::any_of(columns, [](const Column& column) { return column.kind == kLongBinary; });
}

// A reference of 0 means none yet. A reference that is no kOwner or kFont is not held by the file.
const std::vector<Table>& Tables() {
  // One column a line, so that a new one is one new line.
  // clang-format off
  static const std::vector<Table> kTables = {
      // One row a card set. Its thirteen fonts are rows of tblFont that belong to it alone.
      {"tblSet",
       {
           {"SetID", kKey},
           {"SetName", kText},
           {"LanguageID", kInteger},
           {"EditionID", kInteger},
           {"DefaultCardTypeID", kInteger},
           {"DefaultCardBackID", kInteger},
           {"ArtistColour", kInteger},
           {"PicFormatID", kInteger},
           {"Autonumber", kBoolean},
           {"UseSymbol", kBoolean},
           {"Symbol", kLongBinary},
           {"SaveTo", kText},
           {"FilenamePrefix", kText},
           {"FileCardNr", kBoolean},
           {"NoBack", kBoolean},
           {"ReplaceSpace", kBoolean},
           {"CardTypeFontID", kFont},
           {"CardNumberFontID", kFont},
           {"CardTitleFontID", kFont},
           {"CardBoldFontID", kFont},
           {"CardInformationFontID", kFont},
           {"AutonumberFontID", kFont},
           {"CardLargeTitleFontID", kFont},
           {"CardLargeInfoFontID", kFont},
           {"CharacterNameFontID", kFont},
           {"CharacterSpecialTitleFontID", kFont},
           {"CharacterSpecialFontID", kFont},
           {"CharacterInfoFontID", kFont},
           {"CharacterPieceFontID", kFont},
       }},
      // One row a card of a set.
      {"tblCard",
       {
           {"CardID", kKey},
           {"SetID", kOwner},
           {"Nr", kInteger},
           {"Title", kFilledText},
           {"Copies", kInteger},
           {"CardTypeID", kInteger},
           {"Number", kText},
           {"OneLine", kBoolean},
           {"UsePicture", kBoolean},
           {"Picture", kLongBinary},
           {"PicTop", kReal},
           {"PicLeft", kReal},
           {"PicHeight", kReal},
           {"Resize", kBoolean},
           {"UseFrame", kBoolean},
           {"Artist", kText},
           {"BoldText", kFilledText},
           {"Information", kFilledText},
           {"CardBackID", kInteger},
           {"BGColour", kInteger},
           {"Background", kLongBinary},
           {"FileName", kText},
       },
       {{"bySet", "SetID, Nr"},
        // For the tests whether a type or a back is in use.
        {"byType", "CardTypeID"},
        {"byBack", "CardBackID"}}},
      // One row a character of a set, with its playing piece.
      {"tblCharacter",
       {
           {"CharacterID", kKey},
           {"SetID", kOwner},
           {"Nr", kInteger},
           {"Name", kFilledText},
           {"StartingAreaID", kInteger},
           {"IncludeBoard", kBoolean},
           {"AlignmentID", kInteger},
           {"Strength", kText},
           {"Craft", kText},
           {"Gold", kText},
           {"Lives", kText},
           {"UsePicture", kBoolean},
           {"UseFrame", kBoolean},
           {"Picture", kLongBinary},
           {"PicTop", kReal},
           {"PicLeft", kReal},
           {"PicHeight", kReal},
           {"PicWidth", kReal},
           {"Abilities", kText},
           {"CharacterBackID", kInteger},
           {"Background", kLongBinary},
           {"PlayingPiece", kLongBinary},
           {"PPTop", kReal},
           {"PPLeft", kReal},
       },
       {{"bySet", "SetID, Nr"}}},
      // One row a large card of a set. Its back is its own and comes from no catalogue.
      {"tblLargeCard",
       {
           {"LargeCardID", kKey},
           {"SetID", kOwner},
           {"Nr", kInteger},
           {"Title", kFilledText},
           {"Information", kFilledText},
           {"UsePicture", kBoolean},
           {"Picture", kLongBinary},
           {"PicTop", kReal},
           {"PicLeft", kReal},
           {"PicWidth", kReal},
           {"UseFrame", kBoolean},
           {"Resize", kBoolean},
           {"BGColour", kInteger},
           {"BGPicture", kLongBinary},
           {"LargeCardBack", kLongBinary},
           {"Copies", kInteger},
       },
       {{"bySet", "SetID, Nr"}}},
      // Catalogue of card backs.
      {"tblCardBack",
       {
           {"CardBackID", kKey},
           {"BackText", kText},
           {"Picture", kLongBinary},
           {"Original", kBoolean},
           {"LanguageID", kInteger},
           {"EditionID", kInteger},
       }},
      // Catalogue of character backs.
      {"tblCharacterBack",
       {
           {"CharacterBackID", kKey},
           {"BackText", kText},
           {"Picture", kLongBinary},
           {"Original", kBoolean},
           {"LanguageID", kInteger},
           {"EditionID", kInteger},
       }},
      // Fonts of the sets, thirteen rows a set.
      {"tblFont",
       {
           {"FontID", kKey},
           {"Font", kText},
           {"Size", kInteger},
           {"Bold", kBoolean},
           {"Italic", kBoolean},
           {"Colour", kInteger},
       }},
      // Catalogue of card types. UsedInSet is 0 for a type that every set of the language and edition is
      // offered, otherwise the SetID to which the type is locked.
      {"tblCardType",
       {
           {"CardTypeID", kKey},
           {"UpperLeft", kText},
           {"LowerLeft", kText},
           {"UpperRight", kText},
           {"LowerRight", kText},
           {"Number", kText},
           {"LanguageID", kInteger},
           {"EditionID", kInteger},
           {"Original", kBoolean},
           {"UsedInSet", kCount},
       }},
      // Catalogue of starting areas.
      {"tblArea",
       {
           {"AreaID", kKey},
           {"Board", kText},
           {"Area", kText},
           {"LanguageID", kInteger},
           {"EditionID", kInteger},
       }},
      // Catalogue of alignments, with their order within a language.
      {"tblAlignment",
       {
           {"AlignmentID", kKey},
           {"Alignment", kText},
           {"AlignmentNr", kInteger},
           {"LanguageID", kInteger},
       }},
      // The languages, in the order in which they are listed.
      {"tblLanguage",
       {
           {"LanguageID", kKey},
           {"Language", kText},
       }},
      // Formats of created pictures: 1 = BMP, 2 = JPG, 3 = GIF. PicFormat is the file extension too.
      {"tblPicFormat",
       {
           {"PicFormatID", kKey},
           {"PicFormat", kText},
       }},
  };
  // clang-format on
  return kTables;
}

const Table& Originals() {
  // clang-format off
  static const Table kTable = {"tblOriginal",
       {
           {"OriginalID", kKey},
           {"TableName", kText},
           {"RecordID", kInteger},
           {"ColumnName", kText},
           {"Scale", kReal},      // of the stored picture, 1 for its natural size
           {"Upright", kBoolean}, // turned as the file's orientation tag says
           {"Digest", kText},     // of the stored picture, SHA-256 in hexadecimal digits
           {"File", kLongBinary},
       },
       {{"byRecord", "TableName, RecordID, ColumnName"}}};
  // clang-format on
  return kTable;
}

}  // namespace orv::schema
