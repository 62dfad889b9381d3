#include <memory>

#include "exchange/Copies.h"
#include "forms/Application.h"
#include "icons/Icons.h"
#include "shell/Main.h"
#include "shell/inner/StartOptions.h"
#include "state/Product.h"

int main(int argc, char** argv) {
  const orv::StartOptions start = orv::ReadStartOptions(argc, argv);
  if (start.status) return *start.status;
  orv::Application application(argc, argv, orv::Application::Desktop, orv::TheProgram());
  orv::InitIcons();
  std::unique_ptr<orv::DailyCopy> copy;
  return application.Run([&copy] {
    if (!orv::Main()) return orv::Application::Quit();
    copy = orv::StartDailyCopy();
  });
}
