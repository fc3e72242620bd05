#pragma once

#include <cstdint>

#include "vetlo/store/database.h"

namespace vetlo {

// Both ends belong to the range; the sentinels of CommonServices mark an open one.
struct ResolvedRange {
  Date dtmFromDate;
  Date dtmToDate;
};

// Turns the kind of range that a settings row stores into two dates, as of a day. The stored dates
// are read of the row under the cursor, where the kind asks for them. A kind that there is not
// means all dates. Fails with kOverflow or kInvalidCall where a number of days or months leads out
// of the calendar, and as reading a Date does where a stored date is none.
ResolvedRange ResolveDateRange(std::int32_t lngDateRangeType, std::int32_t lngDateRangeExtInfo,
                               Date dtmToday, Recordset& recChartReportSubType);

}  // namespace vetlo
