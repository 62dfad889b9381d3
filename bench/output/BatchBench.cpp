// The batch run against its floor: decoding every picture that the batch decodes, and encoding and writing
// sheets of the same look and size, with the JPEG library and nothing else. Once over a set of cards and
// once over a set of cards, characters and large cards; and the GIF run against the JPG run. Ratios of one
// run; see bench/README.md.
// Usage: batch_bench [records] [cards of the long run]
#include <QDir>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "CodecFloor.h"
#include "base/Files.h"
#include "database/CurrentSet.h"
#include "forms/Application.h"
#include "measuring/Measuring.h"
#include "measuring/Photo.h"
#include "output/WriteRecords.h"
#include "state/Product.h"
#include "state/modData.h"
#include "support/DialogScript.h"
#include "support/TestDatabase.h"

namespace orv {
namespace {

constexpr int kRounds = 5;
constexpr int kFew = 100;
constexpr double kGoal = 1.0;
constexpr double kFirstGoal = 1.3;
constexpr double kGrowthGoal = 1.1;
constexpr double kGifGoal = 8;
constexpr int kJpg = 2;  // identifiers of picture formats
constexpr int kGif = 3;

// How many records of each kind a set has.
struct Share {
  int cards, characters, large;
  int Count() const { return cards + characters + large; }
};

// The bytes of the pictures that each record of a kind has, its back among them.
struct Pictures {
  QByteArray picture = Photo(600, 450, 88);
  QByteArray piece = Photo(300, 400, 88);
  QByteArray upright = Photo(150, 254, 88);  // backgrounds and backs of a card's size
  QByteArray wide = Photo(302, 254, 88);
  std::vector<QByteArray> OfCard() const { return {picture, upright, upright}; }
  std::vector<QByteArray> OfCharacter() const { return {picture, wide, wide, piece}; }
  std::vector<QByteArray> OfLargeCard() const { return {picture, wide, wide}; }
};

const QString kText = QStringLiteral(
    "Whoever meets it must fight; the winner takes one object from the loser and moves on. On a draw both "
    "miss "
    "one turn (unless they own a lantern).");

class Batch {
 public:
  Batch() {
    QDir().mkpath(Folder());
    QDir().mkpath(FloorFolder());
    database_.Store(QStringLiteral("tblCardBack"), 1, QStringLiteral("Picture"), pictures_.upright);
    database_.Store(QStringLiteral("tblCharacterBack"), 1, QStringLiteral("Picture"), pictures_.wide);
    std::printf("pictures of %lld, %lld, %lld and %lld kB\n", pictures_.picture.size() / 1000,
                pictures_.piece.size() / 1000, pictures_.upright.size() / 1000, pictures_.wide.size() / 1000);
  }

  int MakeSet(const Share& share);
  // Milliseconds a record.
  double Run(int set, const Share& share, int format = kJpg);
  // The same as the very first: no card has a file name, and there are no files.
  double RunFirst(int set, const Share& share);
  double RunFloor(const Share& share);
  // The same with the picture of a card alone, without its background and its back.
  double RunPictureFloor(int cards);
  // The sheets of the last run, which the floor writes.
  void TakeSheets();

 private:
  QString Folder() const { return database_.Path(QStringLiteral("out")); }
  QString FloorFolder() const { return database_.Path(QStringLiteral("floor")); }
  std::vector<codec_floor::Pixels> Sheets(const QStringList& kinds) const;
  void DoFloor(int count, const std::vector<QByteArray>& pictures,
               const std::vector<codec_floor::Pixels>& sheets);

  TestDatabase database_;
  const Pictures pictures_;
  std::vector<codec_floor::Pixels> card_sheets_, character_sheets_, large_sheets_;
};

int Batch::MakeSet(const Share& share) {
  Transaction transaction(modData::cn);
  const int set = database_.AddSet(QStringLiteral("Set of %1").arg(share.Count()), 2);
  const auto store = [&](const char* table, int id, const char* column, const QByteArray& bytes) {
    // A picture of its own for each record: what stands behind its end is ignored.
    database_.Store(QLatin1String(table), id, QLatin1String(column), bytes + QByteArray::number(id));
  };
  for (int nr = 1; nr <= share.cards; ++nr) {
    const int card = database_.AddCard(set, nr, QStringLiteral("Card %1").arg(nr));
    store("tblCard", card, "Picture", pictures_.picture);
    store("tblCard", card, "Background", pictures_.upright);
  }
  for (int nr = 1; nr <= share.characters; ++nr) {
    const int character = database_.AddCharacter(set, nr, QStringLiteral("Character %1").arg(nr));
    store("tblCharacter", character, "Picture", pictures_.picture);
    store("tblCharacter", character, "Background", pictures_.wide);
    store("tblCharacter", character, "PlayingPiece", pictures_.piece);
  }
  for (int nr = 1; nr <= share.large; ++nr) {
    const int large = database_.AddLargeCard(set, nr, QStringLiteral("Large card %1").arg(nr));
    store("tblLargeCard", large, "Picture", pictures_.picture);
    store("tblLargeCard", large, "BGPicture", pictures_.wide);
    store("tblLargeCard", large, "LargeCardBack", pictures_.wide);
  }
  for (const char* change :
       {"tblCard_rows SET Artist = 'A. Painter', BoldText = 'STRENGTH 4', Information = '%1'",
        "tblCharacter_rows SET Abilities = '%1'", "tblLargeCard_rows SET Information = '%1'"}) {
    database_.Execute(QStringLiteral("UPDATE ") + QString::fromLatin1(change).arg(kText));
  }
  database_.Execute(QStringLiteral("UPDATE tblSet_rows SET FileCardNr = -1, SaveTo = '%1'").arg(Folder()));
  transaction.Commit();
  return set;
}

double Batch::Run(int set, const Share& share, int format) {
  database_.Execute(QStringLiteral("UPDATE tblSet_rows SET PicFormatID = %1").arg(format));
  database_.SelectSet(set);
  MakeSetCurrent(static_cast<std::int16_t>(set));
  return Milliseconds([] {
           for (const OutputKind* kind : {&kCards2nd, &kCharacters2nd, &kLargeCards2nd}) {
             WriteRecords(*kind, FormatOfSet(), [](int) {});
           }
         }) /
         share.Count();
}

double Batch::RunFirst(int set, const Share& share) {
  QDir(Folder()).removeRecursively();
  QDir().mkpath(Folder());
  database_.Execute(QStringLiteral("UPDATE tblCard_rows SET FileName = NULL"));
  return Run(set, share);
}

std::vector<codec_floor::Pixels> Batch::Sheets(const QStringList& kinds) const {
  std::vector<codec_floor::Pixels> sheets;
  for (const QString& kind : kinds) {
    const QStringList names = QDir(Folder()).entryList({kind + QStringLiteral(" *.JPG")}, QDir::Files);
    if (names.isEmpty()) continue;
    const QByteArray bytes = ReadWhole(JoinPath(Folder(), names.last()));
    codec_floor::Decode(bytes.data(), static_cast<std::size_t>(bytes.size()), &sheets.emplace_back());
  }
  return sheets;
}

void Batch::TakeSheets() {
  card_sheets_ = Sheets({QStringLiteral("C2")});
  character_sheets_ = Sheets({QStringLiteral("CH2"), QStringLiteral("PP2")});
  large_sheets_ = Sheets({QStringLiteral("LC2")});
}

void Batch::DoFloor(int count, const std::vector<QByteArray>& pictures,
                    const std::vector<codec_floor::Pixels>& sheets) {
  codec_floor::Pixels pixels;
  for (int i = 0; i < count; ++i) {
    for (const QByteArray& picture : pictures) {
      codec_floor::Decode(picture.data(), static_cast<std::size_t>(picture.size()), &pixels);
    }
    for (const codec_floor::Pixels& sheet : sheets) {
      const QString path = JoinPath(FloorFolder(), QStringLiteral("%1 x %2.JPG").arg(i).arg(sheet.width));
      codec_floor::Encode(sheet, path.toStdString());
    }
  }
}

double Batch::RunFloor(const Share& share) {
  return Milliseconds([&] {
           DoFloor(share.cards, pictures_.OfCard(), card_sheets_);
           DoFloor(share.characters, pictures_.OfCharacter(), character_sheets_);
           DoFloor(share.large, pictures_.OfLargeCard(), large_sheets_);
         }) /
         share.Count();
}

double Batch::RunPictureFloor(int cards) {
  return Milliseconds([&] { DoFloor(cards, {pictures_.picture}, card_sheets_); }) / cards;
}

// The second run, in which every card has its file name, against the floor, and the first against the second.
bool MeasureRatio(Batch& batch, const std::string& what, const Share& share) {
  const int set = batch.MakeSet(share);
  batch.Run(set, share);
  batch.TakeSheets();
  batch.RunFloor(share);
  std::vector<double> ratios, floors, firsts, seconds, first_ratios;
  for (int round = 0; round < kRounds; ++round) {
    floors.push_back(batch.RunFloor(share));
    firsts.push_back(batch.RunFirst(set, share));
    seconds.push_back(batch.Run(set, share));
    ratios.push_back(seconds.back() / floors.back());
    first_ratios.push_back(firsts.back() / seconds.back());
  }
  std::printf("%s: %d records, %.2f ms a record, floor %.2f ms; first run %.2f ms\n", what.c_str(),
              share.Count(), Median(seconds), Median(floors), Median(firsts));
  const bool first = PrintRatio("first run / second", Median(first_ratios), kFirstGoal);
  return PrintRatio((what + " / floor").c_str(), Median(ratios), kGoal) && first;
}

// A set of cards in GIF and in JPG, and the floor of the picture alone, in turn.
bool MeasureGif(Batch& batch, int cards) {
  const Share share{cards, 0, 0};
  const int set = batch.MakeSet(share);
  batch.Run(set, share);
  batch.TakeSheets();
  std::vector<double> ratios, gifs, jpgs, floors;
  for (int round = 0; round < kRounds; ++round) {
    floors.push_back(batch.RunPictureFloor(cards));
    jpgs.push_back(batch.Run(set, share));
    gifs.push_back(batch.Run(set, share, kGif));
    ratios.push_back(gifs.back() / jpgs.back());
  }
  std::printf("a card in JPG: %.2f ms, floor with its picture alone %.2f ms; in GIF: %.2f ms\n", Median(jpgs),
              Median(floors), Median(gifs));
  return PrintRatio("GIF / JPG", Median(ratios), kGifGoal);
}

// The highest use of memory while an action runs, which starts from the use of the moment.
long PeakKilobytes(const std::function<void()>& action) {
  std::ofstream("/proc/self/clear_refs") << 5;
  action();
  std::ifstream status("/proc/self/status");
  std::string name;
  for (long kilobytes = 0; status >> name;) {
    if (name == "VmHWM:" && status >> kilobytes) return kilobytes;
  }
  return 0;
}

// Time a card and peak memory of a few cards and of many. The few run before and behind, so that a machine
// that grows slow meanwhile hits both.
bool MeasureGrowth(Batch& batch, int many) {
  const Share few_cards{kFew, 0, 0};
  const Share many_cards{many, 0, 0};
  const int few_set = batch.MakeSet(few_cards);
  const int many_set = batch.MakeSet(many_cards);
  std::vector<double> few, all;
  const auto run_few = [&] {
    for (int round = 0; round < kRounds; ++round) few.push_back(batch.Run(few_set, few_cards));
  };
  const long few_memory = PeakKilobytes([&] { batch.Run(few_set, few_cards); });
  const long many_memory = PeakKilobytes([&] { batch.Run(many_set, many_cards); });
  for (int round = 0; round < 3; ++round) {
    run_few();
    all.push_back(batch.Run(many_set, many_cards));
  }
  run_few();
  std::printf("a card of %d: %.2f ms, of %d: %.2f ms; peak memory %ld and %ld kB\n", kFew, Median(few), many,
              Median(all), few_memory, many_memory);
  const bool time = PrintRatio("milliseconds a card, many / few", Median(all) / Median(few), kGrowthGoal);
  const double memory = static_cast<double>(many_memory) / static_cast<double>(few_memory);
  return PrintRatio("peak memory, many / few", memory, kGrowthGoal) && time;
}

int Measure(int records, int many) {
  Batch batch;
  DialogScript script;
  const DialogResponderScope answers(script);
  bool ok = MeasureRatio(batch, "batch of cards", {records, 0, 0});
  ok &= MeasureRatio(batch, "batch of a mixed set", {records / 2, records / 4, records / 4});
  ok &= MeasureGif(batch, kFew);
  ok &= MeasureGrowth(batch, many);
  return ok ? 0 : 1;
}

}  // namespace
}  // namespace orv

int main(int argc, char** argv) {
  orv::Application application(argc, argv, orv::Application::Offscreen, orv::TheProgram());
  const int records = argc > 1 ? std::atoi(argv[1]) : 500;
  const int many = argc > 2 ? std::atoi(argv[2]) : 5000;
  return application.RunOnce([&] { return orv::Measure(records, many); });
}
