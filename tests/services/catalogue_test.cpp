#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "vetlo/platform/display.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/date_range.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;

constexpr std::int32_t kNumbers = 59;
constexpr std::int32_t kRanges = 16;

using Numbers = std::vector<std::int32_t>;

bool Holds(const Numbers& numbers, std::int32_t number) {
  return std::ranges::find(numbers, number) != numbers.end();
}

// ---- date ranges

struct RangeCase {
  std::int32_t number;
  const char* name;
  bool takes_number = false;
  bool start_editable = false;
  bool end_editable = false;
  const char* words_before = "";
  const char* words_behind = "";

  friend std::ostream& operator<<(std::ostream& out, const RangeCase& test) {
    return out << test.number;
  }
};

class DateRangeInfo : public ::testing::TestWithParam<RangeCase> {
 protected:
  const DateRangeFacts* facts_ = Services().DateRangeInfo(GetParam().number);
};

TEST_P(DateRangeInfo, NamesTheRange) {
  ASSERT_NE(facts_, nullptr);
  EXPECT_EQ(facts_->name, GetParam().name);
}

TEST_P(DateRangeInfo, SaysWhetherTheRangeTakesANumber) {
  EXPECT_EQ(facts_->takes_number, GetParam().takes_number);
}

TEST_P(DateRangeInfo, SaysWhichEndsCanBeEdited) {
  EXPECT_EQ(facts_->start_editable, GetParam().start_editable);
  EXPECT_EQ(facts_->end_editable, GetParam().end_editable);
}

TEST_P(DateRangeInfo, HasTheWordsAroundTheNumber) {
  EXPECT_EQ(facts_->words_before, GetParam().words_before);
  EXPECT_EQ(facts_->words_behind, GetParam().words_behind);
}

INSTANTIATE_TEST_SUITE_P(
    All, DateRangeInfo,
    ::testing::Values(RangeCase{0, "All Dates"}, RangeCase{1, "Up to Today"},
                      RangeCase{2, "Current Month"}, RangeCase{3, "Current Year"},
                      RangeCase{4, "Month to Date"}, RangeCase{5, "Year to Date"},
                      RangeCase{6, "Previous Month"}, RangeCase{7, "Previous Year"},
                      RangeCase{8, "Last 30 Days"}, RangeCase{9, "Last 3 Months"},
                      RangeCase{10, "Last 6 Months"}, RangeCase{11, "Last 12 Months"},
                      RangeCase{12, "Up to a Date", false, false, true},
                      RangeCase{13, "Last N Days", true, false, false, "Last", "Days"},
                      RangeCase{14, "Last N Months", true, false, false, "Last", "Months"},
                      RangeCase{15, "Custom Dates", false, true, true}));

TEST(DateRanges, AreListedInTheOrderOfTheirNumbers) {
  ASSERT_EQ(Services().DateRanges().size(), 16U);
  for (std::int32_t i = 0; i < kRanges; ++i) {
    EXPECT_EQ(static_cast<std::int32_t>(Services().DateRanges()[static_cast<std::size_t>(i)].range),
              i);
  }
}

TEST(DateRanges, AreNoOtherNumbers) {
  for (const std::int32_t number : {-1, 16, 255}) {
    EXPECT_EQ(Services().DateRangeInfo(number), nullptr) << number;
  }
}

// ---- report numbers

const Numbers kWithoutChart = {7, 9, 10, 54, 58, 59};
const Numbers kChartFirst = {17, 25, 26, 27};  // courses over time
const Numbers kOnOneDate = {5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 18, 20, 21, 24, 31, 39, 43, 44, 53};

class ReportNumber : public ::testing::TestWithParam<std::int32_t> {
 protected:
  [[nodiscard]] Numbers RangesOffered() const {
    Numbers offered;
    for (std::int32_t range = 0; range < kRanges; ++range) {
      if (Offers(setting_->ranges, static_cast<DateRange>(range))) {
        offered.push_back(range);
      }
    }
    return offered;
  }

  [[nodiscard]] bool HasChart() const { return !Holds(kWithoutChart, GetParam()); }

  const ReportDefaults* setting_ = Services().ChartReportSetting(GetParam());
};

INSTANTIATE_TEST_SUITE_P(All, ReportNumber, ::testing::Range(1, kNumbers + 1));

TEST_P(ReportNumber, IsInTheCatalogue) {
  ASSERT_NE(setting_, nullptr);
  EXPECT_EQ(setting_->number, GetParam());
}

TEST_P(ReportNumber, OffersTheOutputsThatItHas) {
  EXPECT_TRUE(setting_->has_report);
  EXPECT_EQ(setting_->has_chart, HasChart());
}

TEST_P(ReportNumber, IsShownByDefaultAsAReportUnlessItIsACourse) {
  EXPECT_EQ(setting_->output,
            Holds(kChartFirst, GetParam()) ? ChartOrReport::kChart : ChartOrReport::kReport);
}

TEST_P(ReportNumber, HasAKindOfChartByDefaultWhereItHasAChart) {
  if (HasChart()) {
    EXPECT_GE(setting_->chart_type, kLineChart);
    EXPECT_LE(setting_->chart_type, kPieChart);
  } else {
    EXPECT_EQ(setting_->chart_type, kNothingChosen);
  }
}

TEST_P(ReportNumber, HasNoLegendWithoutAChart) { EXPECT_TRUE(HasChart() || !setting_->legend); }

TEST_P(ReportNumber, OffersTheDateRangesThatSuitItsFigure) {
  if (Holds(kOnOneDate, GetParam())) {
    EXPECT_THAT(RangesOffered(), ElementsAre(0, 1, 2, 3, 6, 7, 12));
  } else if (GetParam() == 59) {
    EXPECT_THAT(RangesOffered(), ElementsAre(2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15));
  } else {
    EXPECT_EQ(RangesOffered().size(), 16U);
  }
}

TEST_P(ReportNumber, OffersItsDefaultDateRange) {
  EXPECT_TRUE(Offers(setting_->ranges, setting_->range));
}

TEST_P(ReportNumber, HasANumberForItsDefaultDateRange) {
  EXPECT_GE(setting_->RangeNumber(), 1);
  const DateRangeFacts* const range =
      Services().DateRangeInfo(static_cast<std::int32_t>(setting_->range));
  ASSERT_NE(range, nullptr);
  EXPECT_TRUE(range->takes_number || setting_->RangeNumber() == 1);
}

TEST_P(ReportNumber, HasATitleThatFitsWhereItIsShown) {
  EXPECT_GE(CharacterCount(setting_->title), 1U);
  EXPECT_LE(CharacterCount(setting_->title), 42U);
  EXPECT_EQ(Trim(setting_->title), setting_->title);
}

TEST(ReportNumbers, HaveTitlesOfTheirOwn) {
  std::set<std::string_view> titles;
  for (std::int32_t number = 1; number <= kNumbers; ++number) {
    const std::string_view title = Services().ChartReportSetting(number)->title;
    EXPECT_TRUE(titles.insert(title).second) << title;
  }
}

TEST(ReportNumbers, AreAllListedInTheirOrder) {
  Numbers listed;
  for (const ReportDefaults& defaults : AllReportDefaults()) {
    listed.push_back(defaults.number);
  }
  ASSERT_EQ(listed.size(), static_cast<std::size_t>(kNumbers));
  EXPECT_TRUE(std::ranges::is_sorted(listed));
}

TEST(ReportNumbers, AreNoOthers) {
  for (const std::int32_t number : {0, -1, 60, 255}) {
    EXPECT_EQ(Services().ChartReportSetting(number), nullptr) << number;
  }
}

// ---- families: numbers that show the same figure, and so are told apart by name and dates

const std::vector<Numbers> kFamilies = {{1, 23, 36, 38, 46, 48, 50, 52},
                                        {4, 55, 56, 57},
                                        {9, 10, 54},
                                        {18, 31, 39},
                                        {19, 32, 33, 34, 40, 41, 42},
                                        {20, 43},
                                        {21, 44},
                                        {22, 35, 37, 45, 47, 49, 51},
                                        {24, 53}};

// The numbers that have their figure for themselves.
const Numbers kSingles = {2,  3,  5,  6,  7,  8,  11, 12, 13, 14, 15,
                          16, 17, 25, 26, 27, 28, 29, 30, 58, 59};

TEST(Families, AndTheNumbersOnTheirOwnAreAllNumbers) {
  Numbers all = kSingles;
  for (const Numbers& family : kFamilies) {
    all.insert(all.end(), family.begin(), family.end());
  }
  std::ranges::sort(all);
  Numbers expected(kNumbers);
  std::iota(expected.begin(), expected.end(), 1);
  EXPECT_EQ(all, expected);
}

class Family : public ::testing::TestWithParam<Numbers> {};

TEST_P(Family, DiffersInItsDateRanges) {
  std::set<DateRange> ranges;
  for (const std::int32_t number : GetParam()) {
    EXPECT_TRUE(ranges.insert(Services().ChartReportSetting(number)->range).second) << number;
  }
}

TEST_P(Family, DiffersInItsTitles) {
  std::set<std::string_view> titles;
  for (const std::int32_t number : GetParam()) {
    EXPECT_TRUE(titles.insert(Services().ChartReportSetting(number)->title).second) << number;
  }
}

TEST_P(Family, SharesItsOffersAndItsKindOfChart) {
  const ReportDefaults& first = *Services().ChartReportSetting(GetParam().front());
  for (const std::int32_t number : GetParam()) {
    const ReportDefaults& other = *Services().ChartReportSetting(number);
    EXPECT_EQ(other.ranges, first.ranges) << number;
    EXPECT_EQ(other.chart_type, first.chart_type) << number;
    EXPECT_EQ(other.has_chart, first.has_chart) << number;
  }
}

INSTANTIATE_TEST_SUITE_P(All, Family, ::testing::ValuesIn(kFamilies));

// What is scheduled lies ahead.
TEST(Families, ThePaymentCalendarsLookPastToday) {
  const Date today = DateSerial(2026, 3, 20);
  for (const std::int32_t number : {9, 10, 54}) {
    const auto range = static_cast<std::int32_t>(Services().ChartReportSetting(number)->range);
    EXPECT_GT(ComputedDateRange(range, 1, today).dtmToDate, today) << number;
  }
}

}  // namespace
}  // namespace vetlo
