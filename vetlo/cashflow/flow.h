#pragma once

#include <cstdint>
#include <string>

#include "vetlo/platform/date.h"

namespace vetlo {

// The two directions of a household's money.
enum class Flow { kIncoming, kOutgoing };

// Category.CategoryType.
inline constexpr std::int32_t kIncomeCategory = 0;
inline constexpr std::int32_t kExpenseCategory = 1;
inline constexpr std::int32_t kNeitherCategory = 2;

// The records of a direction in a range, both ends included, up to further conditions that a
// caller joins with " AND ": those of ordinary income or expenses, and those of investments, which
// count where another account funded or received them.
std::string OrdinaryText(Flow flow, Date dtmFromDate, Date dtmToDate);
std::string InvestmentText(Flow flow, Date dtmFromDate, Date dtmToDate);

// What InvestmentText is joined with for that.
inline constexpr const char* kFundedByAnother = " AND (NOT ISNULL(ToOrFundAccountNumber))";

}  // namespace vetlo
