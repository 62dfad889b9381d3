#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>

#include "base/Value.h"
#include "records/Recordset.h"

namespace orv {

// The record that an editor shows. A shared recordset has one cursor, and what else works on it may move the
// cursor or open the recordset anew under the editor; so an editor remembers the key of its record, and
// whatever it writes goes through here and reaches that record or none.
class ShownRecord {
 public:
  struct Change {
    const char* column;
    Value value;
  };

  // `rows` must outlive this. `gone` runs when something was to be written and the record is no longer among
  // the rows.
  ShownRecord(Recordset& rows, const char* key_column, std::function<void()> gone)
      : rows_(rows), key_column_(key_column), gone_(std::move(gone)) {}

  // Takes the current row as the record on show.
  void Note() { key_ = CurrentKey(); }
  // Goes back to the record if the cursor has left it. False, and `gone` has run, where it is not to be
  // found.
  [[nodiscard]] bool Hold();
  // Changes fields of the record and updates it; nothing, and false, where it is gone.
  [[nodiscard]] bool Write(std::initializer_list<Change> changes);
  // A field of the row on which the recordset stands: of the record itself once Hold was true.
  Field operator[](const char* column) const { return rows_[column]; }
  void Update() { rows_.Update(); }
  std::int32_t Key() const { return key_; }

 private:
  std::int32_t CurrentKey() const;
  bool Find(std::int32_t key);

  Recordset& rows_;
  const char* key_column_;
  std::function<void()> gone_;
  std::int32_t key_ = 0;
};

}  // namespace orv
