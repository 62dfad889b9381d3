#include "composition/PreviewDrawing.h"

#include <cstdint>

#include "base/RuntimeError.h"
#include "forms/Dialogs.h"
#include "pictures/FinePicture.h"
#include "pictures/PictureBudget.h"
#include "state/Product.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr std::int64_t kLargePixels = 4'000'000;

}  // namespace

QString Watermark() {
  return QStringLiteral("ORV %1.%2").arg(kMajor).arg(kMinor);
}

void PlaceAt(SurfaceItem& item, const PixelRect& rect) {
  item.Place(rect.left, rect.top, rect.width, rect.height);
}

void DesignLabel(Label& label, const PixelRect& rect, const Font& font, Alignment alignment) {
  PlaceAt(label, rect);
  label.SetFont(font);
  label.SetAlignment(alignment);
}

void DesignWatermark(Label& label, const PixelRect& rect) {
  DesignLabel(label, rect, {QStringLiteral("Small Fonts"), 5.25, false, false}, Alignment::Centre);
  label.SetCaption(Watermark());
  label.SetForeColor(0xC0C0C0);
}

void LetGoOfLargePictures(std::initializer_list<Surface*> surfaces) {
  for (Surface* const surface : surfaces) {
    const Picture former = surface->Picture();
    if (std::int64_t{former.Width()} * former.Height() > kLargePixels) surface->SetPicture(LoadPicture());
  }
}

void DrawInSteps(std::initializer_list<std::function<void()>> steps) {
  const PictureBudget budget;
  for (const auto& step : steps) {
    try {
      step();
    } catch (const RuntimeError& error) {
      if (error.Number() == kErrFileNotFound || error.Number() == kErrPathNotFound) continue;
      MsgBox(QStringLiteral("Error while drawing the card.\r\n\r\n") + error.NumberAndDescription(),
             Icon::Critical, QStringLiteral("Cannot draw picture correct"));
      return;
    }
  }
}

Picture SymbolOfSet() {
  if (!KeepDrawings::Asked()) return modData::SetSymbol;
  return WithOriginal(modData::SetSymbol, modData::rsSet["Symbol"].Bytes());
}

void PlaceSymbol(Surface& symbol, const Surface& card, int right, int bottom) {
  const bool use = modData::rsSet["UseSymbol"].BoolOrFalse();
  symbol.SetVisible(use);
  if (!use) return;
  symbol.SetPicture(SymbolOfSet());
  symbol.SetTop(card.Height() - symbol.Height() - bottom);
  symbol.SetLeft(right < 0 ? 0 : card.Width() - symbol.Width() - right);
}

}  // namespace orv
