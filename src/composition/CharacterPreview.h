#pragma once

#include <array>

#include "forms/Surface.h"

namespace orv {

// The preview of a character: the sheet's front and back and the playing piece. The controls that the
// character editor shows and from which the composer reads the layout.
class CharacterPreview {
 public:
  CharacterPreview();

  // Brings everything into line with the current rows of rsCharacter and rsSet; areas, alignments and
  // backs come from the loaded lists. A picture that is broken or a missing back is told in a box, and
  // what follows stays as it was.
  void DrawCharacter();
  // Shows or hides the picture's frame and lets the texts beside it take the room that is left.
  void ShowPictureCharacter();
  // Applies the record to the frame, its handle and the picture.
  void PlacePicture();
  // Applies the record to the picture of the piece.
  void PlacePiece();
  // The texts of the panel, to the right of the handle.
  void PlaceTexts();
  // One attribute on its strip at the card's edge: 0 strength, 1 craft, 2 gold, 3 lives. "---" leaves the
  // word alone.
  void DrawAttribute(int index, const QString& value);
  // The starting area of the record, with its board in brackets or without.
  void ShowStart(bool include_board);
  // The panel's background; without one the sheet shows through.
  void DrawBackground();
  // The back that the record names. RuntimeError 3021 where there is none.
  void DrawBack();
  // The state of the design: the built-in sheet, no pictures.
  void Reset();

  Surface picCharacter;
  std::array<Surface, 4> picCharAttrDisp;
  Surface picBackgroundChar{&picCharacter};  // the panel, with all that follows up to the mark
  Surface picFrameCharacter{&picBackgroundChar};
  Surface picImageCharacter{&picFrameCharacter};
  Label lblPicSizeCharacter{&picBackgroundChar};
  Surface picSymbolCharacter{&picBackgroundChar};
  Label lblAlignmentTitle{&picBackgroundChar};
  Label lblAlignment{&picBackgroundChar};
  Label lblStartTitle{&picBackgroundChar};
  Label lblStart{&picBackgroundChar};
  Label lblSpecialTitle{&picBackgroundChar};
  Label lblSpecial{&picBackgroundChar};
  Label lblAutonumberCharacter{&picBackgroundChar};
  Label lblCharacter{&picCharacter};
  Label lblObjects{&picCharacter};
  Label lblFollowers{&picCharacter};
  Surface picCharacterBack;
  Surface picPlayingPiece;
  Surface picPlayingPieceFrame{&picPlayingPiece};
  Surface picPlayingPieceImage{&picPlayingPieceFrame};
  Label lblPlayingPieceName{&picPlayingPiece};
  Surface Line1, Line2, Line3, Line4;  // along which the piece is folded: top, left, right, bottom
  std::array<Label, 2> lblWatermark;   // of the card, in its panel, and of the piece

 private:
  void DesignSheet();
  void DesignPanel();
  void DesignPiece();
  void DrawTexts();
  void DrawAttributes();
  void DrawFrame();
  void DrawPicture();
  void DrawPiece();

  Surface picCharAttribute;  // an attribute while it is still horizontal
  const Picture picOriginalCharacterBackground;
};

// The one preview of characters, shared by the editor, the composer and the saving.
CharacterPreview& TheCharacterPreview();

}  // namespace orv
