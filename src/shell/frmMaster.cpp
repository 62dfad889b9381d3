#include "shell/frmMaster.h"

#include <QScopedValueRollback>
#include <algorithm>

#include "base/Quietly.h"
#include "base/RuntimeError.h"
#include "base/Settings.h"
#include "base/Value.h"
#include "composition/frmCard.h"
#include "composition/modRotatePic.h"
#include "database/CurrentSet.h"
#include "database/FontProfiles.h"
#include "database/ListHelpers.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/Application.h"
#include "forms/ControlHelpers.h"
#include "forms/Dialogs.h"
#include "forms/HelpKey.h"
#include "output/modFile.h"
#include "pictures/DroppedPicture.h"
#include "pictures/FittedPicture.h"
#include "pictures/modPicture.h"
#include "shell/frmCreate.h"
#include "shell/frmPrint.h"
#include "shell/frmSetName.h"
#include "shell/inner/About.h"
#include "shell/inner/CloseLook.h"
#include "shell/inner/LeftOff.h"
#include "shell/inner/SetMenu.h"
#include "state/modData.h"

namespace orv {
namespace {

const QString kWindowSection = QStringLiteral("MainWindow");

constexpr int kSymbolSide = 25;  // pixels

constexpr const char* kEditors[] = {"frmCard2nd", "frmCard3rd", "frmCharacter2nd", "frmLarge2nd"};

int StoredPlace(const char* key, int fallback) {
  return Value(GetSetting(kWindowSection, QString::fromLatin1(key), QString::number(fallback))).Int32();
}

// Where the user's folder is full or can't be written to, the window comes up elsewhere the next time.
void StorePlace(const char* key, int twips) {
  Quietly({kErrPathFileAccess},
          [&] { SaveSetting(kWindowSection, QString::fromLatin1(key), QString::number(twips)); });
}

// Hides an editor that is shown and shows one that is hidden, with the current set.
template <class T>
void Toggle(FormInstance<T>& form) {
  if (form.IsVisible()) {
    form->Hide();
    return;
  }
  form->FollowSet();
  form->Show();
}

// The editor of a name, made now if need be; nothing where the set has no such editor.
RecordEditor* EditorOf(const QString& form_name) {
  const bool second = modData::CurrentEditionID == 2;
  if (form_name == u"frmCard2nd" && second) return &*frmCard2nd;
  if (form_name == u"frmCard3rd" && !second) return &*frmCard3rd;
  if (form_name == u"frmCharacter2nd") return &*frmCharacter2nd;
  if (form_name == u"frmLarge2nd") return &*frmLarge2nd;
  return nullptr;
}

// An editor that is loaded now shows the current set by that.
template <class T>
void Follow(FormInstance<T>& editor, void (*initialise)()) {
  editor.IsLoaded() ? initialise() : editor.Load();
}

// An editor of cards that comes into being opens the shared recordset anew; it goes back to the card on which
// it stood.
void LoadCardEditors() {
  if (frmCard2nd.IsLoaded() && frmCard3rd.IsLoaded()) return;
  Recordset& cards = modData::rsCard;
  const bool on_card = cards.IsOpen() && !cards.IsBOF() && !cards.IsEOF();
  const std::int32_t card = on_card ? cards["CardID"].Int32() : 0;
  frmCard2nd.Load();
  frmCard3rd.Load();
  if (!on_card) return;
  FindByKey(cards, "CardID", card);
  if (cards.IsEOF()) cards.MoveFirst();
}

}  // namespace

MasterForm::MasterForm()
    : Form(FormKind::Main),
      tbar(*this),
      picSet(*this),
      Label1(picSet, QStringLiteral("Set:")),
      cboSet(picSet),
      cmdNew(picSet, QStringLiteral("New set")),
      cmdEdit(picSet, QStringLiteral("Edit set")),
      cmdDelete(picSet, QStringLiteral("Delete set")),
      ptSet(static_cast<Container&>(picSet)),  // a panel within a panel, not a copy
      chkAutonumber(ptSet, QStringLiteral("Autonumber the cards")),
      Label11(ptSet, QStringLiteral("Symbol:")),
      cmdSymbolAdd(ptSet, QStringLiteral("Select")),
      cmdSymbolDel(ptSet, QStringLiteral("Remove")),
      viewSetSymbol(ptSet, picSetSymbol) {
  SetCaption(QStringLiteral("Varnholt Set Creator"));
  SetClientSize(12180, 8625, true);
  Arrange();
  Subscribe();
}

void MasterForm::Arrange() {
  tbar.Add(QStringLiteral("exit"), QStringLiteral("Exit"), QString(), ToolbarStyle::Plain,
           QStringLiteral("exit"));
  tbar.Add(QString(), QString(), QString(), ToolbarStyle::Separator);
  const auto check = [this](const char* key, const char* tip, const char* icon) {
    const QString text = QString::fromLatin1(tip);
    tbar.Add(QString::fromLatin1(key), text, text, ToolbarStyle::Check, QString::fromLatin1(icon));
  };
  check("card2nd", "Cards - 2nd edition", "card");
  check("character2nd", "Characters - 2nd edition", "character");
  check("large2nd", "Large cards - 2nd edition", "large");
  tbar.Add(QString(), QString(), QString(), ToolbarStyle::Separator);
  const auto plain = [this](const char* key, const char* tip, const char* icon) {
    const QString text = QString::fromLatin1(tip);
    tbar.Add(QString::fromLatin1(key), text, text, ToolbarStyle::Plain, QString::fromLatin1(icon));
  };
  plain("createall", "Create all cards", "createall");
  plain("exporttotext", "Export all texts", "exporttext");
  plain("print", "Print sheets", "print");
  tbar.AddMenu(QStringLiteral("More"), QStringLiteral("More"), QStringLiteral("menu"),
               {{QStringLiteral("saveset"), QStringLiteral("&Save set as...")},
                {QStringLiteral("bringin"), QStringLiteral("&Bring in a set...")},
                {},
                {QStringLiteral("duplicate"), QStringLiteral("&Duplicate\tCtrl+D")},
                {QStringLiteral("copytoset"), QStringLiteral("&Copy to another set...")},
                {QStringLiteral("delete"), QString()},
                {QStringLiteral("closelook"), QStringLiteral("C&lose look\tF8")},
                {},
                {QStringLiteral("manual"), QStringLiteral("&Manual\tF1")},
                {QStringLiteral("about"), QStringLiteral("&About...")}});
  DockTop(tbar);

  picSet.Place(0, 0, 12180, 1035);
  Label1.Place(120, 120, 360, 315);
  cboSet.Place(480, 120, 3495, 315);
  cmdNew.Place(480, 480, 1095, 375);
  cmdEdit.Place(1680, 480, 1095, 375);
  cmdDelete.Place(2880, 480, 1095, 375);
  ptSet.Place(4200, 0, 6135, 975);
  chkAutonumber.Place(840, 120, 2400, 255);
  Label11.Place(3360, 120, 720, 255);
  cmdSymbolAdd.Place(4080, 120, 855, 285);
  cmdSymbolDel.Place(4080, 405, 855, 285);
  viewSetSymbol.Place(5040, 120, 375, 375);
  picSetSymbol.Place(0, 0, kSymbolSide, kSymbolSide);
  picSetSymbol.SetAutoSize(true);
  picSetSymbol.SetName(QStringLiteral("Symbol of the set"));
  Label1.SetBuddy(cboSet);
  cmdSymbolAdd.SetAccessibleName(QStringLiteral("Select the symbol of the set"));
  cmdSymbolDel.SetAccessibleName(QStringLiteral("Remove the symbol of the set"));
  DockTop(picSet);
}

void MasterForm::Subscribe() {
  tbar.ButtonClick = [this](const QString& key) { tbar_ButtonClick(key); };
  tbar.MenuOpens = [this] {
    const RecordEditor* const editor = RecordEditor::InFront();
    const QString noun = editor != nullptr ? editor->Noun() : QStringLiteral("card");
    tbar.SetEntryText(QStringLiteral("delete"), QStringLiteral("D&elete this %1...").arg(noun));
  };
  cboSet.Click = [this] { cboSet_Click(); };
  cmdNew.Click = [this] { cmdNew_Click(); };
  cmdEdit.Click = [this] { cmdEdit_Click(); };
  cmdDelete.Click = [this] { cmdDelete_Click(); };
  chkAutonumber.Click = [this] { chkAutonumber_Click(); };
  const auto take_symbol = [this](const DataObject& data) { TakeSymbol(data); };
  TakePictures(picSetSymbol, take_symbol);
  // A set without a symbol shows no place for it.
  ptSet.ContextMenu = PasteMenu(take_symbol);
  Drop = [this](const DataObject& data) {
    if (!ptSet.Visible()) return;
    const Answer answer = MsgBox(QStringLiteral("Make this picture the symbol of the set?"), Icon::Question,
                                 QStringLiteral("Symbol"), Buttons::YesNo);
    if (answer == Answer::Yes) TakeSymbol(data);
  };
  cmdSymbolAdd.Click = [this] { cmdSymbolAdd_Click(); };
  cmdSymbolDel.Click = [this] { cmdSymbolDel_Click(); };
  CloseLookAsked = [this] { ToggleCloseLook(*this); };
  EditorClosed = [this](const QString& form_name) { FixButton(form_name, 0); };
}

void MasterForm::Form_Load() {
  LoadWindowPosition();
}

bool MasterForm::Claims(const KeyEvent& key) const {
  const RecordEditor* const editor = RecordEditor::Active();
  return editor != nullptr && editor->Claims(key);
}

void MasterForm::Form_KeyDown(const KeyEvent& key) {
  RecordEditor* const editor = RecordEditor::Active();
  if (editor != nullptr) editor->Form_KeyDown(key);
}

void MasterForm::Form_Unload() {
  EditorClosed = nullptr;
  CloseLookAsked = nullptr;
  frmCloseLook.Unload();
  SaveWindowPosition();
  KeepWhereLeft();
  Application::Quit();
}

void MasterForm::InitialiseSet() {
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblSet ORDER BY SetName"), modData::rsSet);
  FillCombo(cboSet, modData::rsSet, QStringLiteral("SetName"), QStringLiteral("SetID"));
  if (modData::CurrentSetID >= 1) {
    SelectItemData(cboSet, modData::CurrentSetID);
  } else if (cboSet.ListCount() > 0) {
    cboSet.SetListIndex(0);
  } else {
    ptSet.SetVisible(false);
    cboSet.SetEnabled(false);
    DisableDelete();
  }
}

void MasterForm::DisableDelete() {
  if (cmdDelete.HasFocus()) FocusSets();
  cmdDelete.SetEnabled(false);
}

void MasterForm::FocusSets() {
  if (cboSet.Enabled()) {
    cboSet.SetFocus();
  } else {
    cmdNew.SetFocus();
  }
}

void MasterForm::cboSet_Click() {
  if (cboSet.ListIndex() < 0) return;
  const WaitCursor hourglass;
  MakeSetCurrent(Value(ChosenItemData(cboSet)).Int16());
  UpdateSetDisplay();
}

void MasterForm::UpdateSetDisplay() {
  if (modData::rsSet.IsEmpty() || modData::CurrentSetID == 0) {
    ShowNoSet();
    return;
  }
  {
    const QScopedValueRollback loading(Loading, true);
    cboSet.SetEnabled(true);
    ptSet.SetVisible(true);
    cmdDelete.SetEnabled(true);
    modData::FindSet(modData::CurrentSetID);
    Recordset& set = modData::rsSet;
    chkAutonumber.SetValue(BoolToCheck(set["Autonumber"].BoolOrFalse()));
    ShowSymbol(modData::SetSymbol, set["UseSymbol"].BoolOrFalse());
  }
  SetChange();
}

void MasterForm::ShowNoSet() {
  const QScopedValueRollback loading(Loading, true);
  cboSet.SetEnabled(false);
  chkAutonumber.SetValue(0);
  ShowSymbol(LoadPicture(), false);
  ptSet.SetVisible(false);
  DisableDelete();
  RecordEditor::LockAll();
}

void MasterForm::ShowSymbol(const Picture& symbol, bool use) {
  picSetSymbol.SetPicture(symbol);
  viewSetSymbol.SetVisible(use);
  modData::SetSymbol = symbol;
}

// The editor of 3rd-edition cards does not follow by itself.
void MasterForm::SetChange() {
  Follow(frmCard2nd, [] { frmCard2nd->InitCard2nd(); });
  Follow(frmCharacter2nd, [] { frmCharacter2nd->Initialise(); });
  Follow(frmLarge2nd, [] { frmLarge2nd->InitLarge2nd(); });
}

void MasterForm::RedrawEditors() {
  LoadCardEditors();
  frmCard2nd->UpdateDisplay();
  frmCharacter2nd->UpdateDisplay();
  frmLarge2nd->UpdateDisplay();
  frmCard3rd->UpdateDisplay();
}

// What the dialog says, into the row on which rsSet stands.
void MasterForm::WriteSet() {
  Recordset& set = modData::rsSet;
  set["SetName"] = frmSetName->txtName.Text();
  set["LanguageID"] = ChosenItemData(frmSetName->cboLanguage);
  set["EditionID"] = frmSetName->opt2nd.Value() ? 2 : 3;
}

void MasterForm::cmdNew_Click() {
  frmSetName->Init(QString(), 0, 0);
  frmSetName->ShowModal();
  if (frmSetName->OK) {
    Transaction transaction(modData::cn);
    Recordset& set = modData::rsSet;
    set.AddNew();
    set["DefaultCardTypeID"] = 0;
    set["DefaultCardBackID"] = 0;
    set["ArtistColour"] = kArtistColour;
    set["PicFormatID"] = 1;
    WriteSet();
    CreateSetFonts(set);
    set.Update();
    transaction.Commit();
    set.MoveLast();
    modData::CurrentSetID = set["SetID"].Int16();
    InitialiseSet();
    UpdateSetDisplay();
  }
  frmSetName.Unload();
}

void MasterForm::cmdEdit_Click() {
  Recordset& set = modData::rsSet;
  frmSetName->Init(set["SetName"].TextOrEmpty(), set["LanguageID"].Int32Or(0), set["EditionID"].Int16Or(0));
  frmSetName->ShowModal();
  if (frmSetName->OK) {
    WriteSet();
    set.Update();
    InitialiseSet();
    UpdateSetDisplay();
  }
  frmSetName.Unload();
}

void MasterForm::cmdDelete_Click() {
  if (MsgBox(QStringLiteral("Are you sure you want to delete the set?"), Icon::Question,
             QStringLiteral("Delete Set"), Buttons::NoYes) != Answer::Yes) {
    return;
  }
  modData::FindSet(modData::CurrentSetID);
  modData::rsSet.Delete();
  modData::CurrentSetID = 0;
  InitialiseSet();
  UpdateSetDisplay();
  FocusSets();
}

void MasterForm::chkAutonumber_Click() {
  if (Loading) return;
  modData::rsSet["AutoNumber"] = chkAutonumber.Value() == 1;
  modData::rsSet.Update();
  RedrawEditors();
}

void MasterForm::cmdSymbolAdd_Click() {
  CommonDialog dialog = PictureDialog(QStringLiteral("Choose picture"));
  if (!ChoosesFile(dialog)) return;
  const std::optional<Picture> symbol = PictureIn(dialog.FileName);
  if (!symbol) return;
  picSetSymbol.SetPicture(*symbol);
  Recordset& set = modData::rsSet;
  // The result is a length or the number of an error; only a negative one tells of a failure.
  if (ReadFileToField(dialog.FileName, set["Symbol"]).Int64() < 0) {
    MsgBox(QStringLiteral("Error while loading the symbol"), Icon::Critical, QStringLiteral("Symbol"));
    return;
  }
  set["UseSymbol"] = true;
  set.Update();
  ShowSymbol(*symbol, true);
  RedrawEditors();
}

// A picture that was dropped or pasted is made as small as the place where a symbol is shown.
void MasterForm::TakeSymbol(const DataObject& data) {
  if (data.IsEmpty() || modData::CurrentSetID == 0) return;
  const Picture symbol =
      PictureOf(data, [](const QByteArray& bytes) { return PictureWithin(bytes, kSymbolSide, kSymbolSide); });
  if (symbol.IsEmpty()) return;
  Recordset& set = modData::rsSet;
  set["Symbol"] = BitmapFile(symbol);
  set["UseSymbol"] = true;
  set.Update();
  ShowSymbol(symbol, true);
  RedrawEditors();
}

void MasterForm::cmdSymbolDel_Click() {
  ShowSymbol(LoadPicture(), false);
  modData::rsSet["UseSymbol"] = false;
  modData::rsSet.Update();
  RedrawEditors();
  cmdSymbolAdd.SetFocus();
}

void MasterForm::tbar_ButtonClick(const QString& key) {
  if (key == u"exit") frmMaster.Unload();
  if (key == u"card2nd" && modData::CurrentEditionID == 2) {
    Toggle(frmCard2nd);
  } else if (key == u"card2nd") {
    Toggle(frmCard3rd);
  }
  if (key == u"character2nd") Toggle(frmCharacter2nd);
  if (key == u"large2nd") Toggle(frmLarge2nd);
  if (key == u"createall") CreateAll();
  if (key == u"exporttotext") ExportToText();
  if (key == u"print") PrintSheetsOfSet();
  if (key == u"saveset") SaveSetAs();
  if (key == u"bringin") ShowBroughtIn(BringInSet());
  if (key == u"duplicate") DuplicateInEditor();
  if (key == u"closelook") ToggleCloseLook(*this);
  if (key == u"copytoset") CopyToAnotherSet();
  if (key == u"manual") AskForHelp(nullptr);
  if (key == u"delete") DeleteInEditor();
  if (key == u"about") {
    frmAbout->ShowModal();
    frmAbout.Unload();
  }
}

void MasterForm::ShowBroughtIn(std::int32_t set_id) {
  if (set_id == 0) return;
  modData::CurrentSetID = Value(set_id).Int16();
  InitialiseSet();
  UpdateSetDisplay();
}

void MasterForm::CreateAll() {
  if (modData::CurrentSetID <= 0) {
    MsgBox(QStringLiteral("Select a set first."), Icon::Exclamation, QStringLiteral("Create cards"));
    return;
  }
  frmCard->ShowBehind();
  frmCreate->ShowModal();
  frmCreate.Unload();
}

void MasterForm::ExportToText() {
  CommonDialog dialog;
  dialog.DialogTitle = QStringLiteral("Save set as text");
  dialog.CancelError = true;
  const auto choose = [&dialog] {
    dialog.FileName = modData::rsSet["SetName"].TextOrEmpty() + QStringLiteral(".txt");
    dialog.Filter = QStringLiteral("All files(*.*)|*.*|Text file (*.txt)|*.txt");
    dialog.DefaultExt = QStringLiteral("txt");
    dialog.FilterIndex = 2;
    dialog.Flags = 0x280806;
    dialog.ShowSave();
  };
  // Without a set there is no record to take its name from.
  if (Quietly({kErrCancel, kErrNoCurrentRecord}, choose)) ExportSet(dialog.FileName, modData::CurrentSetID);
}

void MasterForm::PrintSheetsOfSet() {
  if (modData::CurrentSetID <= 0) {
    MsgBox(QStringLiteral("Select a set first."), Icon::Exclamation, QStringLiteral("Print sheets"));
    return;
  }
  frmPrint->ShowModal();
  const std::optional<BadCard> chosen = frmPrint->Chosen;
  frmPrint.Unload();
  if (chosen) ShowBadCard(*chosen);
}

void MasterForm::ShowBadCard(const BadCard& bad) {
  for (const char* name : kEditors) {
    RecordEditor* const editor = EditorOf(QLatin1String(name));
    if (editor == nullptr || &editor->Output() != bad.kind) continue;
    ShowEditor(*editor, bad.id);
    editor->FocusField(bad.column);
  }
}

void MasterForm::ShowEditor(RecordEditor& editor, std::int32_t record) {
  editor.FollowSet();
  editor.Show();
  editor.ShowRecord(record);
  FixButton(editor.FormName(), 1);
}

void MasterForm::FixButton(const QString& form_name, int value) {
  struct Pair {
    const char* form;
    int button;
  };
  for (const Pair& pair :
       {Pair{"frmCard2nd", 3}, {"frmCard3rd", 3}, {"frmCharacter2nd", 4}, {"frmLarge2nd", 5}}) {
    if (form_name == QLatin1String(pair.form)) tbar.SetValue(pair.button, value);
  }
}

void MasterForm::ShowWhereLeft() {
  const LeftOff left = LeftOff::Of(modData::DatabasePath());
  if (modData::CurrentSetID == 0 || left.set == 0) return;
  if (modData::CurrentSetID != left.set) SelectItemData(cboSet, left.set);
  if (modData::CurrentSetID != left.set) return;
  for (const LeftOff::Editor& each : left.editors) {
    RecordEditor* const editor = EditorOf(each.form);
    if (editor != nullptr) ShowEditor(*editor, each.record);
  }
}

// Where the user's folder is full or can't be written to, the program opens on the first set the next time.
void MasterForm::KeepWhereLeft() const {
  if (!modData::DatabaseFound) return;
  LeftOff left;
  left.set = modData::CurrentSetID;
  const auto add = [&left](auto& form) {
    if (form.IsVisible()) left.editors.push_back({form->FormName(), form->ShownKey()});
  };
  add(frmCard2nd);
  add(frmCard3rd);
  add(frmCharacter2nd);
  add(frmLarge2nd);
  if (const RecordEditor* const front = RecordEditor::InFront()) {
    std::ranges::stable_partition(
        left.editors, [&](const LeftOff::Editor& each) { return each.form != front->FormName(); });
  }
  Quietly({kErrPathFileAccess}, [&] { left.Keep(modData::DatabasePath()); });
}

void MasterForm::LoadWindowPosition() {
  SetWidth(StoredPlace("WidthPos", Screen::Width() / 3));
  SetHeight(StoredPlace("HeightPos", Screen::Height() / 3));
  SetLeft(StoredPlace("LeftPos", (Screen::Width() - Width()) / 2));
  SetTop(StoredPlace("TopPos", (Screen::Height() - Height()) / 2));
  SetWindowState(StoredPlace("WindowState", 0));
  if (WindowState() != 0) return;
  SetLeft(std::max(Left(), 0));
  SetTop(std::max(Top(), 0));
  if (Left() + Width() > Screen::Width()) SetLeft(Screen::Width() - Width());
  if (Top() + Height() > Screen::Height()) SetTop(Screen::Height() - Height());
}

void MasterForm::SaveWindowPosition() {
  if (WindowState() == 0) {
    StorePlace("LeftPos", Left());
    StorePlace("TopPos", Top());
    StorePlace("WidthPos", Width());
    StorePlace("HeightPos", Height());
  }
  StorePlace("WindowState", WindowState());
}

}  // namespace orv
