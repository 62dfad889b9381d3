#pragma once

#include "forms/Surface.h"

namespace orv {

// The preview of a large card, whose picture stands at the left of its texts, and its back. The controls
// that the large-card editor shows and from which the composer reads the layout.
class LargeCardPreview {
 public:
  static constexpr int kFrameHeight = 238;  // pixels, where it doesn't hug the picture
  LargeCardPreview();

  // Brings everything into line with the current rows of rsLargeCard and rsSet. A picture that is broken
  // is told in a box, and what follows stays as it was.
  void DrawLargeCard();
  // Applies the record to frame and picture: with Resize the frame hugs the picture's height, and the
  // offset from the top moves the frame.
  void PlacePicture();
  // The handle at the right edge of the frame, or at the left of the card without a picture, and the texts.
  void PlaceHandle();
  // The texts, to the right of the handle.
  void PlaceTexts();
  // The state of the design: no pictures.
  void Reset();

  Surface picCardLarge;
  Surface picFrameLarge{&picCardLarge};
  Surface picImageLarge{&picFrameLarge};
  Surface picSymbolLarge{&picCardLarge};
  Label lblPicSizeLarge{&picCardLarge};
  Label lblTitleLarge{&picCardLarge};
  Label lblInformationLarge{&picCardLarge};
  Label lblAutonumberLarge{&picCardLarge};
  Label lblWatermark{&picCardLarge};
  Surface picBackLarge;

 private:
  void DrawTexts();
  void DrawFrame();
  void DrawBackground();
};

// The one preview of large cards, shared by the editor, the composer and the saving.
LargeCardPreview& TheLargeCardPreview();

}  // namespace orv
