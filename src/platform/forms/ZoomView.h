#pragma once

#include <QRect>
#include <vector>

#include "base/Event.h"
#include "forms/Control.h"
#include "imaging/Picture.h"

namespace orv {

// Shows parts of pictures at any zoom, in rows from the upper left. A picture that knows how it was drawn is
// drawn anew in the dots of the screen. Scrolls where there is no room for all.
class ZoomView : public Control {
 public:
  struct Part {
    Picture picture;
    QRect part;  // in dots of the picture
  };
  using Row = std::vector<Part>;
  static constexpr double kLeast = 0.25, kMost = 16;

  explicit ZoomView(Container& parent);
  ~ZoomView() override;
  void SetRows(const std::vector<Row>& rows);
  // Device-independent pixels for a dot of the pictures.
  double Zoom() const;
  // Kept from kLeast to kMost; the middle of what is seen stays there.
  void SetZoom(double zoom);
  // As large as there is room for all of it, from now on.
  void Fit();
  bool IsFitted() const;
  // By any of these, by the wheel with Ctrl held, or by a window of another size.
  Event<> ZoomChanged;

 private:
  class Area;
  Area& Of() const;
};

}  // namespace orv
