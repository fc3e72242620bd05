#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/small_store.h"

namespace vetlo::testing {

// A small household in which every report number has something to show: an account of most types,
// a transaction of most kinds, two securities with prices, a budget, a schedule, classifications.
// Its history lies in the first three months of 2026. The settings row of a report number is that
// number, and as a chart a hundred more; the histories 25 to 30 take their subject from the caller.
SmallStore HouseholdOfEveryKind();
// The same in a new file.
void WriteHouseholdOfEveryKind(const std::string& path);
std::unique_ptr<Database> HouseholdWithEveryRow();

// A subject of which a settings row has something to show.
Variant SubjectOfRow(std::int32_t row);

// The numbers of its settings rows.
std::vector<std::int32_t> RowsOfEveryForm();

}  // namespace vetlo::testing
