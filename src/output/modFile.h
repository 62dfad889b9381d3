#pragma once

#include <QString>
#include <cstdint>

namespace orv {

// Lists a set's cards, large cards and characters in a text file of code page 1252 and tells the outcome in
// a box. It is written directly: what was written before a failure stays.
void ExportSet(const QString& path, std::int32_t SetID);

// "---" stands for no value: it becomes the empty text.
void BlankDashes(QString& text);

}  // namespace orv
