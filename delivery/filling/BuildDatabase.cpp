#include "filling/BuildDatabase.h"

#include <stdexcept>

#include "base/Files.h"
#include "filling/Catalogues.h"
#include "filling/Gallery.h"
#include "filling/SampleSets.h"
#include "records/NewDatabase.h"
#include "records/Recordset.h"
#include "schema/Schema.h"
#include "state/modData.h"

namespace orv::delivery {
namespace {

void Require(bool holds, const QString& what) {
  if (!holds) throw std::runtime_error(what.toStdString());
}

// What a new set or character relies on without looking.
void CheckDefaults() {
  for (Recordset languages = modData::OpenSnapshot("SELECT * FROM tblLanguage"); !languages.IsEOF();
       languages.MoveNext()) {
    for (const int edition : {2, 3}) {
      const QString group =
          QString("LanguageID = %1 AND EditionID = %2").arg(languages["LanguageID"].Int32()).arg(edition);
      const Recordset types = modData::OpenSnapshot("SELECT * FROM tblCardType WHERE " + group +
                                                    " ORDER BY UpperLeft, LowerLeft, Number");
      Require(!types.IsEmpty(), "no types for " + group);
      const QString first = QString::number(types["CardTypeID"].Int32());
      Require(
          modData::RecordExists("SELECT * FROM tblCardBack WHERE " + group + " AND CardBackID = " + first),
          "no back has the key of the first type for " + group);
      Require(modData::RecordExists("SELECT * FROM tblArea WHERE " + group), "no areas for " + group);
      Require(modData::RecordExists("SELECT * FROM tblCharacterBack WHERE " + group),
              "no character backs for " + group);
    }
  }
  Require(modData::RecordExists("SELECT * FROM tblAlignment WHERE AlignmentID = 2"), "no alignment 2");
}

void Fill(const QString& path, const QString& content_folder, const Gallery& gallery) {
  modData::cn = Connection::Open(path);
  Transaction transaction(modData::cn);
  const Names names = FillCatalogues(modData::cn, JoinPath(content_folder, "reference"), gallery);
  FillSets(JoinPath(content_folder, "sets"), gallery, names);
  CheckDefaults();
  transaction.Commit();
}

}  // namespace

void BuildDatabase(const QString& path, const QString& content_folder, const QString& digests) {
  const Gallery gallery(JoinPath(content_folder, "art"), FramedPictures(JoinPath(content_folder, "sets")));
  if (!digests.isEmpty()) ReplaceFile(digests, gallery.Digests());
  ReplaceFile(path, [&](const QString& temporary) {
    MakeDatabase(temporary, schema::Script());
    struct Closer {
      ~Closer() { modData::cn = Connection(); }
    } closer;
    Fill(temporary, content_folder, gallery);
  });
}

}  // namespace orv::delivery
