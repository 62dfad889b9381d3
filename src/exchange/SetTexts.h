#pragma once

#include <QByteArray>
#include <cstdint>

#include "records/Connection.h"

// The texts of a set's cards as a table for translators and spreadsheets: UTF-8 with commas (RFC 4180), a
// line for each card under a line with the names of the columns.
namespace orv {

QByteArray TextsOfSet(const Connection& connection, std::int32_t set_id);

// Changes the cards of a set by such a table; how many it has changed. A line belongs to the card that has
// its Nr and Title; "New title" gives the card another. Columns may be missing, and an empty "New title"
// changes nothing. All in one transaction: RuntimeError 3000 with the line of what is wrong, and nothing is
// changed.
int BringInTexts(const Connection& connection, std::int32_t set_id, const QByteArray& table);

}  // namespace orv
