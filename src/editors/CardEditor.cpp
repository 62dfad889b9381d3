#include "editors/CardEditor.h"

#include <QScopedValueRollback>
#include <algorithm>

#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "composition/PreviewDrawing.h"
#include "database/ListHelpers.h"
#include "database/ReferenceLists.h"
#include "editors/inner/ChooseColour.h"
#include "editors/inner/ChoosePicture.h"
#include "forms/ControlHelpers.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

// Stands on the row of a catalogue that has a key; false where there is none.
bool FindRow(Recordset& rows, const char* key, std::int32_t value) {
  if (rows.IsEmpty()) return false;
  FindByKey(rows, key, value);
  return !rows.IsEOF();
}

// The default that the current set keeps in a column; where it has none yet, it takes this one.
std::int32_t DefaultOf(const char* column, std::int32_t first) {
  Recordset& set = modData::rsSet;
  if (set[column].Int32Or(0) == 0) {
    set[column] = first;
    set.Update();
  }
  return set[column].Int32();
}

bool HasItemData(const ComboBox& list, std::int32_t key) {
  for (int i = 0; i < list.ListCount(); ++i) {
    if (list.ItemData(i) == key) return true;
  }
  return false;
}

}  // namespace

void CardEditor::Form_Load() {
  preview_.lblWatermark.SetCaption(Watermark());
  RecordEditor::Form_Load();
}

void CardEditor::Form_Unload() {
  preview_.Reset();
  RecordEditor::Form_Unload();
}

void CardEditor::FillLists() {
  cboNumber.Clear();
  for (int number = 1; number <= 6; ++number) cboNumber.AddItem(QString::number(number));
  cboNumber.SetListIndex(1);
  FillTypes();
  FillBacks();
}

void CardEditor::FillTypes() {
  Recordset& set = modData::rsSet;
  if (set.IsBOF() || set.IsEOF()) {
    cboType.Clear();
    return;
  }
  modData::strSQL =
      QStringLiteral("SELECT tblCardType.CardTypeID, %1 AS DropText").arg(QLatin1String(kind_.drop_text)) +
      QStringLiteral(" FROM tblCardType") + QStringLiteral(" WHERE (tblCardType.LanguageID = ") +
      QString::number(set["LanguageID"].Int32Or(0)) +
      QStringLiteral(") AND (tblCardType.EditionID = %1").arg(kind_.edition) +
      QStringLiteral(") AND ((tblCardType.UsedInSet = 0) OR (tblCardType.UsedInSet = ") +
      QString::number(modData::CurrentSetID) + QStringLiteral("))") +
      QStringLiteral(" ORDER BY UpperLeft, Lowerleft, Number");
  Recordset types = modData::OpenSnapshot(modData::strSQL);
  FillCombo(cboType, types, QStringLiteral("DropText"), QStringLiteral("CardTypeID"));
  if (cboType.ListCount() > 0) cboType.SetListIndex(0);
}

void CardEditor::FillBacks() {
  Recordset& set = modData::rsSet;
  if (set.IsBOF() || set.IsEOF()) {
    cboType.Clear();  // the types and not the backs, as it has always been
    return;
  }
  modData::strSQL = QStringLiteral("SELECT tblCardBack.CardBackID, tblCardBack.BackText") +
                    QStringLiteral(" FROM tblCardBack") + QStringLiteral(" WHERE tblCardBack.LanguageID = ") +
                    QString::number(set["LanguageID"].Int32Or(0)) +
                    QStringLiteral(" AND tblCardBack.EditionID = %1").arg(kind_.edition) +
                    QStringLiteral(" ORDER BY tblCardBack.BackText");
  Recordset backs = modData::OpenSnapshot(modData::strSQL);
  FillCombo(cboCardBack, backs, QStringLiteral("BackText"), QStringLiteral("CardBackID"));
  if (cboCardBack.ListCount() > 0) cboCardBack.SetListIndex(0);
}

void CardEditor::EnableCardControls(bool show) {
  pic2ndCard.SetVisible(show);
  picCardRest.SetVisible(show);
  cmdSort.SetEnabled(show);
  RecordEditor::EnableCardControls(show);
}

void CardEditor::SetCardDefaults() {
  Recordset& card = modData::rsCard;
  card["SetID"] = modData::rsSet["SetID"].Get();
  card["Title"] = QStringLiteral("CARD %1").arg(Highest() + 1);
  card["Copies"] = 1;
  const std::int32_t first_type = FirstItemData(cboType);
  const std::int32_t type = DefaultOf("DefaultCardTypeID", first_type);
  card["CardTypeID"] = type;
  // A default whose type was deleted since has no number to give.
  card["Number"] =
      FindRow(modData::rsCardType, "CardTypeID", type) ? modData::rsCardType["Number"].Get() : Value("");
  card["OneLine"] = false;
  card["UsePicture"] = true;
  card["PicTop"] = 0;
  card["PicLeft"] = 0;
  card["PicHeight"] = 105;
  card["Resize"] = false;
  card["UseFrame"] = true;
  for (const char* text : {"Artist", "BoldText", "Information"}) card[text] = "";
  // The first default of the back comes from the list of types too, as far as a back has that key.
  card["CardBackID"] = DefaultOf(
      "DefaultCardBackID", HasItemData(cboCardBack, first_type) ? first_type : FirstItemData(cboCardBack));
  card["BGColour"] = kWhite;
  card["FileName"] = "";
}

void CardEditor::ShowCard() {
  Recordset& card = modData::rsCard;
  {
    const QScopedValueRollback loading(Loading, true);
    ShowCurrentPosition();
    txtTitle.SetText(card["Title"].TextOrEmpty());
    udCopy.SetValue(card["Copies"].Int32Or(1));
    SelectItemData(cboType, card["CardTypeID"].Int32Or(0));
    chkOneLine.SetValue(BoolToCheck(card["OneLine"].BoolOrFalse()));
    cboNumber.SetText(card["Number"].TextOrEmpty());
    chkShowPicture.SetValue(BoolToCheck(card["UsePicture"].BoolOrFalse()));
    chkFrame.SetValue(BoolToCheck(card["UseFrame"].BoolOrFalse()));
    chkResize.SetValue(BoolToCheck(card["Resize"].BoolOrFalse()));
    txtArtist.SetText(card["Artist"].TextOrEmpty());
    ShowDimension();
    txtBold.SetText(card["BoldText"].TextOrEmpty());
    txtInfo.SetText(card["Information"].TextOrEmpty());
    SelectItemData(cboCardBack, card["CardBackID"].Int32Or(0));
    picColour.SetBackColor(card["BGColour"].Int32Or(kWhite));
    preview_.picSymbol.BringToFront();
    preview_.ColourBold();
  }
  fitter_.Show();
  kind_.output.compose();
}

void CardEditor::ShowDimension() {
  lblPicDim.SetCaption(FrameDimension(preview_.picFrame));
}

void CardEditor::cboType_Click() {
  if (Loading || cboType.ListIndex() < 0) return;
  const std::int32_t type = ChosenItemData(cboType);
  if (FindRow(modData::rsCardType, "CardTypeID", type)) {
    const Value number = modData::rsCardType["Number"].Get();
    if (!Record().Write({{"CardTypeID", type}, {"Number", number}})) return;
    cboNumber.SetText(number.TextOrEmpty());
  } else if (!Write("CardTypeID", type)) {
    return;
  }
  DrawCard();
}

void CardEditor::cboNumber_Change() {
  if (Loading) return;
  if (Write("Number", cboNumber.Text())) preview_.lblNumber.SetCaption(cboNumber.Text());
}

void CardEditor::cboCardBack_Click() {
  if (Loading || cboCardBack.ListIndex() < 0) return;
  const std::int32_t back = ChosenItemData(cboCardBack);
  if (!Write("CardBackID", back)) return;
  DrawInSteps({[&] {
    if (FindRow(modData::rsCardBack, "CardBackID", back)) {
      LoadPictureFromField(preview_.picBack, modData::rsCardBack["Picture"]);
    }
  }});
}

void CardEditor::chkShowPicture_Click() {
  if (Loading) return;
  const bool show = chkShowPicture.Value() == 1;
  if (!Write("UsePicture", show)) return;
  preview_.picFrame.SetVisible(show);
  preview_.lblPicSize.SetVisible(show);
  preview_.PlaceBold();
  const CardLayout& layout = preview_.Layout();
  Label& information = preview_.lblInformation;
  if (layout.information_bottom - information.Top() < 1) information.SetTop(layout.information_fallback_top);
  information.SetHeight(layout.information_bottom - information.Top());
}

void CardEditor::chkFrame_Click() {
  if (Loading) return;
  if (!Write("UseFrame", chkFrame.Value() == 1)) return;
  preview_.picFrame.SetBorderStyle(chkFrame.Value());
}

void CardEditor::chkResize_Click() {
  if (Loading || !Record().Hold()) return;
  const bool resize = chkResize.Value() == 1;
  Record()["Resize"] = resize;
  if (resize) {
    // Centres the picture between the side margins.
    const double room = preview_.picCard.Width() - 10 - preview_.picImage.Width() / kTwipsPerPixel;
    Record()["PicLeft"] = room / 2 * kTwipsPerPixel;
  }
  Record().Update();
  DrawCard();
}

void CardEditor::txtBold_Change() {
  if (Loading || !Record().Hold()) return;
  // One letter stands for the word that is wanted most; the rest of it is selected, to be typed over.
  for (const char* word : {"STRENGTH ", "CRAFT "}) {
    const QString whole = QString::fromLatin1(word);
    if (txtBold.Text() != whole.left(1)) continue;
    txtBold.SetText(whole);
    txtBold.SetSelStart(1);
    txtBold.SetSelLength(static_cast<int>(whole.size()) - 1);
  }
  if (Write("BoldText", txtBold.Text())) preview_.SetBoldText(txtBold.Text());
}

void CardEditor::txtArtist_Change() {
  if (Loading) return;
  if (!Write("Artist", txtArtist.Text())) return;
  DrawInSteps({[&] { LoadPictureFromField(preview_.picCard, modData::rsCard["Background"]); },
               [&] { RedrawArtist(); }});
}

void CardEditor::RedrawArtist() {
  Recordset& card = modData::rsCard;
  RotateArtist(card["Artist"].TextOrEmpty(), card["BGColour"].Int32Or(kWhite), !card["Background"].IsNull());
}

void CardEditor::cmdGetPic_Click() {
  ChooseFramedPicture("Choose picture", Record(), "Picture", preview_.picImage, LastPicFolder);
  fitter_.Show();
}

void CardEditor::cmdDelPic_Click() {
  RemoveFramedPicture(Record(), preview_.picImage);
  fitter_.Show();
}

void CardEditor::cmdBackPic_Click() {
  ChoosePicture({.title = QStringLiteral("Choose picture"),
                 .folder = nullptr,
                 .record = Record(),
                 .column = "Background",
                 .surface = preview_.picCard,
                 .shown = [this](const QString& path) {
                   LastBackPic = path;
                   RedrawArtist();
                 }});
}

// Gives a run of cards the same background.
void CardEditor::cmdLastBackPic_Click() {
  if (LastBackPic.isEmpty() || !Record().Hold()) return;
  ReadFileToField(LastBackPic, Record()["Background"]);
  Record().Update();
  DrawInSteps({[&] { preview_.picCard.SetPicture(LoadPicture(LastBackPic)); }, [&] { RedrawArtist(); }});
}

void CardEditor::cmdDelBackPic_Click() {
  RemovePicture(Record(), "Background", preview_.picCard);
}

void CardEditor::cmdColour_Click() {
  ChooseBackgroundColour(Record(), picColour, preview_.picCard);
}

// What follows the frame's handle: the frame, the texts below it and the record.
void CardEditor::FrameResized() {
  Surface& frame = preview_.picFrame;
  frame.SetHeight(preview_.lblPicSize.Top() - frame.Top());
  preview_.lblBold.SetTop(preview_.lblPicSize.Top() + 3);
  preview_.PlaceInformation();
  Record()["PicHeight"] = frame.Height();
  ShowDimension();
}

// Where the frame hugs the picture, the room across is what it has without.
QSize CardEditor::PictureRoom() const {
  const Surface& frame = preview_.picFrame;
  const bool hugs = modData::rsCard["Resize"].BoolOrFalse();
  const int across = hugs ? preview_.Layout().frame.width - 2 * frame.BorderStyle() : frame.InsideWidth();
  return {across, frame.InsideHeight()};
}

struct CardEditor::HandleKey {
  const char* keys;
  double (*top)(double top, const CardLayout& layout);  // of the handle, in pixels, from where it is
};

const CardEditor::HandleKey CardEditor::kHandleKeys[] = {
    {"Shift+Up",
     [](double top, const CardLayout& layout) { return top > layout.handle_lowest ? top - 1 : top; }},
    {"Shift+Down",
     [](double top, const CardLayout& layout) { return top < layout.handle_highest ? top + 1 : top; }},
    {"Shift+Home", [](double, const CardLayout& layout) { return double(layout.handle_lowest); }},
    {"Shift+End", [](double, const CardLayout& layout) { return double(layout.handle_highest); }},
};

QStringList CardEditor::HandleCommands() {
  QStringList keys;
  for (const HandleKey& key : kHandleKeys) keys += QLatin1String(key.keys);
  return keys;
}

void CardEditor::picImage_KeyDown(const KeyEvent& key) {
  if (fitter_.KeyDown(key)) return;
  if (!Record().Hold()) return;
  Label& handle = preview_.lblPicSize;
  const CardLayout& layout = preview_.Layout();
  if (key.Shift == 0) mover_.Nudge(key.KeyCode);
  if (key.Shift == kShift) {
    for (const HandleKey& each : kHandleKeys) {
      if (KeyOf(QLatin1String(each.keys)) == key) handle.SetTop(each.top(handle.Top(), layout));
    }
    FrameResized();
  }
  preview_.PlacePicture();
  Record().Update();
}

}  // namespace orv
