#pragma once

#include <QColor>
#include <QMap>
#include <QStringList>

namespace orv::artwork {

// The words behind a command: those in order, and those of the form name=value.
// A missing or wrong word is a std::runtime_error.
class Words {
 public:
  explicit Words(const QStringList& words);

  int Count() const { return static_cast<int>(plain_.size()); }
  QString Text(int index) const;
  double Number(int index) const;
  QColor Colour(int index) const;
  std::vector<QColor> Colours(int from) const;
  QStringList From(int index) const { return plain_.mid(index); }

  bool Has(const QString& name) const { return named_.contains(name); }
  double Named(const QString& name, double otherwise) const;
  QColor NamedColour(const QString& name, const QColor& otherwise) const;
  const QMap<QString, QString>& AllNamed() const { return named_; }

 private:
  QStringList plain_;
  QMap<QString, QString> named_;
};

}  // namespace orv::artwork
