#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <variant>

namespace orv {

// The value of a field: Null, an integer, a floating number, a text or bytes. Booleans are the
// integers -1 (True) and 0 (False), as the database keeps them.
class Value {
 public:
  Value() = default;  // Null
  Value(bool value) : data_(std::int64_t{value ? -1 : 0}) {}
  Value(int value) : data_(std::int64_t{value}) {}
  Value(long value) : data_(std::int64_t{value}) {}
  Value(long long value) : data_(std::int64_t{value}) {}
  Value(double value) : data_(value) {}
  Value(const QString& value) : data_(value) {}
  Value(const char* utf8) : data_(QString::fromUtf8(utf8)) {}
  Value(const QByteArray& value) : data_(value) {}
  static Value Null() { return {}; }

  bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }

  // Conversions. Null is RuntimeError 94; a text that is no number, and bytes, are 13; a number past
  // the range is 6. Fractions round half to even.
  std::int16_t Int16() const;
  std::int32_t Int32() const;
  std::int64_t Int64() const;
  double Number() const;
  bool Bool() const;
  QString Text() const;
  QByteArray Bytes() const;

  // As by concatenation with the empty text: Null gives the empty text.
  QString TextOrEmpty() const { return IsNull() ? QString() : Text(); }
  // Null counts as False.
  bool BoolOrFalse() const { return !IsNull() && Bool(); }

  // Same kind and same value; Null equals Null, and Null is not "". An integer equals the same floating
  // number.
  friend bool operator==(const Value& a, const Value& b);

  using Data = std::variant<std::monostate, std::int64_t, double, QString, QByteArray>;
  const Data& data() const { return data_; }

 private:
  Data data_;
};

}  // namespace orv
