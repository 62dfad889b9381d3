#include "catalogues/frmCardType.h"

#include "base/Rounding.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "forms/Layout.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kGlobalColumn = 6;
constexpr int kListWidth = 6855;  // twips
constexpr int kTextWidth = (kListWidth / kTwipsPerPixel - 160) / 4;
constexpr CatalogueColumn kColumns[] = {
    {"Upper left", kTextWidth},
    {"Lower Left", kTextWidth},
    {"Upper right", kTextWidth, Alignment::Right},
    {"Lower right", kTextWidth, Alignment::Right},
    {"Nr", 28, Alignment::Centre},
    {"Custom", 56, Alignment::Centre},
    {"Global", 56, Alignment::Centre},
};

constexpr CatalogueKind kKind = {
    .caption = "Card Type",
    .key_prefix = "CT",
    .id_column = "CardTypeID",
    .default_column = "DefaultCardTypeID",
    .is_used = "SELECT CardID FROM tblCard WHERE CardTypeID = %1",
    .used_message = "This type can not be deleted. There are cards using it.",
    .columns = kColumns,
    .custom_column = 5,
};

const QString kLock = QStringLiteral("Lock to set");
const QString kMakeGlobal = QStringLiteral("Make global");

bool IsBlank(const QString& text) {
  return text.count(u' ') == text.size();
}

QString IsGlobal(const Recordset& row) {
  return YesNo(row["UsedInSet"].Int32Or(0) == 0);
}

}  // namespace

CardTypeForm::CardTypeForm()
    : CatalogueForm(kKind),
      cmdSet(*this, kMakeGlobal),
      Frame1(*this, QStringLiteral(" &New Type ")),
      txtUL(Frame1),
      txtUR(Frame1),
      txtNr(Frame1),
      txtLL(Frame1),
      txtLR(Frame1),
      optGlobal(Frame1, QStringLiteral("&Global")),
      optUsedInSet(Frame1, QStringLiteral("Only for this set of cards")),
      cmdNew(Frame1, QStringLiteral("&Add New")),
      viewCard(*this, picCard) {
  DesignSample();
  Arrange();
  Subscribe();
}

void CardTypeForm::Arrange() {
  SetClientSize(8760, 5430);
  lvType.Place(120, 240, kListWidth, 3135);
  cmdDelete.Place(7080, 240, 1335, 375);
  cmdDefault.Place(7080, 720, 1335, 375);
  cmdSet.Place(7080, 1200, 1335, 375);
  cmdOK.Place(7080, 2520, 1335, 375);
  cmdCancel.Place(7080, 3000, 1335, 375);
  Frame1.Place(120, 3480, 4455, 1815);
  txtUL.Place(120, 360, 1695, 285);
  txtUR.Place(2400, 360, 1815, 285);
  txtLL.Place(120, 720, 1695, 285);
  txtLR.Place(2400, 720, 1815, 285);
  txtNr.Place(1920, 480, 375, 285);
  optGlobal.Place(120, 1120, 855, 255);
  optUsedInSet.Place(120, 1440, 2700, 255);
  cmdNew.Place(2880, 1200, 1335, 375);
  viewCard.Place(4680, 3600, 2280, 2400);
  cmdSet.SetEnabled(false);
  optGlobal.SetValue(true);
  SetTabOrder(txtUL, txtNr);
  SetTabOrder(txtNr, txtUR);
  SetTabOrder(cmdDefault, cmdSet);  // the rest follows as it was made
  const char* const names[] = {"Upper left", "Upper right", "Number", "Lower left", "Lower right"};
  for (std::size_t i = 0; i < Texts().size(); ++i) {
    Texts()[i]->SetAccessibleName(QString::fromLatin1(names[i]));
    Texts()[i]->SetToolTip(QString::fromLatin1(names[i]));
  }
}

void CardTypeForm::DesignSample() {
  const Font font{QStringLiteral("Small Fonts"), 6.75, false, false};
  const auto place = [&font](Label& label, double left, double top, double width, double height,
                             const char* caption, Alignment alignment) {
    label.Place(left, top, width, height);
    label.SetFont(font);
    label.SetCaption(QString::fromLatin1(caption));
    label.SetAlignment(alignment);
  };
  picCard.Place(0, 0, 152, 160);
  picCard.SetBorderStyle(1);
  picCard.SetScaleMode(ScaleMode::Twips);
  picCard.SetName(QStringLiteral("Sample card"));
  for (auto& label : lblType) label = std::make_unique<Label>(&picCard);
  place(*lblType[0], 75, 45, 855, 180, "ENEMY-", Alignment::Left);
  place(*lblType[1], 1320, 45, 840, 180, "-ENEMY", Alignment::Right);
  place(*lblType[2], 75, 225, 855, 180, "Alien", Alignment::Left);
  place(*lblType[3], 1320, 225, 855, 180, "Alien", Alignment::Right);
  place(lblNumber, 990, 120, 255, 255, "2", Alignment::Centre);
  place(lblTitle, 75, 420, 2085, 195, "TEST CARD", Alignment::Centre);
  lblTitle.SetFont({font.Name, font.Size, true, false});
  picFrame.Place(75, 600, 2085, 1575);
  picFrame.SetBorderStyle(1);
  lblBold.Place(75, 2220, 2085, 15);
  lblBold.SetBackColor(kBlack);
  picArtistDest.Place(0, 600, 75, 2700);
}

void CardTypeForm::Subscribe() {
  for (TextBox* box : Texts()) {
    box->Change = [this] { ShowTextBoxSample(); };
    box->GotFocus = [this, box] {
      SelectText(*box);
      ShowTextBoxSample();
    };
  }
  cmdNew.Click = [this] { cmdNew_Click(); };
  cmdSet.Click = [this] { OnEntry([this] { cmdSet_Click(); }); };
}

void CardTypeForm::Form_Load() {
  CatalogueForm::Form_Load();
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblCardType WHERE LanguageID = %1 ORDER BY UpperLeft, "
                                       "LowerLeft, Number")
                            .arg(modData::rsSet["LanguageID"].Int16Or(0)),
                        rows_);
  FillList();
}

ListItem CardTypeForm::EntryOf(const Recordset& row) const {
  ListItem entry;
  entry.Text = row["UpperLeft"].TextOrEmpty();
  for (const char* column : {"LowerLeft", "UpperRight", "LowerRight", "Number"}) {
    entry.SubItems += row[column].TextOrEmpty();
  }
  entry.SubItems += YesNo(!row["Original"].BoolOrFalse());
  entry.SubItems += IsGlobal(row);
  return entry;
}

void CardTypeForm::ShowEntry(const ListItem& entry) {
  const QStringList& texts = entry.SubItems;
  ShowTypeSample(entry.Text, texts[0], texts[1], texts[2], texts[3]);
  cmdSet.SetCaption(texts[kGlobalColumn - 1] == YesNo(true) ? kLock : kMakeGlobal);
  cmdSet.SetEnabled(IsCustom(entry));
}

void CardTypeForm::ShowTypeSample(const QString& upper_left, const QString& lower_left,
                                  const QString& upper_right, const QString& lower_right,
                                  const QString& number) {
  lblType[0]->SetCaption(upper_left);
  lblType[2]->SetCaption(lower_left);
  lblType[1]->SetCaption(upper_right);
  lblType[3]->SetCaption(lower_right);
  lblNumber.SetCaption(number);
}

void CardTypeForm::ShowTextBoxSample() {
  ShowTypeSample(txtUL.Text(), txtLL.Text(), txtUR.Text(), txtLR.Text(), txtNr.Text());
}

void CardTypeForm::cmdNew_Click() {
  if (IsBlank(txtUL.Text())) {
    MsgBox(QStringLiteral("You must have a text as upper left."), Icon::Exclamation,
           QStringLiteral("Add new type."));
    txtUL.SetFocus();
    return;
  }
  rows_.AddNew();
  rows_["UpperLeft"] = txtUL.Text();
  rows_["LowerLeft"] = txtLL.Text();
  rows_["UpperRight"] = txtUR.Text();
  rows_["LowerRight"] = txtLR.Text();
  rows_["Number"] = txtNr.Text();
  rows_["LanguageID"] = modData::rsSet["LanguageID"].Get();
  rows_["EditionID"] = 2;
  rows_["Original"] = false;
  rows_["UsedInSet"] = optGlobal.Value() ? 0 : int{modData::CurrentSetID};
  rows_.Update();
  RefillWithAdded();
}

void CardTypeForm::cmdSet_Click() {
  FindSelectedRow();
  if (rows_.IsEOF()) return;
  const bool lock = rows_["UsedInSet"].Int32Or(0) == 0;
  rows_["UsedInSet"] = lock ? int{modData::CurrentSetID} : 0;
  cmdSet.SetCaption(lock ? kMakeGlobal : kLock);
  rows_.Update();
  lvType.SetSubItem(lvType.SelectedIndex(), kGlobalColumn, IsGlobal(rows_));
}

}  // namespace orv
