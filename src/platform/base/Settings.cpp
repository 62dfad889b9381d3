#include "base/Settings.h"

#include <QSettings>

#include "base/App.h"
#include "base/RuntimeError.h"

namespace orv {
namespace {
QSettings Store() {
  const QString& name = App::Running().settings_name;
  return {QSettings::IniFormat, QSettings::UserScope, name, name};
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
