#include "print/inner/SheetLayout.h"

#include <algorithm>
#include <cmath>

#include "base/RuntimeError.h"
#include "forms/PageWriter.h"

namespace orv {
namespace {

constexpr double kMmPerPoint = 25.4 / 72;
constexpr double kTolerance = 0.001;
constexpr double kMarkDistance = 1;
constexpr double kMarkLength = 5;
constexpr double kShortestMark = 1;
constexpr double kPaperEdge = 2;  // no mark comes nearer to it
constexpr int kErrInvalidCall = 5;

struct PageSize {
  double width, height;
};

PageSize Points(int width, int height) {
  return {width * kMmPerPoint, height * kMmPerPoint};
}

PageSize SizeOf(Paper paper) {
  switch (paper) {
    case Paper::Letter:
      return Points(612, 792);
    case Paper::A3:
      return Points(842, 1191);
    default:
      return Points(595, 842);
  }
}

int HowMany(double room, double step, double gap) {
  return std::max(0, static_cast<int>(std::floor((room + gap + kTolerance) / step)));
}

// The page of one card: the card with its bleed and nothing else.
void PlaceAlone(SheetLayout& layout, double bleed) {
  layout.page_width = PageWriter::WholePoints(layout.card_width + 2 * bleed);
  layout.page_height = PageWriter::WholePoints(layout.card_height + 2 * bleed);
  layout.columns = layout.rows = 1;
}

void PlaceMany(SheetLayout& layout, const PrintOptions& options, PageSize page) {
  layout.page_width = page.width;
  layout.page_height = page.height;
  layout.columns = HowMany(page.width - 2 * options.margin, layout.step_x, options.gap);
  layout.rows = HowMany(page.height - 2 * options.margin, layout.step_y, options.gap);
}

}  // namespace

SheetLayout::Point SheetLayout::Front(int index) const {
  return {left + index % columns * step_x, top + index / columns * step_y};
}

SheetLayout::Point SheetLayout::Back(int index) const {
  const Point front = Front(index);
  if (mirrored_across) return {page_width - front.x - card_width + back_right, front.y + back_down};
  return {front.x + back_right, page_height - front.y - card_height + back_down};
}

std::vector<SheetLayout::Line> SheetLayout::CutMarks(double bleed, double foot) const {
  const double away = bleed + kMarkDistance;
  const double right = Front(columns - 1).x + card_width;
  const double bottom = Front(Count() - 1).y + card_height;
  std::vector<Line> marks;
  // From `near`, which lies at the cards, towards `edge`, in the direction of growing numbers or against it.
  const auto add = [&](double near, double edge, int direction, auto line) {
    const double room = (edge - near) * direction;
    if (room >= kShortestMark) marks.push_back(line(near, near + direction * std::min(kMarkLength, room)));
  };
  for (int column = 0; column < columns; ++column) {
    const double x0 = Front(column).x;
    for (const double x : {x0, x0 + card_width}) {
      const auto upright = [x](double from, double to) { return Line{{x, from}, {x, to}}; };
      add(top - away, kPaperEdge, -1, upright);
      add(bottom + away, page_height - std::max(foot, kPaperEdge), 1, upright);
    }
  }
  for (int row = 0; row < rows; ++row) {
    const double y0 = Front(row * columns).y;
    for (const double y : {y0, y0 + card_height}) {
      const auto level = [y](double from, double to) { return Line{{from, y}, {to, y}}; };
      add(left - away, kPaperEdge, -1, level);
      add(right + away, page_width - kPaperEdge, 1, level);
    }
  }
  return marks;
}

SheetLayout LayOut(const PrintOptions& options, QSize dots, double scale) {
  SheetLayout layout{};
  layout.scale = scale;
  layout.card_width = dots.width() * scale;
  layout.card_height = dots.height() * scale;
  layout.step_x = layout.card_width + 2 * options.bleed + options.gap;
  layout.step_y = layout.card_height + 2 * options.bleed + options.gap;
  layout.back_right = options.back_right;
  layout.back_down = options.back_down;
  if (options.paper == Paper::Card) {
    PlaceAlone(layout, options.bleed);
  } else {
    const PageSize upright = SizeOf(options.paper);
    SheetLayout across = layout;
    PlaceMany(layout, options, upright);
    PlaceMany(across, options, {upright.height, upright.width});
    if (across.Count() > layout.Count()) layout = across;
  }
  if (layout.Count() == 0) {
    throw RuntimeError(kErrInvalidCall,
                       QStringLiteral("A card of %1 by %2 mm doesn't fit on the paper within its margins.")
                           .arg(layout.card_width, 0, 'f', 1)
                           .arg(layout.card_height, 0, 'f', 1));
  }
  // The long edges of a page that lies across are its upper and its lower one.
  const bool lies_across = layout.page_width > layout.page_height;
  layout.mirrored_across = (options.backs == Backs::Short) == lies_across;
  layout.left = (layout.page_width - (layout.columns - 1) * layout.step_x - layout.card_width) / 2;
  layout.top = (layout.page_height - (layout.rows - 1) * layout.step_y - layout.card_height) / 2;
  return layout;
}

}  // namespace orv
