#include "records/inner/Collation.h"

#include "base/TextOrder.h"
#include "records/inner/Sqlite.h"

namespace orv {
namespace {

int CompareUtf8(void*, int a_size, const void* a, int b_size, const void* b) {
  return CompareText(QUtf8StringView(static_cast<const char*>(a), a_size),
                     QUtf8StringView(static_cast<const char*>(b), b_size));
}

}  // namespace

void RegisterCollation(sqlite3* database) {
  CheckDatabase(database, sqlite3_create_collation(database, kCollation, SQLITE_UTF8, nullptr, &CompareUtf8));
}

}  // namespace orv
