#pragma once

#include <QByteArray>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <vector>

#include "imaging/Picture.h"

class QThreadPool;

namespace orv {

// Decodes the pictures of the next record on a thread of its own while the current one is worked on, for a
// run over many records. While one lives, LoadPictureFromField takes from it what it has, told by the bytes
// of the file, so that a picture comes out the same whichever way it was decoded, and a broken one is the
// same error at the same place. Pictures that come again and again, such as backs, are decoded once.
class PicturesAhead {
 public:
  PicturesAhead();
  ~PicturesAhead();
  PicturesAhead(const PicturesAhead&) = delete;
  PicturesAhead& operator=(const PicturesAhead&) = delete;

  // The run goes on to the next record: starts decoding the files of the one behind it, and forgets those of
  // the former one.
  void Advance(const std::vector<QByteArray>& files);

  // The picture of a file, from the living object if there is one. Errors as LoadPicture, which bounds it to
  // so many pixels.
  static Picture Load(const QByteArray& file, std::int64_t most_pixels);

 private:
  struct Entry {
    QByteArray file;
    std::shared_future<std::optional<Picture>> picture;  // nothing if it could not be decoded ahead
  };
  using Entries = std::vector<Entry>;

  Picture Take(const QByteArray& file, std::int64_t most_pixels);
  void Keep(const Entry& entry);
  Entry Start(const QByteArray& file);

  std::unique_ptr<QThreadPool> thread_;
  Entries current_, next_;  // of the record in hand, and of the one behind it
  Entries kept_;            // the last that nobody expected, the oldest first
};

}  // namespace orv
