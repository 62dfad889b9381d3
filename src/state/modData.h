#pragma once

#include <QString>
#include <cstdint>
#include <functional>

#include "imaging/Picture.h"
#include "records/Connection.h"
#include "records/Recordset.h"

// The shared state of the program. All forms work on it; none owns it.
namespace orv::modData {

inline Connection cn;               // the one connection; all recordsets use it
inline bool DatabaseFound = false;  // the connection opened
inline QString OpenedPath;          // the file behind it
inline QString OpeningError;        // why it didn't, for whoever tells more than that; empty for no file
inline QString PicFilePath;         // full path of "orv.pic"
inline QString strSQL;              // scratch text of the query being built; carries nothing across a call

inline std::int16_t CurrentSetID = 0;      // of the selected set; 0 = none
inline std::int16_t CurrentEditionID = 0;  // 2 or 3
inline std::int16_t CurrentLanguageID = 0;

inline Recordset rsSet;        // editable: all sets by name; stands on the selected one
inline Recordset rsCard;       // editable: cards of the current set by Nr
inline Recordset rsCharacter;  // editable: its characters
inline Recordset rsLargeCard;  // editable: its large cards

// Snapshots of the reference rows for the current edition and language.
inline Recordset rsCardType, rsCardBack, rsCharacterBack, rsArea, rsAlignment;

// The symbol of the current set, empty if it uses none. The main window shows it, the previews and
// composers take it from here and not from the database.
inline Picture SetSymbol;

// "orv.mdb" beside the executable.
QString DatabasePath();
// Fills PicFilePath, opens the database and sets DatabaseFound, which stays false after any failure but one:
// RuntimeError 70 for a database that another program holds for long.
// `before_connection` runs when the file is known to be there and still closed.
void OpenDatabase(const std::function<void()>& before_connection, const QString& path = DatabasePath());

// RuntimeError 3000 for a database that lacks a table or a column of this program.
void CheckSchema(const Connection& connection);

// Whether the database keeps originals of pictures; one that was delivered earlier has no table for them.
bool HasOriginals(const Connection& connection);

// A read-only snapshot, owned by the caller.
Recordset OpenSnapshot(const QString& sql);
// An editable recordset; an earlier one in the variable is released and not closed by hand, so a change
// that waits in it is dropped.
void OpenEditable(const QString& sql, Recordset& recordset);
// Whether a query has rows.
bool RecordExists(const QString& sql);
// Goes to the row of rsSet that has this key; at EOF if there is none. Nothing on no rows.
void FindSet(std::int32_t set_id);

}  // namespace orv::modData
