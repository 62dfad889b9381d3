#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "filling/BuildDatabase.h"
#include "filling/ContentFiles.h"
#include "records/Recordset.h"

namespace orv::delivery {
namespace {

class MakingTest : public ::testing::Test {
 protected:
  QString Write(const QString& name, const QByteArray& text) {
    const QString path = folder_.filePath(name);
    QDir().mkpath(FolderPart(path));
    ReplaceFile(path, text);
    return path;
  }
  template <typename Read>
  std::string ErrorOf(Read read) {
    try {
      read();
    } catch (const RuntimeError& error) {
      return error.Description().toStdString();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "";
  }
  QTemporaryDir folder_;
};

TEST_F(MakingTest, TablesAndBlocks) {
  const auto rows = ReadTable(Write("t", "a|b\n1|\n\nx|Å/y\n"));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0]["b"], "");
  EXPECT_EQ(rows[1]["b"], "Å/y");
  const auto blocks = ReadBlocks(
      Write("b", "[card]\nTitle: A: b\nNumber:\nText:\n| one\n|\n|   two\n\n[large card]\nTitle: c\n| d\n"));
  ASSERT_EQ(blocks.size(), 2u);
  EXPECT_EQ(blocks[0].fields["Title"], "A: b");
  EXPECT_TRUE(blocks[0].fields.contains("Number"));
  EXPECT_EQ(blocks[0].fields["Text"], "one\r\n\r\n  two");
  EXPECT_EQ(blocks[1].kind, "large card");
  EXPECT_EQ(blocks[1].fields["Title"], "c\r\nd");
}

// One language, one row a table, and what the sets say.
class SmallContent : public MakingTest {
 protected:
  void WriteContent(const QByteArray& set) {
    Write("content/art/a.art", "picture b 20 20\n  sky #fff\n");
    Write("content/reference/languages.txt", "LanguageID|Language|Code\n1|English|en\n");
    Write("content/reference/formats.txt", "PicFormatID|PicFormat\n1|BMP\n");
    Write("content/reference/types.txt", "Key|Editions|Number|en\nz|2 3|1|ZEBRA\na|2 3|2|APE/GREY\n");
    Write("content/reference/backs.txt", "Picture2|Picture3|en\nb|b|Back\n");
    Write("content/reference/character_backs.txt", "Picture|en\nb|Back\n");
    Write("content/reference/areas.txt", "en\nBoard/Area\n");
    Write("content/reference/alignments.txt", "AlignmentNr|en\n1|Good\n2|Bad\n");
    Write("content/sets/defaults.txt", "[card]\nBack: Back\n");
    Write("content/sets/s.txt", set);
  }
  std::string Make() {
    return ErrorOf([&] { BuildDatabase(Path(), folder_.filePath("content")); });
  }
  QString Path() const { return folder_.filePath("made.mdb"); }
};

TEST_F(SmallContent, IsMadeWithTypesInTheirOrder) {
  WriteContent(
      "[set]\nSetName: S\nLanguage: English\nEditionID: 2\n\n[card]\nTitle: T\nType: a\nBGColour: "
      "#0a141e\nUseFrame: Yes\n");
  EXPECT_EQ(Make(), "");
  const Connection made = Connection::Open(Path());
  const Recordset types =
      Recordset::OpenSnapshot(made, "SELECT * FROM tblCardType WHERE EditionID = 2 ORDER BY CardTypeID");
  EXPECT_EQ(types["UpperLeft"].Text(), "APE-");
  EXPECT_EQ(types["LowerRight"].Text(), "GREY");
  const Recordset card = Recordset::OpenSnapshot(made, "SELECT * FROM tblCard");
  EXPECT_EQ(card["CardTypeID"].Int32(), types["CardTypeID"].Int32());
  EXPECT_EQ(card["Number"].Text(), "2") << "the type's";
  EXPECT_EQ(card["BGColour"].Int32(), 0x1e140a);
  EXPECT_TRUE(card["UseFrame"].Bool());
}

TEST_F(SmallContent, AFaultLeavesNoFile) {
  const QByteArray set = "[set]\nSetName: S\nLanguage: English\nEditionID: 2\n\n[card]\nTitle: T\n";
  const QPair<QByteArray, const char*> faults[] = {
      {"Type: none\n", "s.txt: card 1: no type none"},
      {"Type: a\nPicture: none\n", "s.txt: card 1: no picture none"},
      {"Type: a\nCopies: many\n", "s.txt: card 1: no value: many"},
      {"Type: a\nColumn: 1\n", "s.txt: card 1: "},
      {"Type: a\nType: a\n", ""},
      {"nonsense\n", ""}};
  for (const auto& [line, error] : faults) {
    WriteContent(set + line);
    const std::string told = Make();
    EXPECT_TRUE(!told.empty() && told.starts_with(error)) << line.constData() << told;
    EXPECT_EQ(QDir(folder_.path()).entryList({"*made*", "*.tmp", "*-journal"}), QStringList());
  }
}

}  // namespace
}  // namespace orv::delivery
