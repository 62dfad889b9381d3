#include "print/Artwork.h"

#include <QCache>
#include <QFile>
#include <QHash>
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "artwork/Draw.h"
#include "builtin/BuiltIn.h"
#include "pictures/FinePicture.h"
#include "pictures/FittedPicture.h"

// A static library's resources are not registered by themselves, and the macro wants no namespace.
static void RegisterScripts() {
  Q_INIT_RESOURCE(artwork);
}

namespace orv {
namespace {

constexpr int kMostTimes = 8;
constexpr int kKeptKilobytes = 64'000;

// The scripts that the program carries with it, and which file is of which picture.
class Artwork {
 public:
  Artwork() {
    RegisterScripts();
    scripts_ = artwork::Script::Load(QStringLiteral(":/artwork"));
    QFile digests(QStringLiteral(":/artwork/digests.txt"));
    if (!digests.open(QIODevice::ReadOnly)) return;
    for (const QByteArray& line : digests.readAll().split('\n')) {
      const qsizetype gap = line.indexOf(' ');
      if (gap > 0) names_[line.left(gap)] = QString::fromUtf8(line.mid(gap + 1));
    }
    names_[DigestOf(builtin::CharacterSheet())] = QStringLiteral("CharacterSheet");
  }

  std::optional<Drawing::Fine> Find(const QByteArray& digest, const Picture& picture) {
    const auto name = names_.constFind(digest);
    if (name == names_.constEnd()) return {};
    return Drawing::Fine{picture, 0, [this, known = *name](double asked) { return Drawn(known, asked); }};
  }

 private:
  Picture Drawn(const QString& name, double asked) {
    const int times = std::clamp(static_cast<int>(std::ceil(asked)), 1, kMostTimes);
    const std::pair key{name, times};
    if (const Picture* const known = kept_.object(key)) return *known;
    try {
      const Picture picture(artwork::Draw(scripts_, name, times));
      kept_.insert(key, new Picture(picture), picture.Width() * picture.Height() / 250);
      return picture;
    } catch (const std::runtime_error&) {
      return {};  // the picture as it was delivered will do
    }
  }

  artwork::Script scripts_;
  QHash<QByteArray, QString> names_;
  QCache<std::pair<QString, int>, Picture> kept_{kKeptKilobytes};
};

}  // namespace

void DrawArtworkAnew() {
  static Artwork artwork;
  FinerPictures = [](const QByteArray& digest, const Picture& picture) {
    return artwork.Find(digest, picture);
  };
}

}  // namespace orv
