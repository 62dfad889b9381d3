#include "shell/inner/About.h"

#include "base/App.h"
#include "builtin/BuiltIn.h"
#include "forms/Layout.h"

namespace orv {
namespace {

// The file's paragraphs are indented by a blank and parted by a dot.
QString Shown(const QString& copyright) {
  QStringList lines = copyright.split(u'\n');
  for (QString& line : lines) {
    if (line == u" .") line.clear();
    if (line.startsWith(u' ')) line.remove(0, 1);
  }
  return lines.join(QStringLiteral("\r\n"));
}

}  // namespace

AboutForm::AboutForm()
    : Form(FormKind::Dialog, Places::WithFont),
      lblName(*this, App::Running().name),
      lblVersion(*this, QStringLiteral("Version ") + App::Running().version),
      lblLicence(*this, QStringLiteral(
                            "Free software under the GNU General Public License, version 3 or later, without "
                            "any warranty.")),
      lblOthers(*this, QStringLiteral("&Licences of what it uses:")),
      txtLicences(*this, TextBox::MultiLine),
      cmdClose(*this, QStringLiteral("Close")) {
  SetCaption(QStringLiteral("About"));
  SetClientSize(9000, 7500, true);
  lblName.SetBold(true);
  lblLicence.SetWordWrap(true);
  lblOthers.SetBuddy(txtLicences);
  txtLicences.SetLocked(true);
  txtLicences.SetText(Shown(QString::fromUtf8(builtin::Copyright())));
  cmdClose.SetDefault(true);
  cmdClose.SetCancel(true);
  cmdClose.Click = [this] { Hide(); };
  BoxLayout column(*this, BoxLayout::Column, 12);
  for (FormLabel* label : {&lblName, &lblVersion, &lblLicence}) column.Add(*label);
  column.AddSpace(6);
  column.Add(lblOthers);
  column.Add(txtLicences, 1);
  BoxLayout buttons = column.AddBox(BoxLayout::Row);
  buttons.AddStretch();
  buttons.Add(cmdClose);
  cmdClose.SetFocus();
}

}  // namespace orv
