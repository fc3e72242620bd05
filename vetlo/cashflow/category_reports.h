#pragma once

#include "vetlo/platform/arrays.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// What came in and what went out between two dates, by category, as rows of a report or a chart.
// In a report a row of amount -1 is a heading, or without a label a blank line, and each category
// is followed by its subcategories, four blanks in; in a chart the categories of no more than a
// twentieth of their direction are folded into one row. Each routine gives its total, and with no
// row at all it fails with kSubscriptOutOfRange.
//
//   ExpensesByCategory for a report      for a chart
//     -1.00  Expense Category              60.00  Food
//     60.00  Food                          37.00  Expenses - Unassigned
//     45.00      Bakery                     3.00  All Other Expenses
//     15.00      Unassigned Subcategory
//      3.00  Toys
//     -1.00
//     37.00  Expenses - Unassigned

Currency ExpensesByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                            ChartOrReport lngChartOrReportType);
Currency IncomeByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                          ChartOrReport lngChartOrReportType);

// Both directions below one another; a chart has its expenses below the axis. The total is income
// less expenses.
Currency IncomeAndExpensesByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                     AmountRows& rows, ChartOrReport lngChartOrReportType);

// The same, and then what investments brought to and took from each other account. What they
// brought as income, or took as cost, stands in both places and counts in the total twice.
Currency CashFlowByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                            ChartOrReport lngChartOrReportType);

}  // namespace vetlo
