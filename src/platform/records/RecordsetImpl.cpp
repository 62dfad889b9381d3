#include "records/inner/RecordsetImpl.h"

#include <algorithm>

#include "base/RuntimeError.h"

namespace orv {

void RecordsetImpl::Close() {
  if (!open_) return;
  Post();
  open_ = false;
  current_ = false;
  Release();
}

bool RecordsetImpl::IsBOF() const {
  CheckOpen();
  return !IsAdding() && (position_ < 0 || RecordCount() == 0);
}

bool RecordsetImpl::IsEOF() const {
  CheckOpen();
  return !IsAdding() && (position_ >= Size() || RecordCount() == 0);
}

void RecordsetImpl::MoveFirst() {
  CheckOpen();
  Post();
  if (!Step(0, 1)) throw RuntimeError(kErrNoCurrentRecord);
}

void RecordsetImpl::MoveLast() {
  CheckOpen();
  Post();
  if (!Step(Size() - 1, -1)) throw RuntimeError(kErrNoCurrentRecord);
}

void RecordsetImpl::MoveNext() {
  CheckOpen();
  Post();
  if (IsEOF()) throw RuntimeError(kErrNoCurrentRecord);
  Step(position_ + 1, 1);
}

void RecordsetImpl::MovePrevious() {
  CheckOpen();
  Post();
  if (IsBOF()) throw RuntimeError(kErrNoCurrentRecord);
  Step(position_ - 1, -1);
}

void RecordsetImpl::Find(const QString& criterion) {
  CheckOpen();
  Post();
  FindFrom(std::max(position_, 0), criterion);
}

void RecordsetImpl::FindFirst(const QString& criterion) {
  CheckOpen();
  Post();
  FindFrom(0, criterion);
}

void RecordsetImpl::FindFrom(int position, const QString& criterion) {
  if (RecordCount() == 0) throw RuntimeError(kErrNoCurrentRecord);
  const int found = Search(criterion, position);
  Step(found < 0 ? Size() : found, 1);
}

bool RecordsetImpl::Step(int position, int direction) {
  offsets_.clear();
  const int end = direction > 0 ? Size() : -1;
  current_ = false;
  for (position_ = position; position_ != end; position_ += direction) {
    if (Load(position_)) {
      current_ = true;
      return true;
    }
  }
  return false;
}

int RecordsetImpl::ColumnIndex(const QString& name) const {
  CheckOpen();
  const auto found = indexes_.constFind(name.toLower());
  if (found == indexes_.constEnd()) {
    throw RuntimeError(kErrItemNotFound, QStringLiteral("Item not found in this collection: %1").arg(name));
  }
  return *found;
}

void RecordsetImpl::SetColumnNames(const QStringList& names) {
  names_ = names;
  for (int i = 0; i < names.size(); ++i) {
    if (!indexes_.contains(names[i].toLower())) indexes_.insert(names[i].toLower(), i);
  }
}

void RecordsetImpl::CheckOpen() const {
  if (!open_) throw RuntimeError(kErrObjectNotSet);
}

void RecordsetImpl::CheckCurrent() const {
  CheckOpen();
  if (!current_ && !IsAdding()) throw RuntimeError(kErrNoCurrentRecord);
}

}  // namespace orv
