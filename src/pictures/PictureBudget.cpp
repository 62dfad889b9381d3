#include "pictures/PictureBudget.h"

#include <utility>

namespace orv {
namespace {

constexpr std::int64_t kPixels = 64'000'000;

PictureBudget* living = nullptr;

}  // namespace

PictureBudget::PictureBudget() : former_(std::exchange(living, this)), left_(kPixels) {}

PictureBudget::~PictureBudget() {
  living = former_;
}

std::int64_t PictureBudget::PixelsLeft() {
  return living != nullptr ? living->left_ : kPixels;
}

void PictureBudget::Spend(std::int64_t pixels) {
  if (living != nullptr) living->left_ -= pixels;
}

}  // namespace orv
