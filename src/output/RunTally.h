#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "forms/Dialogs.h"

namespace orv {

// Counts what the save operations write while it lives, and names what a user would not expect.
class RunTally {
 public:
  // `written` is told each file when it is there.
  explicit RunTally(std::function<void(const QString& path)> written = nullptr);
  ~RunTally();
  RunTally(const RunTally&) = delete;
  RunTally& operator=(const RunTally&) = delete;

  // The record that the run is at, by kind code, number and name.
  const QString& Record() const { return record_; }

  struct Result {
    int written = 0;
    int replaced = 0;
    int missing = 0;
    QStringList news;  // records without a file, and records that have replaced the file of another
  };
  Result Conclude() const;

 private:
  struct Sheet {
    QString path;
    QString record;
    bool written;
  };
  void Saved(const QString& path, const QString& kind_and_name, bool saved);

  std::function<void(const QString&)> written_;
  std::vector<Sheet> sheets_;
  QString record_;
};

}  // namespace orv
