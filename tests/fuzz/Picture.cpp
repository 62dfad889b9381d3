// A picture file of any kind.
#include <QGuiApplication>
#include <cstdlib>

#include "base/RuntimeError.h"
#include "fuzz/Target.h"
#include "imaging/Picture.h"

int LLVMFuzzerInitialize(int* argc, char*** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  new QGuiApplication(*argc, *argv);  // texts of metafiles need its fonts, up to the end of the process
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (orv::LoadPicture(bytes).IsEmpty() || orv::LoadUpright(bytes).IsEmpty()) std::abort();
  } catch (const orv::RuntimeError& error) {
    if (error.Number() != orv::kErrInvalidPicture) std::abort();
  }
  return 0;
}
