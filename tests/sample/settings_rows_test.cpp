#include "quillmarsh/sample/settings_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sample/sample_stores.h"
#include "vetlo/platform/display.h"

namespace quillmarsh {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using vetlo::ChartOrReport;

constexpr std::int32_t kRangeOfMonths = 14;
constexpr std::int32_t kCustomRange = 15;

// A report, a chart that is opened with parameters, and a list.
const std::vector<SettingsDefaults> kCatalogue = {
    {1, ChartOrReport::kReport, vetlo::kPieChart, true, 2, 1, "Expenses by Category"},
    {25, ChartOrReport::kChart, vetlo::kLineChart, true, 11, 1, "Balance History of an Account"},
    {58, ChartOrReport::kReport, vetlo::kNothingChosen, false, 3, 1,
     "An Annual Budget Whose Title Is Longer Than a Name May Be"},
};

class SettingsRows : public ::testing::Test {
 protected:
  static Rows AllRows() {
    HouseholdPlan plan = PlanOf(1, 200);
    plan.catalogue = kCatalogue;
    vetlo::StoreBuilder builder;
    WriteSettingsRows(builder, plan);
    return RowsOf(*builder.Open(), "ChartReportSubType");
  }

  static Rows Favorites() {
    Rows rows = AllRows();
    std::erase_if(
        rows, [](const Row& row) { return row.Long("ChartReportType") != vetlo::kFavoriteGroup; });
    return rows;
  }

  // The report numbers of the rows that are no favourites, in the order of the rows.
  static std::vector<std::int32_t> Numbers() {
    std::vector<std::int32_t> numbers;
    for (const Row& row : AllRows()) {
      if (row.Long("ChartReportType") != vetlo::kFavoriteGroup) {
        numbers.push_back(row.Long("ChartReportSubTypeAttr"));
      }
    }
    return numbers;
  }

  // The report numbers of the favourites that store this parameter.
  static std::set<std::int32_t> NumbersWith(std::string_view parameter) {
    std::set<std::int32_t> numbers;
    for (const Row& row : Favorites()) {
      if (!row.IsNull(parameter)) {
        numbers.insert(row.Long("ChartReportSubTypeAttr"));
      }
    }
    return numbers;
  }
};

TEST_F(SettingsRows, HaveEveryNumberOfTheCatalogueOnce) {
  EXPECT_THAT(Numbers(), ElementsAre(1, 25, 58));
}

TEST_F(SettingsRows, CountUpFromOne) {
  std::int32_t number = 0;
  for (const Row& row : AllRows()) {
    EXPECT_EQ(row.Long("ChartReportSubTypeNumber"), ++number);
  }
}

TEST_F(SettingsRows, HoldTheDefaultsOfTheirNumber) {
  const Row row = AllRows().front();
  EXPECT_EQ(row.Text("ChartReportSubTypeName"), "Expenses by Category");
  EXPECT_EQ(row.Text("Title"), "Expenses by Category");
  EXPECT_EQ(row.Long("ChartOrReportType"), static_cast<std::int32_t>(ChartOrReport::kReport));
  EXPECT_EQ(row.Long("ChartType"), vetlo::kPieChart);
  EXPECT_TRUE(vetlo::ToBoolean(row["Legend"]));
  EXPECT_EQ(row.Long("DateRangeType"), 2);
  EXPECT_EQ(row.Long("DateRangeExtInfo"), 1);
}

TEST_F(SettingsRows, AreChartsWhereTheirNumberIsOneByDefault) {
  const Row row = AllRows()[1];
  EXPECT_EQ(row.Long("ChartOrReportType"), static_cast<std::int32_t>(ChartOrReport::kChart));
  EXPECT_EQ(row.Long("ChartType"), vetlo::kLineChart);
}

TEST_F(SettingsRows, CutTheNameButNotTheTitle) {
  const Row row = AllRows()[2];
  EXPECT_EQ(row.Text("ChartReportSubTypeName"),
            "An Annual Budget Whose Title Is Longer Than a Name");
  EXPECT_EQ(row.Text("Title"), kCatalogue[2].title);
}

TEST_F(SettingsRows, LeaveTheParametersToTheCallerInTheGroupThatTakesThem) {
  const Row row = AllRows()[1];
  EXPECT_EQ(row.Long("ChartReportType"), vetlo::kCallerParametersGroup);
  EXPECT_TRUE(row.IsNull("Parameter1"));
  EXPECT_TRUE(row.IsNull("Parameter2"));
}

TEST_F(SettingsRows, ShowExpensesAndListsInDifferentGroups) {
  EXPECT_NE(AllRows()[0].Long("ChartReportType"), AllRows()[2].Long("ChartReportType"));
}

TEST_F(SettingsRows, HaveFavoritesWithAParameterForEveryNumberThatTakesOne) {
  EXPECT_EQ(NumbersWith("Parameter1"), (std::set<std::int32_t>{25, 26, 27, 28, 29, 30}));
}

TEST_F(SettingsRows, HaveFavoritesWithASecondParameter) {
  EXPECT_EQ(NumbersWith("Parameter2"), (std::set<std::int32_t>{29, 30}));
}

TEST_F(SettingsRows, HaveAFavoriteOfTheLastMonths) {
  std::set<std::int32_t> months;
  for (const Row& row : Favorites()) {
    if (row.Long("DateRangeType") == kRangeOfMonths) {
      months.insert(row.Long("DateRangeExtInfo"));
    }
  }
  EXPECT_THAT(months, IsSupersetOf({6, 24}));
}

TEST_F(SettingsRows, StoreDatesForCustomDatesAlone) {
  for (const Row& row : AllRows()) {
    const bool custom = row.Long("DateRangeType") == kCustomRange;
    EXPECT_EQ(row.IsNull("FromDate"), !custom);
    EXPECT_EQ(row.IsNull("ToDate"), !custom);
  }
}

TEST_F(SettingsRows, HaveAFavoriteOfTheSixMonthsBeforeThisOne) {
  for (const Row& row : Favorites()) {
    if (row.Long("DateRangeType") == kCustomRange) {
      EXPECT_EQ(row.Day("FromDate"), vetlo::DateSerial(2025, 9, 1));
      EXPECT_EQ(row.Day("ToDate"), vetlo::DateSerial(2026, 2, 28));
      return;
    }
  }
  FAIL() << "no favourite with dates of its own";
}

TEST_F(SettingsRows, HaveFavoritesAsChartsOfEveryKind) {
  std::set<std::int32_t> kinds;
  for (const Row& row : Favorites()) {
    if (row.Long("ChartOrReportType") == static_cast<std::int32_t>(ChartOrReport::kChart)) {
      kinds.insert(row.Long("ChartType"));
    }
  }
  EXPECT_EQ(kinds, (std::set<std::int32_t>{vetlo::kLineChart, vetlo::kBarChart, vetlo::kPieChart}));
}

// The favourites' parameters are rows of the household whatever its size.
TEST_F(SettingsRows, HaveFavoritesAboutSomethingThatThereIs) {
  const auto store = StoreOf(PlanOf(1, 200));
  const std::map<std::int32_t, std::pair<std::string_view, std::string_view>> subjects = {
      {25, {"AccountNumber", "Account"}},
      {26, {"AccountNumber", "Account"}},
      {27, {"AccountItemNumber", "AccountItem"}},
      {28, {"PayeeNumber", "Payee"}},
      {29, {"CategoryNumber", "Category"}},
      {30, {"ClassificationItemNumber", "ClassificationItem"}}};
  for (const Row& row : Favorites()) {
    if (!row.IsNull("Parameter1")) {
      const auto& [column, table] = subjects.at(row.Long("ChartReportSubTypeAttr"));
      EXPECT_TRUE(NumbersOf(*store, table, column).contains(row.Long("Parameter1")));
    }
  }
}

}  // namespace
}  // namespace quillmarsh
