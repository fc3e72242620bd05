#pragma once

#include <climits>
#include <optional>
#include <string>

#include "vetlo/platform/format.h"

namespace quillmarsh {

// What an installed locale says about numbers and money, in the bytes of its own codeset.
struct LocaleFacts {
  std::string codeset;
  std::string decimal_point;
  std::string thousands_separator;
  std::string currency_sign;
  char sign_precedes = CHAR_MAX;  // 1 in front, 0 behind, CHAR_MAX where nothing is said
};

// The locale of a category by its variables, each null or empty where it is not set: the first
// one that is set counts, and without any it is "C".
std::string LocaleName(const char* lc_all, const char* lc_category, const char* lang);

// True for the locale C in any codeset, which knows neither grouping nor money.
bool IsPlainLocale(const std::string& name);

// The separators of one locale and the currency sign of another. Where a locale is missing, or a
// text of it is not to be had in UTF-8, the defaults stand.
vetlo::NumberLocale NumberLocaleOf(const std::optional<LocaleFacts>& numeric,
                                   const std::optional<LocaleFacts>& monetary);

// How the environment of this process wants its numbers: the defaults in place of a locale that is
// plain or not installed. The locale of the process stays as it is. Fails with std::bad_alloc or
// kOutOfMemory where memory does not do for a locale that is installed.
vetlo::NumberLocale EnvironmentLocale();

}  // namespace quillmarsh
