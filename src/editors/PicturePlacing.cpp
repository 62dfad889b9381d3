#include "editors/PicturePlacing.h"

#include <algorithm>

#include "base/Rounding.h"

namespace orv {

PictureMover::PictureMover(ShownRecord& record, const char* left_column, const char* top_column,
                           Surface& frame, Surface& image, std::function<void()> place)
    : record_(record),
      left_column_(left_column),
      top_column_(top_column),
      frame_(frame),
      image_(image),
      place_(std::move(place)) {}

void PictureMover::Attach() {
  image_.MouseDown = [this](const MouseEvent& event) { MouseDown(event); };
  image_.MouseMove = [this](const MouseEvent& event) { MouseMove(event); };
}

void PictureMover::MouseDown(const MouseEvent& event) {
  held_ = record_.Hold();
  grip_x_ = ToInt32(event.X);
  grip_y_ = ToInt32(event.Y);
}

void PictureMover::MouseMove(const MouseEvent& event) {
  if (event.Button != 1) return;
  held_ = held_ && record_.Hold();
  if (!held_) return;
  // The picture moves under the pointer, so the grip is never taken again during a drag.
  SetOffset(left_column_, record_[left_column_].NumberOr(0) + event.X - grip_x_);
  SetOffset(top_column_, record_[top_column_].NumberOr(0) + event.Y - grip_y_);
  record_.Update();
  place_();
}

struct PictureMover::Key {
  const char* keys;
  void (*move)(PictureMover& mover);
};

const PictureMover::Key PictureMover::kKeys[] = {
    {"Left", [](PictureMover& m) { m.Move(m.left_column_, -kTwipsPerPixel); }},
    {"Right", [](PictureMover& m) { m.Move(m.left_column_, kTwipsPerPixel); }},
    {"Up", [](PictureMover& m) { m.Move(m.top_column_, -kTwipsPerPixel); }},
    {"Down", [](PictureMover& m) { m.Move(m.top_column_, kTwipsPerPixel); }},
    {"Home", [](PictureMover& m) { m.SetOffset(m.left_column_, 0); }},
    {"End",
     [](PictureMover& m) {
       m.SetOffset(m.left_column_, (m.frame_.Width() - 1) * kTwipsPerPixel - m.image_.Width());
     }},
    {"PgUp", [](PictureMover& m) { m.SetOffset(m.top_column_, 0); }},
    // The lower edge is met two pixels earlier than the right one.
    {"PgDown",
     [](PictureMover& m) {
       m.SetOffset(m.top_column_, (m.frame_.Height() - 3) * kTwipsPerPixel - m.image_.Height());
     }},
};

QStringList PictureMover::Commands() {
  QStringList keys;
  for (const Key& key : kKeys) keys += QLatin1String(key.keys);
  return keys;
}

void PictureMover::Nudge(int key_code) {
  for (const Key& key : kKeys) {
    if (KeyOf(QLatin1String(key.keys)).KeyCode == key_code) return key.move(*this);
  }
}

void PictureMover::KeyDown(const KeyEvent& key) {
  if (!record_.Hold()) return;
  if (key.Shift == 0) {
    Nudge(key.KeyCode);
    record_.Update();
  }
  place_();
}

void PictureMover::Move(const char* column, double twips) {
  SetOffset(column, record_[column].NumberOr(0) + twips);
}

void PictureMover::SetOffset(const char* column, double twips) {
  record_[column] = twips;
}

HandleDrag::HandleDrag(ShownRecord& record, Label& handle, Direction direction, int lowest, int highest,
                       std::function<void()> moved)
    : record_(record),
      handle_(handle),
      direction_(direction),
      lowest_(lowest),
      highest_(highest),
      moved_(std::move(moved)) {}

void HandleDrag::Attach() {
  handle_.MouseDown = [this](const MouseEvent& event) { MouseDown(event); };
  handle_.MouseMove = [this](const MouseEvent& event) { MouseMove(event); };
}

double HandleDrag::Along(const MouseEvent& event) const {
  return (direction_ == Down ? event.Y : event.X) / kTwipsPerPixel;
}

void HandleDrag::MouseDown(const MouseEvent& event) {
  held_ = record_.Hold();
  grip_ = ToInt16(Along(event));
}

void HandleDrag::MouseMove(const MouseEvent& event) {
  if (event.Button != 1) return;
  held_ = held_ && record_.Hold();
  if (!held_) return;
  const int distance = ToInt16(Along(event) - grip_);
  const double place = (direction_ == Down ? handle_.Top() : handle_.Left()) + distance;
  const double limited = std::clamp(place, static_cast<double>(lowest_), static_cast<double>(highest_));
  if (direction_ == Down) {
    handle_.SetTop(limited);
  } else {
    handle_.SetLeft(limited);
  }
  moved_();
}

QString FrameDimension(const Surface& frame) {
  return QStringLiteral("%1W * %2H").arg(ToInt16(frame.Width())).arg(ToInt16(frame.Height()));
}

}  // namespace orv
