#include "quillmarsh/cli/arguments.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "quillmarsh/cli/nearest.h"
#include "quillmarsh/cli/user_error.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace quillmarsh {
namespace {

constexpr std::int32_t kMostDaysOrMonths = 32767;

bool IsBlank(char c) { return c == ' ' || c == '-' || c == '_'; }

// What is compared of a range's name.
std::string Squeezed(std::string_view text) {
  std::string squeezed(text);
  std::erase_if(squeezed, IsBlank);
  return squeezed;
}

std::vector<std::string> RangeNames() {
  std::vector<std::string> names;
  for (const vetlo::DateRangeFacts& facts : vetlo::Services().DateRanges()) {
    names.emplace_back(facts.name);
  }
  return names;
}

[[noreturn]] void RefuseRange(const std::string& text) {
  const std::vector<std::string> names = RangeNames();
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "'" : ", '") + name + "'";
  }
  std::string with_blanks = text;
  std::ranges::replace_if(with_blanks, IsBlank, ' ');
  throw UserError("--range takes 0 to 15 or one of " + list + ", not '" + text + "'" +
                  DidYouMean(with_blanks, names));
}

// "line, bar or pie".
std::string Listed(std::span<const std::string_view> choices) {
  std::string list;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    const bool last = i + 1 == choices.size();
    list += (i == 0 ? "" : last ? " or " : ", ") + std::string(choices[i]);
  }
  return list;
}

}  // namespace

vetlo::Date DateArgument(const std::string& option, const std::string& text) {
  constexpr std::size_t kBehindYear = 4;
  constexpr std::size_t kBehindMonth = 7;
  std::string date = text;
  if (date.size() > kBehindMonth && date[kBehindYear] == '/' && date[kBehindMonth] == '/') {
    date[kBehindYear] = date[kBehindMonth] = '-';
  }
  try {
    return vetlo::ParseIsoDate(date);
  } catch (const vetlo::Failure&) {
    throw UserError(option + " takes a date such as 2026-03-31, not '" + text + "'");
  }
}

std::optional<vetlo::Date> GivenDate(const std::string& option,
                                     const std::optional<std::string>& text) {
  return text ? std::optional(DateArgument(option, *text)) : std::nullopt;
}

std::optional<vetlo::Date> PeriodEnd(const std::string& option,
                                     const std::optional<std::string>& text) {
  return text && text->empty() ? std::nullopt : GivenDate(option, text);
}

void RequireOrder(vetlo::Date from, vetlo::Date to) {
  if (from > to) {
    throw UserError("--from " + vetlo::IsoDateText(from) + " lies after --to " +
                    vetlo::IsoDateText(to) + "; give the earlier day as --from");
  }
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
        vetlo::EqualsIgnoringCase(Squeezed(facts.name), Squeezed(text))) {
      return facts.range;
    }
  }
  RefuseRange(text);
}

std::int32_t RangeNumberArgument(const std::string& text) {
  const auto number = WholeNumber(text);
  if (!number || *number < 1 || *number > kMostDaysOrMonths) {
    throw UserError("--n takes a whole number from 1 to " + std::to_string(kMostDaysOrMonths) +
                    ", not '" + text + "'");
  }
  return *number;
}

std::size_t ChoiceArgument(const std::string& option, std::span<const std::string_view> choices,
                           const std::string& word) {
  const auto chosen = std::ranges::find_if(
      choices, [&](std::string_view choice) { return vetlo::EqualsIgnoringCase(choice, word); });
  if (chosen == choices.end()) {
    throw UserError(option + " takes " + Listed(choices) + ", not '" + word + "'");
  }
  return static_cast<std::size_t>(chosen - choices.begin());
}

std::int32_t ChartKindArgument(const std::string& kind) {
  constexpr std::array<std::string_view, 3> kNames = {"line", "bar", "pie"};
  constexpr std::array kNumbers = {vetlo::kLineChart, vetlo::kBarChart, vetlo::kPieChart};
  return kNumbers.at(ChoiceArgument("--kind", kNames, kind));
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
