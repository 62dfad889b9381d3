#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <algorithm>
#include <functional>

#include "base/RuntimeError.h"
#include "forms/Dialogs.h"
#include "forms/inner/Palette.h"

namespace orv {
namespace {

constexpr int kAskOverwrite = 0x2;
constexpr int kPathMustExist = 0x800;
constexpr int kFileMustExist = 0x1000;

// Where the dialog before was left.
QString& LastFolder() {
  static QString folder = QDir::homePath();
  return folder;
}

void Cancel(const CommonDialog& dialog) {
  if (dialog.CancelError) throw RuntimeError(kErrCancel, QStringLiteral("Cancel was selected."));
}

// "text|*.a;*.b|text|*.*" as the toolkit's "text (*.a *.b)", of which it shows the text alone.
QStringList NameFilters(const QString& filter) {
  QStringList filters;
  const QStringList parts = filter.split(u'|');
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
    // Names need not have a dot here.
    patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
    filters += QStringLiteral("%1 (%2)").arg(parts[i], patterns.join(u' '));
  }
  return filters;
}

// A proposed name is no path: what would lead into another folder stands for itself no longer.
QString ProposedName(const QString& name) {
  if (QDir::isAbsolutePath(name)) return name;
  QString plain = name;
  return plain.replace(u'/', u'_').replace(u'\\', u'_');
}

void SetUp(QFileDialog& dialog, const CommonDialog& wanted, bool save) {
  QFileDialog::Options options = QFileDialog::DontUseNativeDialog | QFileDialog::HideNameFilterDetails;
  if ((wanted.Flags & kAskOverwrite) == 0) options |= QFileDialog::DontConfirmOverwrite;
  dialog.setOptions(options);
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  const bool must_exist = !save && (wanted.Flags & kFileMustExist) != 0;
  dialog.setFileMode(must_exist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setDirectory(wanted.InitDir.isEmpty() ? LastFolder() : wanted.InitDir);
  const QStringList filters = NameFilters(wanted.Filter);
  if (!filters.isEmpty()) {
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(wanted.FilterIndex - 1, filters.first()));
  }
  dialog.setDefaultSuffix(wanted.DefaultExt);
  if (!wanted.FileName.isEmpty()) dialog.selectFile(ProposedName(wanted.FileName));
}

// The chosen path, or empty for Cancel.
QString ChosenFile(QFileDialog& dialog, int flags) {
  while (dialog.exec() == QDialog::Accepted) {
    QString path = dialog.selectedFiles().value(0);
    const QFileInfo file(path);
    if ((flags & kPathMustExist) == 0 || file.absoluteDir().exists()) return path;
    MsgBox(QStringLiteral("%1\r\nPath does not exist.").arg(QDir::toNativeSeparators(file.absolutePath())),
           Icon::Exclamation, dialog.windowTitle());
  }
  return {};
}

void ShowFile(CommonDialog& wanted, bool save) {
  if (DialogResponder* const responder = CurrentResponder()) {
    const QString path = responder->OnFile(wanted, save);
    if (path.isEmpty()) return Cancel(wanted);
    wanted.FileName = path;
    return;
  }
  const QString title = !wanted.DialogTitle.isEmpty() ? wanted.DialogTitle
                        : save                        ? QStringLiteral("Save As")
                                                      : QStringLiteral("Open");
  QFileDialog dialog(QApplication::activeWindow(), title);
  SetUp(dialog, wanted, save);
  const QString path = ChosenFile(dialog, wanted.Flags);
  if (path.isEmpty()) return Cancel(wanted);
  LastFolder() = QFileInfo(path).absolutePath();
  wanted.FileName = QDir::toNativeSeparators(path);
  const QStringList filters = dialog.nameFilters();
  for (int i = 0; i < filters.size(); ++i) {
    if (filters[i].startsWith(dialog.selectedNameFilter())) wanted.FilterIndex = i + 1;
  }
}

}  // namespace

void CommonDialog::ShowOpen() {
  ShowFile(*this, false);
}
void CommonDialog::ShowSave() {
  ShowFile(*this, true);
}

void CommonDialog::ShowColor() {
  if (DialogResponder* const responder = CurrentResponder()) {
    const Colour before = Color;
    if (responder->OnColor(*this)) return;
    Color = before;
    return Cancel(*this);
  }
  QColorDialog dialog(ToQColor(Color), QApplication::activeWindow());
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (!DialogTitle.isEmpty()) dialog.setWindowTitle(DialogTitle);
  if (dialog.exec() != QDialog::Accepted) return Cancel(*this);
  Color = FromQColor(dialog.currentColor());
}

}  // namespace orv
