#include <algorithm>

#include "base/Rounding.h"
#include "forms/Surface.h"

namespace orv {
namespace {

template <class AnySurface>
AnySurface* RootOf(AnySurface* surface) {
  while (surface != nullptr && surface->Container() != nullptr) surface = surface->Container();
  return surface;
}

// The view that shows an item, or nothing.
SurfaceHost* HostOf(const SurfaceItem* item) {
  const Surface* const root = RootOf<const Surface>(
      item->Container() != nullptr ? item->Container() : dynamic_cast<const Surface*>(item));
  return root != nullptr ? root->Host() : nullptr;
}

}  // namespace

SurfaceItem::SurfaceItem(Surface* container) : container_(container) {
  if (container_ != nullptr) container_->items_.push_back(this);
}

SurfaceItem::~SurfaceItem() {
  if (container_ == nullptr) return;
  if (Surface* const root = RootOf(container_); root->Host() != nullptr) root->Host()->ItemGone(this);
  auto& items = container_->items_;
  items.erase(std::remove(items.begin(), items.end(), this), items.end());
}

void SurfaceItem::Place(double left, double top, double width, double height) {
  SetLeft(left);
  SetTop(top);
  SetWidth(width);
  SetHeight(height);
}

double SurfaceItem::ToPixels(double value) const {
  if (container_ != nullptr && container_->GetScaleMode() == ScaleMode::Twips) return value / kTwipsPerPixel;
  return RoundHalfEven(value);
}

double SurfaceItem::FromPixels(double pixels) const {
  if (container_ != nullptr && container_->GetScaleMode() == ScaleMode::Twips) return pixels * kTwipsPerPixel;
  return RoundHalfEven(pixels);
}

void SurfaceItem::Invalidate() {
  if (SurfaceHost* const host = HostOf(this)) host->SurfaceChanged();
}

void SurfaceItem::InvalidatePixels() {
  if (SurfaceHost* const host = HostOf(this)) host->PixelsChanged();
}

void SurfaceItem::BringToFront() {
  if (container_ == nullptr) return;
  auto& items = container_->items_;
  const auto place = std::find(items.begin(), items.end(), this);
  std::rotate(place, place + 1, items.end());
  Invalidate();
}

void SurfaceItem::SetFocus() {
  if (SurfaceHost* const host = HostOf(this)) host->FocusItem(this);
}

bool SurfaceItem::HasFocus() const {
  const SurfaceHost* const host = HostOf(this);
  return host != nullptr && host->HasFocusOn(this);
}

SurfaceItem* SurfaceItem::ItemAt(double x, double y) {
  const bool inside = x >= 0 && y >= 0 && x < width_ && y < height_;
  return visible_ && inside ? this : nullptr;
}

}  // namespace orv
