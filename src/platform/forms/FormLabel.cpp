#include <QCheckBox>
#include <QLabel>
#include <QPalette>
#include <QPlainTextEdit>

#include "forms/Controls.h"
#include "forms/inner/Palette.h"

namespace orv {
namespace {

constexpr int kFirstLine = 5;  // pixels from the top of a high field to its first line

QLabel& Of(const Control& control) {
  return *static_cast<QLabel*>(control.Handle());
}

// "A&rtist:" names its field "Artist".
QString NameFrom(const QString& caption) {
  QString name;
  for (int i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && ++i >= caption.size()) break;
    name += caption[i];
  }
  name = name.trimmed();
  return name.endsWith(u':') ? name.chopped(1) : name;
}

void NameBuddy(const QLabel& label) {
  if (label.buddy() != nullptr) label.buddy()->setAccessibleName(NameFrom(label.text()));
}

}  // namespace

FormLabel::FormLabel(Container& parent, const QString& caption, Alignment alignment) {
  auto* const label = new QLabel(parent.Handle());
  label->setTextFormat(Qt::PlainText);
  label->setText(caption);
  const Qt::Alignment side = alignment == Alignment::Left    ? Qt::AlignLeft
                             : alignment == Alignment::Right ? Qt::AlignRight
                                                             : Qt::AlignHCenter;
  label->setAlignment(side | Qt::AlignVCenter);
  Adopt(label);
}

QString FormLabel::Caption() const {
  return Of(*this).text();
}

void FormLabel::SetCaption(const QString& caption) {
  Of(*this).setText(caption);
  NameBuddy(Of(*this));
}

void FormLabel::SetBuddy(Control& field) {
  // To a box the key only leads: the toolkit would tick it.
  if (qobject_cast<QCheckBox*>(field.Handle()) != nullptr) {
    auto* const way = new QWidget(&Of(*this));
    way->setFocusPolicy(Qt::ClickFocus);
    way->setFocusProxy(field.Handle());
    return Of(*this).setBuddy(way);
  }
  Of(*this).setBuddy(field.Handle());
  NameBuddy(Of(*this));
  // In front of a high field it stands beside the first line.
  if (qobject_cast<QPlainTextEdit*>(field.Handle()) == nullptr) return;
  Of(*this).setAlignment((Of(*this).alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignTop);
  Of(*this).setContentsMargins(0, kFirstLine, 0, 0);
}

void FormLabel::SetForeColor(Colour colour) {
  QPalette palette = Of(*this).palette();
  palette.setColor(QPalette::WindowText, ToQColor(colour));
  Of(*this).setPalette(palette);
}

void FormLabel::SetWordWrap(bool wrap) {
  Of(*this).setWordWrap(wrap);
  const Qt::Alignment side = Of(*this).alignment() & Qt::AlignHorizontal_Mask;
  Of(*this).setAlignment(side | (wrap ? Qt::AlignTop : Qt::AlignVCenter));
}

void FormLabel::SetBold(bool bold) {
  QFont font = Of(*this).font();
  font.setBold(bold);
  Of(*this).setFont(font);
}

void FormLabel::SetMuted() {
  Of(*this).setForegroundRole(QPalette::PlaceholderText);
  Of(*this).setAttribute(Qt::WA_TransparentForMouseEvents);
}

void FormLabel::Refresh() {
  Of(*this).repaint();
}

}  // namespace orv
