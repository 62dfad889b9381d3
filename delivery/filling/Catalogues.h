#pragma once

#include <QMap>
#include <QString>
#include <cstdint>
#include <tuple>

#include "filling/Gallery.h"
#include "records/Connection.h"

namespace orv::delivery {

// Keys of catalogue rows by name. Names are the English ones, in every language; edition 0 where the
// catalogue knows no editions.
class Names {
 public:
  void Add(const QString& catalogue, int language, int edition, const QString& name, std::int32_t key);
  // std::runtime_error if there is no such row.
  std::int32_t Find(const QString& catalogue, int language, int edition, const QString& name) const;
  QString NumberOfType(int language, int edition, const QString& type) const;
  void AddNumber(int language, int edition, const QString& type, const QString& number);

 private:
  using Place = std::tuple<QString, int, int, QString>;
  QMap<Place, std::int32_t> keys_;
  QMap<Place, QString> numbers_;
};

// Fills the seven catalogues from the tables of `folder`. The first card of a set takes the key of the
// first type as the key of its back, so keys are given such that in each language and edition a back
// has the key of the type that sorts first.
Names FillCatalogues(const Connection& connection, const QString& folder, const Gallery& gallery);

}  // namespace orv::delivery
