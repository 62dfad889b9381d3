// A database file: opened as the program does, and all of its sets written out.
#include <QDir>
#include <QTemporaryDir>
#include <vector>

#include "base/App.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "database/CurrentSet.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "forms/Lifetime.h"
#include "fuzz/Target.h"
#include "output/WriteRecords.h"
#include "state/Product.h"
#include "state/modData.h"
#include "support/SharedState.h"

namespace orv {
namespace {

constexpr int kMostSets = 4;

// Nobody looks at what is told.
class Silence : public DialogResponder {
 public:
  Answer OnMsgBox(const QString&, Icon, const QString&, Buttons) override { return Answer::No; }
  QString OnInputBox(const QString&, const QString&, const QString&) override { return {}; }
  QString OnFile(const CommonDialog&, bool) override { return {}; }
  bool OnColor(CommonDialog&) override { return false; }
  QString OnFolder(const QString&) override { return {}; }
  bool OnModal(Form&) override { return true; }
};

// Any error of the program is told to the user.
template <class T>
void Try(const T& action) {
  try {
    action();
  } catch (const RuntimeError&) {
  }
}

std::vector<std::int16_t> SetKeys() {
  std::vector<std::int16_t> keys;
  Recordset& sets = modData::rsSet;
  for (; !sets.IsEOF() && keys.size() < kMostSets; sets.MoveNext()) {
    Try([&] { keys.push_back(sets["SetID"].Int16()); });
  }
  return keys;
}

void WriteSet(std::int16_t key, const QString& folder) {
  modData::rsSet.MoveFirst();
  MakeSetCurrent(key);
  modData::rsSet["SaveTo"] = folder;
  modData::rsSet.Update();
  for (const OutputKind* kind : OutputKinds()) {
    if ((kind->edition == 2) != (modData::CurrentEditionID == 2)) continue;
    Try([&] {
      OpenRecordsOfSet(kind->table, kind->records);
      WriteRecords(*kind, FormatOfSet(), [](int) {});
    });
  }
}

void Forget() {
  UnloadAll();
  ClearSharedState();
}

void OpenAndCompose(const QByteArray& bytes) {
  const QTemporaryDir folder;
  App::SetPath(folder.path());
  const QString path = JoinPath(folder.path(), QStringLiteral("orv.mdb"));
  ReplaceFile(path, bytes);
  const QString out = JoinPath(folder.path(), QStringLiteral("out"));
  QDir().mkpath(out);
  Try([&] {
    modData::OpenDatabase([] {}, path);
    if (!modData::DatabaseFound) return;
    modData::OpenEditable(QStringLiteral("SELECT * FROM tblSet ORDER BY SetName"), modData::rsSet);
    for (const std::int16_t key : SetKeys()) Try([&] { WriteSet(key, out); });
  });
  Try(Forget);
}

}  // namespace
}  // namespace orv

int LLVMFuzzerInitialize(int* argc, char*** argv) {
  static orv::Silence silence;
  new orv::Application(*argc, *argv, orv::Application::Offscreen,
                       orv::TheProgram());  // up to the end of the process
  new orv::DialogResponderScope(silence);
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orv::OpenAndCompose(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
