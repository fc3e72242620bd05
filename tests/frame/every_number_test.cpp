// None of the report numbers stands under its title alone where a household has something to show.

#include <gtest/gtest.h>

#include "tests/support/drawing.h"
#include "tests/support/household.h"
#include "vetlo/services/catalogue_of_defaults.h"

namespace vetlo::testing {
namespace {

class NumberOfAHousehold : public ::testing::TestWithParam<std::int32_t> {
 protected:
  NumberOfAHousehold() : store_(HouseholdWithEveryRow()) {}

  // The row of a number as a report, and as a chart.
  void ShowReport() { drawing_.Show(*store_, GetParam(), SubjectOfRow(GetParam()), 1); }
  void ShowChart() { drawing_.Show(*store_, GetParam() + 100, SubjectOfRow(GetParam()), 1); }

  std::unique_ptr<Database> store_;
  Drawing drawing_;
};

TEST_P(NumberOfAHousehold, ShowsATableAsAReport) {
  ShowReport();
  EXPECT_NE(drawing_.ReportText().find("___"), std::string::npos) << drawing_.ReportText();
}

TEST_P(NumberOfAHousehold, ShowsDataAsAChartWhereItHasOne) {
  ShowChart();
  const ReportDefaults& report = AllReportDefaults()[static_cast<std::size_t>(GetParam()) - 1];
  EXPECT_EQ(drawing_.chart.Data().Items() > 0, report.has_chart);
}

INSTANTIATE_TEST_SUITE_P(Numbers, NumberOfAHousehold, ::testing::Range(1, 60));

}  // namespace
}  // namespace vetlo::testing
