#include "forms/Application.h"
#include "icons/Icons.h"
#include "shell/Main.h"
#include "state/Product.h"

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Desktop, orv::TheProgram());
  orv::InitIcons();
  return application.Run([] {
    if (!orv::Main()) orv::Application::Quit();
  });
}
