#include "composition/CharacterPreview.h"

#include "base/Instance.h"
#include "base/Rounding.h"
#include "builtin/BuiltIn.h"
#include "composition/PreviewDrawing.h"
#include "composition/modRotatePic.h"
#include "database/ListHelpers.h"
#include "database/ReferenceLists.h"
#include "pictures/FinePicture.h"
#include "pictures/modPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr PixelRect kSheet{0, 0, 304, 256};
constexpr PixelRect kPanel{13, 13, 276, 228};
constexpr int kTextsRight = 272;  // of the panel's texts, from its left edge
constexpr int kFrameWidth = 121;
constexpr int kFrameHeight = 220;
constexpr int kFramedHeight = 218;  // with an outline
constexpr PixelRect kStrips[] = {{0, 44, 12, 52}, {0, 159, 12, 52}, {290, 44, 12, 52}, {290, 159, 12, 52}};

struct Attribute {
  const char* word;
  Colour colour;
  bool clockwise;
  const char* column;
};
constexpr Attribute kAttributes[] = {
    {"STRENGTH", Rgb(0xFF, 0x1F, 0x10), true, "Strength"},
    {"CRAFT", Rgb(0x00, 0xBF, 0xF0), true, "Craft"},
    {"GOLD", Rgb(0xFF, 0xB0, 0x0F), false, "Gold"},
    {"LIVES", Rgb(0x00, 0xB7, 0x00), false, "Lives"},
};

Font Small(double points, bool bold = false) {
  return {QStringLiteral("Small Fonts"), points, bold, false};
}

void DesignCaption(Label& label, const PixelRect& rect, const QString& caption, const Font& font,
                   Alignment alignment) {
  DesignLabel(label, rect, font, alignment);
  label.SetCaption(caption);
}

// A picture in a frame: the frame clips it, and its place is kept in twips.
void DesignPicture(Surface& frame, const PixelRect& rect, Surface& image, const QString& name) {
  PlaceAt(frame, rect);
  frame.SetScaleMode(ScaleMode::Twips);
  image.SetScaleMode(ScaleMode::Twips);
  image.SetAutoSize(true);
  image.SetTabStop(true);
  image.SetName(name);
}

void PlaceBehind(Label& text, const Label& title) {
  text.SetLeft(title.Left() + title.Width());
  text.SetWidth(kTextsRight - text.Left());
}

}  // namespace

CharacterPreview::CharacterPreview()
    : picCharAttrDisp{Surface(&picCharacter), Surface(&picCharacter), Surface(&picCharacter),
                      Surface(&picCharacter)},
      Line1(&picPlayingPiece),
      Line2(&picPlayingPiece),
      Line3(&picPlayingPiece),
      Line4(&picPlayingPiece),
      lblWatermark{Label(&picBackgroundChar), Label(&picPlayingPiece)},
      picOriginalCharacterBackground(LoadPicture(builtin::CharacterSheet())) {
  DesignSheet();
  DesignPanel();
  DesignPiece();
  Reset();
}

void CharacterPreview::DesignSheet() {
  PlaceAt(picCharacter, kSheet);
  picCharacter.SetBorderStyle(1);
  picCharacter.SetName(QStringLiteral("Preview of the character"));
  PlaceAt(picCharacterBack, kSheet);
  picCharacterBack.SetBorderStyle(1);
  picCharacterBack.SetName(QStringLiteral("Back of the character"));
  for (int i = 0; i < 4; ++i) PlaceAt(picCharAttrDisp[i], kStrips[i]);
  picCharAttribute.Place(0, 0, 52, 12);
  picCharAttribute.SetScaleMode(ScaleMode::Twips);
  picCharAttribute.SetBackColor(kBlack);
  DesignCaption(lblCharacter, {80, 0, 140, 13}, QStringLiteral("CHARACTER NAME"), Small(7, true),
                Alignment::Centre);
  DesignCaption(lblObjects, {46, 242, 71, 12}, QStringLiteral("OBJECTS"), Small(7, true), Alignment::Centre);
  DesignCaption(lblFollowers, {185, 242, 71, 12}, QStringLiteral("FOLLOWERS"), Small(7, true),
                Alignment::Centre);
  // They lie on the sheet's dark edge.
  for (Label* label : {&lblCharacter, &lblObjects, &lblFollowers}) label->SetForeColor(kWhite);
}

void CharacterPreview::DesignPanel() {
  PlaceAt(picBackgroundChar, kPanel);
  DesignPicture(picFrameCharacter, {1, 1, kFrameWidth, kFrameHeight}, picImageCharacter,
                QStringLiteral("Picture of the character"));
  PlaceAt(lblPicSizeCharacter, {122, 1, 5, 220});
  lblPicSizeCharacter.SetHandle(true);
  lblPicSizeCharacter.SetName(QStringLiteral("Size of the picture"));
  PlaceAt(picSymbolCharacter, {265, 218, 9, 9});
  picSymbolCharacter.SetAutoSize(true);
  DesignCaption(lblAlignmentTitle, {128, 3, 65, 12}, QStringLiteral("ALIGNMENT:"), Small(6, true),
                Alignment::Left);
  DesignLabel(lblAlignment, {193, 3, 79, 12}, Small(6, true), Alignment::Left);
  DesignCaption(lblStartTitle, {128, 15, 41, 12}, QStringLiteral("START:"), Small(6, true), Alignment::Left);
  DesignLabel(lblStart, {169, 15, 103, 12}, Small(6, true), Alignment::Left);
  DesignCaption(lblSpecialTitle, {128, 28, 144, 11}, QStringLiteral("SPECIAL ABILITIES"), Small(7, true),
                Alignment::Centre);
  DesignLabel(lblSpecial, {128, 43, 144, 177}, Small(7), Alignment::Left);
  lblSpecial.SetWordWrap(true);
  DesignLabel(lblAutonumberCharacter, {2, 220, 13, 9}, Small(5), Alignment::Left);
  DesignWatermark(lblWatermark[0], {113, 220, 40, 9});
}

void CharacterPreview::DesignPiece() {
  PlaceAt(picPlayingPiece, {0, 0, 152, 256});
  picPlayingPiece.SetBorderStyle(1);
  picPlayingPiece.SetName(QStringLiteral("Preview of the playing piece"));
  DesignPicture(picPlayingPieceFrame, {9, 24, 132, 222}, picPlayingPieceImage,
                QStringLiteral("Picture of the playing piece"));
  DesignCaption(lblPlayingPieceName, {8, 10, 132, 13}, QStringLiteral("CHARACTER NAME"), Small(7, true),
                Alignment::Centre);
  PlaceAt(Line1, {8, 8, 134, 1});
  PlaceAt(Line2, {8, 8, 1, 239});
  PlaceAt(Line3, {141, 8, 1, 239});
  PlaceAt(Line4, {8, 246, 134, 1});
  for (Surface* line : {&Line1, &Line2, &Line3, &Line4}) line->SetBackColor(kBlack);
  DesignWatermark(lblWatermark[1], {0, 246, 152, 9});
}

void CharacterPreview::Reset() {
  picCharacter.SetPicture(picOriginalCharacterBackground);
  for (Surface* surface :
       {&picBackgroundChar, &picImageCharacter, &picCharacterBack, &picPlayingPieceImage}) {
    surface->SetPicture(LoadPicture());
  }
}

void CharacterPreview::DrawCharacter() {
  LetGoOfLargePictures({&picImageCharacter, &picBackgroundChar, &picCharacterBack, &picPlayingPieceImage});
  DrawInSteps({
      [&] { DrawTexts(); },
      [&] { DrawAttributes(); },
      [&] { DrawFrame(); },
      [&] { ShowPictureCharacter(); },
      [&] { DrawPicture(); },
      [&] {
        picCharacter.SetPicture(WithOriginal(picOriginalCharacterBackground, builtin::CharacterSheet()));
      },
      [&] { DrawBackground(); },
      [&] { DrawBack(); },
      [&] { DrawPiece(); },
      [&] { PlaceSymbol(picSymbolCharacter, picCharacter, 29, 29); },
  });
}

void CharacterPreview::DrawTexts() {
  Recordset& character = modData::rsCharacter;
  lblCharacter.SetCaption(character["Name"].TextOrEmpty());
  lblAlignment.SetCaption(AlignmentText(character["AlignmentID"].Int32Or(0)));
  ShowStart(character["IncludeBoard"].BoolOrFalse());
  lblSpecial.SetCaption(character["Abilities"].TextOrEmpty());
}

void CharacterPreview::ShowStart(bool include_board) {
  lblStart.SetCaption(AreaText(modData::rsCharacter["StartingAreaID"].Int32Or(0), false, include_board));
}

void CharacterPreview::DrawAttributes() {
  for (int i = 0; i < 4; ++i) {
    DrawAttribute(i, modData::rsCharacter[kAttributes[i].column].TextOrEmpty());
  }
}

void CharacterPreview::DrawAttribute(int index, const QString& value) {
  const Attribute& attribute = kAttributes[index];
  QString text = QString::fromLatin1(attribute.word);
  if (value != QLatin1String("---")) {
    if (!value.startsWith(u'+')) text += u' ';
    text += value;
  }
  Surface& scratch = picCharAttribute;
  scratch.SetPicture(LoadPicture());
  scratch.SetForeColor(attribute.colour);
  scratch.SetFont(Small(6));
  // "STRENGTH+9" is too long for the strip in its usual size.
  if (scratch.TextWidth(text) > scratch.Width() * kTwipsPerPixel) scratch.SetFont(Small(5.25));
  scratch.SetCurrentX(scratch.Width() / 2 * kTwipsPerPixel - scratch.TextWidth(text) / 2);
  scratch.SetCurrentY(scratch.Height() / 2 * kTwipsPerPixel - scratch.TextHeight(text) / 2);
  scratch.Print(text);
  scratch.SetPicture(scratch.Image());
  RotatePicture(scratch, picCharAttrDisp[index], attribute.clockwise);
}

void CharacterPreview::DrawFrame() {
  Recordset& character = modData::rsCharacter;
  picFrameCharacter.SetWidth(character["PicWidth"].NumberOr(kFrameWidth));
  lblAutonumberCharacter.SetCaption(character["Nr"].TextOrEmpty());
  lblAutonumberCharacter.SetVisible(modData::rsSet["Autonumber"].BoolOrFalse());
  const bool framed = character["UseFrame"].BoolOrFalse();
  picFrameCharacter.SetHeight(framed ? kFramedHeight : kFrameHeight);
  picFrameCharacter.SetBorderStyle(framed ? 1 : 0);
}

void CharacterPreview::ShowPictureCharacter() {
  const bool show = modData::rsCharacter["UsePicture"].BoolOrFalse();
  picFrameCharacter.SetVisible(show);
  lblPicSizeCharacter.SetVisible(show);
  lblPicSizeCharacter.SetLeft(show ? picFrameCharacter.Left() + picFrameCharacter.Width() : 0);
  PlaceTexts();
}

void CharacterPreview::PlaceTexts() {
  const double left = lblPicSizeCharacter.Left() + lblPicSizeCharacter.Width() + 1;
  for (Label* label : {&lblAlignmentTitle, &lblStartTitle, &lblSpecialTitle, &lblSpecial}) {
    label->SetLeft(left);
  }
  PlaceBehind(lblAlignment, lblAlignmentTitle);
  PlaceBehind(lblStart, lblStartTitle);
  for (Label* label : {&lblSpecialTitle, &lblSpecial}) label->SetWidth(kTextsRight - left);
}

void CharacterPreview::DrawPicture() {
  Recordset& character = modData::rsCharacter;
  LoadPictureFromField(picImageCharacter, character["Picture"]);
  picImageCharacter.SetTop(character["PicTop"].NumberOr(0));
  picImageCharacter.SetLeft(character["PicLeft"].NumberOr(0));
}

void CharacterPreview::PlacePicture() {
  Recordset& character = modData::rsCharacter;
  picFrameCharacter.SetHeight(character["UseFrame"].BoolOrFalse() ? kFramedHeight : kFrameHeight);
  picFrameCharacter.SetWidth(character["PicWidth"].NumberOr(kFrameWidth));
  lblPicSizeCharacter.SetLeft(picFrameCharacter.Left() + picFrameCharacter.Width());
  picImageCharacter.SetTop(character["PicTop"].NumberOr(0));
  picImageCharacter.SetLeft(character["PicLeft"].NumberOr(0));
}

void CharacterPreview::DrawBackground() {
  const Field background = modData::rsCharacter["Background"];
  LoadPictureFromField(picBackgroundChar, background);
  if (!background.IsNull()) return;
  // Drawn and not kept as its picture: the composer takes the panel only if there is a background.
  picBackgroundChar.PaintPicture(picCharacter.Picture(), 0, 0, kPanel.width, kPanel.height, kPanel.left,
                                 kPanel.top, kPanel.width, kPanel.height);
}

void CharacterPreview::DrawBack() {
  FindByKey(modData::rsCharacterBack, "CharacterBackID", modData::rsCharacter["CharacterBackID"].Int32Or(0));
  LoadPictureFromField(picCharacterBack, modData::rsCharacterBack["Picture"]);
}

void CharacterPreview::DrawPiece() {
  lblPlayingPieceName.SetCaption(modData::rsCharacter["Name"].TextOrEmpty());
  LoadPictureFromField(picPlayingPieceImage, modData::rsCharacter["PlayingPiece"]);
  PlacePiece();
}

void CharacterPreview::PlacePiece() {
  picPlayingPieceImage.SetTop(modData::rsCharacter["PPTop"].NumberOr(0));
  picPlayingPieceImage.SetLeft(modData::rsCharacter["PPLeft"].NumberOr(0));
}

CharacterPreview& TheCharacterPreview() {
  static Instance<CharacterPreview> preview;
  return *preview;
}

}  // namespace orv
