#include "pictures/FittedPicture.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cmath>

#include "base/Memory.h"
#include "base/RuntimeError.h"
#include "state/modData.h"

namespace orv {
namespace {

// Of a side of any picture that can be made of another.
constexpr double kLongestSide = 32767;

// The scale of a row may be anybody's.
bool IsScale(double scale) {
  return scale >= 1 / kLongestSide && scale <= kLongestSide;
}

// A half goes up whatever little the scale has lost on its way.
int Scaled(int side, double scale) {
  return std::max(1, static_cast<int>(std::floor(side * scale + 0.5 + 1e-6)));
}

}  // namespace

QByteArray DigestOf(const QByteArray& stored) {
  return QCryptographicHash::hash(stored, QCryptographicHash::Sha256).toHex();
}

Recordset FittedPicture::Rows() const {
  Recordset rows;
  modData::OpenEditable(
      QStringLiteral("SELECT * FROM tblOriginal WHERE TableName = '%1' AND RecordID = %2 AND "
                     "ColumnName = '%3'")
          .arg(QLatin1String(table_))
          .arg(record_)
          .arg(QLatin1String(column_)),
      rows);
  return rows;
}

void FittedPicture::Forget() {
  const bool had_original = scaler_.has_value();
  scaler_.reset();
  file_.clear();
  stored_.clear();
  scale_ = 1;
  upright_ = is_new_ = false;
  if (had_original) GiveBackMemory();
}

void FittedPicture::Show(std::int32_t record, const Field& stored) {
  Forget();
  record_ = record;
  try {
    Recordset rows = Rows();
    can_scale_ = true;
    if (rows.IsEmpty()) return;
    const double scale = rows["Scale"].NumberOr(1);
    if (IsScale(scale) && rows["Digest"].TextOrEmpty().toLatin1() == DigestOf(stored.Bytes())) {
      scale_ = scale;
    } else {
      rows.Delete();
    }
  } catch (const RuntimeError&) {
    can_scale_ = false;
  }
}

bool FittedPicture::Prepare(const Field& stored) {
  const QByteArray bytes = stored.Bytes();
  if (!can_scale_ || bytes.isEmpty()) return false;
  if (scaler_ && bytes == stored_) return true;
  Show(record_, stored);
  try {
    const Recordset rows = Rows();
    file_ = rows.IsEmpty() ? bytes : rows["File"].Bytes();
    upright_ = !rows.IsEmpty() && rows["Upright"].BoolOrFalse();
    is_new_ = rows.IsEmpty();
    scaler_.emplace(upright_ ? LoadUpright(file_) : LoadPicture(file_));
  } catch (const RuntimeError&) {
    Forget();
    return false;
  }
  stored_ = bytes;
  return true;
}

void FittedPicture::Take(const QByteArray& file) {
  Scaler scaler(LoadUpright(file));
  scaler_.emplace(std::move(scaler));
  stored_.clear();
  file_ = file;
  upright_ = is_new_ = true;
}

QSize FittedPicture::SizeAt(double scale) const {
  return {Scaled(scaler_->Width(), scale), Scaled(scaler_->Height(), scale)};
}

FittedPicture::Made FittedPicture::Make(double scale) const {
  const QSize size = SizeAt(scale);
  const Picture picture = scaler_->Scale(size.width(), size.height());
  // At its natural size the file needs no copy.
  const bool plain = scale == 1 && (!upright_ || IsUpright(file_));
  const QByteArray bytes = plain ? file_ : BitmapFile(picture);
  return {bytes, picture, std::async(std::launch::async, DigestOf, bytes)};
}

void FittedPicture::Keep(double scale, const Made& made) {
  stored_ = made.bytes;
  scale_ = scale;
  if (!can_scale_) return;
  Recordset rows = Rows();
  if (stored_ == file_) {
    if (!rows.IsEmpty()) rows.Delete();
    is_new_ = true;
    return;
  }
  is_new_ = is_new_ || rows.IsEmpty();
  if (rows.IsEmpty()) {
    rows.AddNew();
    rows["TableName"] = table_;
    rows["RecordID"] = record_;
    rows["ColumnName"] = column_;
  }
  rows["Scale"] = scale;
  rows["Upright"] = upright_;
  rows["Digest"] = QString::fromLatin1(made.digest.get());
  if (std::exchange(is_new_, false)) rows["File"] = file_;
  rows.Update();
}

QByteArray FittedPicture::File(const Field& stored) const {
  if (!file_.isEmpty()) return file_;
  try {
    const Recordset rows = Rows();
    if (!rows.IsEmpty()) return rows["File"].Bytes();
  } catch (const RuntimeError&) {
    // A database without originals.
  }
  return stored.Bytes();
}

Picture FillingPicture(const QByteArray& file, int width, int height) {
  const Scaler scaler(LoadUpright(file));
  const double scale = std::max(double(width) / scaler.Width(), double(height) / scaler.Height());
  const Picture whole = scaler.Scale(Scaled(scaler.Width(), scale), Scaled(scaler.Height(), scale));
  return Cropped(whole, (whole.Width() - width) / 2, (whole.Height() - height) / 2, width, height);
}

Picture PictureWithin(const QByteArray& file, int width, int height) {
  const Scaler scaler(LoadUpright(file));
  const double scale = std::min({1.0, double(width) / scaler.Width(), double(height) / scaler.Height()});
  return scaler.Scale(Scaled(scaler.Width(), scale), Scaled(scaler.Height(), scale));
}

}  // namespace orv
