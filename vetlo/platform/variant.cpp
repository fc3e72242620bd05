#include "vetlo/platform/variant.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"

namespace vetlo {
namespace {

[[noreturn]] void Raise(FailureNumber number) { throw Failure(number); }

double NumberInText(std::string_view text) {
  std::string_view digits = Trim(text);
  if (digits.starts_with('+')) {
    digits.remove_prefix(1);
    if (digits.starts_with('-')) {
      Raise(FailureNumber::kTypeMismatch);
    }
  }
  double number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc::result_out_of_range) {
    Raise(FailureNumber::kOverflow);
  }
  if (error != std::errc{} || end != digits.data() + digits.size() || !std::isfinite(number)) {
    Raise(FailureNumber::kTypeMismatch);
  }
  return number;
}

// The number in a variant of any kind.
struct NumberIn {
  double operator()(Empty) const { Raise(FailureNumber::kTypeMismatch); }
  double operator()(Null) const { Raise(FailureNumber::kInvalidUseOfNull); }
  double operator()(bool value) const { return value ? -1 : 0; }
  double operator()(std::int32_t value) const { return value; }
  double operator()(double value) const { return value; }
  double operator()(Currency value) const { return ToDouble(value); }
  double operator()(Date value) const { return value.days; }
  double operator()(const std::string& value) const { return NumberInText(value); }
};

std::string ShortestText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return {buffer, result.ptr};
}

struct TextOf {
  std::string operator()(Empty) const { Raise(FailureNumber::kTypeMismatch); }
  std::string operator()(Null) const { Raise(FailureNumber::kInvalidUseOfNull); }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(double value) const { return ShortestText(value); }
  std::string operator()(Currency value) const { return ShortestText(ToDouble(value)); }
  std::string operator()(Date value) const { return ShortestText(value.days); }
  std::string operator()(const std::string& value) const { return value; }
};

}  // namespace

std::int32_t ToLong(const Variant& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) {
    return *number;
  }
  const double number = RoundHalfEven(std::visit(NumberIn{}, value));
  if (!(number >= std::numeric_limits<std::int32_t>::min() &&
        number <= std::numeric_limits<std::int32_t>::max())) {
    Raise(FailureNumber::kOverflow);
  }
  return static_cast<std::int32_t>(number);
}

bool ToBoolean(const Variant& value) {
  if (const auto* flag = std::get_if<bool>(&value)) {
    return *flag;
  }
  return std::visit(NumberIn{}, value) != 0;
}

double ToDouble(const Variant& value) { return std::visit(NumberIn{}, value); }

Currency ToCurrency(const Variant& value) {
  if (const auto* amount = std::get_if<Currency>(&value)) {
    return *amount;
  }
  return CCur(std::visit(NumberIn{}, value));
}

Date ToDate(const Variant& value) {
  const Date date{std::visit(NumberIn{}, value)};
  if (!IsRealDate(date)) {
    Raise(FailureNumber::kOverflow);
  }
  return date;
}

std::string ToText(const Variant& value) { return std::visit(TextOf{}, value); }

}  // namespace vetlo
