#include "vetlo/services/catalogue_of_defaults.h"

#include <algorithm>
#include <array>

#include "vetlo/platform/display.h"

namespace vetlo {
namespace {

constexpr std::array kDateRanges = {
    DateRangeFacts{DateRange::kAllDates, "All Dates"},
    DateRangeFacts{DateRange::kUpToToday, "Up to Today"},
    DateRangeFacts{DateRange::kCurrentMonth, "Current Month"},
    DateRangeFacts{DateRange::kCurrentYear, "Current Year"},
    DateRangeFacts{DateRange::kMonthToDate, "Month to Date"},
    DateRangeFacts{DateRange::kYearToDate, "Year to Date"},
    DateRangeFacts{DateRange::kPreviousMonth, "Previous Month"},
    DateRangeFacts{DateRange::kPreviousYear, "Previous Year"},
    DateRangeFacts{DateRange::kLast30Days, "Last 30 Days"},
    DateRangeFacts{DateRange::kLast3Months, "Last 3 Months"},
    DateRangeFacts{DateRange::kLast6Months, "Last 6 Months"},
    DateRangeFacts{DateRange::kLast12Months, "Last 12 Months"},
    DateRangeFacts{DateRange::kUpToADate, "Up to a Date", "", "", false, false, true},
    DateRangeFacts{DateRange::kLastNDays, "Last N Days", "Last", "Days", true},
    DateRangeFacts{DateRange::kLastNMonths, "Last N Months", "Last", "Months", true},
    DateRangeFacts{DateRange::kCustomDates, "Custom Dates", "", "", false, true, true},
};

// The ways in which a report number is shown.
enum class Forms : std::uint8_t { kReportOnly, kReportFirst, kChartFirst };

constexpr ReportDefaults Entry(std::int32_t number, std::string_view title, Forms forms,
                               std::int32_t chart_type, DateRange range, RangeOffer ranges) {
  ReportDefaults entry;
  entry.number = number;
  entry.title = title;
  entry.has_chart = forms != Forms::kReportOnly;
  entry.output = forms == Forms::kChartFirst ? ChartOrReport::kChart : ChartOrReport::kReport;
  entry.chart_type = entry.has_chart ? chart_type : kNothingChosen;
  entry.legend = entry.has_chart && chart_type != kBarChart;
  entry.range = range;
  entry.ranges = ranges;
  return entry;
}

constexpr auto kOnly = Forms::kReportOnly;
constexpr auto kReport = Forms::kReportFirst;
constexpr auto kChart = Forms::kChartFirst;
constexpr auto kLine = kLineChart;
constexpr auto kBar = kBarChart;
constexpr auto kPie = kPieChart;
constexpr auto kOneDate = RangeOffer::kOneDate;
constexpr auto kPeriod = RangeOffer::kPeriod;
constexpr auto kTwoEnds = RangeOffer::kTwoEnds;
using enum DateRange;

constexpr std::array kReports = {
    Entry(1, "Expenses by Category", kReport, kPie, kCurrentMonth, kPeriod),
    Entry(2, "Net Amount by Payee", kReport, kBar, kYearToDate, kPeriod),
    Entry(3, "Cash Flow", kReport, kBar, kYearToDate, kPeriod),
    Entry(4, "Income and Expense Categories", kReport, kBar, kCurrentMonth, kPeriod),
    Entry(5, "Net Worth", kReport, kBar, kUpToToday, kOneDate),
    Entry(6, "Net Worth by Account", kReport, kBar, kUpToToday, kOneDate),
    Entry(7, "List of Accounts", kOnly, kBar, kAllDates, kOneDate),
    Entry(8, "Who Owes Me", kReport, kPie, kUpToToday, kOneDate),
    Entry(9, "Upcoming Payments", kOnly, kBar, kCurrentMonth, kPeriod),
    Entry(10, "Upcoming Payments and Deposits", kOnly, kBar, kAllDates, kPeriod),
    Entry(11, "Credit Card Debt", kReport, kPie, kUpToToday, kOneDate),
    Entry(12, "Whom I Owe", kReport, kPie, kUpToToday, kOneDate),
    Entry(13, "Investments by Account", kReport, kPie, kUpToToday, kOneDate),
    Entry(14, "Investments by Type", kReport, kPie, kUpToToday, kOneDate),
    Entry(15, "Investment Yield by Account", kReport, kBar, kUpToToday, kOneDate),
    Entry(16, "Investment Yield by Type", kReport, kBar, kUpToToday, kOneDate),
    Entry(17, "Prices of All Investments", kChart, kLine, kLast12Months, kPeriod),
    Entry(18, "Assets and Liabilities", kReport, kBar, kUpToToday, kOneDate),
    Entry(19, "Income and Expenses", kReport, kBar, kCurrentMonth, kPeriod),
    Entry(20, "Assets by Account", kReport, kPie, kUpToToday, kOneDate),
    Entry(21, "Liabilities by Account", kReport, kPie, kUpToToday, kOneDate),
    Entry(22, "Income by Category", kReport, kPie, kCurrentMonth, kPeriod),
    Entry(23, "Expenses by Category: Last Month", kReport, kPie, kPreviousMonth, kPeriod),
    Entry(24, "Investment Values by Type", kReport, kPie, kUpToToday, kOneDate),
    Entry(25, "Balance History of an Account", kChart, kLine, kLast12Months, kPeriod),
    Entry(26, "Price History of an Investment Account", kChart, kLine, kLast12Months, kPeriod),
    Entry(27, "Price History of an Investment", kChart, kLine, kLast12Months, kPeriod),
    Entry(28, "History of a Payee", kReport, kBar, kLast12Months, kPeriod),
    Entry(29, "History of a Category", kReport, kBar, kLast12Months, kPeriod),
    Entry(30, "History of a Classification", kReport, kBar, kLast12Months, kPeriod),
    Entry(31, "Assets and Liabilities: End of Last Month", kReport, kBar, kPreviousMonth, kOneDate),
    Entry(32, "Income and Expenses: Last Month", kReport, kBar, kPreviousMonth, kPeriod),
    Entry(33, "Income and Expenses: This Year", kReport, kBar, kCurrentYear, kPeriod),
    Entry(34, "Income and Expenses: Last Year", kReport, kBar, kPreviousYear, kPeriod),
    Entry(35, "Income by Category: Last Month", kReport, kPie, kPreviousMonth, kPeriod),
    Entry(36, "Expenses by Category: This Year", kReport, kPie, kCurrentYear, kPeriod),
    Entry(37, "Income by Category: This Year", kReport, kPie, kCurrentYear, kPeriod),
    Entry(38, "Expenses by Category: Last Year", kReport, kPie, kPreviousYear, kPeriod),
    Entry(39, "Assets and Liabilities: End of Last Year", kReport, kBar, kPreviousYear, kOneDate),
    Entry(40, "Income and Expenses: Last 3 Months", kReport, kBar, kLast3Months, kPeriod),
    Entry(41, "Income and Expenses: Last 6 Months", kReport, kBar, kLast6Months, kPeriod),
    Entry(42, "Income and Expenses: Last 12 Months", kReport, kBar, kLast12Months, kPeriod),
    Entry(43, "Assets by Account: End of Last Month", kReport, kPie, kPreviousMonth, kOneDate),
    Entry(44, "Liabilities by Account: End of Last Month", kReport, kPie, kPreviousMonth, kOneDate),
    Entry(45, "Income by Category: Last Year", kReport, kPie, kPreviousYear, kPeriod),
    Entry(46, "Expenses by Category: Last 30 Days", kReport, kPie, kLast30Days, kPeriod),
    Entry(47, "Income by Category: Last 30 Days", kReport, kPie, kLast30Days, kPeriod),
    Entry(48, "Expenses by Category: Last 3 Months", kReport, kPie, kLast3Months, kPeriod),
    Entry(49, "Income by Category: Last 3 Months", kReport, kPie, kLast3Months, kPeriod),
    Entry(50, "Expenses by Category: Last 6 Months", kReport, kPie, kLast6Months, kPeriod),
    Entry(51, "Income by Category: Last 12 Months", kReport, kPie, kLast12Months, kPeriod),
    Entry(52, "Expenses by Category: Last 12 Months", kReport, kPie, kLast12Months, kPeriod),
    Entry(53, "Investment Values by Type: All Dates", kReport, kPie, kAllDates, kOneDate),
    Entry(54, "Upcoming Deposits", kOnly, kBar, kCurrentYear, kPeriod),
    Entry(55, "Income and Expense Categories: Last Month", kReport, kBar, kPreviousMonth, kPeriod),
    Entry(56, "Income and Expense Categories: This Year", kReport, kBar, kCurrentYear, kPeriod),
    Entry(57, "Income and Expense Categories: Last Year", kReport, kBar, kPreviousYear, kPeriod),
    Entry(58, "Annual Budget", kOnly, kBar, kCurrentYear, kPeriod),
    Entry(59, "Budget Against Actual", kOnly, kBar, kCurrentMonth, kTwoEnds),
};

}  // namespace

std::span<const DateRangeFacts> AllDateRanges() { return kDateRanges; }

bool Offers(RangeOffer offer, DateRange range) {
  static constexpr std::array kWithOneDate = {kAllDates,    kUpToToday,     kCurrentMonth,
                                              kCurrentYear, kPreviousMonth, kPreviousYear,
                                              kUpToADate};
  static constexpr std::array kWithoutTwoEnds = {kAllDates, kUpToToday, kUpToADate};
  const auto holds = [range](const auto& ranges) {
    return std::ranges::find(ranges, range) != ranges.end();
  };
  switch (offer) {
    case RangeOffer::kOneDate:
      return holds(kWithOneDate);
    case RangeOffer::kTwoEnds:
      return !holds(kWithoutTwoEnds);
    case RangeOffer::kPeriod:
      break;
  }
  return true;
}

std::int32_t ReportDefaults::RangeNumber() const {
  constexpr std::int32_t kUsualDays = 30;
  constexpr std::int32_t kUsualMonths = 3;
  switch (range) {
    case kLastNDays:
      return kUsualDays;
    case kLastNMonths:
      return kUsualMonths;
    default:
      return 1;
  }
}

std::span<const ReportDefaults> AllReportDefaults() { return kReports; }

}  // namespace vetlo
