#include "records/Recordset.h"

#include "base/RuntimeError.h"
#include "records/inner/ConnectionImpl.h"
#include "records/inner/EditableRecordset.h"
#include "records/inner/SnapshotRecordset.h"

namespace orv {
namespace {

RecordsetImpl& Open(const std::shared_ptr<RecordsetImpl>& impl) {
  if (impl == nullptr || !impl->IsOpen()) throw RuntimeError(kErrObjectNotSet);
  return *impl;
}

}  // namespace

Value Field::Get() const {
  return recordset_->Get(column_);
}
void Field::Set(const Value& value) const {
  recordset_->Set(column_, value);
}
bool Field::IsNull() const {
  return recordset_->IsNull(column_);
}
QByteArray Field::Bytes() const {
  return recordset_->Bytes(column_);
}
QByteArray Field::NextBytes() const {
  return recordset_->NextBytes(column_);
}
std::int64_t Field::ActualSize() const {
  return recordset_->ActualSize(column_);
}
QByteArray Field::GetChunk(std::int64_t length) const {
  return recordset_->GetChunk(column_, length);
}
void Field::AppendChunk(const QByteArray& bytes) const {
  recordset_->AppendChunk(column_, bytes);
}

Recordset Recordset::OpenSnapshot(const Connection& connection, const QString& sql) {
  if (!connection.IsOpen()) throw RuntimeError(kErrObjectNotSet);
  return Recordset(std::make_shared<SnapshotRecordset>(*connection.impl_, sql));
}

Recordset Recordset::OpenEditable(const Connection& connection, const QString& sql) {
  if (!connection.IsOpen()) throw RuntimeError(kErrObjectNotSet);
  return Recordset(std::make_shared<EditableRecordset>(connection.impl_, sql));
}

bool Recordset::IsOpen() const {
  return impl_ != nullptr && impl_->IsOpen();
}

void Recordset::Close() {
  if (impl_ != nullptr) impl_->Close();
  impl_.reset();
}

bool Recordset::IsBOF() const {
  return Open(impl_).IsBOF();
}
bool Recordset::IsEOF() const {
  return Open(impl_).IsEOF();
}
int Recordset::RecordCount() const {
  return Open(impl_).RecordCount();
}
void Recordset::MoveFirst() {
  Open(impl_).MoveFirst();
}
void Recordset::MoveLast() {
  Open(impl_).MoveLast();
}
void Recordset::MoveNext() {
  Open(impl_).MoveNext();
}
void Recordset::MovePrevious() {
  Open(impl_).MovePrevious();
}
void Recordset::Find(const QString& criterion) {
  Open(impl_).Find(criterion);
}
void Recordset::FindFirst(const QString& criterion) {
  Open(impl_).FindFirst(criterion);
}
void Recordset::SetFilter(const QString& criterion) {
  Open(impl_).SetFilter(criterion);
}
Field Recordset::operator[](const QString& column) const {
  return {impl_, Open(impl_).ColumnIndex(column)};
}
QStringList Recordset::ColumnNames() const {
  return Open(impl_).ColumnNames();
}
void Recordset::AddNew() {
  Open(impl_).AddNew();
}
void Recordset::Update() {
  Open(impl_).Update();
}
void Recordset::CancelUpdate() {
  Open(impl_).CancelUpdate();
}
void Recordset::Delete() {
  Open(impl_).Delete();
}

}  // namespace orv
