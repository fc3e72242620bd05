#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "vetlo/store/model.h"

namespace vetlo {

// ChartReportSubType.DateRangeType.
enum class DateRange : std::int32_t {
  kAllDates = 0,
  kUpToToday = 1,
  kCurrentMonth = 2,
  kCurrentYear = 3,
  kMonthToDate = 4,
  kYearToDate = 5,
  kPreviousMonth = 6,
  kPreviousYear = 7,
  kLast30Days = 8,
  kLast3Months = 9,
  kLast6Months = 10,
  kLast12Months = 11,
  kUpToADate = 12,
  kLastNDays = 13,
  kLastNMonths = 14,
  kCustomDates = 15,
};

// What a dialog says and asks of a date range.
struct DateRangeFacts {
  DateRange range = DateRange::kAllDates;
  std::string_view name;
  std::string_view words_before = {};  // the number box
  std::string_view words_behind = {};
  bool takes_number = false;
  bool start_editable = false;
  bool end_editable = false;
};

std::span<const DateRangeFacts> AllDateRanges();

// Which date ranges make sense for a figure.
enum class RangeOffer : std::uint8_t {
  kOneDate,  // it holds on one date
  kPeriod,   // it is of a period, which may be open
  kTwoEnds,  // it is of a period that begins and ends
};

bool Offers(RangeOffer offer, DateRange range);

// What a report number is called and shows unless its row says otherwise.
struct ReportDefaults {
  std::int32_t number = 0;  // ChartReportSubTypeAttr, 1 to 59
  std::string_view title;
  bool has_report = true;
  bool has_chart = true;
  ChartOrReport output = ChartOrReport::kReport;
  std::int32_t chart_type = 0;  // kNothingChosen where there is no chart
  bool legend = false;
  DateRange range = DateRange::kAllDates;
  RangeOffer ranges = RangeOffer::kPeriod;

  // The number that goes with the range where it takes one.
  [[nodiscard]] std::int32_t RangeNumber() const;
};

// The defaults of all report numbers, in their order.
std::span<const ReportDefaults> AllReportDefaults();

}  // namespace vetlo
