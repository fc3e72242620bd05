#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vetlo/platform/arrays.h"
#include "vetlo/platform/format.h"
#include "vetlo/store/database.h"

namespace vetlo {

// One scheduled payment as a line of text: date, frequency, payee, account, category, amount. A
// schedule has one date, that of its transaction; it is not expanded.
using CalendarRow = std::vector<std::string>;

inline constexpr std::size_t kCalendarColumns = 6;

// Which directions of the money are listed.
struct CalendarFilter {
  bool blnWithPayments = false;
  bool blnWithDeposits = false;
};

// "Monthly", or with a number from 2 on "Every 3 months"; nothing for a frequency that there is
// not. Frequencies count from 0; only those of days, weeks, months and years take a number.
std::string FrequencyText(std::int32_t lngFrequencyType, std::int32_t lngFrequencyExtInfo);

// The schedules dated in a range, by date and then by their transaction's number. No row is a
// failure with kSubscriptOutOfRange; a transaction without an account fails with kInvalidUseOfNull
// or kNoCurrentRecord.
void PaymentCalendarRows(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                         GrowingArray<CalendarRow>& rows, CalendarFilter filter,
                         const NumberLocale& locale);

}  // namespace vetlo
