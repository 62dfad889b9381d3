#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <atomic>
#include <functional>
#include <thread>

// Dated copies of the database in the folder "backups" beside it, one a day.
namespace orv {

inline constexpr int kCopiesKept = 7;

// The copies that are there, whole paths, the newest first.
QStringList CopiesOf(const QString& database);

// Whether the disk has room for the copy of a day: twice the database's size. True where the system can't
// tell, and where that copy is there.
bool HasRoomForCopy(const QString& database, const QDate& day);

// Makes the copy of a day while others work with the database, unless it is there, and removes the oldest
// beyond kCopiesKept. It has its name when it is whole and was checked. `goes_on` is asked now and then; no
// copy is made, and none removed, when it says no. RuntimeError 53, 61, 70, 75 or 3000.
void MakeDailyCopy(const QString& database, const QDate& day, const std::function<bool()>& goes_on);

// Puts a copy in the place of the database, which is kept in the folder of the copies; its path there. Nobody
// may have the database open. RuntimeError 3000 for a copy that is not sound, else of the files; the database
// is as it was then.
QString RestoreCopy(const QString& database, const QString& copy);

// Makes the copy of today on a thread of its own, as far as that comes while this lives.
class DailyCopy {
 public:
  explicit DailyCopy(const QString& database);
  ~DailyCopy();
  DailyCopy(const DailyCopy&) = delete;
  DailyCopy& operator=(const DailyCopy&) = delete;

 private:
  std::atomic<bool> stop_ = false;
  std::thread thread_;
};

}  // namespace orv
