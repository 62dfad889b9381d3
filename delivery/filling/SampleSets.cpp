#include "filling/SampleSets.h"

#include <QDir>
#include <QSet>
#include <stdexcept>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "database/FontProfiles.h"
#include "filling/ContentFiles.h"
#include "pictures/FittedPicture.h"
#include "state/modData.h"

namespace orv::delivery {
namespace {

struct Owner {
  std::int32_t set = 0;
  int language = 0;
  int edition = 0;
};

struct Kind {
  const char *table, *key;
};
const QMap<QString, Kind>& Kinds() {
  static const QMap<QString, Kind> kinds{{"set", {"tblSet", "SetID"}},
                                         {"card", {"tblCard", "CardID"}},
                                         {"character", {"tblCharacter", "CharacterID"}},
                                         {"large card", {"tblLargeCard", "LargeCardID"}}};
  return kinds;
}

// Fitted to the frame in which they lie.
constexpr const char* kFramed[] = {"Picture", "PlayingPiece"};
const QSet<QString> kPictures{"Background", "BGPicture", "LargeCardBack", "Symbol"};
const QSet<QString> kTexts{"Title",    "Number",    "Artist",   "BoldText", "Information",
                           "FileName", "Name",      "Strength", "Craft",    "Gold",
                           "Lives",    "Abilities", "SetName",  "SaveTo",   "FilenamePrefix"};

// A field that names a row of a catalogue: its column and the catalogue.
struct Reference {
  QString column, catalogue;
  bool by_edition = true;
};
QMap<QString, Reference> ReferencesOf(const QString& kind) {
  if (kind == "set")
    return {{"DefaultType", {"DefaultCardTypeID", "type"}}, {"DefaultBack", {"DefaultCardBackID", "back"}}};
  if (kind == "card") return {{"Type", {"CardTypeID", "type"}}, {"Back", {"CardBackID", "back"}}};
  return {{"Area", {"StartingAreaID", "area"}},
          {"Alignment", {"AlignmentID", "alignment", false}},
          {"Back", {"CharacterBackID", "character back"}}};
}

// Yes or No, a colour, or a number.
Value PlainValue(const QString& text) {
  if (text == "Yes" || text == "No") return text == "Yes";
  bool ok = false;
  if (text.startsWith('#') && text.size() == 7) {
    const int rgb = text.mid(1).toInt(&ok, 16);
    if (ok) return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
  }
  const double number = text.toDouble(&ok);
  if (!ok) throw std::runtime_error(("no value: " + text).toStdString());
  return number;
}

class SetWriter {
 public:
  SetWriter(const Gallery& gallery, const Names& names, const std::vector<Block>& defaults)
      : gallery_(gallery), names_(names) {
    for (const Block& block : defaults) defaults_[block.kind] = block.fields;
  }

  void Write(const std::vector<Block>& blocks) {
    QMap<QString, int> count;
    for (const Block& block : blocks) {
      try {
        if (!Kinds().contains(block.kind)) throw std::runtime_error("no such kind of record");
        WriteBlock(block, ++count[block.kind]);
      } catch (const std::runtime_error& error) {
        throw std::runtime_error(
            QString("%1 %2: %3").arg(block.kind).arg(count[block.kind]).arg(error.what()).toStdString());
      } catch (const RuntimeError& error) {
        throw std::runtime_error(QString("%1 %2: %3")
                                     .arg(block.kind)
                                     .arg(count[block.kind])
                                     .arg(error.Description())
                                     .toStdString());
      }
    }
  }

 private:
  void WriteBlock(const Block& block, int nr) {
    Fields fields = defaults_[block.kind];
    for (auto it = block.fields.begin(); it != block.fields.end(); ++it) fields[it.key()] = it.value();
    const Kind& kind = Kinds()[block.kind];
    Recordset rows;
    modData::OpenEditable(QString("SELECT * FROM %1 ORDER BY %2").arg(kind.table, kind.key), rows);
    if (block.kind == "set") {
      owner_.language = LanguageKey(fields.take("Language"));
      owner_.edition = fields["EditionID"].toInt();
    }
    rows.AddNew();
    if (block.kind == "set") {
      rows["LanguageID"] = owner_.language;
    } else {
      rows["SetID"] = owner_.set;
      rows["Nr"] = nr;
    }
    if (block.kind == "card" && !fields.contains("Number")) {
      fields["Number"] = names_.NumberOfType(owner_.language, owner_.edition, fields["Type"]);
    }
    Fields framed;
    for (const char* column : kFramed) {
      if (fields.contains(column)) framed[column] = fields.take(column);
    }
    const QMap<QString, Reference> references = ReferencesOf(block.kind);
    for (auto it = fields.begin(); it != fields.end(); ++it) {
      if (references.contains(it.key())) {
        const Reference& reference = references[it.key()];
        rows[reference.column] = names_.Find(reference.catalogue, owner_.language,
                                             reference.by_edition ? owner_.edition : 0, it.value());
      } else {
        rows[it.key()] = ValueOf(it.key(), it.value());
      }
    }
    if (block.kind == "set") CreateSetFonts(rows);
    rows.Update();
    if (block.kind == "set") owner_.set = rows["SetID"].Int32();
    for (const char* column : kFramed) {
      if (framed.contains(column)) FitPicture(rows, kind, column, framed[column]);
    }
  }

  // Into the record on which the rows stand.
  void FitPicture(Recordset& rows, const Kind& kind, const char* column, const QString& picture) const {
    constexpr double kScale = 1.0 / Gallery::kEnlargement;
    FittedPicture fitted(kind.table, column);
    fitted.Show(rows[kind.key].Int32(), rows[column]);
    fitted.Take(gallery_.Enlarged(picture));
    const FittedPicture::Made made = fitted.Make(kScale);
    rows[column] = made.bytes;
    rows.Update();
    fitted.Keep(kScale, made);
  }

  Value ValueOf(const QString& column, const QString& text) const {
    if (kPictures.contains(column)) return gallery_.Bytes(text);
    if (kTexts.contains(column)) return text;
    return PlainValue(text);
  }

  static std::int32_t LanguageKey(const QString& language) {
    Recordset rows = modData::OpenSnapshot("SELECT * FROM tblLanguage");
    rows.Find("Language = '" + language + "'");
    if (rows.IsEOF()) throw std::runtime_error(("no language " + language).toStdString());
    return rows["LanguageID"].Int32();
  }

  const Gallery& gallery_;
  const Names& names_;
  QMap<QString, Fields> defaults_;
  Owner owner_;
};

}  // namespace

QSet<QString> FramedPictures(const QString& folder) {
  QSet<QString> names;
  for (const QString& name : QDir(folder).entryList({"*.txt"}, QDir::Files, QDir::Name)) {
    for (const Block& block : ReadBlocks(JoinPath(folder, name))) {
      for (const char* column : kFramed) names << block.fields.value(column);
    }
  }
  return names;
}

void FillSets(const QString& folder, const Gallery& gallery, const Names& names) {
  constexpr const char* kDefaults = "defaults.txt";
  SetWriter writer(gallery, names, ReadBlocks(JoinPath(folder, kDefaults)));
  for (const QString& name : QDir(folder).entryList({"*.txt"}, QDir::Files, QDir::Name)) {
    if (name == kDefaults) continue;
    try {
      writer.Write(ReadBlocks(JoinPath(folder, name)));
    } catch (const std::runtime_error& error) {
      throw std::runtime_error((name + ": " + error.what()).toStdString());
    }
  }
}

}  // namespace orv::delivery
