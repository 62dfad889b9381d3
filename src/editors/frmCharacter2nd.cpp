#include "editors/frmCharacter2nd.h"

#include <QScopedValueRollback>

#include "base/Rounding.h"
#include "composition/PreviewDrawing.h"
#include "database/ListHelpers.h"
#include "database/ReferenceLists.h"
#include "editors/inner/ChoosePicture.h"
#include "forms/ControlHelpers.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr const char* kAttributeColumns[] = {"Strength", "Craft", "Gold", "Lives"};
constexpr const char* kFirstAttributes[] = {"3", "3", "1", "4"};
constexpr int kFirstAlignment = 2;

// The key of the first row of a list, 0 for an empty one.
std::int32_t FirstKey(Recordset& rows, const char* key) {
  if (rows.IsEmpty()) return 0;
  rows.MoveFirst();
  return rows[key].Int32();
}

QString InBrackets(const Surface& frame) {
  return QStringLiteral("(%1W*%2H)").arg(ToInt16(frame.Width())).arg(ToInt16(frame.Height()));
}

void FillFrom(ComboBox& list, const QString& sql, const char* text_column, const char* key_column) {
  modData::strSQL = sql;
  Recordset rows = modData::OpenSnapshot(sql);
  FillCombo(list, rows, QLatin1String(text_column), QLatin1String(key_column));
}

// "+9" to "+1" add to another value, "---" is none, "1" to "9" are the value itself.
void FillAttribute(ComboBox& list) {
  list.Clear();
  for (int number = 9; number >= 1; --number) list.AddItem(QStringLiteral("+%1").arg(number));
  list.AddItem(QStringLiteral("---"));
  for (int number = 1; number <= 9; ++number) list.AddItem(QString::number(number));
}

}  // namespace

void Character2ndForm::Form_Load() {
  for (Label& label : preview_.lblWatermark) label.SetCaption(Watermark());
  Initialise();
}

void Character2ndForm::Form_Unload() {
  preview_.Reset();
  RecordEditor::Form_Unload();
}

void Character2ndForm::Initialise() {
  if (!Loading) RecordEditor::Initialise();
}

void Character2ndForm::FillLists() {
  for (int i = 0; i < 4; ++i) {
    FillAttribute(cboCharAttr[i]);
    cboCharAttr[i].SetText(QString::fromLatin1(kFirstAttributes[i]));
  }
  Recordset& set = modData::rsSet;
  if (set.IsBOF() || set.IsEOF()) {
    for (ComboBox* list : {&cboAlignment, &cboStartArea, &cboCharacterCardback}) list->Clear();
    return;
  }
  const QString language = QString::number(set["LanguageID"].Int32Or(0));
  FillFrom(cboAlignment,
           QStringLiteral("SELECT * FROM tblAlignment") + QStringLiteral(" WHERE LanguageID = ") + language +
               QStringLiteral(" ORDER BY AlignmentNr"),
           "Alignment", "AlignmentID");
  FillFrom(cboStartArea,
           QStringLiteral("SELECT *, [Board] & \" : \" & [Area] AS StartArea") +
               QStringLiteral(" FROM tblArea") + QStringLiteral(" WHERE LanguageID = ") + language +
               QStringLiteral(" AND EditionID = 2") + QStringLiteral(" ORDER BY Board, Area"),
           "StartArea", "AreaID");
  FillFrom(cboCharacterCardback,
           QStringLiteral("SELECT *") + QStringLiteral(" FROM tblCharacterBack") +
               QStringLiteral(" WHERE LanguageID = ") + language + QStringLiteral(" AND EditionID = 2") +
               QStringLiteral(" ORDER BY BackText"),
           "BackText", "CharacterBackID");
}

void Character2ndForm::EnableCardControls(bool show) {
  picCharacterRest.SetVisible(show);
  pic2ndCharacter.SetVisible(show);
  cmdSortCharacter.SetEnabled(show);
  RecordEditor::EnableCardControls(show);
}

void Character2ndForm::SetCardDefaults() {
  Recordset& character = modData::rsCharacter;
  character["SetID"] = modData::rsSet["SetID"].Get();
  character["Name"] = QStringLiteral("CHARACTER %1").arg(Highest() + 1);
  character["StartingAreaID"] = FirstKey(modData::rsArea, "AreaID");
  character["AlignmentID"] = kFirstAlignment;
  for (int i = 0; i < 4; ++i) character[kAttributeColumns[i]] = kFirstAttributes[i];
  for (const char* offset : {"PicTop", "PicLeft", "PicHeight"}) character[offset] = 0;
  character["PicWidth"] = 121;
  character["UsePicture"] = true;
  character["UseFrame"] = true;
  character["Abilities"] = "";
  character["CharacterBackID"] = FirstKey(modData::rsCharacterBack, "CharacterBackID");
  for (const char* offset : {"PPTop", "PPLeft"}) character[offset] = 0;
}

void Character2ndForm::ShowCard() {
  Recordset& character = modData::rsCharacter;
  const QScopedValueRollback loading(Loading, true);
  txtCharName.SetText(character["Name"].TextOrEmpty());
  SelectItemData(cboStartArea, character["StartingAreaID"].Int32Or(0));
  chkIncludeBoard.SetValue(BoolToCheck(character["IncludeBoard"].BoolOrFalse()));
  SelectItemData(cboAlignment, character["AlignmentID"].Int32Or(0));
  for (int i = 0; i < 4; ++i) cboCharAttr[i].SetText(character[kAttributeColumns[i]].TextOrEmpty());
  chkShowPictureCharacter.SetValue(BoolToCheck(character["UsePicture"].BoolOrFalse()));
  ShowPictureCharacter();
  chkFrameCharacter.SetValue(BoolToCheck(character["UseFrame"].BoolOrFalse()));
  txtSpecialAbilities.SetText(character["Abilities"].TextOrEmpty());
  SelectItemData(cboCharacterCardback, character["CharacterBackID"].Int32Or(0));
  ShowDimensions();
  picture_fitter_.Show();
  piece_fitter_.Show();
  ShowCurrentPosition();
}

void Character2ndForm::ShowDimensions() {
  lblPicDimChar.SetCaption(InBrackets(preview_.picFrameCharacter));
  lblPicDimPlay.SetCaption(InBrackets(preview_.picPlayingPieceFrame));
}

void Character2ndForm::txtCharName_Change() {
  WriteText("Name", txtCharName, preview_.lblCharacter);
  if (!Loading) preview_.lblPlayingPieceName.SetCaption(txtCharName.Text());
}

// The one edit that waits in the record until its next Update or move.
void Character2ndForm::cboStartArea_Click() {
  if (Loading || cboStartArea.ListIndex() < 0 || !Record().Hold()) return;
  Record()["StartingAreaID"] = ChosenItemData(cboStartArea);
  preview_.ShowStart(false);
}

void Character2ndForm::chkIncludeBoard_Click() {
  if (Loading) return;
  const bool include = chkIncludeBoard.Value() == 1;
  if (Write("IncludeBoard", include)) preview_.ShowStart(include);
}

void Character2ndForm::cboAlignment_Click() {
  if (Loading || cboAlignment.ListIndex() < 0) return;
  const std::int32_t alignment = ChosenItemData(cboAlignment);
  if (Write("AlignmentID", alignment)) preview_.lblAlignment.SetCaption(AlignmentText(alignment));
}

void Character2ndForm::cboCharAttr_Change(int Index) {
  if (Loading) return;
  if (!Write(kAttributeColumns[Index], cboCharAttr[Index].Text())) return;
  preview_.DrawAttribute(Index, cboCharAttr[Index].Text());
}

void Character2ndForm::cboCharacterCardback_Click() {
  if (Loading || cboCharacterCardback.ListIndex() < 0) return;
  if (!Write("CharacterBackID", ChosenItemData(cboCharacterCardback))) return;
  DrawInSteps({[&] { preview_.DrawBack(); }});
}

void Character2ndForm::chkShowPictureCharacter_Click() {
  if (Loading) return;
  if (Write("UsePicture", chkShowPictureCharacter.Value() == 1)) ShowPictureCharacter();
}

// Runs while a record is shown, too, and then writes what the record has already.
void Character2ndForm::chkFrameCharacter_Click() {
  const bool frame = chkFrameCharacter.Value() == 1;
  preview_.picFrameCharacter.SetBorderStyle(chkFrameCharacter.Value());
  (void)Write("UseFrame", frame);
}

void Character2ndForm::cmdGetCharPic_Click() {
  ChooseFramedPicture("Choose characterpicture", Record(), "Picture", preview_.picImageCharacter,
                      LastPicFolder);
  picture_fitter_.Show();
}

// The offset of the picture stays, for the next one.
void Character2ndForm::cmdDelCharPic_Click() {
  if (Write("Picture", Value::Null())) EmptyFrame(preview_.picImageCharacter);
  picture_fitter_.Show();
}

// A new piece starts at the corner of its frame, unlike the picture.
void Character2ndForm::cmdGetPlayingPiecePic_Click() {
  ChooseFramedPicture("Choose playing piece picture", Record(), "PlayingPiece", preview_.picPlayingPieceImage,
                      LastPieceFolder, [this] {
                        Record()["PPTop"] = 0;
                        Record()["PPLeft"] = 0;
                      });
  piece_fitter_.Show();
}

void Character2ndForm::cmdDelPlayingPiecePic_Click() {
  RemovePicture(Record(), "PlayingPiece", preview_.picPlayingPieceImage);
  piece_fitter_.Show();
}

void Character2ndForm::cmdBackCharPic_Click() {
  ChoosePicture({.title = QStringLiteral("Choose background picture"),
                 .folder = &LastBackFolder,
                 .record = Record(),
                 .column = "Background",
                 .surface = preview_.picBackgroundChar,
                 .stored = RememberFolder(LastBackFolder)});
}

void Character2ndForm::cmdDelBackCharPic_Click() {
  if (Write("Background", Value::Null())) preview_.DrawBackground();
}

// What follows the frame's handle: the frame, the texts beside it and the record.
void Character2ndForm::FrameResized() {
  Surface& frame = preview_.picFrameCharacter;
  frame.SetWidth(preview_.lblPicSizeCharacter.Left() - frame.Left());
  preview_.PlaceTexts();
  Record()["PicWidth"] = frame.Width();
  Record().Update();
  ShowDimensions();
}

void Character2ndForm::picPlayingPieceImage_KeyDown(const KeyEvent& key) {
  if (!piece_fitter_.KeyDown(key)) piece_mover_.KeyDown(key);
}

void Character2ndForm::picImageCharacter_KeyDown(const KeyEvent& key) {
  if (picture_fitter_.KeyDown(key)) return;
  picture_mover_.KeyDown(key);
  ShowDimensions();
}

}  // namespace orv
