#include "quillmarsh/cli/arguments.h"

#include <array>
#include <charconv>
#include <utility>

#include "quillmarsh/cli/user_error.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"

namespace quillmarsh {
namespace {

// What is compared of a range's name.
std::string Squeezed(std::string_view text) {
  std::string squeezed;
  for (const char c : text) {
    if (c != ' ' && c != '-' && c != '_') {
      squeezed += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
  }
  return squeezed;
}

std::string RangeNames() {
  std::string names;
  for (const vetlo::DateRangeFacts& facts : vetlo::Services().DateRanges()) {
    names += (names.empty() ? "'" : ", '") + std::string(facts.name) + "'";
  }
  return names;
}

}  // namespace

vetlo::Date DateArgument(const std::string& option, const std::string& text) {
  try {
    return vetlo::ParseIsoDate(text);
  } catch (const vetlo::Failure&) {
    throw UserError(option + " takes a date such as 2026-03-31, not '" + text + "'");
  }
}

vetlo::Date DateArgumentOr(const std::string& option, const std::string& text,
                           vetlo::Date otherwise) {
  return text.empty() ? otherwise : DateArgument(option, text);
}

std::optional<vetlo::Date> TodayArgument(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional(DateArgument("--today", text));
}

vetlo::Variant ParameterArgument(const std::optional<std::string>& text) {
  if (!text) {
    return vetlo::Empty{};
  }
  const auto number = WholeNumber(*text);
  return number ? vetlo::Variant(*number) : vetlo::Variant(*text);
}

vetlo::DateRange RangeArgument(const std::string& text) {
  const auto number = WholeNumber(text);
  for (const vetlo::DateRangeFacts& facts : vetlo::Services().DateRanges()) {
    if ((number && static_cast<std::int32_t>(facts.range) == *number) ||
        Squeezed(facts.name) == Squeezed(text)) {
      return facts.range;
    }
  }
  throw UserError("--range takes 0 to 15 or one of " + RangeNames() + ", not '" + text + "'");
}

std::int32_t ChartKindArgument(const std::string& kind) {
  constexpr std::array<std::pair<std::string_view, std::int32_t>, 3> kKinds = {
      {{"line", vetlo::kLineChart}, {"bar", vetlo::kBarChart}, {"pie", vetlo::kPieChart}}};
  for (const auto& [name, number] : kKinds) {
    if (name == kind) {
      return number;
    }
  }
  throw UserError("--kind takes line, bar or pie, not '" + kind + "'");
}

std::optional<std::int32_t> WholeNumber(const std::string& text) {
  const char* first = text.data();
  const char* const last = first + text.size();
  if (text.size() > 1 && *first == '+') {
    ++first;
    if (*first == '-') {
      return std::nullopt;
    }
  }
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(first, last, number);
  if (error != std::errc{} || end != last) {
    return std::nullopt;
  }
  return number;
}

}  // namespace quillmarsh
