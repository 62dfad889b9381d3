#include "shell/inner/SetMenu.h"

#include <QFileInfo>

#include "base/FileName.h"
#include "base/Files.h"
#include "base/Quietly.h"
#include "base/RuntimeError.h"
#include "base/Shortened.h"
#include "database/ListHelpers.h"
#include "editors/RecordEditor.h"
#include "exchange/SetFile.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "state/modData.h"

namespace orv {
namespace {

const QString kSave = QStringLiteral("Save set as");
const QString kBring = QStringLiteral("Bring in a set");
const QString kCopy = QStringLiteral("Copy");
const QString kGap = QStringLiteral("\r\n\r\n");
constexpr int kNamesToTell = 20;

CommonDialog FileDialog(const QString& title) {
  CommonDialog dialog;
  dialog.DialogTitle = title + QStringLiteral("...");
  dialog.Filter = QStringLiteral("Card sets (*.orvset)|*.orvset|All files(*.*)|*.*");
  dialog.DefaultExt = QStringLiteral("orvset");
  dialog.Flags = 0x1802;
  return dialog;
}

// Runs an action; a failure is told under a title.
template <class Action>
bool Try(const QString& title, const QString& failure, Action action) {
  try {
    const WaitCursor hourglass;
    action();
    return true;
  } catch (const RuntimeError& error) {
    MsgBox(failure + kGap + error.NumberAndDescription(), Icon::Critical, title);
    return false;
  }
}

QString NotBroughtIn(const QString& path) {
  return QStringLiteral("\"%1\" could not be brought in, and nothing has changed.").arg(FilePart(path));
}

// The key of the first, 0 for none.
std::int32_t BringIn(const QString& path) {
  std::vector<std::int32_t> keys;
  Try(kBring, NotBroughtIn(path), [&] { keys = BringInSets(modData::cn, path); });
  return keys.empty() ? 0 : keys.front();
}

// A file from elsewhere may hold any number of names of any length.
QString Question(const QStringList& names, const QString& path) {
  QStringList lines;
  for (const QString& name : names.mid(0, kNamesToTell)) lines.append(Shortened(name));
  if (names.size() > kNamesToTell)
    lines.append(QStringLiteral("and %1 more").arg(names.size() - kNamesToTell));
  const QString question = names.size() == 1 ? QStringLiteral("Bring in this set?")
                                             : QStringLiteral("Bring in these %1 sets?").arg(names.size());
  return question + kGap + lines.join(QStringLiteral("\r\n")) + kGap +
         (names.size() == 1 ? QStringLiteral("It is in the file ")
                            : QStringLiteral("They are in the file ")) +
         path;
}

RecordEditor* EditorInFront() {
  RecordEditor* const editor = RecordEditor::InFront();
  if (editor == nullptr) {
    MsgBox(QStringLiteral("Open an editor on what is to be copied first."), Icon::Exclamation, kCopy);
  }
  return editor;
}

}  // namespace

ChooseSetForm::ChooseSetForm()
    : Form(FormKind::Dialog, Places::WithFont),
      lblSet(*this, QStringLiteral("&Copy to the end of:")),
      cboSet(*this),
      cmdOK(*this, QStringLiteral("OK")),
      cmdCancel(*this, QStringLiteral("Cancel")) {
  SetCaption(QStringLiteral("Copy to another set"));
  SetClientSize(4785, 1815);
  lblSet.Place(120, 240, 4455, 285);
  cboSet.Place(120, 600, 4455, 315);
  cmdOK.Place(1860, 1260, 1305, 375);
  cmdCancel.Place(3270, 1260, 1305, 375);
  lblSet.SetBuddy(cboSet);
  cmdOK.SetDefault(true);
  cmdCancel.SetCancel(true);
  cmdOK.Click = [this] {
    OK = true;
    Hide();
  };
  cmdCancel.Click = [this] { Hide(); };
}

bool ChooseSetForm::Fill() {
  OK = false;
  Recordset sets = modData::OpenSnapshot(
      QStringLiteral(
          "SELECT SetID, SetName & \"\" AS Shown FROM tblSet WHERE SetID <> %1 AND EditionID = %2 ORDER BY "
          "SetName")
          .arg(modData::CurrentSetID)
          .arg(modData::CurrentEditionID));
  FillCombo(cboSet, sets, QStringLiteral("Shown"), QStringLiteral("SetID"));
  if (cboSet.ListCount() == 0) return false;
  cboSet.SetListIndex(0);
  return true;
}

void SaveSetAs() {
  if (modData::CurrentSetID <= 0) {
    MsgBox(QStringLiteral("Select a set first."), Icon::Exclamation, kSave);
    return;
  }
  CommonDialog dialog = FileDialog(kSave);
  dialog.FileName = AsFileName(modData::rsSet["SetName"].TextOrEmpty()) + QStringLiteral(".orvset");
  dialog.CancelError = true;
  if (!Quietly({kErrCancel}, [&] { dialog.ShowSave(); })) return;
  const bool saved = Try(kSave, QStringLiteral("The set is NOT saved due to an error."),
                         [&] { SaveSet(modData::cn, modData::CurrentSetID, dialog.FileName); });
  if (saved) MsgBox(QStringLiteral("The set is saved."), Icon::Information, kSave);
}

std::int32_t BringInSet() {
  CommonDialog dialog = FileDialog(kBring);
  dialog.CancelError = true;
  if (!Quietly({kErrCancel}, [&] { dialog.ShowOpen(); })) return 0;
  return BringIn(dialog.FileName);
}

std::int32_t OfferSet(const QString& path) {
  const QFileInfo file(path);
  QString why = file.isDir()     ? QStringLiteral("It is a folder.")
                : !file.exists() ? QStringLiteral("There is no such file.")
                                 : QString();
  QStringList names;
  if (why.isEmpty()) {
    const bool read = Try(kBring, NotBroughtIn(path), [&] { names = SetsInFile(path); });
    if (!read) return 0;
    if (names.isEmpty()) why = QStringLiteral("There is no set in it.");
  }
  if (!why.isEmpty()) {
    MsgBox(NotBroughtIn(path) + kGap + why, Icon::Critical, kBring);
    return 0;
  }
  const bool wanted = MsgBox(Question(names, path), Icon::Question, kBring, Buttons::YesNo) == Answer::Yes;
  return wanted ? BringIn(path) : 0;
}

void DuplicateInEditor() {
  if (RecordEditor* const editor = EditorInFront()) editor->Duplicate();
}

void DeleteInEditor() {
  RecordEditor* const editor = RecordEditor::InFront();
  if (editor == nullptr) {
    MsgBox(QStringLiteral("Open an editor on what is to be deleted first."), Icon::Exclamation,
           QStringLiteral("Delete"));
  } else {
    editor->DeleteAfterQuestion();
  }
}

void CopyToAnotherSet() {
  RecordEditor* const editor = EditorInFront();
  if (editor == nullptr) return;
  if (!frmChooseSet->Fill()) {
    MsgBox(QStringLiteral("There is no other set of this edition."), Icon::Exclamation, kCopy);
  } else {
    frmChooseSet->ShowModal();
    if (frmChooseSet->OK) editor->CopyToSet(ChosenItemData(frmChooseSet->cboSet));
  }
  frmChooseSet.Unload();
}

}  // namespace orv
