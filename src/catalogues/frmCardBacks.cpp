#include "catalogues/frmCardBacks.h"

#include <algorithm>

#include "base/Rounding.h"
#include "composition/CardLayout.h"
#include "forms/Application.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "forms/Layout.h"
#include "pictures/DroppedPicture.h"
#include "pictures/FittedPicture.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kListWidth = 4455;  // twips
constexpr CatalogueColumn kColumns[] = {{"Name", kListWidth / kTwipsPerPixel - 85},
                                        {"Custom", 62, Alignment::Centre}};

constexpr CatalogueKind kKind = {
    .caption = "Cardback",
    .key_prefix = "CB",
    .id_column = "CardBackID",
    .default_column = "DefaultCardBackID",
    .is_used = "SELECT CardID FROM tblCard WHERE CardBackID = %1",
    .used_message = "This Card back can not be deleted. There are cards using is.",
    .columns = kColumns,
    .custom_column = 1,
};

constexpr int kBackLeft = 432;  // of the preview, in pixels
constexpr int kBackTop = 56;
constexpr int kBackMargin = 16;  // behind it and under it
// The usual height of the window, and what its frame takes of it and of its width, in pixels.
constexpr int kUsualHeight = 483;
constexpr int kFrameAcross = 6;
constexpr int kFrameDown = 28;
constexpr int kThumbnail = 25;  // pixels
// What the frame of a window and the bars of a desktop may need of the screen, in twips.
constexpr int kScreenReserve = 900;

}  // namespace

CardBacksForm::CardBacksForm()
    : CatalogueForm(kKind),
      cmdUpdate(*this, QStringLiteral("&Rename")),
      cmdSavePicture(*this, QStringLiteral("Save &picture")),
      Frame1(*this, QStringLiteral(" New Cardback ")),
      cmdLoadPic(Frame1, QStringLiteral("&Load picture")),
      viewNewBack(Frame1, picNewBack),
      Label1(Frame1, QStringLiteral("Name:")),
      txtBackText(Frame1),
      cmdNew(Frame1, QStringLiteral("Add &New")),
      lblDimension(*this, QStringLiteral("0W x 0H")),
      viewBack(*this, picBack) {
  Arrange();
  for (Surface* surface : {&picBack, &picNewBack}) {
    TakePictures(*surface, [this](const DataObject& data) { TakePicture(data); });
  }
  Drop = [this](const DataObject& data) { TakePicture(data); };
  cmdLoadPic.Click = [this] { cmdLoadPic_Click(); };
  txtBackText.GotFocus = [this] { txtBackText_GotFocus(); };
  cmdNew.Click = [this] { cmdNew_Click(); };
  cmdUpdate.Click = [this] { OnEntry([this] { cmdUpdate_Click(); }); };
  cmdSavePicture.Click = [this] { OnEntry([this] { cmdSavePicture_Click(); }); };
}

void CardBacksForm::Arrange() {
  SetClientSize(9645, 6825);
  lvCardBack.Place(240, 480, kListWidth, 4215);
  cmdDelete.Place(4800, 480, 1455, 375);
  cmdDefault.Place(4800, 960, 1455, 375);
  cmdUpdate.Place(4800, 1440, 1455, 375);
  cmdSavePicture.Place(4800, 1920, 1455, 375);
  cmdOK.Place(4800, 3840, 1335, 375);
  cmdCancel.Place(4800, 4320, 1335, 375);
  Frame1.Place(240, 4800, 4455, 1815);
  cmdLoadPic.Place(960, 360, 1455, 375);
  picNewBack.Place(0, 0, kThumbnail, kThumbnail);
  picNewBack.SetBorderStyle(1);
  viewNewBack.Place(3840, 240, 375, 375);
  Label1.Place(240, 840, 1095, 255);
  txtBackText.Place(960, 840, 3255, 285);
  cmdNew.Place(960, 1280, 1455, 375);
  lblDimension.Place(6480, 480, 2775, 255);
  picBack.Place(0, 0, 201, 329);
  picBack.SetAutoSize(true);
  picBack.SetVisible(false);
  viewBack.Place(6480, 840, 3015, 4935);
  cmdUpdate.SetEnabled(false);
  Label1.SetBuddy(txtBackText);
  SetTabOrder(cmdDefault, cmdUpdate);
  SetTabOrder(cmdUpdate, cmdSavePicture);  // the rest follows as it was made
}

void CardBacksForm::InitBacks(std::int16_t edition) {
  EditionShown = edition;
  modData::OpenEditable(
      QStringLiteral("SELECT * FROM tblCardBack WHERE LanguageID = %1 AND EditionID = %2 ORDER BY BackText")
          .arg(modData::rsSet["LanguageID"].Int16Or(0))
          .arg(EditionShown),
      rows_);
  FillList();
}

ListItem CardBacksForm::EntryOf(const Recordset& row) const {
  ListItem entry;
  entry.Text = row["BackText"].TextOrEmpty();
  entry.SubItems += YesNo(!row["Original"].BoolOrFalse());
  return entry;
}

void CardBacksForm::ShowEntry(const ListItem& entry) {
  ShowBack(IdOf(entry));
  cmdUpdate.SetEnabled(IsCustom(entry));
  cmdSavePicture.SetEnabled(true);
}

void CardBacksForm::ShowBack(std::int32_t id) {
  FindRow(id);
  LoadPictureFromField(picBack, rows_["Picture"]);
  FitBackPicture();
  picBack.SetVisible(true);
}

// The window grows and shrinks with the picture, but no further than the screen.
void CardBacksForm::FitBackPicture() {
  const int width = static_cast<int>(picBack.Width());
  const int height = static_cast<int>(picBack.Height());
  lblDimension.SetCaption(QStringLiteral("%1W x %2H").arg(width).arg(height));
  const int wanted_width = (kBackLeft + width + kBackMargin - kFrameAcross) * Screen::TwipsPerPixelX;
  const int wanted_height =
      std::max(kBackTop + height + kBackMargin, kUsualHeight - kFrameDown) * Screen::TwipsPerPixelY;
  const int room_across = Screen::Width() - kScreenReserve;
  const int room_down = Screen::Height() - kScreenReserve;
  SetClientSize(std::min(wanted_width, room_across), std::min(wanted_height, room_down));
  if (Left() + Width() > room_across) SetLeft(std::max(0, room_across - Width()));
  if (Top() + Height() > room_down) SetTop(std::max(0, room_down - Height()));
}

void CardBacksForm::cmdLoadPic_Click() {
  CommonDialog dialog = PictureDialog(QStringLiteral("Choose picture for Card back"));
  if (!ChoosesFile(dialog)) return;
  const std::optional<Picture> picture = PictureIn(dialog.FileName);
  if (!picture) return;
  viewBack.SetTag(dialog.FileName);
  viewNewBack.SetTag(dialog.FileName);
  new_picture_.clear();
  ShowNewPicture(*picture);
}

// A picture that was dropped or pasted becomes one of the size of a card.
void CardBacksForm::TakePicture(const DataObject& data) {
  if (data.IsEmpty()) return;
  const PixelRect& card = CardLayoutOf(EditionShown).card;
  const Picture picture = PictureOf(
      data, [&](const QByteArray& bytes) { return FillingPicture(bytes, card.width, card.height); });
  if (picture.IsEmpty()) return;
  new_picture_ = BitmapFile(picture);
  ShowNewPicture(picture);
  txtBackText.SetFocus();
}

void CardBacksForm::ShowNewPicture(const Picture& picture) {
  picBack.SetPicture(picture);
  picNewBack.SetPicture(picture);
  picNewBack.PaintPicture(picture, 0, 0, picNewBack.InsideWidth(), picNewBack.InsideHeight());
  FitBackPicture();
  picBack.SetVisible(true);
}

// A click in the list may have put another picture into the preview.
void CardBacksForm::txtBackText_GotFocus() {
  SelectText(txtBackText);
  if (!picNewBack.Picture().IsEmpty()) picBack.SetPicture(picNewBack.Picture());
}

void CardBacksForm::cmdNew_Click() {
  const QString title = QStringLiteral("Card back");
  if (txtBackText.Text().isEmpty()) {
    MsgBox(QStringLiteral("You must enter a name for the new Card back."), Icon::Exclamation, title);
    txtBackText.SetFocus();
    return;
  }
  if (viewNewBack.Tag().isEmpty() && new_picture_.isEmpty()) {
    MsgBox(QStringLiteral("You must select a new picture for the Card back."), Icon::Exclamation, title);
    cmdLoadPic.SetFocus();
    return;
  }
  rows_.AddNew();
  rows_["BackText"] = txtBackText.Text();
  rows_["Original"] = false;
  rows_["LanguageID"] = modData::rsSet["LanguageID"].Get();
  rows_["EditionID"] = int{EditionShown};
  if (!new_picture_.isEmpty()) {
    rows_["Picture"] = new_picture_;
  } else {
    // A file that is gone by now gives a back without a picture.
    ReadFileToField(viewNewBack.Tag(), rows_["Picture"]);
  }
  rows_.Update();
  RefillWithAdded();
}

void CardBacksForm::cmdUpdate_Click() {
  FindSelectedRow();
  if (rows_["Original"].BoolOrFalse()) {
    cmdUpdate.SetEnabled(false);
    return;
  }
  const QString name = InputBox(QStringLiteral("New name:"), QStringLiteral("Rename Card back"),
                                rows_["BackText"].TextOrEmpty());
  if (name.isEmpty()) return;
  rows_["BackText"] = name;
  rows_.Update();
  RefillSorted(rows_["CardBackID"].Int32());
}

// Asks for a name and leaves it at that: no format to save a back in has been settled.
void CardBacksForm::cmdSavePicture_Click() {
  FindSelectedRow();
  CommonDialog dialog;
  dialog.DialogTitle = QStringLiteral("Save Card back as picture");
  dialog.CancelError = true;
  dialog.FileName = rows_["BackText"].TextOrEmpty();
  dialog.Filter = QStringLiteral("BMP (*.bmp)|*.bmp|JPG (*.jpg)|*.jpg|GIF (*.gif)|*.gif|");
  dialog.DefaultExt = QStringLiteral("bmp");
  dialog.FilterIndex = 1;
  dialog.Flags = 0x280806;
  dialog.ShowSave();
}

}  // namespace orv
