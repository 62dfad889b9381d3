#include <memory>

#include "exchange/Copies.h"
#include "forms/Application.h"
#include "forms/OpenedFiles.h"
#include "icons/Icons.h"
#include "shell/Main.h"
#include "shell/inner/StartOptions.h"
#include "state/Product.h"
#include "state/modData.h"

int main(int argc, char** argv) {
  const orv::StartOptions start = orv::ReadStartOptions(argc, argv);
  if (start.status) return *start.status;
  orv::Application application(argc, argv, orv::Application::Desktop, orv::TheProgram());
  orv::InitIcons();
  std::unique_ptr<orv::DailyCopy> copy;
  std::unique_ptr<orv::OpenedFiles> opened;
  return application.Run([&] {
    if (!orv::Main(start.file)) return orv::Application::Quit();
    opened = std::make_unique<orv::OpenedFiles>(orv::modData::DatabasePath(), orv::OfferSetOfFile);
    copy = orv::StartDailyCopy();
    if (!start.file.isEmpty()) orv::OfferSetOfFile(start.file);
  });
}
