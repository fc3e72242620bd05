#pragma once

#include "quillmarsh/sample/pace.h"

namespace quillmarsh {

// Writes the budget in force, what the household expects to earn and to spend in each month of a
// year in round amounts, and the smaller one of the year before. A month for which nothing is
// expected stays Null.
void WriteBudgets(vetlo::StoreBuilder& store, const Pace& pace);

}  // namespace quillmarsh
