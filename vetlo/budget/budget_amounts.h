#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "vetlo/store/database.h"

namespace vetlo {

// A budget knows months, not years: twelve amounts, January first.
using MonthAmounts = std::array<Currency, 12>;

// The columns of the twelve months in the tables of budgets, and their headers in reports.
inline constexpr std::array<std::string_view, 12> kMonthNames = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// The amounts of all months that a range touches, each counted whole, whatever day the range begins
// or ends on; a range of two years counts each month twice. The first of the amounts is January's;
// a month that is not there fails with kSubscriptOutOfRange.
//
//   31 January to 1 February: January and February, whole
Currency TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate, Date dtmToDate);

// The number of the budget in force. Fails with kNoCurrentRecord where none is.
std::int32_t BudgetInForce(Database& dbDov);

// What is budgeted on a category: its own amounts, and unless it alone is asked for those of its
// subcategories. What is not budgeted is 0.
MonthAmounts CategoryBudgetByMonth(Database& dbDov, std::int32_t lngBudgetNumber,
                                   std::int32_t lngCategoryNumber, bool blnCategoryOnly);
MonthAmounts SubCategoryBudgetByMonth(Database& dbDov, std::int32_t lngBudgetNumber,
                                      std::int32_t lngSubCategoryNumber);

}  // namespace vetlo
