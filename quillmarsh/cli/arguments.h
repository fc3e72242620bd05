#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "vetlo/platform/variant.h"
#include "vetlo/services/catalogue_of_defaults.h"

namespace quillmarsh {

// The words of a command line as values. Each fails with a UserError that names the option and
// what it takes.

// "YYYY-MM-DD", or "YYYY/MM/DD" as dates are shown.
vetlo::Date DateArgument(const std::string& option, const std::string& text);

// Such a date, or none for an option that was not given.
std::optional<vetlo::Date> GivenDate(const std::string& option,
                                     const std::optional<std::string>& text);

// One end of a period: such a date, or none where the option was not given or is empty, for an end
// that is open.
std::optional<vetlo::Date> PeriodEnd(const std::string& option,
                                     const std::optional<std::string>& text);

// The days of a period must not be crossed: fails where --from lies after --to.
void RequireOrder(vetlo::Date from, vetlo::Date to);

// A text that reads as a whole number of 32 bits is a Long, any other a Text, and an option that
// was not given an empty variant.
vetlo::Variant ParameterArgument(const std::optional<std::string>& text);

// A date range by its number, or by its name without regard to case, blanks and hyphens.
vetlo::DateRange RangeArgument(const std::string& text);

// The number that goes with a range of days or months, within the bounds of the dialog.
std::int32_t RangeNumberArgument(const std::string& text);

// The place of a word among those that an option takes, in any case of letters.
std::size_t ChoiceArgument(const std::string& option, std::span<const std::string_view> choices,
                           const std::string& word);

// "line", "bar" or "pie", as ChartType stores it.
std::int32_t ChartKindArgument(const std::string& kind);

// The whole number that a text is, or none.
std::optional<std::int32_t> WholeNumber(const std::string& text);

}  // namespace quillmarsh
