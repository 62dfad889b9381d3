#pragma once

#include <array>
#include <memory>

#include "composition/CardLayout.h"
#include "forms/Surface.h"

namespace orv {

// The preview of a card of one edition: the controls that a card editor shows and from which the
// composer reads the layout. It is the one place where a card's layout is worked out.
class CardPreview {
 public:
  explicit CardPreview(const CardLayout& layout);

  // Brings everything into line with the current rows of rsCard and rsSet; the types and backs come from
  // rsCardType and rsCardBack. A picture that is broken, or a missing type or back, is told in a box, and
  // what follows stays as it was.
  void DrawCard();
  // Applies the record to frame and picture and touches nothing else.
  void PlacePicture();
  // The bold line under the picture (or the title) and the rule text under that.
  void PlaceBold();
  // The rule text under the bold line.
  void PlaceInformation();
  // Caption, height and colour of the bold line; the rule text follows.
  void SetBoldText(const QString& text);
  // The colour of the bold line by its words, in the edition that has it.
  void ColourBold();
  // The state of the design: the built-in back, nothing else drawn.
  void Reset();

  const CardLayout& Layout() const { return layout_; }

  Surface picCard;
  Surface picFrame{&picCard};
  Surface picImage{&picFrame};
  Surface picSymbol{&picCard};
  Surface picArtistDest{&picCard};
  Label lblTitle{&picCard};
  std::array<std::unique_ptr<Label>, 4>
      lblType;  // upper left and right, lower left and right, as far as there are
  Label lblNumber{&picCard};
  Label lblBold{&picCard};
  Label lblInformation{&picCard};
  Label lblAutonumber{&picCard};
  Label lblWatermark{&picCard};
  Label lblPicSize{&picCard};
  Surface picBack;

 private:
  void Design();
  void DrawType();
  void DrawTexts();
  void DrawFrame();
  void DrawBackground();
  void DrawBack();

  const CardLayout& layout_;
};

// The one preview of edition 2 or 3 (any other number counts as 3), shared by its editor and the composer.
CardPreview& CardPreviewOf(int edition);

// Draws the artist's name as a vertical strip over the card's background (over its colour where it has no
// background picture), in the artist colour of the current set; an empty name hides the strip. Strip and
// card are always those of the 2nd edition, also for a card of the 3rd, which so has no artist line.
void RotateArtist(const QString& artist, Colour colour, bool use_background);

}  // namespace orv
