#include "platform/records/Sample.h"

namespace orv {
namespace {

class LongBinaryTest : public Sample {};

QByteArray Pattern(int size) {
  QByteArray bytes(size, '\0');
  for (int i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

TEST_F(LongBinaryTest, ChunksReplaceAtFirstAndThenAppend) {
  const QByteArray bytes = Pattern(100'000);
  Recordset cards = Cards();
  const Field picture = cards["Picture"];
  EXPECT_EQ(picture.ActualSize(), 0);
  EXPECT_TRUE(picture.Bytes().isNull());
  for (int at = 0; at < bytes.size(); at += 32769) picture.AppendChunk(bytes.mid(at, 32769));
  EXPECT_EQ(picture.ActualSize(), bytes.size());
  EXPECT_EQ(Raw("SELECT Picture FROM tblCard WHERE CardID = 2"), "~");
  cards.Update();
  EXPECT_TRUE(picture.Get().Bytes() == bytes);
  EXPECT_EQ(picture.ActualSize(), bytes.size());
  QByteArray read;
  for (QByteArray chunk; !(chunk = picture.GetChunk(30'000)).isEmpty();) read += chunk;
  EXPECT_TRUE(read == bytes);
  // Replaced after the Update; after a move too; dropped by a cancel.
  picture.AppendChunk("ab");
  picture.AppendChunk("c");
  cards.MoveNext();
  picture.AppendChunk("x");
  cards.CancelUpdate();
  EXPECT_EQ(picture.GetChunk(99).toHex(), "aabbcc");
  picture.AppendChunk("y");
  cards.MoveFirst();
  picture.AppendChunk("z");
  picture.AppendChunk("z");
  cards.Close();
  EXPECT_EQ(Raw("SELECT group_concat(CAST(Picture AS TEXT)) FROM (SELECT * FROM tblCard ORDER BY CardID)"),
            "y,zz");
}

TEST_F(LongBinaryTest, GetChunkStartsOverAndGoesOnOverAForeignWrite) {
  Recordset cards = Cards();
  cards["Background"] = Pattern(60'000);
  cards["Picture"] = Pattern(9'000);
  cards.Update();
  const Field background = cards["Background"];
  background.GetChunk(100);
  background.ActualSize();
  EXPECT_EQ(background.GetChunk(10), Pattern(10));
  EXPECT_EQ(cards["Picture"].GetChunk(10), Pattern(10)) << "each column goes on by itself";
  EXPECT_EQ(background.GetChunk(10), Pattern(20).mid(10));
  Recordset same = Cards();
  same["Background"] = QByteArray("0123456789012345678901234567");
  same.Update();
  EXPECT_EQ(background.GetChunk(99), "01234567");
  // A text that another program put there is read as its bytes; nothing holds the file for reading.
  Raw("UPDATE tblCard SET Background = 'a text' WHERE CardID = 2");
  EXPECT_EQ(background.ActualSize(), 6);
  EXPECT_EQ(background.GetChunk(99), "a text");
  cards.MoveNext();
  EXPECT_TRUE(background.IsNull());
}

TEST_F(LongBinaryTest, NullAndEmptyAreKeptApartAndOthersStay) {
  Recordset cards = Cards();
  cards["Picture"] = QByteArray("p");
  cards["Background"] = QByteArray("b");
  cards.Update();
  cards["Picture"] = Value::Null();
  cards.Update();
  EXPECT_TRUE(cards["Picture"].IsNull());
  cards["Picture"] = QByteArray("");
  cards.Update();
  EXPECT_FALSE(cards["Picture"].IsNull());
  EXPECT_EQ(cards["Picture"].ActualSize(), 0);
  EXPECT_EQ(Raw("SELECT typeof(Picture) || Background FROM tblCard WHERE CardID = 2"), "blobb");
}

TEST_F(LongBinaryTest, ComeWithANewRowAndGoWithIt) {
  Recordset backs = Editable("SELECT * FROM tblCardBack ORDER BY BackText");
  backs.AddNew();
  backs["BackText"] = "new";
  backs["Picture"].AppendChunk("new");
  backs["Picture"].AppendChunk(" back");
  EXPECT_EQ(backs["Picture"].Bytes(), "new back");
  backs.Update();
  EXPECT_EQ(Raw("SELECT CAST(Picture AS TEXT) FROM tblCardBack WHERE BackText = 'new'"), "new back");
  backs.Delete();
  EXPECT_EQ(Raw("SELECT group_concat(CardBackID) FROM tblCardBack_long"), "1");
}

}  // namespace
}  // namespace orv
