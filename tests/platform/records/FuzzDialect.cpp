// A text of the program's own dialect, first as a query and then as a criterion.
#include <cstdlib>

#include "base/RuntimeError.h"
#include "fuzz/Target.h"
#include "records/inner/Dialect.h"

namespace {

template <class T>
void Try(const T& translate) {
  try {
    translate();
  } catch (const orv::RuntimeError& error) {
    if (error.Number() != orv::kErrDatabase) std::abort();
  }
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  Try([&] { orv::Translate(text); });
  Try([&] { orv::TranslateCriterion(text); });
  Try([&] { orv::TranslateCriterion(text, [](const QString& name) { return name; }); });
  return 0;
}
