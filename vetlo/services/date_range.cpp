#include "vetlo/services/date_range.h"

#include "vetlo/platform/failure.h"
#include "vetlo/services/catalogue_of_defaults.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

Date DayBefore(Date date) { return Date{date.days - 1}; }

Date StoredDateOr(Date open_end, Recordset& rec, std::string_view field) {
  const Variant value = rec.Fields(field);
  return IsNull(value) ? open_end : ToDate(value);
}

// The same range; its failure says what it is about.
ResolvedRange ComputedWithinCalendar(std::int32_t lngDateRangeType,
                                     std::int32_t lngDateRangeExtInfo, Date dtmToday) {
  try {
    return ComputedDateRange(lngDateRangeType, lngDateRangeExtInfo, dtmToday);
  } catch (const Failure& failure) {
    throw Failure(static_cast<FailureNumber>(failure.number()),
                  "the date range leaves the calendar, which has the years 100 to 9999; choose "
                  "a smaller number or other dates");
  }
}

}  // namespace

ResolvedRange ComputedDateRange(std::int32_t lngDateRangeType, std::int32_t lngDateRangeExtInfo,
                                Date dtmToday) {
  const Date earliest = Services().EarliestDate();
  const Date latest = Services().LatestDate();
  const auto [y, m, d] = CalendarDayOf(dtmToday);
  const std::int64_t n = lngDateRangeExtInfo;
  const auto last_months = [&, y = y, m = m](std::int64_t months) {
    return ResolvedRange{FirstOfMonth(y, m - months + 1), dtmToday};
  };
  const auto last_days = [&](std::int64_t days) {
    return ResolvedRange{AddDays(dtmToday, static_cast<double>(1 - days)), dtmToday};
  };
  switch (static_cast<DateRange>(lngDateRangeType)) {
    case DateRange::kAllDates:
    case DateRange::kUpToADate:
    case DateRange::kCustomDates:
      break;
    case DateRange::kUpToToday:
      return {earliest, dtmToday};
    case DateRange::kCurrentMonth:
      return {FirstOfMonth(y, m), DayBefore(FirstOfMonth(y, m + 1))};
    case DateRange::kCurrentYear:
      return {FirstOfMonth(y, 1), DayBefore(FirstOfMonth(y + 1, 1))};
    case DateRange::kMonthToDate:
      return last_months(1);
    case DateRange::kYearToDate:
      return {FirstOfMonth(y, 1), dtmToday};
    case DateRange::kPreviousMonth:
      return {FirstOfMonth(y, m - 1), DayBefore(FirstOfMonth(y, m))};
    case DateRange::kPreviousYear:
      return {FirstOfMonth(y - 1, 1), DayBefore(FirstOfMonth(y, 1))};
    case DateRange::kLast30Days:
      return last_days(30);
    case DateRange::kLast3Months:
      return last_months(3);
    case DateRange::kLast6Months:
      return last_months(6);
    case DateRange::kLast12Months:
      return last_months(12);
    case DateRange::kLastNDays:
      return last_days(n);
    case DateRange::kLastNMonths:
      return last_months(n);
  }
  return {earliest, latest};
}

ResolvedRange ResolveDateRange(std::int32_t lngDateRangeType, std::int32_t lngDateRangeExtInfo,
                               Date dtmToday, Recordset& recChartReportSubType) {
  ResolvedRange range = ComputedWithinCalendar(lngDateRangeType, lngDateRangeExtInfo, dtmToday);
  const DateRangeFacts* const facts = Services().DateRangeInfo(lngDateRangeType);
  if (facts != nullptr && facts->start_editable) {
    range.dtmFromDate = StoredDateOr(range.dtmFromDate, recChartReportSubType, "FromDate");
  }
  if (facts != nullptr && facts->end_editable) {
    range.dtmToDate = StoredDateOr(range.dtmToDate, recChartReportSubType, "ToDate");
  }
  return range;
}

}  // namespace vetlo
