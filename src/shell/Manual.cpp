#include "shell/Manual.h"

#include <QRegularExpression>
#include <algorithm>

#include "catalogues/frmCardBacks.h"
#include "catalogues/frmCardType.h"
#include "database/frmCR.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCardList.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "forms/ControlHelpers.h"
#include "forms/Layout.h"
#include "shell/frmCreate.h"
#include "shell/frmMaster.h"
#include "shell/frmPrint.h"
#include "shell/frmSetName.h"
#include "shell/inner/About.h"
#include "shell/inner/BringOverOldDatabase.h"
#include "shell/inner/CloseLook.h"
#include "shell/inner/SetMenu.h"

// The macro declares a function of the global namespace.
static void InitResource() {
  Q_INIT_RESOURCE(manual);
}

namespace orv {
namespace {

const QString kFolder = QStringLiteral("manual/");
const QString kContents = QStringLiteral("index.md");

template <class T>
bool Is(const Form& form) {
  return dynamic_cast<const T*>(&form) != nullptr;
}

// The page of each form.
constexpr struct {
  bool (*is)(const Form&);
  const char* page;
} kPages[] = {
    {Is<MasterForm>, "first_evening.md"},
    {Is<Card2ndForm>, "cards.md"},
    {Is<Card3rdForm>, "third_edition.md"},
    {Is<Character2ndForm>, "characters.md"},
    {Is<Large2ndForm>, "large_cards.md"},
    {Is<CardListForm>, "sets.md#the-card-list"},
    {Is<CardTypeForm>, "types_and_backs.md"},
    {Is<CardBacksForm>, "types_and_backs.md#card-backs"},
    {Is<SetNameForm>, "sets.md"},
    {Is<ChooseSetForm>, "sharing.md#copies-for-another-set"},
    {Is<CreateForm>, "picture_files.md"},
    {Is<PrintForm>, "print_at_home.md"},
    {Is<CloseLookForm>, "texts_and_marks.md#the-close-look"},
    {Is<CompactForm>, "your_data.md#compacting"},
    {Is<BringOverForm>, "old_files.md"},
    {Is<ManualForm>, "index.md"},
    {Is<AboutForm>, "index.md"},
};

}  // namespace

QString ManualPageOf(const Form* form) {
  for (const auto& entry : kPages) {
    if (form != nullptr && entry.is(*form)) return kFolder + QLatin1String(entry.page);
  }
  return kFolder + kContents;
}

void ShowManual(const Form* form) {
  const QString page = ManualPageOf(form);
  frmManual->pages.Open(page);
  frmManual->Show();
  frmManual->pages.SetFocus();
}

ManualForm::ManualForm()
    : Form(FormKind::Aside, Places::WithFont),
      cmdBack(*this, QString(), QStringLiteral("previous")),
      cmdForward(*this, QString(), QStringLiteral("next")),
      lblFind(*this, QStringLiteral("&Find:")),
      txtFind(*this),
      cmdFind(*this, QStringLiteral("Find &next")),
      lblFound(*this),
      lvContents(*this),
      pages(*this) {
  InitResource();
  SetCaption(QStringLiteral("Manual"));
  SetClientSize(13500, 10200, true);
  Arrange();
  FillContents();
  cmdBack.Click = [this] { pages.GoBack(); };
  cmdForward.Click = [this] { pages.GoForward(); };
  cmdFind.Click = [this] { cmdFind_Click(); };
  txtFind.Change = [this] { lblFound.SetCaption(QString()); };
  txtFind.GotFocus = [this] { SelectText(txtFind); };
  lvContents.ItemClick = [this](const ListItem& item) { pages.Open(item.Key); };
  pages.Opened = [this] { pages_Opened(); };
  pages_Opened();
}

void ManualForm::Arrange() {
  Explain(cmdBack, QStringLiteral("Back (Alt+Left)"));
  Explain(cmdForward, QStringLiteral("Forward (Alt+Right)"));
  lblFind.SetBuddy(txtFind);
  cmdFind.SetDefault(true);
  BoxLayout column(*this, BoxLayout::Column);
  BoxLayout bar = column.AddBox(BoxLayout::Row);
  bar.Add(cmdBack);
  bar.Add(cmdForward);
  bar.AddSpace(12);
  bar.Add(lblFind);
  bar.Add(txtFind);
  bar.Add(cmdFind);
  bar.Add(lblFound);
  bar.AddStretch();
  BoxLayout sides = column.AddBox(BoxLayout::Row, 1);
  sides.Add(lvContents);
  sides.Add(pages, 1);
  for (CommandButton* button : {&cmdBack, &cmdForward}) SetFixedWidth(*button, 40);
  SetFixedWidth(txtFind, 200);
  SetFixedWidth(lvContents, 190);
}

// The contents are a page, too: they are what it links to.
void ManualForm::FillContents() {
  lvContents.AddColumn(QStringLiteral("Contents"), 180, Alignment::Left);
  const auto add = [this](const QString& page, const QString& title) {
    all_.push_back(kFolder + page);
    lvContents.Add({all_.back(), title, {}, {}, {}});
  };
  static const QRegularExpression link(QStringLiteral("^- \\[([^\\]]+)\\]\\(([a-z_]+\\.md)\\)"),
                                       QRegularExpression::MultilineOption);
  add(kContents, QStringLiteral("Contents"));
  auto links = link.globalMatch(PageBrowser::TextOf(kFolder + kContents));
  while (links.hasNext()) {
    const QRegularExpressionMatch match = links.next();
    add(match.captured(2), match.captured(1));
  }
}

void ManualForm::pages_Opened() {
  const QString title = pages.Title();
  SetCaption(title.isEmpty() ? QStringLiteral("Manual") : QStringLiteral("%1 - Manual").arg(title));
  cmdBack.SetEnabled(pages.CanGoBack());
  cmdForward.SetEnabled(pages.CanGoForward());
  lvContents.Select(lvContents.IndexOf(pages.Page()));
}

void ManualForm::cmdFind_Click() {
  const bool found = pages.FindNext(txtFind.Text(), all_);
  lblFound.SetCaption(found || txtFind.Text().isEmpty() ? QString() : QStringLiteral("Not found"));
}

struct ManualForm::Key {
  const char* keys;
  void (*press)(ManualForm& form);
};

const ManualForm::Key ManualForm::kKeys[] = {
    {"Alt+Left", [](ManualForm& form) { form.pages.GoBack(); }},
    {"Alt+Right", [](ManualForm& form) { form.pages.GoForward(); }},
    {"Ctrl+F", [](ManualForm& form) { form.txtFind.SetFocus(); }},
    {"Esc", [](ManualForm&) { frmManual.Unload(); }},
};

QStringList ManualForm::Commands() {
  QStringList keys;
  for (const Key& key : kKeys) keys += QLatin1String(key.keys);
  return keys;
}

bool ManualForm::Claims(const KeyEvent& key) const {
  return std::ranges::any_of(kKeys, [&](const Key& each) { return KeyOf(QLatin1String(each.keys)) == key; });
}

void ManualForm::Form_KeyDown(const KeyEvent& key) {
  for (const Key& each : kKeys) {
    if (KeyOf(QLatin1String(each.keys)) == key) return each.press(*this);
  }
}

}  // namespace orv
