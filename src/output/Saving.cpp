#include "output/Saving.h"

#include <QDir>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "composition/CardPreview.h"
#include "composition/CharacterPreview.h"
#include "composition/LargeCardPreview.h"
#include "composition/frmCard.h"
#include "forms/Dialogs.h"
#include "pictures/frmClip.h"
#include "pictures/mIntelJPEGLibrary.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr std::int32_t kJpegQuality = 90;

// How the save operations differ.
struct SheetKind {
  const char* kind_code;
  const char* box_title;
  const char* name_column;
  PixelRect first_outline;  // left, top and the opposite corner, inclusive
  PixelRect second_outline;
  bool fills_name_from_title = false;  // an empty FileName takes the title of the moment, for good
  bool may_leave_out_back = true;
  bool tells_cause = false;
};

constexpr SheetKind kCard2nd = {.kind_code = "C2",
                                .box_title = "Saving the card 2nd.",
                                .name_column = "FileName",
                                .first_outline = {0, 0, 151, 255},
                                .second_outline = {152, 0, 303, 255},
                                .fills_name_from_title = true};
constexpr SheetKind kCard3rd = {.kind_code = "C3",
                                .box_title = "Saving the card 3rd.",
                                .name_column = "FileName",
                                .first_outline = {0, 0, 162, 246},
                                .second_outline = {163, 0, 325, 246},
                                .fills_name_from_title = true};
constexpr SheetKind kCharacter2nd = {.kind_code = "CH2",
                                     .box_title = "Saving the character 2nd",
                                     .name_column = "Name",
                                     .first_outline = {0, 0, 303, 255},
                                     .second_outline = {304, 0, 607, 255}};
constexpr SheetKind kPlayingPiece2nd = {.kind_code = "PP2",
                                        .box_title = "Saving the playing piece 2nd.",
                                        .name_column = "Name",
                                        .first_outline = {0, 0, 151, 255},
                                        .second_outline = {152, 0, 303, 255},
                                        .may_leave_out_back = false};
constexpr SheetKind kLargeCard = {.kind_code = "LC2",
                                  .box_title = "Saving the large card",
                                  .name_column = "Title",
                                  .first_outline = {0, 0, 303, 255},
                                  .second_outline = {304, 0, 607, 255},
                                  .tells_cause = true};

QString SaveFolder() {
  const QString separator = QDir::separator();
  QString folder = modData::rsSet["SaveTo"].Text() + separator;
  return folder.replace(separator + separator, separator);
}

// A separator within a name names no folder: it is handed on as another character that no name may hold,
// and so the writer refuses the name.
QString WithoutFolders(QString name) {
  return name.replace(QDir::separator(), u':');
}

void FillFileName(Recordset& record) {
  if (record["FileName"].IsNull() || !record["FileName"].Text().isEmpty()) return;
  record["FileName"] = record["Title"].Text();
  record.Update();
}

void DrawOutline(Surface& sheet, const PixelRect& corners) {
  sheet.LineB(corners.left, corners.top, corners.width, corners.height, kBlack);
}

void AssembleSheet(const SheetKind& kind, Surface& front, const Surface& back) {
  Surface& sheet = frmClip->picDone;
  sheet.SetPicture(LoadPicture());
  front.SetPicture(front.Image());
  const bool two_halves = !kind.may_leave_out_back || !modData::rsSet["NoBack"].BoolOrFalse();
  const double width = front.Width();
  sheet.SetHeight(front.Height());
  sheet.SetWidth(two_halves ? 2 * width : width);
  if (two_halves) sheet.PaintPicture(back.Picture(), width + 1, 1);
  sheet.PaintPicture(front.Picture(), 1, 1);
  DrawOutline(sheet, kind.first_outline);
  DrawOutline(sheet, kind.second_outline);
  sheet.SetPicture(sheet.Image());
}

void SaveSheet(const SheetKind& kind, Recordset& record, Surface& front, const Surface& back) {
  QString path;
  const QString title = QString::fromLatin1(kind.box_title);
  QString name;
  bool saved = false;
  try {
    if (kind.fills_name_from_title) FillFileName(record);
    name = record[kind.name_column].Text();
    const std::int16_t number = record["Nr"].Int16();
    const QString folder = SaveFolder();
    path = folder + WithoutFolders(BuildFileName(name, number, QString::fromLatin1(kind.kind_code)));
    AssembleSheet(kind, front, back);
    SaveThePicture(path);
    saved = !frmClip->BMP2GIF1.Failed() || modData::rsSet["PicFormatID"].Int32Or(kBmp) != 3;
  } catch (const RuntimeError& error) {
    QString text = QStringLiteral("Something went wrong.");
    if (kind.tells_cause) text += QStringLiteral("\r\n\r\n") + error.NumberAndDescription();
    MsgBox(text, Icon::Critical, title);
  }
  SheetSaved(path, QString::fromLatin1(kind.kind_code) + u' ' + name, saved);
}

void SaveAsGif(const QString& path) {
  const QString bitmap = JoinPath(App::Path(), QStringLiteral("orvtemp.bmp"));
  SavePicture(frmClip->picDone.Picture(), bitmap);
  GifControl& control = frmClip->BMP2GIF1;
  control.Convert(bitmap, path, false);
  if (!control.Failed()) return;
  MsgBox(QStringLiteral("Something went wrong.\r\n\r\n") + control.ErrorText(), Icon::Critical,
         QStringLiteral("Saving the card"));
}

}  // namespace

QString GetPicFormat(std::int32_t pic_format_id) {
  Recordset format = modData::OpenSnapshot(
      QStringLiteral("SELECT * FROM tblPicFormat WHERE PicFormatID = %1").arg(pic_format_id));
  return format.IsEOF() ? QStringLiteral("BMP") : format["PicFormat"].TextOr(QStringLiteral("BMP"));
}

QString BuildFileName(const QString& name, std::int16_t number, const QString& kind) {
  Recordset& set = modData::rsSet;
  QString built = name;
  if (set["FileCardNr"].BoolOrFalse()) {
    built = (QStringLiteral("000") + QString::number(number)).right(3) + u' ' + built;
  }
  if (!kind.isEmpty()) built = kind + u' ' + built;
  const QString prefix = set["FilenamePrefix"].TextOrEmpty();
  if (!prefix.isEmpty()) built = prefix + u' ' + built;
  if (set["ReplaceSpace"].BoolOrFalse()) built.replace(u' ', u'_');
  return built + u'.' + GetPicFormat(set["PicFormatID"].Int32Or(kBmp));
}

void SaveThePicture(const QString& path) {
  const Picture& sheet = frmClip->picDone.Picture();
  switch (modData::rsSet["PicFormatID"].Int32Or(kBmp)) {
    case kBmp:
      SavePicture(sheet, path);
      break;
    case 2: {
      cDIBSection section;
      section.CreateFromPicture(sheet);
      SaveJPG(section, path, kJpegQuality);
      break;
    }
    case 3:
      SaveAsGif(path);
      break;
    default:
      break;
  }
}

void SaveTheCard2nd() {
  SaveSheet(kCard2nd, modData::rsCard, frmCard->picACard, CardPreviewOf(2).picBack);
}

// The back is the one that the 2nd edition's preview shows, whatever the 3rd edition's has drawn.
void SaveTheCard3rd() {
  SaveSheet(kCard3rd, modData::rsCard, frmCard->picACard, CardPreviewOf(2).picBack);
}

void SaveTheCharacter2nd() {
  SaveSheet(kCharacter2nd, modData::rsCharacter, frmCard->picACard, TheCharacterPreview().picCharacterBack);
}

// The piece has no back: the same image stands on both halves, whatever the set says of backs.
void SaveThePlayingPiece2nd() {
  SaveSheet(kPlayingPiece2nd, modData::rsCharacter, frmCard->picACardPP, frmCard->picACardPP);
}

void SaveTheLargeCard() {
  SaveSheet(kLargeCard, modData::rsLargeCard, frmCard->picACard, TheLargeCardPreview().picBackLarge);
}

}  // namespace orv
