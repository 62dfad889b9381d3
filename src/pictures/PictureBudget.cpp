#include "pictures/PictureBudget.h"

#include <algorithm>
#include <utility>

namespace orv {
namespace {

constexpr std::int64_t kPixels = 64'000'000;
constexpr std::int64_t kBytesForPixel = 4;
// A compressed file and what its decoder needs besides the pixels come to no more.
constexpr std::int64_t kBytesBeside = 128'000'000;

PictureBudget* living = nullptr;

}  // namespace

PictureBudget::PictureBudget() : former_(std::exchange(living, this)), left_(kPixels) {}

PictureBudget::~PictureBudget() {
  living = former_;
}

std::int64_t PictureBudget::PixelsLeft(std::int64_t file_bytes) {
  const std::int64_t left = living != nullptr ? living->left_ : kPixels;
  return left - std::max<std::int64_t>(0, file_bytes - kBytesBeside) / kBytesForPixel;
}

void PictureBudget::Spend(std::int64_t pixels) {
  if (living != nullptr) living->left_ -= pixels;
}

}  // namespace orv
