#pragma once

#include <string>
#include <vector>

#include "vetlo/platform/arrays.h"
#include "vetlo/platform/format.h"
#include "vetlo/store/database.h"

namespace vetlo {

// One row of a budget report as text, the label first. A data row has a text in every column; a
// heading has its label alone, a blank line nothing at all.
using BudgetRow = std::vector<std::string>;
using BudgetRows = GrowingArray<BudgetRow>;

// Both routines fill the rows of the expense categories and then of the income categories, each
// category with its subcategories four blanks in and what is on no subcategory, and the total of
// the categories; what they have left in the rows stays readable where they fail. Without a budget
// in force they fail with kNoCurrentRecord.

// Label, actual amount, budget, and actual less budget, for a range.
//
//   Expense Category
//   Food                           45.50   80    -34.50
//       Bakery                     45.50   20     25.50
//       Unassigned Subcategory      0.00   60    -60.00
//
//   Total Expenses                 45.50   80    -34.50
void BudgetAgainstActualRows(Database& dbDov, Date dtmFromDate, Date dtmToDate, BudgetRows& rows,
                             const NumberLocale& locale);

// Label, the twelve months, and the year.
void AnnualBudgetRows(Database& dbDov, BudgetRows& rows, const NumberLocale& locale);

}  // namespace vetlo
