#include "output/Saving.h"

#include <QDir>

#include "base/RuntimeError.h"
#include "forms/Dialogs.h"
#include "forms/Playing.h"
#include "pictures/frmClip.h"
#include "state/modData.h"

namespace orv {
namespace {

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

// Why a file can't be written: for its name, which the writer refuses, or else for another reason.
QString ReasonIn(const QString& name, const QString& other) {
  return name.contains(QDir::separator())
             ? QStringLiteral("A file's name can not hold \"%1\".").arg(QDir::separator())
             : other;
}

void DrawOutline(Surface& sheet, const Corners& corners) {
  sheet.LineB(corners.left, corners.top, corners.right, corners.bottom, kBlack);
}

// Whether the set wants backs; a kind without a choice has both halves always.
bool WantsBack(const SheetKind& kind) {
  return !kind.may_leave_out_back || !modData::rsSet["NoBack"].BoolOrFalse();
}

QString NamedFile(const QString& name, std::int16_t number, const QString& kind, const QString& extension) {
  Recordset& set = modData::rsSet;
  QString built = name;
  if (set["FileCardNr"].BoolOrFalse()) {
    built = (QStringLiteral("000") + QString::number(number)).right(3) + u' ' + built;
  }
  if (!kind.isEmpty()) built = kind + u' ' + built;
  const QString prefix = set["FilenamePrefix"].TextOrEmpty();
  if (!prefix.isEmpty()) built = prefix + u' ' + built;
  if (set["ReplaceSpace"].BoolOrFalse()) built.replace(u' ', u'_');
  return built + u'.' + extension;
}

bool WriteSheet(const SheetFormat& format, const QString& path) {
  if (format.format == nullptr) return true;
  const Picture& sheet = frmClip->picDone.Picture();
  return format.format->write(format.times > 1 ? Enlarged(sheet, format.times) : sheet, path);
}

}  // namespace

void AssembleSheet(const SheetKind& kind, bool with_back) {
  Surface& sheet = frmClip->picDone;
  Surface& front = kind.front();
  sheet.SetPicture(LoadPicture());
  front.SetPicture(front.Image());
  const double width = front.Width();
  sheet.SetHeight(front.Height());
  sheet.SetWidth(with_back ? 2 * width : width);
  if (with_back) sheet.PaintPicture(kind.back().Picture(), width + 1, 1);
  sheet.PaintPicture(front.Picture(), 1, 1);
  DrawOutline(sheet, kind.first_outline);
  DrawOutline(sheet, kind.second_outline);
  sheet.SetPicture(sheet.Image());
}

void FillFileName(Recordset& record) {
  const Field name = record["FileName"];
  if (!name.IsNull() && name.Text().isEmpty()) name.Set(record["Title"].Text());
}

void SaveSheet(const SheetKind& kind, const SheetFormat& format) {
  QString path;
  const QString kind_code = QString::fromLatin1(kind.kind_code);
  QString name;
  bool saved = false;
  try {
    if (kind.fills_name_from_title) {
      FillFileName(kind.record);
      kind.record.Update();
    }
    name = kind.record[kind.name_column].Text();
    const std::int16_t number = kind.record["Nr"].Int16();
    const QString folder = SaveFolder();
    path = folder + WithoutFolders(NamedFile(name, number, kind_code, format.extension));
    AssembleSheet(kind, WantsBack(kind));
    const BesideBoxes reason(ReasonIn(name, {}));
    saved = WriteSheet(format, path) && format.format != nullptr;
  } catch (const RuntimeError& error) {
    QString text = QStringLiteral("Something went wrong.");
    if (kind.tells_cause) text += QStringLiteral("\r\n\r\n") + error.NumberAndDescription();
    const BesideBoxes reason(ReasonIn(name, kind.tells_cause ? QString() : error.NumberAndDescription()));
    MsgBox(text, Icon::Critical, QString::fromLatin1(kind.box_title));
  }
  SheetSaved(path, kind_code + u' ' + name, saved);
}

SheetFormat FormatOfSet() {
  const std::int32_t key = modData::rsSet["PicFormatID"].Int32Or(kBmp);
  return {FormatOfKey(key), GetPicFormat(key)};
}

SheetFormat FormatOf(const PictureFormat& format) {
  return {&format, QString::fromLatin1(format.extension)};
}

QString GetPicFormat(std::int32_t pic_format_id) {
  Recordset format = modData::OpenSnapshot(
      QStringLiteral("SELECT * FROM tblPicFormat WHERE PicFormatID = %1").arg(pic_format_id));
  return format.IsEOF() ? QStringLiteral("BMP") : format["PicFormat"].TextOr(QStringLiteral("BMP"));
}

QString BuildFileName(const QString& name, std::int16_t number, const QString& kind) {
  return NamedFile(name, number, kind, FormatOfSet().extension);
}

bool SaveThePicture(const QString& path) {
  return WriteSheet(FormatOfSet(), path);
}

void SaveTheCard2nd() {
  SaveSheet(kSheetOfCard2nd, FormatOfSet());
}

void SaveTheCard3rd() {
  SaveSheet(kSheetOfCard3rd, FormatOfSet());
}

void SaveTheCharacter2nd() {
  SaveSheet(kSheetOfCharacter, FormatOfSet());
}

void SaveThePlayingPiece2nd() {
  SaveSheet(kSheetOfPiece, FormatOfSet());
}

void SaveTheLargeCard() {
  SaveSheet(kSheetOfLargeCard, FormatOfSet());
}

}  // namespace orv
