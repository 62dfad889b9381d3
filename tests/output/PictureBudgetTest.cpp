#include <QFile>
#include <QImage>
#include <utility>

#include "imaging/Picture.h"
#include "output/OutputScene.h"
#include "output/WriteRecords.h"
#include "platform/imaging/Samples.h"

namespace orv {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool kTellsMemory = false;  // it keeps what is freed
#else
constexpr bool kTellsMemory = true;
#endif

// The most memory that the process had since the last call, in megabytes.
int PeakMemory() {
  QFile status(QStringLiteral("/proc/self/status"));
  int megabytes = 0;
  if (status.open(QIODevice::ReadOnly)) {
    for (const QByteArray& line : status.readAll().split('\n')) {
      if (line.startsWith("VmHWM:")) megabytes = line.mid(6).trimmed().split(' ')[0].toInt() / 1024;
    }
  }
  QFile reset(QStringLiteral("/proc/self/clear_refs"));
  if (reset.open(QIODevice::WriteOnly)) reset.write("5");
  return megabytes;
}

class PictureBudgetTest : public OutputScene {
 protected:
  // Of records that have too much each.
  void ExpectWithinBounds(int records) {
    database_.SelectSet(set_);
    PeakMemory();
    const int before = PeakMemory();
    WriteRecords(kLargeCards2nd, FormatOfSet(), [](int) {});
    const int grown = PeakMemory() - before;
    EXPECT_TRUE(grown < 400 || !kTellsMemory) << grown;
    ASSERT_EQ(dialogs_.boxes.size(), static_cast<std::size_t>(records)) << "one a record";
    EXPECT_TRUE(dialogs_.LastPrompt().contains("481, ")) << dialogs_.LastPrompt().toStdString();
    EXPECT_EQ(Files().size(), records);
  }
};

// Two of them are all that a record may have, and the next record's don't lie beside them.
TEST_F(PictureBudgetTest, HugePicturesOfARecordShareABoundOnMemory) {
  const QByteArray huge = samples::Jpeg({5600, 5600, false, true});
  Open(2);
  for (const int nr : {1, 2}) {
    const int card = database_.AddLargeCard(set_, nr, QStringLiteral("Huge %1").arg(nr));
    for (const char* column : {"Picture", "BGPicture", "LargeCardBack"})
      database_.Store("tblLargeCard", card, column, huge);
  }
  ExpectWithinBounds(2);
}

// One that lies in memory twice, as its file and as its pixels.
TEST_F(PictureBudgetTest, AHugeBitmapCountsWithItsFile) {
  Open(2);
  const int card = database_.AddLargeCard(set_, 1, QStringLiteral("Huge"));
  QImage image(7900, 7900, QImage::Format_RGB32);
  image.fill(Qt::gray);
  database_.Store("tblLargeCard", card, "Picture", BitmapFile(Picture(std::exchange(image, {}))));
  ExpectWithinBounds(1);
}

}  // namespace
}  // namespace orv
