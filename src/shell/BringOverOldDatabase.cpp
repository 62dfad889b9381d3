#include "shell/inner/BringOverOldDatabase.h"

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "exchange/BringOver.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr int kLinesToTell = 20;
const QString kTitle = QStringLiteral("Older database");

bool Ask() {
  return MsgBox(
             QStringLiteral("The program's database, 'orv.mdb', was made by an older version.\r\n\r\n"
                            "Should all its sets be brought over into a new database? The old file is kept "
                            "as 'orv-old.mdb'.\r\n\r\nWith No the program ends, and nothing is changed."),
             Icon::Question, kTitle, Buttons::YesNo) == Answer::Yes;
}

void TellLeftOut(const QStringList& lines, const QString& kept) {
  if (lines.isEmpty()) return;
  QStringList told = lines.mid(0, kLinesToTell);
  if (lines.size() > kLinesToTell)
    told.append(QStringLiteral("and %1 more").arg(lines.size() - kLinesToTell));
  MsgBox(QStringLiteral("The sets are brought over. What the new database has no place for is left in '%1':"
                        "\r\n\r\n%2")
             .arg(FilePart(kept), told.join(QStringLiteral("\r\n"))),
         Icon::Information, kTitle);
}

}  // namespace

BringOverForm::BringOverForm()
    : Form(FormKind::Dialog, Places::WithFont),
      lblWhat(*this, QStringLiteral("The sets are being brought over.")),
      lblShare(*this, QString()) {
  SetCaption(kTitle);
  SetClientSize(4800, 1200);
  lblWhat.Place(240, 240, 4320, 300);
  lblShare.Place(240, 660, 4320, 300);
}

void BringOverForm::ShowShare(int percent) {
  if (percent == shown_) return;
  shown_ = percent;
  lblShare.SetCaption(QStringLiteral("%1 %").arg(percent));
  Application::DrawNow();
}

bool BringOverOldDatabase() {
  const QString path = modData::DatabasePath();
  if (!IsOldDatabase(path)) return true;
  if (!Ask()) return false;
  struct Closer {
    ~Closer() { frmBringOver.Unload(); }
  };
  try {
    QString kept;
    BroughtOver result;
    {
      const Closer closer;
      const WaitCursor hourglass;
      frmBringOver->Show();
      result = BringOverInPlace(path, [](int percent) { frmBringOver->ShowShare(percent); }, kept);
    }
    TellLeftOut(result.left_out, kept);
    return true;
  } catch (const RuntimeError& error) {
    MsgBox(QStringLiteral("The database could not be brought over, and stays as it was.\r\n\r\n") +
               error.Description(),
           Icon::Critical, kTitle);
    return false;
  }
}

}  // namespace orv
