#include "print/inner/BadPrint.h"

#include <algorithm>
#include <string_view>

#include "composition/CardPreview.h"
#include "composition/CharacterPreview.h"
#include "composition/LargeCardPreview.h"
#include "composition/WrapText.h"
#include "composition/frmCard.h"
#include "database/ListHelpers.h"
#include "forms/Playing.h"
#include "imaging/Drawing.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr double kFewDots = 150;  // an inch
constexpr double kMmPerInch = 25.4;

bool IsMissing(Recordset& rows, const char* key, const Field& value) {
  if (!rows.IsOpen() || rows.IsEmpty()) return true;
  FindByKey(rows, key, value.Int32Or(0));
  return rows.IsEOF();
}

class Finder {
 public:
  Finder(const SheetKind& kind, const PrintedCard& card, double scale)
      : kind_(kind), card_(card), scale_(scale) {}

  QStringList Find() {
    const Checks& checks = ChecksOf(kind_);
    if (checks.shown == nullptr || kind_.record[checks.shown].BoolOrFalse())
      CheckPicture(kind_.record[checks.picture], checks.image());
    (this->*checks.references)();
    if (!card_.failure.isEmpty()) return findings_;
    (this->*checks.texts)();
    Edge();
    return findings_;
  }

 private:
  // How the kinds of sheets differ.
  struct Checks {
    const char* kind_code;
    const char* picture;  // its column
    const char* shown;    // the column that says whether it is shown; none: always
    const Surface& (*image)();
    void (Finder::*references)();
    void (Finder::*texts)();
  };
  static const Checks& ChecksOf(const SheetKind& kind) {
    static const Checks kAll[] = {
        {"C2", "Picture", "UsePicture", []() -> const Surface& { return CardPreviewOf(2).picImage; },
         &Finder::TypeAndBack, &Finder::CardTexts},
        {"C3", "Picture", "UsePicture", []() -> const Surface& { return CardPreviewOf(3).picImage; },
         &Finder::TypeAndBack, &Finder::CardTexts},
        {"CH2", "Picture", "UsePicture",
         []() -> const Surface& { return TheCharacterPreview().picImageCharacter; }, &Finder::CharacterBack,
         &Finder::CharacterTexts},
        {"PP2", "PlayingPiece", nullptr,
         []() -> const Surface& { return TheCharacterPreview().picPlayingPieceImage; }, &Finder::Nothing,
         &Finder::PieceText},
        {"LC2", "Picture", "UsePicture",
         []() -> const Surface& { return TheLargeCardPreview().picImageLarge; }, &Finder::LargeBack,
         &Finder::LargeTexts}};
    return *std::ranges::find_if(
        kAll, [&](const Checks& each) { return std::string_view(each.kind_code) == kind.kind_code; });
  }

  void Nothing() {}
  void TypeAndBack() {
    const Recordset& record = kind_.record;
    if (IsMissing(modData::rsCardType, "CardTypeID", record["CardTypeID"])) Add("the type is missing");
    if (IsMissing(modData::rsCardBack, "CardBackID", record["CardBackID"])) Add("the back is missing");
  }
  void CharacterBack() {
    if (IsMissing(modData::rsCharacterBack, "CharacterBackID", kind_.record["CharacterBackID"]))
      Add("the back is missing");
  }
  void LargeBack() {
    if (kind_.record["LargeCardBack"].IsNull()) Add("the back is empty");
  }

  void CheckPicture(const Field& picture, const Surface& image) {
    if (picture.IsNull()) return Add("the picture is empty");
    if (!card_.failure.isEmpty()) return;
    // A stored picture is shown dot for dot.
    const double dots = kMmPerInch / scale_ * FinenessOf(image.Picture());
    if (dots < kFewDots) {
      findings_.append(QStringLiteral("the picture has %1 dots an inch").arg(dots, 0, 'f', 0));
    }
  }

  void PieceText() {
    frmCard->ApplyPieceFont(modData::rsSet["CharacterPieceFontID"].Int32Or(0));
    Line("name", frmCard->picACardPP, TheCharacterPreview().lblPlayingPieceName);
  }

  void CardTexts() {
    const CardPreview& preview = CardPreviewOf(modData::CurrentEditionID);
    Slot("CardTitleFontID");
    Line("title", Front(), preview.lblTitle);
    Slot("CardTypeFontID");
    for (const auto& word : preview.lblType) {
      if (word != nullptr && word->Visible()) Line("type", Front(), *word);
    }
    Slot("CardBoldFontID");
    Line("bold text", Front(), preview.lblBold);
    Slot("CardInformationFontID");
    Block("information", preview.lblInformation);
  }

  void CharacterTexts() {
    const CharacterPreview& preview = TheCharacterPreview();
    Slot("CharacterNameFontID");
    Line("name", Front(), preview.lblCharacter);
    Slot("CharacterInfoFontID");
    Line("start", Front(), preview.lblStart);
    Slot("CharacterSpecialFontID");
    Block("special abilities", preview.lblSpecial);
  }

  void LargeTexts() {
    const LargeCardPreview& preview = TheLargeCardPreview();
    Slot("CardLargeTitleFontID");
    Block("title", preview.lblTitleLarge);
    Slot("CardLargeInfoFontID");
    Block("information", preview.lblInformationLarge);
  }

  static Surface& Front() { return frmCard->picACard; }
  static void Slot(const char* column) { frmCard->ApplySlot(column); }

  void Line(const char* what, const Surface& surface, const Label& box) {
    if (surface.TextWidth(box.Caption()) > box.Width()) RunsOver(what);
  }

  void Block(const char* what, const Label& box) {
    int lines = 0;
    WrapText(WrappablePart(box.Caption()), box, Front(),
             [&](const QString&, int number) { lines = number + 1; });
    if (lines * Front().TextHeight({}) > box.Height() && lines > 0) RunsOver(what);
  }

  // The composed front holds its texts itself; what is turned is cut to its strip by design.
  void Edge() {
    const std::shared_ptr<const Drawing>& drawing = kind_.front().Picture().HowDrawn();
    if (drawing == nullptr) return;
    for (const Drawing::Operation& operation : drawing->operations) {
      const auto* const text = std::get_if<Drawing::Text>(&operation);
      if (text == nullptr || text->words.empty()) continue;
      const bool inside = QRect(0, 0, drawing->width, drawing->height).contains(BodyOf(*text));
      if (inside) continue;
      findings_.append(QStringLiteral("\"%1\" runs over the card's edge").arg(text->line.trimmed()));
      return;
    }
  }

  void RunsOver(const char* what) {
    findings_.append(QStringLiteral("the %1 runs over its box").arg(QLatin1String(what)));
  }
  void Add(const char* text) { findings_.append(QString::fromLatin1(text)); }

  const SheetKind& kind_;
  const PrintedCard& card_;
  double scale_;
  QStringList findings_;
};

}  // namespace

QStringList FindBadPrint(const SheetKind& kind, const PrintedCard& card, double scale) {
  QStringList findings = Finder(kind, card, scale).Find();
  findings.removeDuplicates();
  return findings;
}

}  // namespace orv
