#include <gtest/gtest.h>

#include "forms/Application.h"
#include "state/Product.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  return RUN_ALL_TESTS();
}
