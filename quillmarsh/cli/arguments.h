#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "vetlo/platform/variant.h"
#include "vetlo/services/catalogue_of_defaults.h"

namespace quillmarsh {

// The words of a command line as values. Each fails with a UserError that names the option and
// what it takes.

// "YYYY-MM-DD".
vetlo::Date DateArgument(const std::string& option, const std::string& text);

// The same, or `otherwise` for a text that is empty because the option was not given.
vetlo::Date DateArgumentOr(const std::string& option, const std::string& text,
                           vetlo::Date otherwise);

// The day that --today pins, or none: the clock's then.
std::optional<vetlo::Date> TodayArgument(const std::string& text);

// A text that reads as a whole number of 32 bits is a Long, any other a Text, and an option that
// was not given an empty variant.
vetlo::Variant ParameterArgument(const std::optional<std::string>& text);

// A date range by its number, or by its name without regard to case, blanks and hyphens.
vetlo::DateRange RangeArgument(const std::string& text);

// "line", "bar" or "pie", as ChartType stores it.
std::int32_t ChartKindArgument(const std::string& kind);

// The whole number that a text is, or none.
std::optional<std::int32_t> WholeNumber(const std::string& text);

}  // namespace quillmarsh
