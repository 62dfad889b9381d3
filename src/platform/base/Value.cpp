#include "base/Value.h"

#include <cmath>
#include <limits>

#include "base/Rounding.h"
#include "base/RuntimeError.h"

namespace orv {

double Value::Number() const {
  if (const auto* i = std::get_if<std::int64_t>(&data_)) return static_cast<double>(*i);
  if (const auto* d = std::get_if<double>(&data_)) return *d;
  if (const auto* s = std::get_if<QString>(&data_)) {
    bool ok = false;
    const double number = s->trimmed().toDouble(&ok);
    if (ok) return number;
    throw RuntimeError(kErrTypeMismatch);
  }
  throw RuntimeError(IsNull() ? kErrInvalidNull : kErrTypeMismatch);
}

std::int64_t Value::Int64() const {
  if (const auto* i = std::get_if<std::int64_t>(&data_)) return *i;
  const double rounded = RoundHalfEven(Number());
  if (!(std::fabs(rounded) < 9.2e18)) throw RuntimeError(kErrOverflow);
  return static_cast<std::int64_t>(rounded);
}

std::int32_t Value::Int32() const {
  const std::int64_t number = Int64();
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    throw RuntimeError(kErrOverflow);
  }
  return static_cast<std::int32_t>(number);
}

std::int16_t Value::Int16() const {
  return ToInt16(Int32());
}

bool Value::Bool() const {
  return Number() != 0;
}

QString Value::Text() const {
  if (const auto* s = std::get_if<QString>(&data_)) return *s;
  if (const auto* i = std::get_if<std::int64_t>(&data_)) return QString::number(*i);
  if (const auto* d = std::get_if<double>(&data_)) return QString::number(*d, 'g', 15);
  throw RuntimeError(IsNull() ? kErrInvalidNull : kErrTypeMismatch);
}

QByteArray Value::Bytes() const {
  if (const auto* b = std::get_if<QByteArray>(&data_)) return *b;
  throw RuntimeError(IsNull() ? kErrInvalidNull : kErrTypeMismatch);
}

bool operator==(const Value& a, const Value& b) {
  const bool a_number = a.data_.index() == 1 || a.data_.index() == 2;
  const bool b_number = b.data_.index() == 1 || b.data_.index() == 2;
  if (a_number && b_number && a.data_.index() != b.data_.index()) return a.Number() == b.Number();
  return a.data_ == b.data_;
}

}  // namespace orv
