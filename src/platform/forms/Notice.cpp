#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPalette>

#include "forms/Controls.h"
#include "forms/inner/Icons.h"

namespace orv {
namespace {

constexpr int kSign = 16;  // pixels

}  // namespace

Notice::Notice(Container& parent) {
  auto* const box = new QWidget(parent.Handle());
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 4, 0, 0);
  auto* const sign = new QLabel(box);
  sign->setPixmap(
      NamedIcon(QStringLiteral("exclamation")).pixmap(QSize(kSign, kSign), sign->devicePixelRatioF()));
  row->addWidget(sign, 0, Qt::AlignTop);
  text_ = new QLabel(box);
  text_->setTextFormat(Qt::RichText);
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  row->addWidget(text_, 1);
  Adopt(box);
  Watch(text_);
  QObject::connect(text_, &QLabel::linkActivated, Watcher(),
                   [this](const QString& link) { Click(link.toInt()); });
  SetLines({});
}

void Notice::SetLines(const QStringList& lines) {
  if (lines == lines_ && !lines.isEmpty()) return;
  lines_ = lines;
  QString links;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (i > 0) links += QStringLiteral("<br>");
    links += QStringLiteral("<a href=\"%1\">%2</a>").arg(i).arg(lines[i].toHtmlEscaped());
  }
  QPalette ink = Handle()->palette();
  ink.setColor(QPalette::Link, ink.color(QPalette::WindowText));
  text_->setPalette(ink);
  text_->setText(links);
  text_->setAccessibleName(lines.join(u' '));
  SetVisible(!lines.isEmpty());
}

}  // namespace orv
