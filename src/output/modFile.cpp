#include "output/modFile.h"

#include <QFile>
#include <cerrno>

#include "base/CodePage.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "forms/Dialogs.h"
#include "state/modData.h"

namespace orv {
namespace {

// A text file, line by line; a failure is a RuntimeError.
class Listing {
 public:
  explicit Listing(const QString& path) : file_(path) {
    CheckTargetFile(path);
    errno = 0;
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
      ThrowFileError(errno);
  }
  void Print(const QString& line) {
    const QByteArray bytes = ToWindows1252(line) + "\r\n";
    errno = 0;
    if (file_.write(bytes) != bytes.size()) ThrowFileError(errno);
  }
  void Blank() { Print(QStringLiteral(" ")); }
  void EndRecord() {
    Blank();
    Print(QStringLiteral("---------------"));
  }

 private:
  QFile file_;
};

// A Null printed by itself, without a label, reads so.
QString WholeLine(const Field& field) {
  return field.IsNull() ? QStringLiteral("Null") : field.Text();
}

Recordset RowsOf(const QString& query, std::int32_t set, const QString& order) {
  return modData::OpenSnapshot(query + QString::number(set) + QStringLiteral(" ORDER BY ") + order);
}

void PrintHead(Listing& listing) {
  listing.Print(QStringLiteral("Created with Varnholt Card Set Creator 2.0"));
  listing.Print(QStringLiteral("https://varnholt.example/cards"));
  listing.Blank();
  listing.Print(QStringLiteral("Set: ") + modData::rsSet["SetName"].TextOrEmpty());
  listing.Blank();
}

void PrintCards(Listing& listing, std::int32_t set) {
  Recordset cards = RowsOf(
      QStringLiteral("SELECT tblCard.Nr, tblCard.Title, tblCard.BoldText, tblCard.Information FROM tblCard "
                     "WHERE tblCard.SetID = "),
      set, QStringLiteral("tblCard.Nr"));
  if (cards.IsEmpty()) return;
  listing.Print(QString::number(cards.RecordCount()) + QStringLiteral(" Cards"));
  listing.Blank();
  for (; !cards.IsEOF(); cards.MoveNext()) {
    listing.Print(WholeLine(cards["Title"]));
    listing.Print(QStringLiteral("Nr:   ") + cards["Nr"].TextOrEmpty());
    const QString bold = cards["BoldText"].TextOrEmpty();
    if (!bold.isEmpty()) listing.Print(QStringLiteral("Bold: ") + bold);
    listing.Print(QStringLiteral("Text: ") + cards["Information"].TextOrEmpty());
    listing.EndRecord();
  }
}

void PrintLargeCards(Listing& listing, std::int32_t set) {
  Recordset cards = RowsOf(
      QStringLiteral("SELECT tblLargeCard.Nr, tblLargeCard.Title, tblLargeCard.Information FROM tblLargeCard "
                     "WHERE tblLargeCard.SetID = "),
      set, QStringLiteral("tblLargeCard.Nr"));
  if (cards.IsEmpty()) return;
  listing.Blank();
  listing.Print(QString::number(cards.RecordCount()) + QStringLiteral(" Large Cards"));
  listing.Blank();
  for (; !cards.IsEOF(); cards.MoveNext()) {
    listing.Print(WholeLine(cards["Title"]));
    listing.Print(QStringLiteral("Nr: ") + cards["Nr"].TextOrEmpty());
    listing.Print(QStringLiteral("Text: ") + cards["Information"].TextOrEmpty());
    listing.EndRecord();
  }
}

void PrintCharacters(Listing& listing, std::int32_t set) {
  Recordset rows = RowsOf(
      QStringLiteral(
          "SELECT tblCharacter.Nr, tblCharacter.Name, tblCharacter.Strength, tblCharacter.Craft, "
          "tblCharacter.Gold, "
          "tblCharacter.Lives, tblAlignment.Alignment, tblArea.Board, tblArea.Area, tblCharacter.Abilities "
          "FROM tblArea INNER JOIN (tblAlignment INNER JOIN tblCharacter ON tblAlignment.AlignmentID = "
          "tblCharacter.AlignmentID) ON tblArea.AreaID = tblCharacter.StartingAreaID WHERE "
          "tblCharacter.SetID = "),
      set, QStringLiteral("tblCharacter.Nr"));
  if (rows.IsEmpty()) return;
  listing.Print(QString::number(rows.RecordCount()) + QStringLiteral(" Characters"));
  listing.Blank();
  const struct {
    const char* label;
    const char* column;
  } attributes[] = {{"Strength:   ", "Strength"},
                    {"Craft:      ", "Craft"},
                    {"Gold:       ", "Gold"},
                    {"Lives:      ", "Lives"}};
  for (; !rows.IsEOF(); rows.MoveNext()) {
    listing.Print(WholeLine(rows["Name"]));
    for (const auto& attribute : attributes) {
      QString value = rows[attribute.column].TextOrEmpty();
      BlankDashes(value);
      listing.Print(QString::fromLatin1(attribute.label) + value);
    }
    listing.Print(QStringLiteral("Alignment:  ") + rows["Alignment"].TextOrEmpty());
    listing.Print(QStringLiteral("Start area: ") + rows["Board"].TextOrEmpty() + QStringLiteral(" - ") +
                  rows["Area"].TextOrEmpty());
    listing.Print(QStringLiteral("Abilities:  ") + rows["Abilities"].TextOrEmpty());
    listing.EndRecord();
  }
}

}  // namespace

void BlankDashes(QString& text) {
  if (text == u"---") text.clear();
}

void ExportSet(const QString& path, std::int32_t SetID) {
  try {
    Listing listing(path);
    PrintHead(listing);
    PrintCards(listing, SetID);
    PrintLargeCards(listing, SetID);
    PrintCharacters(listing, SetID);
  } catch (const RuntimeError& error) {
    MsgBox(QStringLiteral("The file is NOT saved due to an error.\r\n\r\n") + error.NumberAndDescription(),
           Icon::Critical, QStringLiteral("Error"));
    return;
  }
  MsgBox(QStringLiteral("The card set text is exported."), Icon::Information, QStringLiteral("Save text"));
}

}  // namespace orv
