#include "database/FontProfiles.h"

#include "forms/Types.h"
#include "state/modData.h"

namespace orv {
namespace {

struct Profile {
  const char* face;
  int points;
  bool bold;
  Colour colour;
};

struct Slot {
  const char* column;
  Profile second_edition;
  Profile third_edition;
};

constexpr Profile Small(int points, bool bold = false, Colour colour = kBlack) {
  return {"Small Fonts", points, bold, colour};
}
constexpr Profile kAntique = {"CasablancaAntique", 14, false, kBlack};
constexpr Slot Same(const char* column, Profile profile) {
  return {column, profile, profile};
}

constexpr Slot kSlots[] = {
    Same("CardTypeFontID", Small(7)),
    Same("CardNumberFontID", Small(7)),
    {"CardTitleFontID", Small(7, true), kAntique},
    {"CardBoldFontID", Small(7, true), kAntique},
    Same("CardInformationFontID", Small(7)),
    Same("AutonumberFontID", Small(5)),
    Same("CardLargeTitleFontID", Small(7, true)),
    Same("CardLargeInfoFontID", Small(7)),
    Same("CharacterNameFontID", Small(7, true, kWhite)),
    Same("CharacterSpecialTitleFontID", Small(7, true)),
    Same("CharacterSpecialFontID", Small(7)),
    Same("CharacterInfoFontID", Small(6, true)),
    Same("CharacterPieceFontID", Small(7, true)),
};

}  // namespace

void CreateSetFonts(Recordset& set) {
  Transaction transaction(modData::cn);
  Recordset fonts;
  modData::OpenEditable(QStringLiteral("SELECT * FROM tblFont ORDER BY FontID"), fonts);
  const bool second = set["EditionID"].Int16Or(0) == 2;
  for (const Slot& slot : kSlots) {
    const Profile& profile = second ? slot.second_edition : slot.third_edition;
    fonts.AddNew();
    fonts["Font"] = profile.face;
    fonts["Size"] = profile.points;
    fonts["Bold"] = profile.bold;
    fonts["Italic"] = false;
    fonts["Colour"] = profile.colour;
    fonts.Update();
    fonts.MoveLast();
    set[slot.column] = fonts["FontID"].Get();
  }
  transaction.Commit();
}

}  // namespace orv
