#include "print/inner/BadPrint.h"

#include <algorithm>
#include <cmath>
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

  std::vector<Finding> Find() {
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
      Add(QStringLiteral("the picture has %1 dots an inch").arg(dots, 0, 'f', 0));
    }
  }

  void PieceText() {
    frmCard->ApplyPieceFont(modData::rsSet["CharacterPieceFontID"].Int32Or(0));
    Line({"name", "Name"}, frmCard->picACardPP, TheCharacterPreview().lblPlayingPieceName);
  }

  void CardTexts() {
    const CardPreview& preview = CardPreviewOf(modData::CurrentEditionID);
    Slot("CardTitleFontID");
    Line({"title", "Title"}, Front(), preview.lblTitle);
    Slot("CardTypeFontID");
    for (const auto& word : preview.lblType) {
      if (word != nullptr && word->Visible()) Line({"type", "CardTypeID"}, Front(), *word);
    }
    Slot("CardBoldFontID");
    Line({"bold text", "BoldText"}, Front(), preview.lblBold);
    Slot("CardInformationFontID");
    Block({"information", "Information"}, preview.lblInformation);
  }

  void CharacterTexts() {
    const CharacterPreview& preview = TheCharacterPreview();
    Slot("CharacterNameFontID");
    Line({"name", "Name"}, Front(), preview.lblCharacter);
    Slot("CharacterInfoFontID");
    Line({"start", "StartingAreaID"}, Front(), preview.lblStart);
    Slot("CharacterSpecialFontID");
    Block({"special abilities", "Abilities"}, preview.lblSpecial);
  }

  void LargeTexts() {
    const LargeCardPreview& preview = TheLargeCardPreview();
    Slot("CardLargeTitleFontID");
    Block({"title", "Title"}, preview.lblTitleLarge);
    Slot("CardLargeInfoFontID");
    Block({"information", "Information"}, preview.lblInformationLarge);
  }

  static Surface& Front() { return frmCard->picACard; }
  static void Slot(const char* column) { frmCard->ApplySlot(column); }

  // A text as a user calls it, and its column.
  struct Told {
    const char* name;
    const char* column;
  };

  void Line(const Told& told, const Surface& surface, const Label& box) {
    const double over = surface.TextWidth(box.Caption()) - box.Width();
    if (over > 0) RunsOver(told, static_cast<int>(std::ceil(over)), "pixel");
  }

  void Block(const Told& told, const Label& box) {
    int lines = 0;
    WrapText(WrappablePart(box.Caption()), box, Front(),
             [&](const QString&, int number) { lines = number + 1; });
    const double height = Front().TextHeight({});
    const double over = lines * height - box.Height();
    if (lines > 0 && over > 0) RunsOver(told, static_cast<int>(std::ceil(over / height)), "line");
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
      return Add(QStringLiteral("\"%1\" runs over the card's edge").arg(text->line.trimmed()), "");
    }
  }

  void RunsOver(const Told& told, int amount, const char* unit) {
    const QString words = QStringLiteral("the %1 runs over its box by %2 %3%4")
                              .arg(QLatin1String(told.name))
                              .arg(amount)
                              .arg(QLatin1String(unit), amount == 1 ? QString() : QStringLiteral("s"));
    Add(words, told.column);
  }
  void Add(const char* text) { Add(QString::fromLatin1(text)); }
  // Words of the type that are too long are one finding each width.
  void Add(const QString& text, const char* column = nullptr) {
    const auto same = [&text](const Finding& each) { return each.text == text; };
    if (std::ranges::none_of(findings_, same)) findings_.push_back({text, column});
  }

  const SheetKind& kind_;
  const PrintedCard& card_;
  double scale_;
  std::vector<Finding> findings_;
};

}  // namespace

std::vector<Finding> FindBadPrint(const SheetKind& kind, const PrintedCard& card, double scale) {
  return Finder(kind, card, scale).Find();
}

}  // namespace orv
