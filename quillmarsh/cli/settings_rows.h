#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vetlo/store/database.h"

namespace quillmarsh {

// A settings row as the command line speaks of it. Texts are as they stand in the store.
struct SettingsRowFacts {
  std::int32_t number = 0;
  std::string name;  // its own, or where it has none its title
  std::int32_t group = 0;
  std::int32_t report_number = 0;
  std::int32_t output = 0;
  std::int32_t chart_type = 0;
  std::int32_t range = 0;
  std::int32_t range_number = 0;
  vetlo::Variant from;
  vetlo::Variant to;
  vetlo::Variant parameter1;
  vetlo::Variant parameter2;
};

// All rows in the order of their numbers. What cannot be read of a row is left out, and the store
// hears of it.
std::vector<SettingsRowFacts> ReadSettingsRows(vetlo::Database& store);

// The row that a user names by its number or by its name. Fails with a UserError where there is
// none or more than one.
SettingsRowFacts FindSettingsRow(vetlo::Database& store, const std::string& row);

// "report", "bar chart", ...
std::string FormText(const SettingsRowFacts& row);

// "Last 3 Months", "Last 10 Days", "2026/01/01 Through 2026/03/31", ...
std::string RangeText(const SettingsRowFacts& row);

}  // namespace quillmarsh
