#include "base/Settings.h"

#include <QSettings>

#include "base/RuntimeError.h"

namespace orv {
namespace {
QSettings Store() {
  return {QSettings::IniFormat, QSettings::UserScope, QStringLiteral("ORV2"), QStringLiteral("ORV2")};
}
}  // namespace

QString GetSetting(const QString& section, const QString& key, const QString& fallback) {
  return Store().value(section + u'/' + key, fallback).toString();
}

void SaveSetting(const QString& section, const QString& key, const QString& text) {
  QSettings store = Store();
  store.setValue(section + u'/' + key, text);
  store.sync();
  if (store.status() != QSettings::NoError) throw RuntimeError(kErrPathFileAccess);
}

}  // namespace orv
