#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "values/Date.h"
#include "values/Decimal.h"
#include "values/Export.h"

namespace values {

/// Base of what a Variant may refer to: record sets, dictionaries, connections, services.
class BUKORVAL_API Object {
 public:
  virtual ~Object() = default;
};

enum class Kind { Empty, Null, Int16, Int32, Double, Decimal, Date, String, Boolean, Object };

/// The suite's dynamic value. Empty is an unset value, Null the database null. Text is UTF-8.
class BUKORVAL_API Variant {
 public:
  Variant() = default;
  static Variant Null() {
    Variant v;
    v.data_ = NullTag{};
    return v;
  }

  Variant(bool value) : data_(value) {}
  Variant(double value) : data_(value) {}
  Variant(const Decimal& value) : data_(value) {}
  Variant(const Date& value) : data_(value) {}
  Variant(std::string value) : data_(std::move(value)) {}
  Variant(std::string_view value) : data_(std::string(value)) {}
  Variant(const char* value) : data_(std::string(value)) {}
  Variant(std::shared_ptr<Object> value) : data_(std::move(value)) {}
  /// 16-bit stays 16-bit, what fits in 32 bits is 32-bit, larger becomes a Decimal.
  template <std::integral T>
  requires(!std::same_as<T, bool>) Variant(T value) {
    if constexpr (std::same_as<T, std::int16_t>) {
      data_ = value;
    } else if (std::in_range<std::int32_t>(value)) {
      data_ = static_cast<std::int32_t>(value);
    } else {
      data_ = Decimal::FromScaled(static_cast<std::int64_t>(value));
    }
  }

  Kind kind() const { return static_cast<Kind>(data_.index()); }
  bool isEmpty() const { return kind() == Kind::Empty; }
  bool isNull() const { return kind() == Kind::Null; }
  /// Empty or Null.
  bool isNothing() const { return data_.index() <= 1; }
  bool isNumber() const {
    return kind() == Kind::Int16 || kind() == Kind::Int32 || kind() == Kind::Double || kind() == Kind::Decimal;
  }

  /// The stored alternative; the caller has looked at kind().
  template <typename T>
  const T& as() const {
    return std::get<T>(data_);
  }
  template <typename T>
  const T* get_if() const {
    return std::get_if<T>(&data_);
  }

  /// Same kind and same value; not the comparison of numbers (see compare in Arithmetic.h).
  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  struct NullTag {
    friend bool operator==(NullTag, NullTag) = default;
  };
  std::variant<std::monostate, NullTag, std::int16_t, std::int32_t, double, Decimal, Date, std::string, bool,
               std::shared_ptr<Object>>
      data_;
};

}  // namespace values
