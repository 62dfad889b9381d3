#include <gtest/gtest.h>

#include "forms/Application.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  orv::Application application(argc, argv, orv::Application::Offscreen);
  return RUN_ALL_TESTS();
}
