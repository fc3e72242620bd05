#include "quillmarsh/sample/settings_rows.h"

#include <array>
#include <string_view>

#include "quillmarsh/sample/markets.h"
#include "quillmarsh/sample/people_and_places.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/text.h"

namespace quillmarsh {
namespace {

using vetlo::ChartOrReport;
using vetlo::Date;
using vetlo::Null;
using vetlo::Variant;

constexpr std::size_t kLongestName = 50;

// ChartReportSubType.DateRangeType, as far as the favourites use it.
constexpr std::int32_t kUpToToday = 1;
constexpr std::int32_t kPreviousYear = 7;
constexpr std::int32_t kLast3Months = 9;
constexpr std::int32_t kLast12Months = 11;
constexpr std::int32_t kLastNDays = 13;
constexpr std::int32_t kLastNMonths = 14;
constexpr std::int32_t kCustomDates = 15;

// The groups in which the host's menus show the reports.
enum Group : std::int32_t { kMoney, kWorth, kSecurities, kLists };

struct GroupRow {
  std::int32_t report_number;
  std::int32_t group;
};

// Every number that is not about income and expenses.
constexpr GroupRow kGroups[] = {
    {5, kWorth},
    {6, kWorth},
    {8, kWorth},
    {11, kWorth},
    {12, kWorth},
    {18, kWorth},
    {20, kWorth},
    {21, kWorth},
    {31, kWorth},
    {39, kWorth},
    {43, kWorth},
    {44, kWorth},
    {13, kSecurities},
    {14, kSecurities},
    {15, kSecurities},
    {16, kSecurities},
    {17, kSecurities},
    {24, kSecurities},
    {53, kSecurities},
    {7, kLists},
    {9, kLists},
    {10, kLists},
    {54, kLists},
    {58, kLists},
    {59, kLists},
    {25, vetlo::kCallerParametersGroup},
    {26, vetlo::kCallerParametersGroup},
    {27, vetlo::kCallerParametersGroup},
    {28, vetlo::kCallerParametersGroup},
    {29, vetlo::kCallerParametersGroup},
    {30, vetlo::kCallerParametersGroup},
};

std::int32_t GroupOf(std::int32_t report_number) {
  for (const GroupRow& row : kGroups) {
    if (row.report_number == report_number) {
      return row.group;
    }
  }
  return kMoney;
}

// The columns of a row; a parameter of 0 is none.
struct SettingsRow {
  std::string_view name;
  std::int32_t group = vetlo::kFavoriteGroup;
  std::int32_t report_number = 0;
  ChartOrReport output = ChartOrReport::kReport;
  std::int32_t chart_type = vetlo::kBarChart;
  bool legend = false;
  std::string_view title;
  std::int32_t date_range = 0;
  std::int32_t range_number = 1;
  std::int32_t parameter1 = 0;
  std::int32_t parameter2 = 0;
};

constexpr SettingsRow Favorite(std::string_view name, std::int32_t report_number,
                               std::int32_t date_range, std::int32_t range_number = 1,
                               std::int32_t parameter1 = 0, std::int32_t parameter2 = 0) {
  return {.name = name,
          .report_number = report_number,
          .title = name,
          .date_range = date_range,
          .range_number = range_number,
          .parameter1 = parameter1,
          .parameter2 = parameter2};
}

constexpr SettingsRow AsChart(SettingsRow row, std::int32_t chart_type) {
  row.output = ChartOrReport::kChart;
  row.chart_type = chart_type;
  row.legend = true;
  return row;
}

constexpr CategoryKey kGroceries = CategoryOf("Food:Groceries");
constexpr CategoryKey kUtilities = CategoryOf("Utilities");
constexpr std::int32_t kNora = 1;
constexpr std::int32_t kGardenMakeover = 5;

constexpr std::array kFavorites = {
    Favorite("Our Checking Account", 25, kLast12Months, 1, kEverydayChecking),
    AsChart(Favorite("Paying Off the House", 25, kLastNMonths, 24, kMortgage), vetlo::kLineChart),
    Favorite("Prices at the Broker's", 26, kLast3Months, 1, kBrokerage),
    AsChart(Favorite("Growth Fund Since Last Year", 27, kLastNMonths, 18, kGrowthFund),
            vetlo::kLineChart),
    Favorite("What We Leave at Greenbasket", 28, kLast12Months, 1, TradeOf("supermarket").first),
    Favorite("Groceries Month by Month", 29, kLast12Months, 1, kGroceries.category,
             kGroceries.subcategory),
    AsChart(Favorite("Utilities", 29, kLast12Months, 1, kUtilities.category), vetlo::kBarChart),
    Favorite("Nora's Working Life", 30, kLast12Months, 1, kNora, SubItemNumber(kNora, 0)),
    AsChart(Favorite("The Garden", 30, kLastNMonths, 36, kGardenMakeover), vetlo::kBarChart),
    Favorite("Half a Year in Detail", 1, kCustomDates),
    AsChart(Favorite("Where the Money Went", 1, kLastNMonths, 6), vetlo::kPieChart),
    AsChart(Favorite("Income and Expenses Last Year", 4, kPreviousYear), vetlo::kBarChart),
    Favorite("The Last 90 Days", 3, kLastNDays, 90),
    AsChart(Favorite("Everything We Own", 20, kUpToToday), vetlo::kPieChart),
    AsChart(Favorite("What We Own and What We Owe", 6, kUpToToday), vetlo::kBarChart),
    AsChart(Favorite("What We Have Invested In", 24, kUpToToday), vetlo::kPieChart),
    AsChart(Favorite("What Our Investments Yield", 15, kUpToToday), vetlo::kBarChart),
    AsChart(Favorite("Who Owes Us", 8, kUpToToday), vetlo::kPieChart),
    Favorite("Budget, Last Three Months", 59, kLast3Months),
};

// The six whole months before the present one, for the favourite with dates of its own.
struct CustomDates {
  Variant from = Null{};
  Variant to = Null{};
};

CustomDates CustomDatesOf(const SettingsRow& row, Date today) {
  if (row.date_range != kCustomDates) {
    return {};
  }
  const vetlo::CalendarDay day = vetlo::CalendarDayOf(today);
  return {vetlo::FirstOfMonth(day.year, day.month - 6), vetlo::DateSerial(day.year, day.month, 0)};
}

Variant ParameterOrNull(std::int32_t parameter) {
  return parameter == 0 ? Variant(Null{}) : Variant(parameter);
}

void Insert(vetlo::StoreBuilder& store, std::int32_t number, const SettingsRow& row, Date today) {
  const CustomDates dates = CustomDatesOf(row, today);
  store.Insert("ChartReportSubType", {{"ChartReportSubTypeNumber", number},
                                      {"ChartReportSubTypeName", std::string(row.name)},
                                      {"ChartReportType", row.group},
                                      {"ChartReportSubTypeAttr", row.report_number},
                                      {"ChartOrReportType", static_cast<std::int32_t>(row.output)},
                                      {"ChartType", row.chart_type},
                                      {"Legend", row.legend},
                                      {"Title", std::string(row.title)},
                                      {"DateRangeType", row.date_range},
                                      {"DateRangeExtInfo", row.range_number},
                                      {"FromDate", dates.from},
                                      {"ToDate", dates.to},
                                      {"Parameter1", ParameterOrNull(row.parameter1)},
                                      {"Parameter2", ParameterOrNull(row.parameter2)}});
}

}  // namespace

void WriteSettingsRows(vetlo::StoreBuilder& store, const HouseholdPlan& plan) {
  std::int32_t number = 0;
  for (const SettingsDefaults& defaults : plan.catalogue) {
    Insert(store, ++number,
           {.name = vetlo::FirstCharacters(defaults.title, kLongestName),
            .group = GroupOf(defaults.report_number),
            .report_number = defaults.report_number,
            .output = defaults.output,
            .chart_type = defaults.chart_type,
            .legend = defaults.legend,
            .title = defaults.title,
            .date_range = defaults.date_range,
            .range_number = defaults.range_number},
           plan.today);
  }
  for (const SettingsRow& favorite : kFavorites) {
    Insert(store, ++number, favorite, plan.today);
  }
}

}  // namespace quillmarsh
