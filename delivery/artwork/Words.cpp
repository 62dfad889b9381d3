#include "artwork/Words.h"

#include <stdexcept>

namespace orv::artwork {
namespace {

double ToNumber(const QString& text) {
  bool ok = false;
  const double value = text.toDouble(&ok);
  if (!ok) throw std::runtime_error(("no number: " + text).toStdString());
  return value;
}

QColor ToColour(const QString& text) {
  const QColor colour(text);
  if (!text.startsWith('#') || !colour.isValid()) {
    throw std::runtime_error(("no colour: " + text).toStdString());
  }
  return colour;
}

}  // namespace

Words::Words(const QStringList& words) {
  for (const QString& word : words) {
    const qsizetype split = word.indexOf('=');
    if (split > 0) {
      named_[word.left(split)] = word.mid(split + 1);
    } else {
      plain_ << word;
    }
  }
}

QString Words::Text(int index) const {
  if (index >= Count()) throw std::runtime_error("a word is missing");
  return plain_[index];
}

double Words::Number(int index) const {
  return ToNumber(Text(index));
}

QColor Words::Colour(int index) const {
  return ToColour(Text(index));
}

std::vector<QColor> Words::Colours(int from) const {
  std::vector<QColor> colours;
  for (int i = from; i < Count(); ++i) colours.push_back(Colour(i));
  if (colours.empty()) throw std::runtime_error("a colour is missing");
  return colours;
}

double Words::Named(const QString& name, double otherwise) const {
  return Has(name) ? ToNumber(named_[name]) : otherwise;
}

QColor Words::NamedColour(const QString& name, const QColor& otherwise) const {
  return Has(name) ? ToColour(named_[name]) : otherwise;
}

}  // namespace orv::artwork
