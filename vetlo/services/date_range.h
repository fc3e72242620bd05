#pragma once

#include <cstdint>

#include "vetlo/store/database.h"

namespace vetlo {

// Both ends belong to the range; the sentinels of CommonServices mark an open one.
struct ResolvedRange {
  Date dtmFromDate;
  Date dtmToDate;
};

// Turns a kind of range into two dates, as of a day. An end that the user chooses is open here, and
// a kind that there is not means all dates. Fails with kOverflow or kInvalidCall where a number of
// days or months leads out of the calendar.
ResolvedRange ComputedDateRange(std::int32_t lngDateRangeType, std::int32_t lngDateRangeExtInfo,
                                Date dtmToday);

// The same for the settings row under the cursor: an end that the user chooses is read of the row,
// and fails as reading a Date does where the row stores none. Null is an open end.
ResolvedRange ResolveDateRange(std::int32_t lngDateRangeType, std::int32_t lngDateRangeExtInfo,
                               Date dtmToday, Recordset& recChartReportSubType);

}  // namespace vetlo
