#include "shell/inner/LeftOff.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "base/Settings.h"

namespace orv {
namespace {

const QString kSection = QStringLiteral("LeftOff");
const QString kKey = QStringLiteral("Databases");
constexpr qsizetype kMostDatabases = 20;

QString NameOf(const QString& database) {
  return QFileInfo(database).canonicalFilePath();
}

// One object a database, the last one that was left first.
QJsonArray Known() {
  return QJsonDocument::fromJson(GetSetting(kSection, kKey).toUtf8()).array();
}

bool IsOf(const QJsonValue& entry, const QString& name) {
  return entry[QLatin1String("database")].toString() == name;
}

}  // namespace

LeftOff LeftOff::Of(const QString& database) {
  LeftOff left;
  for (const QJsonValue entry : Known()) {
    if (!IsOf(entry, NameOf(database))) continue;
    left.set = entry[QLatin1String("set")].toInt();
    for (const QJsonValue editor : entry[QLatin1String("editors")].toArray()) {
      left.editors.push_back(
          {editor[QLatin1String("form")].toString(), editor[QLatin1String("record")].toInt()});
    }
    break;
  }
  return left;
}

void LeftOff::Keep(const QString& database) const {
  QJsonArray shown;
  for (const Editor& editor : editors) {
    shown.append(
        QJsonObject{{QStringLiteral("form"), editor.form}, {QStringLiteral("record"), editor.record}});
  }
  const QString name = NameOf(database);
  QJsonArray databases{QJsonObject{
      {QStringLiteral("database"), name}, {QStringLiteral("set"), set}, {QStringLiteral("editors"), shown}}};
  for (const QJsonValue entry : Known()) {
    if (!IsOf(entry, name) && databases.size() < kMostDatabases) databases.append(entry);
  }
  SaveSetting(kSection, kKey, QString::fromUtf8(QJsonDocument(databases).toJson(QJsonDocument::Compact)));
}

}  // namespace orv
