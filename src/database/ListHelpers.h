#pragma once

#include <QString>
#include <cstdint>

#include "forms/Controls.h"
#include "records/Recordset.h"

namespace orv {

// Clears the control and adds an entry for each row from the current one to EOF, where the recordset is
// left: the text column as its text and the key column as its item data. RuntimeError 94 for a Null text.
void FillCombo(ComboBox& list, Recordset& rows, const QString& text_column, const QString& key_column);

// Chooses the first entry whose item data is the key. No match changes nothing.
void SelectItemData(ComboBox& list, std::int32_t key);

// The item data of the first entry; RuntimeError for an empty list.
std::int32_t FirstItemData(const ComboBox& list);
// The item data of the chosen entry; RuntimeError without a choice.
std::int32_t ChosenItemData(const ComboBox& list);

// Goes to the row that has a key; at EOF if there is none. RuntimeError 3021 without rows.
void FindByKey(Recordset& rows, const char* key, std::int32_t value);

// A card type of a row in words: "UpperLeft LowerLeft (Number)", with UpperRight for a missing LowerLeft if
// that says something new.
QString TypeText(const Recordset& row);

}  // namespace orv
