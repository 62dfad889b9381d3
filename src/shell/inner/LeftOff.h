#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace orv {

// How the user left a database: the set, and the editors that were open with the record in each.
struct LeftOff {
  struct Editor {
    QString form;  // such as "frmCard2nd"
    std::int32_t record = 0;
  };

  std::int32_t set = 0;
  std::vector<Editor> editors;  // the one in front last

  // What is known of a database by its path: nothing of one that was never left, and nothing where the
  // settings make no sense.
  static LeftOff Of(const QString& database);
  // Keeps it in the user's settings, in the place of what was known. The databases that were left longest ago
  // are forgotten. RuntimeError 75 where the settings can't be written.
  void Keep(const QString& database) const;
};

}  // namespace orv
