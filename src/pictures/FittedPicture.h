#pragma once

#include <QByteArray>
#include <QSize>
#include <cstdint>
#include <future>
#include <optional>

#include "imaging/Picture.h"
#include "imaging/Scaler.h"
#include "records/Recordset.h"

namespace orv {

// A record's picture at another size than its file has. What is stored in the record is a plain bitmap of the
// size at which it is shown; the file itself is kept beside it in tblOriginal, with the scale, and each size
// is made from the file. A stored picture that is not the one that was made from the file, told by its
// digest, has come from elsewhere: the file is forgotten, and the picture is its own original.
class FittedPicture {
 public:
  // Whose pictures these are: a long binary column of a table.
  FittedPicture(const char* table, const char* column) : table_(table), column_(column) {}
  ~FittedPicture() { Forget(); }
  FittedPicture(const FittedPicture&) = delete;
  FittedPicture& operator=(const FittedPicture&) = delete;

  // Another record is on show, or another picture in it: gives back what is kept in memory.
  void Show(std::int32_t record, const Field& stored);
  // As it was when last shown, taken or stored.
  double Scale() const { return scale_; }
  // Whether the database can keep originals.
  bool CanScale() const { return can_scale_; }

  // Reads and decodes the original, unless that was done since. False where there is no picture or it is
  // broken.
  [[nodiscard]] bool Prepare(const Field& stored);
  // Takes the bytes of another file for the original, upright. RuntimeError 481 if it is no picture, and what
  // there was stays.
  void Take(const QByteArray& file);

  // The following need an original. Sizes are in pixels, scale 1 is the natural size.
  QSize NaturalSize() const { return {scaler_->Width(), scaler_->Height()}; }
  QSize SizeAt(double scale) const;
  // What is to be stored, and what is to be shown.
  struct Made {
    QByteArray bytes;
    Picture picture;
    std::shared_future<QByteArray> digest;  // of the bytes; it takes as long as storing them, and beside that
  };
  Made Make(double scale) const;
  // Within the transaction that stores what was made: keeps the original with it.
  void Keep(double scale, const Made& made);

  // The file of which the stored picture was made, or the stored picture.
  QByteArray File(const Field& stored) const;

 private:
  Recordset Rows() const;
  void Forget();

  const char* table_;
  const char* column_;
  std::int32_t record_ = 0;
  bool can_scale_ = false;
  double scale_ = 1;
  QByteArray stored_;  // where there is an original in memory
  QByteArray file_;
  bool upright_ = false;  // turned as the file's tag says
  bool is_new_ = false;   // not kept in the database yet
  std::optional<Scaler> scaler_;
};

// What tells a stored picture from another, as tblOriginal keeps it.
QByteArray DigestOf(const QByteArray& stored);

// A picture that fills an area of so many pixels to its edges, cut evenly where it is longer.
Picture FillingPicture(const QByteArray& file, int width, int height);
// A picture that is no larger than an area, at its natural size if that is so.
Picture PictureWithin(const QByteArray& file, int width, int height);

}  // namespace orv
