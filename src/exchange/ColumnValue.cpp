#include "exchange/inner/ColumnValue.h"

#include <cmath>

#include "base/RuntimeError.h"

namespace orv {
namespace {

QString TextOf(const Value& value) {
  if (IsBytes(value)) throw RuntimeError(kErrTypeMismatch);
  QString text = value.Text();
  return text.remove(QChar(0));  // would end it in other programs
}

double RealOf(const Value& value) {
  const double number = value.Number();
  if (!std::isfinite(number)) throw RuntimeError(kErrOverflow);
  return number;
}

}  // namespace

Value ColumnValue(schema::Kind kind, const Value& value) {
  using enum schema::Kind;
  const bool null = value.IsNull();
  switch (kind) {
    case kKey:
      return value.Int32();
    case kOwner:
    case kFont:
    case kInteger:
      return null ? Value() : Value(value.Int32());
    case kCount:
      return null ? 0 : value.Int32();
    case kBoolean:
      return value.BoolOrFalse();
    case kReal:
      return null ? Value() : Value(RealOf(value));
    case kText:
      return null ? Value() : Value(TextOf(value));
    case kFilledText:
      return null ? QString() : TextOf(value);
    case kLongBinary:
      return null ? Value() : Value(value.Bytes());
  }
  throw RuntimeError(kErrTypeMismatch);
}

}  // namespace orv
