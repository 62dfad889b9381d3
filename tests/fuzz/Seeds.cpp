// Writes the inputs with which fuzzing starts into the folders picture, dialect and database.
//
// usage: fuzz_seeds FOLDER
#include <QDir>

#include "base/Files.h"
#include "forms/Application.h"
#include "platform/imaging/Samples.h"
#include "state/Product.h"
#include "support/TestDatabase.h"

namespace {

class Folder {
 public:
  explicit Folder(const QString& path) : path_(path) { QDir().mkpath(path); }
  void Add(const QByteArray& bytes) {
    orv::ReplaceFile(orv::JoinPath(path_, QString::number(++count_)), bytes);
  }

 private:
  QString path_;
  int count_ = 0;
};

samples::Wmf Drawing() {
  samples::Wmf wmf;
  wmf.Window(0, 0, 60, 40).Pen(1, 1, qRgb(0, 0, 90)).Brush(qRgb(200, 30, 0)).Select(0).Select(1);
  wmf.Rectangle(30, 40, 3, 3)
      .Record(0x0324, {3, 1, 1, 50, 5, 20, 39})
      .Record(0x0538, {2, 3, 3}, QByteArray(24, 9));
  wmf.Record(0x02FB, {-12, 0, 0, 0, 700, 0, 0, 0, 0}, QByteArray("Arial\0", 6)).Select(2);
  wmf.Record(0x0A32, {5, 5, 3, 6, 0, 0, 30, 20}, QByteArray("abc\0\x06\0\x06\0\x06\0", 10));
  wmf.Record(0x0F43, {0x20, 0xCC, 0, 3, 5, 0, 0, 20, 30, 5, 10}, samples::Dib({8}));
  return wmf;
}

void Pictures(Folder folder) {
  for (const int bits : {1, 4, 8, 16, 24, 32}) folder.Add(samples::Bmp({bits}));
  folder.Add(samples::Bmp({8, 12}));
  folder.Add(samples::Bmp({16, 40, 3}));
  folder.Add(samples::Bmp({32, 124, 3, true}));
  const QByteArray runs("\x03\x09\0\x03\1\2\3\0\0\0\0\2\1\1\x05\x07\0\1", 18);
  for (const int bits : {4, 8}) folder.Add(samples::RunLengthBmp(bits, 6, 3, runs));
  for (const bool grey : {false, true}) {
    for (const bool progressive : {false, true}) folder.Add(samples::Jpeg({40, 24, grey, progressive}));
  }
  folder.Add(samples::Jpeg({40, 24, false, true, true, true}));
  folder.Add(samples::Jpeg({40, 24, false, false, true, false, false}));
  folder.Add(samples::Turned(samples::Jpeg({})));
  for (const bool either : {false, true}) {
    folder.Add(samples::Png(samples::Fading(40, 24), either));
    folder.Add(samples::Webp(samples::Fading(40, 24), either));
  }
  folder.Add(samples::Png(samples::PhotoLike(40, 24).convertToFormat(QImage::Format_Indexed8)));
  folder.Add(samples::Gif({}));
  folder.Add(samples::Gif({{60, 40}, {5, 5, 50, 30}, 1, true, 2}));
  folder.Add(Drawing().Unplaced());
  folder.Add(Drawing().Placeable({0, 0, 900, 600}, 1440));
}

void Queries(Folder folder) {
  for (const char* text :
       {"SELECT * FROM tblSet ORDER BY SetName",
        "SELECT a.Title & \" (\" & a.Nr & \")\" AS Shown FROM tblCard a, tblSet "
        "WHERE a.SetID = tblSet.SetID AND a.Title LIKE \"x*\" ORDER BY a.Title DESC, Nr LIMIT 5",
        "SELECT DISTINCT [Area Name], Count(*) FROM tblArea GROUP BY Area HAVING Count(*) > 1 UNION SELECT "
        "1, 'it''s'",
        "Title = \"say \"\"x\"\"\" AND Nr >= -1.5e3", "SetID = 3 OR IsNull(Picture) OR BackText = 'a'"}) {
    folder.Add(text);
  }
}

// A set of each edition with a record of each kind, and small pictures.
void Databases(Folder folder) {
  orv::TestDatabase database;
  const int second = database.AddSet("Second", 2);
  const int third = database.AddSet("Third", 3);
  const int card = database.AddCard(second, 1, "Card");
  database.AddCard(third, 1, "Other card");
  const int large = database.AddLargeCard(second, 1, "Large card");
  const int character = database.AddCharacter(second, 1, "Character");
  database.Store("tblCard", card, "Picture", samples::Jpeg({}));
  database.Store("tblCard", card, "Background", samples::Gif({}));
  database.Store("tblLargeCard", large, "Picture", samples::Bmp({}));
  database.Store("tblCharacter", character, "Picture", samples::Jpeg({40, 24, false, true}));
  database.Store("tblCharacter", character, "PlayingPiece", Drawing().Unplaced());
  for (const int back : {1, 2, 4, 5}) database.Store("tblCardBack", back, "Picture", samples::Bmp({}));
  for (const int back : {1, 2}) database.Store("tblCharacterBack", back, "Picture", samples::Bmp({}));
  database.Execute(
      "UPDATE tblCard SET Information = 'Roll one die: lose a life', BoldText = 'Hold', Artist = 'Me'");
  database.Execute("VACUUM");
  folder.Add(orv::ReadWhole(database.Path("orv.mdb")));
}

}  // namespace

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  if (argc != 2) return 1;
  const auto folder = [&](const char* name) { return Folder(QString::fromLocal8Bit(argv[1]) + u'/' + name); };
  return application.RunOnce([&] {
    Pictures(folder("picture"));
    Queries(folder("dialect"));
    Databases(folder("database"));
    return 0;
  });
}
