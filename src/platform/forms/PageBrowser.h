#pragma once

#include <QString>
#include <QStringList>

#include "forms/Control.h"

namespace orv {

// Shows pages of Markdown that link to each other, in the colours of the desktop. Pictures wider than it are
// scaled down. Each heading is the target of "#its-words-in-small-letters". Pages and pictures are resources
// of the program, by their paths below ":/"; nothing is fetched from elsewhere.
class PageBrowser : public Control {
 public:
  explicit PageBrowser(Container& parent);

  // The Markdown of a page; empty for one that isn't there.
  static QString TextOf(const QString& page);

  // A page, with or without a heading; also the one on show. What leads nowhere changes nothing.
  void Open(const QString& page);
  QString Page() const;   // on show, without a heading
  QString Title() const;  // its first heading
  bool CanGoBack() const;
  bool CanGoForward() const;
  void GoBack();
  void GoForward();

  // Goes on to the next place of a text, in capitals or not, and selects it: on the page, then on the others
  // in turn, and round to the page's beginning. False where it is nowhere.
  bool FindNext(const QString& text, const QStringList& pages);

  // Another page came on show.
  Event<> Opened;

 private:
  class Widget;
  Widget& Browser() const;
};

}  // namespace orv
