#include "exchange/BringOver.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <random>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "records/Connection.h"
#include "records/FileLock.h"
#include "records/Recordset.h"
#include "schema/Schema.h"
#include "support/Errors.h"
#include "support/SmallDisk.h"

namespace orv {
namespace {

// A folder with an old database in it, as the bytes of the sample with changes.
class BringOverTest : public testing::Test {
 protected:
  QString Path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
  static const QByteArray& Sample() {
    static const QByteArray bytes = ReadWhole(ORV_OLD_DATABASE);
    return bytes;
  }
  // Writes the old file and brings it over; the description of the failure, empty for none.
  QString Bring(const QByteArray& old, int silence = 20000) {
    ReplaceFile(Path("old.mdb"), old);
    QFile::remove(Path("new.mdb"));
    try {
      result_ = BringOver(Path("old.mdb"), Path("new.mdb"), [](int) {}, {.silence = silence});
    } catch (const RuntimeError& error) {
      return error.Description().isEmpty() ? QStringLiteral("?") : error.Description();
    }
    return {};
  }
  QString Scalar(const QString& query) const {
    const Recordset rows = Recordset::OpenSnapshot(Connection::Open(Path("new.mdb")), query);
    return rows.IsEOF() ? QString() : rows[rows.ColumnNames().constFirst()].TextOrEmpty();
  }
  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

  QTemporaryDir folder_;
  BroughtOver result_;
};

QByteArray Utf16(const char* text) {
  const QString letters = QLatin1String(text);
  return {reinterpret_cast<const char*>(letters.utf16()), letters.size() * 2};
}

QByteArray Renamed(QByteArray file, const char* from, const char* to) {
  return file.replace(Utf16(from), Utf16(to));
}

// The cards of the sample's first set had been written out as GIF before.
bool IsOfTheRun(const QString& column) {
  return QStringList{"FileName", "SaveTo", "PicFormatID"}.contains(column);
}

// Pictures in frames, which are delivered as made of larger ones. The sample has them as they were drawn
// then.
bool IsFramed(const QString& column) {
  return QStringList{"Picture", "PlayingPiece"}.contains(column);
}
constexpr const char* kDigestOfFramed = "cddae723ae6ba19d3f510ebacdd2a90fd53e6ce32d1d3ebd859a66045f692be4";

void ExpectSameRows(Recordset a, Recordset b, const QString& table, QCryptographicHash& framed) {
  ASSERT_EQ(a.RecordCount(), b.RecordCount()) << qPrintable(table);
  const bool in_sets = a.ColumnNames().contains("SetID");
  for (; !a.IsEOF(); a.MoveNext(), b.MoveNext()) {
    for (const QString& column : b.ColumnNames()) {
      if (IsOfTheRun(column)) continue;
      if (in_sets && IsFramed(column)) {
        EXPECT_EQ(a[column].IsNull(), b[column].IsNull()) << qPrintable(table);
        framed.addData(a[column].Bytes());
        continue;
      }
      EXPECT_TRUE(a[column].Get() == b[column].Get())
          << qPrintable(table) << " " << qPrintable(column) << " of row "
          << qPrintable(a[a.ColumnNames().constFirst()].Text());
    }
  }
}

TEST_F(BringOverTest, EachFieldIsAsDelivered) {
  ASSERT_EQ(Bring(Sample()), "");
  EXPECT_EQ(result_.left_out, QStringList());
  EXPECT_EQ(result_.counts.size(), 12);
  EXPECT_EQ(ReadWhole(Path("old.mdb")), Sample());
  EXPECT_EQ(Files(), (QStringList{"new.mdb", "old.mdb"}));
  const Connection brought = Connection::Open(Path("new.mdb"));
  const Connection delivered = Connection::Open(ORV_DELIVERED_DATABASE);
  QCryptographicHash framed(QCryptographicHash::Sha256);
  for (const schema::Table& table : schema::Tables()) {
    const QString all = QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(table.name, table.columns[0].name);
    ExpectSameRows(Recordset::OpenSnapshot(brought, all), Recordset::OpenSnapshot(delivered, all), table.name,
                   framed);
  }
  EXPECT_EQ(framed.result().toHex().toStdString(), kDigestOfFramed);
}

TEST_F(BringOverTest, ColumnsAndTablesThatOneSideLacks) {
  ASSERT_EQ(Bring(Renamed(Renamed(Sample(), "Copies", "Copiez"), "BoldText", "BaldText")), "");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblCard WHERE BoldText = '' AND Copies IS NULL"), "30");
  const QStringList expected{"the column Copiez of tblCard, which is unknown",
                             "the column BaldText of tblCard, which is unknown",
                             "the column Copiez of tblLargeCard, which is unknown"};
  EXPECT_EQ(result_.left_out, expected);
  EXPECT_TRUE(Bring(Renamed(Sample(), "tblLanguage", "tblLanguagf")).contains("has no table tblLanguage"));
}

// As another hand may have left them: a card of a set that is gone, and letters beyond 16 bits.
TEST_F(BringOverTest, RowsThatStandOut) {
  const char key_set_number[] = "\x1E\0\0\0\x02\0\0\0\x0F\0";
  QByteArray file = Sample();
  const qsizetype card = file.indexOf(QByteArray(key_set_number, 10));
  ASSERT_GT(card, 0);
  file[card + 4] = 99;
  const QByteArray packed = "\xFF\xFETHE DROWNED BELL";
  const QString title = QString::fromUtf8("🐟 fishes");
  const QByteArray letters(reinterpret_cast<const char*>(title.utf16()), title.size() * 2);
  ASSERT_EQ(letters.size(), packed.size());
  ASSERT_EQ(Bring(file.replace(packed, letters)), "");
  EXPECT_EQ(result_.left_out, QStringList{"row 30 of tblCard, whose SetID (99) is missing"});
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM tblCard"), "29");
  EXPECT_EQ(Scalar("SELECT seq FROM sqlite_sequence WHERE name = 'tblCard_rows'"), "30")
      << "no key comes again";
  EXPECT_EQ(Scalar("SELECT Title FROM tblCard WHERE CardID = 1"), title);
}

TEST_F(BringOverTest, WhatCannotBeReadIsTold) {
  QByteArray with_password = Sample();
  for (const char letter : {0, 1, 2})
    with_password[0x42 + 2 * letter] = with_password[0x42 + 2 * letter] ^ 's';
  EXPECT_TRUE(Bring(with_password).contains("has a password"));
  QByteArray other_version = Sample();
  other_version[0x14] = 0;
  EXPECT_TRUE(Bring(other_version).contains("another version"));
  EXPECT_TRUE(Bring(Sample().left(200000)).contains("damaged"));
  EXPECT_TRUE(Bring("SQLite format 3").contains("no database of an older version"));
  EXPECT_EQ(Files(), QStringList{"old.mdb"});
}

// Each damaged copy is brought over whole or told, in a bounded time, and leaves nothing half.
TEST_F(BringOverTest, DamagedFiles) {
  const int variants = qMax(60, qEnvironmentVariableIntValue("ORV_DAMAGED_FILES"));
  std::mt19937 random(20041);
  const auto below = [&](qsizetype bound) {
    return static_cast<qsizetype>(random() % static_cast<unsigned>(bound));
  };
  int told = 0;
  for (int variant = 0; variant < variants; ++variant) {
    QByteArray file = Sample();
    // Bytes, a page, or the end: mostly among the pages at the beginning, where the tables are told.
    const qsizetype page = below(variant % 3 == 0 ? file.size() / 4096 : 120) * 4096;
    if (variant % 5 == 4) {
      file.replace(page, 4096, file.mid(below(file.size() / 4096) * 4096, 4096));
    } else {
      for (int i = 0; i <= variant % 40; ++i)
        file[page + below(variant % 2 == 0 ? 64 : 4096)] = static_cast<char>(random());
    }
    QElapsedTimer timer;
    timer.start();
    const bool failed = !Bring(file, 1500).isEmpty();
    EXPECT_LT(timer.elapsed(), 15000) << variant;
    EXPECT_EQ(Files(), failed ? QStringList({"old.mdb"}) : QStringList({"new.mdb", "old.mdb"})) << variant;
    told += failed;
  }
  EXPECT_GT(told, variants / 10);
}

TEST_F(BringOverTest, InPlaceTheOldFileIsKept) {
  for (const char* kept_name : {"orv-old.mdb", "orv-old (2).mdb"}) {
    QFile::remove(Path("orv.mdb"));
    ReplaceFile(Path("orv.mdb"), Sample());
    QString kept;
    BringOverInPlace(Path("orv.mdb"), [](int) {}, kept);
    EXPECT_EQ(kept, Path(kept_name));
    EXPECT_EQ(ReadWhole(kept), Sample());
    EXPECT_FALSE(IsOldDatabase(Path("orv.mdb")));
  }
}

TEST_F(BringOverTest, WhereTheOldFileCannotBeReplacedItStays) {
  ReplaceFile(Path("orv.mdb"), Sample());
  QString kept;
  const auto bring = [&] { return ErrorOf([&] { BringOverInPlace(Path("orv.mdb"), [](int) {}, kept); }); };
  {
    const ExclusiveFileLock elsewhere(Path("orv.mdb"));
    EXPECT_EQ(bring(), 70);
  }
  {
    const SmallDisk disk(200000);
    EXPECT_NE(bring(), 0);
  }
  EXPECT_EQ(Files(), QStringList{"orv.mdb"});
  EXPECT_EQ(ReadWhole(Path("orv.mdb")), Sample());

  ReplaceFile(Path("orv.mdb-journal"), QByteArray("of a database that lay here before"));
  EXPECT_EQ(bring(), 0);
  EXPECT_EQ(Files(), (QStringList{"orv-old.mdb", "orv-old.mdb-journal", "orv.mdb"}));
}

TEST_F(BringOverTest, WhatIsNoFileIsNoOldDatabase) {
  ASSERT_EQ(mkfifo(Path("fifo").toUtf8().constData(), 0600), 0);
  EXPECT_EQ(ErrorOf([&] { BringOver(Path("fifo"), Path("new.mdb"), [](int) {}); }), 3000);
  EXPECT_FALSE(IsOldDatabase(folder_.path()));
}

}  // namespace
}  // namespace orv
