#include "forms/PageBrowser.h"

#include <QFile>
#include <QImageReader>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>
#include <algorithm>

namespace orv {
namespace {

constexpr int kLetter = 15;  // pixels
constexpr int kMargin = 18;
constexpr int kGap = 10;  // between paragraphs

QUrl AddressOf(const QString& page) {
  return QUrl(QStringLiteral("qrc:/") + page);
}

QString FileOf(const QUrl& address) {
  return u':' + address.path();
}

// A heading as others link to it.
QString AnchorOf(const QString& heading) {
  QString anchor;
  for (const QChar c : heading.toLower()) {
    if (c.isLetterOrNumber() || c == u'-' || c == u'_') anchor += c;
    if (c == u' ') anchor += u'-';
  }
  return anchor;
}

bool IsDark(const QColor& colour) {
  return colour.lightness() < 128;
}

// Some dark desktops keep the dark blue of links.
QColor LinkColour(const QPalette& palette) {
  const QColor link = palette.color(QPalette::Link);
  const QColor ground = palette.color(QPalette::Base);
  if (IsDark(ground)) return IsDark(link) || link == Qt::blue ? QColor(0x8a, 0xb8, 0xff) : link;
  return IsDark(link) ? link : QColor(0x1a, 0x4f, 0xb0);
}

QColor Between(const QColor& ground, const QColor& ink, double share) {
  const auto mixed = [share](int from, int to) { return from + static_cast<int>((to - from) * share); };
  return {mixed(ground.red(), ink.red()), mixed(ground.green(), ink.green()),
          mixed(ground.blue(), ink.blue())};
}

template <class Action>
void ForEachBlock(const QTextDocument& document, Action action) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) action(block);
}

// Taken together before anything is done with them: a change of the format may join pieces.
std::vector<QTextFragment> Pieces(const QTextDocument& document) {
  std::vector<QTextFragment> pieces;
  ForEachBlock(document, [&](const QTextBlock& block) {
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) pieces.push_back(piece.fragment());
  });
  return pieces;
}

QTextCursor On(QTextDocument& document, int position, int length) {
  QTextCursor cursor(&document);
  cursor.setPosition(position);
  cursor.setPosition(position + length, QTextCursor::KeepAnchor);
  return cursor;
}

bool IsPicture(const QTextBlock& block) {
  return block.length() == 2 && block.begin().fragment().charFormat().isImageFormat();
}

}  // namespace

class PageBrowser::Widget : public QTextBrowser {
 public:
  explicit Widget(QWidget* parent) : QTextBrowser(parent) {
    setOpenExternalLinks(false);
    QFont letters = font();
    letters.setPixelSize(kLetter);
    setFont(letters);
    document()->setDocumentMargin(kMargin);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // the room for pictures stays the same
    document()->setUndoRedoEnabled(false);
  }

  QString FirstHeading() const {
    QString heading;
    ForEachBlock(*document(), [&](const QTextBlock& block) {
      if (heading.isEmpty() && block.blockFormat().headingLevel() > 0) heading = block.text();
    });
    return heading;
  }

 protected:
  void doSetSource(const QUrl& address, QTextDocument::ResourceType) override {
    const QUrl whole = source().resolved(address);
    if (!whole.path().isEmpty() && !QFile::exists(FileOf(whole))) return;
    const bool other = whole.path() != source().path();
    QTextBrowser::doSetSource(whole, QTextDocument::MarkdownResource);
    if (other) Dress();
    if (whole.hasFragment()) scrollToAnchor(whole.fragment());
  }

  QVariant loadResource(int type, const QUrl& name) override {
    if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
    return Scaled(name, SizeOf(name));
  }

  void resizeEvent(QResizeEvent* event) override {
    QTextBrowser::resizeEvent(event);
    FitPictures();
  }

  void changeEvent(QEvent* event) override {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) Dress();
  }

 private:
  QSize SizeOf(const QUrl& name) const {
    const QSize natural = QImageReader(FileOf(source().resolved(name))).size();
    const int room = std::max(1, viewport()->width() - 2 * kMargin);
    if (natural.width() <= room) return natural;
    return {room, std::max(1, natural.height() * room / natural.width())};
  }

  // In the dots of the screen, so that a smaller picture is drawn as it is.
  QImage Scaled(const QUrl& name, const QSize& size) const {
    QImage picture(FileOf(source().resolved(name)));
    const QSize dots = (QSizeF(size) * devicePixelRatioF()).toSize();
    if (picture.isNull() || dots.width() >= picture.width()) return picture;
    picture = picture.scaled(dots, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(devicePixelRatioF());
    return picture;
  }

  void FitPictures() {
    for (const QTextFragment& piece : Pieces(*document())) {
      if (!piece.charFormat().isImageFormat()) continue;
      QTextImageFormat picture = piece.charFormat().toImageFormat();
      const QUrl name(picture.name());
      const QSize size = SizeOf(name);
      if (picture.width() == size.width()) continue;
      picture.setWidth(size.width());
      picture.setHeight(size.height());
      document()->addResource(QTextDocument::ImageResource, name, Scaled(name, size));
      On(*document(), piece.position(), piece.length()).setCharFormat(picture);
    }
  }

  void Dress() {
    DressBlocks();
    DressTables();
    DressPieces();
    FitPictures();
  }

  void DressBlocks() {
    ForEachBlock(*document(), [&](const QTextBlock& block) {
      QTextCursor cursor(block);
      if (block.blockFormat().headingLevel() > 0) {
        DressHeading(cursor);
      } else {
        cursor.setBlockFormat(FormatOf(block));
      }
    });
  }

  QTextBlockFormat FormatOf(const QTextBlock& block) const {
    QTextBlockFormat format = block.blockFormat();
    if (format.hasProperty(QTextFormat::BlockCodeFence)) {
      format.setBackground(Between(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.08));
      const bool is_last = !block.next().blockFormat().hasProperty(QTextFormat::BlockCodeFence);
      format.setBottomMargin(is_last ? kGap : 0);
      return format;
    }
    if (IsPicture(block)) {  // which a larger line would set apart from what follows
      format.setTopMargin(kGap);
      format.setBottomMargin(kGap);
      return format;
    }
    format.setLineHeight(120, QTextBlockFormat::ProportionalHeight);
    const bool in_table = QTextCursor(block).currentTable() != nullptr;
    format.setBottomMargin(in_table ? 0 : block.textList() != nullptr ? kGap / 2 : kGap);
    return format;
  }

  // A heading can be jumped to.
  void DressHeading(QTextCursor cursor) {
    const QTextBlock block = cursor.block();
    QTextBlockFormat format = block.blockFormat();
    format.setTopMargin(block.blockNumber() == 0 ? 0 : 2 * kGap);
    format.setBottomMargin(kGap);
    cursor.setBlockFormat(format);
    QTextCharFormat target;
    target.setAnchor(true);
    target.setAnchorNames({AnchorOf(block.text())});
    cursor.select(QTextCursor::BlockUnderCursor);
    cursor.mergeCharFormat(target);
  }

  void DressTables() {
    for (QTextFrame* const frame : document()->rootFrame()->childFrames()) {
      auto* const table = qobject_cast<QTextTable*>(frame);
      if (table == nullptr) continue;
      QTextTableFormat format = table->format();
      format.setCellPadding(5);
      format.setCellSpacing(0);
      format.setBorderCollapse(true);
      format.setBorder(1);
      format.setBorderBrush(Between(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.3));
      format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
      format.setBottomMargin(kGap);
      format.setTopMargin(kGap / 2.0);
      table->setFormat(format);
    }
  }

  void DressPieces() {
    QTextCharFormat link;
    link.setForeground(LinkColour(palette()));
    for (const QTextFragment& piece : Pieces(*document())) {
      if (piece.charFormat().anchorHref().isEmpty()) continue;
      On(*document(), piece.position(), piece.length()).mergeCharFormat(link);
    }
  }
};

PageBrowser::PageBrowser(Container& parent) {
  auto* const browser = new Widget(parent.Handle());
  Adopt(browser);
  QObject::connect(browser, &QTextBrowser::historyChanged, Watcher(), [this] { Opened(); });
}

QString PageBrowser::TextOf(const QString& page) {
  QFile file(FileOf(AddressOf(page)));
  return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

PageBrowser::Widget& PageBrowser::Browser() const {
  return *static_cast<Widget*>(Handle());
}

void PageBrowser::Open(const QString& page) {
  Browser().setSource(AddressOf(page), QTextDocument::MarkdownResource);
}

QString PageBrowser::Page() const {
  return Browser().source().path().mid(1);
}
QString PageBrowser::Title() const {
  return Browser().FirstHeading();
}
bool PageBrowser::CanGoBack() const {
  return Browser().isBackwardAvailable();
}
bool PageBrowser::CanGoForward() const {
  return Browser().isForwardAvailable();
}
void PageBrowser::GoBack() {
  Browser().backward();
}
void PageBrowser::GoForward() {
  Browser().forward();
}

bool PageBrowser::FindNext(const QString& text, const QStringList& pages) {
  if (text.isEmpty()) return false;
  if (Browser().find(text)) return true;
  const auto here = pages.indexOf(Page());
  for (qsizetype i = 1; i < pages.size(); ++i) {
    const QString& page = pages[(here + i) % pages.size()];
    QTextDocument read;
    read.setMarkdown(TextOf(page));
    if (read.find(text).isNull()) continue;
    Open(page);
    return Browser().find(text);
  }
  const QTextCursor former = Browser().textCursor();
  Browser().moveCursor(QTextCursor::Start);
  if (Browser().find(text)) return true;
  Browser().setTextCursor(former);
  return false;
}

}  // namespace orv
