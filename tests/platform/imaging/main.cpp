#include <gtest/gtest.h>

#include <QGuiApplication>

// Text in metafiles needs fonts, and fonts need the application object.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
