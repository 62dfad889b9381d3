#include "output/OutputKinds.h"

#include "composition/CardPreview.h"
#include "composition/CharacterPreview.h"
#include "composition/LargeCardPreview.h"
#include "composition/frmCard.h"
#include "state/modData.h"

namespace orv {
namespace {

Surface& ComposedCard() {
  return frmCard->picACard;
}

Surface& ComposedPiece() {
  return frmCard->picACardPP;
}

const Surface& BackOfCard() {
  return CardPreviewOf(2).picBack;
}

constexpr const SheetKind* kOfCard2nd[] = {&kSheetOfCard2nd};
constexpr const SheetKind* kOfCard3rd[] = {&kSheetOfCard3rd};
constexpr const SheetKind* kOfCharacter[] = {&kSheetOfCharacter, &kSheetOfPiece};
constexpr const SheetKind* kOfLargeCard[] = {&kSheetOfLargeCard};
constexpr const char* kPicturesOfCard[] = {"Picture", "Background"};
constexpr const char* kPicturesOfCharacter[] = {"Picture", "Background", "PlayingPiece"};
constexpr const char* kPicturesOfLargeCard[] = {"Picture", "BGPicture", "LargeCardBack"};
constexpr const OutputKind* kKinds[] = {&kCards2nd, &kCards3rd, &kCharacters2nd, &kLargeCards2nd};

}  // namespace

const SheetKind kSheetOfCard2nd = {.kind_code = "C2",
                                   .box_title = "Saving the card 2nd.",
                                   .record = modData::rsCard,
                                   .name_column = "FileName",
                                   .front = ComposedCard,
                                   .back = BackOfCard,
                                   .first_outline = {0, 0, 151, 255},
                                   .second_outline = {152, 0, 303, 255},
                                   .fills_name_from_title = true};
// The back is the one that the 2nd edition's preview shows, whatever the 3rd edition's has drawn.
const SheetKind kSheetOfCard3rd = {.kind_code = "C3",
                                   .box_title = "Saving the card 3rd.",
                                   .record = modData::rsCard,
                                   .name_column = "FileName",
                                   .front = ComposedCard,
                                   .back = BackOfCard,
                                   .first_outline = {0, 0, 162, 246},
                                   .second_outline = {163, 0, 325, 246},
                                   .fills_name_from_title = true};
const SheetKind kSheetOfCharacter = {
    .kind_code = "CH2",
    .box_title = "Saving the character 2nd",
    .record = modData::rsCharacter,
    .name_column = "Name",
    .front = ComposedCard,
    .back = []() -> const Surface& { return TheCharacterPreview().picCharacterBack; },
    .first_outline = {0, 0, 303, 255},
    .second_outline = {304, 0, 607, 255}};
// The piece has no back: the same image stands on both halves, whatever the set says of backs.
const SheetKind kSheetOfPiece = {.kind_code = "PP2",
                                 .box_title = "Saving the playing piece 2nd.",
                                 .record = modData::rsCharacter,
                                 .name_column = "Name",
                                 .front = ComposedPiece,
                                 .back = []() -> const Surface& { return ComposedPiece(); },
                                 .first_outline = {0, 0, 151, 255},
                                 .second_outline = {152, 0, 303, 255},
                                 .may_leave_out_back = false};
const SheetKind kSheetOfLargeCard = {
    .kind_code = "LC2",
    .box_title = "Saving the large card",
    .record = modData::rsLargeCard,
    .name_column = "Title",
    .front = ComposedCard,
    .back = []() -> const Surface& { return TheLargeCardPreview().picBackLarge; },
    .first_outline = {0, 0, 303, 255},
    .second_outline = {304, 0, 607, 255},
    .tells_cause = true};

const OutputKind kCards2nd = {.name = "cards",
                              .words = "cards",
                              .edition = 2,
                              .table = "tblCard",
                              .records = modData::rsCard,
                              .draw = [] { CardPreviewOf(2).DrawCard(); },
                              .compose = [] { frmCard->CreateCard2nd(); },
                              .sheets = kOfCard2nd,
                              .pictures = kPicturesOfCard};
const OutputKind kCards3rd = {.name = "cards",
                              .words = "cards",
                              .edition = 3,
                              .table = "tblCard",
                              .records = modData::rsCard,
                              .draw = [] { CardPreviewOf(3).DrawCard(); },
                              .compose = [] { frmCard->CreateCard3rd(); },
                              .sheets = kOfCard3rd,
                              .pictures = kPicturesOfCard};
const OutputKind kCharacters2nd = {.name = "characters",
                                   .words = "characters",
                                   .edition = 2,
                                   .table = "tblCharacter",
                                   .records = modData::rsCharacter,
                                   .draw = [] { TheCharacterPreview().DrawCharacter(); },
                                   .compose = [] { frmCard->CreateCharacter2nd(); },
                                   .sheets = kOfCharacter,
                                   .pictures = kPicturesOfCharacter};
const OutputKind kLargeCards2nd = {.name = "large",
                                   .words = "large cards",
                                   .edition = 2,
                                   .table = "tblLargeCard",
                                   .records = modData::rsLargeCard,
                                   .draw = [] { TheLargeCardPreview().DrawLargeCard(); },
                                   .compose = [] { frmCard->CreateLargeCard2nd(); },
                                   .sheets = kOfLargeCard,
                                   .pictures = kPicturesOfLargeCard};

std::span<const OutputKind* const> OutputKinds() {
  return kKinds;
}

}  // namespace orv
