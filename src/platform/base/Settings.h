#pragma once

#include <QString>

namespace orv {

// The user's settings under the name that the running program gives them: sections of keys, each key a text.
// They lie in the platform's per-user configuration folder and are on the disk when SaveSetting returns.
QString GetSetting(const QString& section, const QString& key, const QString& fallback = {});
void SaveSetting(const QString& section, const QString& key, const QString& text);

}  // namespace orv
