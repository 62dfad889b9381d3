#include "database/ReferenceLists.h"

#include "state/modData.h"

namespace orv {
namespace {

// Shows only the matching rows of a snapshot while it lives.
class FilterScope {
 public:
  FilterScope(Recordset& recordset, const QString& criterion) : recordset_(recordset) {
    recordset_.SetFilter(criterion);
  }
  ~FilterScope() { recordset_.SetFilter(QString()); }
  FilterScope(const FilterScope&) = delete;
  FilterScope& operator=(const FilterScope&) = delete;

 private:
  Recordset& recordset_;
};

}  // namespace

void LoadReferenceLists(std::int16_t edition, std::int16_t language) {
  const auto open = [](const char* text, auto... numbers) {
    QString query = QString::fromLatin1(text);
    ((query = query.arg(numbers)), ...);
    return modData::OpenSnapshot(query);
  };
  modData::rsCardType = open(
      "SELECT * FROM tblCardType WHERE EditionID = %1 AND LanguageID = %2 ORDER BY LanguageID, UpperLeft, "
      "LowerLeft, Number",
      edition, language);
  modData::rsCardBack = open(
      "SELECT * FROM tblCardBack WHERE EditionID = %1 AND LanguageID = %2 ORDER BY LanguageID, Original, "
      "BackText",
      edition, language);
  modData::rsCharacterBack = open(
      "SELECT * FROM tblCharacterBack WHERE EditionID = %1 AND LanguageID = %2 ORDER BY LanguageID, "
      "Original, BackText",
      edition, language);
  modData::rsArea = open(
      "SELECT *, [Board] & \" : \" & [Area] AS StartArea FROM tblArea WHERE EditionID = %1 AND LanguageID = "
      "%2 ORDER BY LanguageID, Board, Area",
      edition, language);
  modData::rsAlignment =
      open("SELECT * FROM tblAlignment WHERE LanguageID = %1 ORDER BY LanguageID, AlignmentNr", language);
}

QString AreaText(std::int32_t area_id, bool separated, bool board_in_brackets) {
  Recordset& areas = modData::rsArea;
  const FilterScope filter(areas, QStringLiteral("AreaID = %1").arg(area_id));
  if (areas.IsEOF()) return {};
  const QString area = areas["Area"].TextOrEmpty();
  const QString board = areas["Board"].TextOrEmpty();
  if (board_in_brackets) return area + QStringLiteral(" (") + board + QStringLiteral(")");
  if (separated) return board + QStringLiteral(" : ") + area;
  return area;
}

QString AlignmentText(std::int32_t alignment_id) {
  Recordset& alignments = modData::rsAlignment;
  const FilterScope filter(alignments, QStringLiteral("AlignmentID = %1").arg(alignment_id));
  return alignments.IsEOF() ? QString() : alignments["Alignment"].TextOrEmpty();
}

}  // namespace orv
