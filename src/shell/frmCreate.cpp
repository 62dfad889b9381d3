#include "shell/frmCreate.h"

#include "base/Rounding.h"
#include "base/Shortened.h"
#include "database/ListHelpers.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Application.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "forms/Layout.h"
#include "output/RunTally.h"
#include "output/WriteRecords.h"
#include "pictures/modDirBrowse.h"
#include "state/modData.h"

namespace orv {
namespace {

const QString kTitle = QStringLiteral("Create cards");
constexpr int kNewsToTell = 20;

// Stores one option in the record of the current set.
void Store(const char* column, const Value& value) {
  modData::rsSet[column] = value;
  modData::rsSet.Update();
}

// A run may have any number of them.
QString WordsOf(const QStringList& news) {
  QStringList lines;
  for (const QString& line : news.mid(0, kNewsToTell)) lines.append(Shortened(line, 160));
  if (news.size() > kNewsToTell) lines.append(QStringLiteral("and %1 more").arg(news.size() - kNewsToTell));
  return lines.join(QStringLiteral("\r\n"));
}

}  // namespace

CreateForm::CreateForm()
    : Form(FormKind::Dialog),
      fraInfo(*this, QStringLiteral("Information")),
      lblSaveTo(fraInfo, QStringLiteral("Save &to:")),
      txtSaveTo(fraInfo),
      cmdSaveTo(fraInfo, QStringLiteral("...")),
      lblFilenamePrefix(fraInfo, QStringLiteral("&Filename prefix:")),
      txtFilenamePrefix(fraInfo),
      chkFileNr(fraInfo, QStringLiteral("Add &card number to created cards filename")),
      chkNoBack(fraInfo, QStringLiteral("C&reate cards without backside")),
      lblSaveFormat(fraInfo, QStringLiteral("Sa&ve format:")),
      cboSaveFormat(fraInfo),
      chkReplaceSpace(fraInfo, QStringLiteral("Re&place all spaces with underline in filenames")),
      fraCreate(*this, QStringLiteral("Select which card to create")),
      lblEdition(fraCreate, QStringLiteral("2nd Edition")),
      chk2ndCard(fraCreate, QStringLiteral("Cards")),
      chk2ndChar(fraCreate, QStringLiteral("Characters")),
      chk2ndLarge(fraCreate, QStringLiteral("Large Cards")),
      lblNr2ndCards(fraCreate),
      lblNr2ndChar(fraCreate),
      lblNr2ndLarge(fraCreate),
      cmdCreate(*this, QStringLiteral("Create cards")),
      cmdDone(*this, QStringLiteral("Done")) {
  SetCaption(QStringLiteral("Create Cards"));
  Arrange();
  txtSaveTo.Change = [this] { Store("SaveTo", txtSaveTo.Text()); };
  txtFilenamePrefix.Change = [this] { Store("FilenamePrefix", txtFilenamePrefix.Text()); };
  txtSaveTo.GotFocus = [this] { SelectText(txtSaveTo); };
  txtFilenamePrefix.GotFocus = [this] { SelectText(txtFilenamePrefix); };
  chkFileNr.Click = [this] { Store("FileCardNr", chkFileNr.Value() == 1); };
  chkNoBack.Click = [this] { Store("NoBack", chkNoBack.Value() == 1); };
  chkReplaceSpace.Click = [this] { Store("ReplaceSpace", chkReplaceSpace.Value() == 1); };
  cboSaveFormat.Click = [this] { cboSaveFormat_Click(); };
  cmdSaveTo.Click = [this] { cmdSaveTo_Click(); };
  cmdCreate.Click = [this] { cmdCreate_Click(); };
  cmdDone.Click = [this] { Hide(); };
}

void CreateForm::Arrange() {
  SetClientSize(7200, 5700);
  fraInfo.Place(120, 120, 6960, 3000);
  lblSaveTo.Place(240, 420, 1455, 255);
  txtSaveTo.Place(1740, 375, 4380, 330);
  cmdSaveTo.Place(6240, 375, 480, 330);
  lblFilenamePrefix.Place(240, 840, 1455, 255);
  txtFilenamePrefix.Place(1740, 795, 4380, 330);
  lblSaveFormat.Place(240, 1260, 1455, 255);
  cboSaveFormat.Place(1740, 1215, 1800, 330);
  chkFileNr.Place(240, 1740, 6480, 255);
  chkNoBack.Place(240, 2115, 6480, 255);
  chkReplaceSpace.Place(240, 2490, 6480, 255);
  fraCreate.Place(120, 3240, 4500, 2280);
  lblEdition.Place(360, 360, 1215, 255);
  chk2ndCard.Place(360, 720, 855, 255);
  chk2ndChar.Place(360, 1080, 1095, 255);
  chk2ndLarge.Place(360, 1440, 1335, 255);
  PlaceCounters(375);
  cmdCreate.Place(5280, 4560, 1800, 435);
  cmdDone.Place(5280, 5085, 1800, 435);
  cmdDone.SetCancel(true);
  Explain(cmdSaveTo, QStringLiteral("Choose the folder"));
  SetTabOrder(txtFilenamePrefix, cboSaveFormat);
  SetTabOrder(cboSaveFormat, chkFileNr);
  lblSaveTo.SetBuddy(txtSaveTo);
  lblFilenamePrefix.SetBuddy(txtFilenamePrefix);
  lblSaveFormat.SetBuddy(cboSaveFormat);
}

void CreateForm::PlaceCounters(int width) {
  lblNr2ndCards.Place(1680, 720, width, 255);
  lblNr2ndChar.Place(1680, 1080, width, 255);
  lblNr2ndLarge.Place(1680, 1440, width, 255);
}

void CreateForm::Form_Load() {
  filling_ = true;
  Recordset formats = modData::OpenSnapshot(QStringLiteral("SELECT * FROM tblPicFormat"));
  FillCombo(cboSaveFormat, formats, QStringLiteral("PicFormat"), QStringLiteral("PicFormatID"));
  filling_ = false;
  ShowOptions();
  const auto has_rows = [](const Recordset& rows) { return rows.IsOpen() && !rows.IsEmpty(); };
  chk2ndCard.SetEnabled(has_rows(modData::rsCard));
  chk2ndChar.SetEnabled(has_rows(modData::rsCharacter));
  chk2ndLarge.SetEnabled(has_rows(modData::rsLargeCard));
}

void CreateForm::ShowOptions() {
  Recordset& set = modData::rsSet;
  txtSaveTo.SetText(set["SaveTo"].TextOrEmpty());
  chkFileNr.SetValue(BoolToCheck(set["FileCardNr"].BoolOrFalse()));
  chkNoBack.SetValue(BoolToCheck(set["NoBack"].BoolOrFalse()));
  chkReplaceSpace.SetValue(BoolToCheck(set["ReplaceSpace"].BoolOrFalse()));
  txtFilenamePrefix.SetText(set["FilenamePrefix"].TextOrEmpty());
  SelectItemData(cboSaveFormat, set["PicFormatID"].Int32Or(kBmp));
  if (set["EditionID"].Int16Or(0) == 2) lblEdition.SetCaption(QStringLiteral("2nd Edition"));
  if (set["EditionID"].Int16Or(0) == 3) lblEdition.SetCaption(QStringLiteral("3rd Edition"));
}

void CreateForm::cboSaveFormat_Click() {
  if (filling_ || cboSaveFormat.ListIndex() < 0) return;
  Store("PicFormatID", ChosenItemData(cboSaveFormat));
}

void CreateForm::cmdSaveTo_Click() {
  const QString folder = BrowseForFolder(*this);
  if (!folder.isEmpty()) txtSaveTo.SetText(folder);
}

void CreateForm::cmdCreate_Click() {
  if (txtSaveTo.Text().isEmpty()) {
    MsgBox(QStringLiteral("You must firstselect a folder to save your cards in."), Icon::Exclamation, kTitle);
    return;
  }
  const WaitCursor hourglass;
  const bool cards = chk2ndCard.Value() == 1;
  const bool characters = chk2ndChar.Value() == 1;
  const bool large = chk2ndLarge.Value() == 1;
  if (modData::rsSet["EditionID"].Int16Or(0) == 2) {
    CreateAllCards(cards, characters, large, false, false, false);
  } else {
    CreateAllCards(false, false, false, cards, characters, large);
  }
}

void CreateForm::SetLabelColour(Colour colour) {
  for (FormLabel* label : {&lblNr2ndCards, &lblNr2ndChar, &lblNr2ndLarge}) label->SetForeColor(colour);
}

void CreateForm::CreateAllCards(bool Card2nd, bool Character2nd, bool LargeCard2nd, bool Card3rd,
                                bool /*Character3rd*/, bool /*LargeCard3rd*/) {
  const struct {
    bool wanted;
    const OutputKind& kind;
    FormLabel& counter;
    RecordEditor& (*editor)();
  } passes[] = {
      {Card2nd, kCards2nd, lblNr2ndCards, []() -> RecordEditor& { return *frmCard2nd; }},
      {Card3rd, kCards3rd, lblNr2ndCards, []() -> RecordEditor& { return *frmCard3rd; }},
      {Character2nd, kCharacters2nd, lblNr2ndChar, []() -> RecordEditor& { return *frmCharacter2nd; }},
      {LargeCard2nd, kLargeCards2nd, lblNr2ndLarge, []() -> RecordEditor& { return *frmLarge2nd; }},
  };
  for (FormLabel* label : {&lblNr2ndCards, &lblNr2ndChar, &lblNr2ndLarge}) label->SetCaption(QString());
  SetLabelColour(Rgb(0xFF, 0, 0));
  const RunTally tally;
  for (const auto& pass : passes) {
    if (!pass.wanted || !pass.kind.records.IsOpen() || pass.kind.records.IsEmpty()) continue;
    RecordEditor& editor = pass.editor();  // made now, it opens the records anew
    editor.ShowLast(WriteRecords(pass.kind, FormatOfSet(), [&](int number) {
      if (number == 1000) PlaceCounters(600);  // three digits fill the usual room
      pass.counter.SetCaption(QString::number(number));
      pass.counter.Refresh();
    }));
  }
  SetLabelColour(kBlack);
  const BesideBoxes news(WordsOf(tally.Conclude().news));
  MsgBox(QStringLiteral("Done creating cards."), Icon::Information, kTitle);
}

}  // namespace orv
