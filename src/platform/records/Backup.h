#pragma once

#include <QString>
#include <functional>

namespace orv {

// Copies a database to a path where no file lies while others work with it, a part at a time, so that nobody
// waits for longer than that part takes; a change meanwhile lets it begin anew. `goes_on` is asked before
// each part; false as soon as it says no. The copy is sound when true is returned. After a failure, or false,
// a part of it may lie there. RuntimeError as of Connection::Open, 61, 70 or 75. May run on any thread.
bool BackUpDatabase(const QString& source, const QString& target, const std::function<bool()>& goes_on);

}  // namespace orv
