#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vetlo/platform/currency.h"
#include "vetlo/platform/date.h"
#include "vetlo/platform/one_of.h"

namespace vetlo {

// A variant that nothing was ever put into, such as an argument that was left out.
struct Empty {
  friend bool operator==(Empty, Empty) = default;
};

// The Null of a store's column.
struct Null {
  friend bool operator==(Null, Null) = default;
};

// A value of a column, or a parameter of a report.
using Variant = OneOf<Empty, Null, bool, std::int32_t, double, Currency, Date, std::string>;

inline bool IsNull(const Variant& value) { return std::holds_alternative<Null>(value); }
inline bool IsEmpty(const Variant& value) { return std::holds_alternative<Empty>(value); }

// The conversions are strict: Null fails with kInvalidUseOfNull, an empty variant and a text that
// does not read as the type asked for with kTypeMismatch, a value outside the type's range with
// kOverflow.

// A fraction rounds half to even.
std::int32_t ToLong(const Variant& value);
// Any number but 0 is true.
bool ToBoolean(const Variant& value);
double ToDouble(const Variant& value);
Currency ToCurrency(const Variant& value);
// A number is taken as the days of a date.
Date ToDate(const Variant& value);
std::string ToText(const Variant& value);

}  // namespace vetlo
