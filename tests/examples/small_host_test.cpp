#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/program.h"

namespace vetlo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

// The example host and the program lie in one folder, and the component with them.
std::string Example() {
  return (std::filesystem::path(PROGRAM).parent_path() / "small_host").string();
}

class SmallHost : public ::testing::Test {
 protected:
  SmallHost() : store_(folder_ / "home.qm") {
    const ProgramRun made =
        RunProgram(PROGRAM, {"sample", store_, "--years", "1", "--transactions", "400"});
    EXPECT_EQ(made.status, 0) << made.err;
  }

  TestFolder folder_;
  std::string store_;
};

TEST_F(SmallHost, DrawsAReportAndAChartThroughTheEntryPoints) {
  const ProgramRun figure = RunProgram(PROGRAM, {"figure", store_, "TotalAssets"});
  ASSERT_EQ(figure.status, 0) << figure.err;
  const std::string assets = figure.out.substr(0, figure.out.find('\n'));
  ASSERT_EQ(RunProgram(PROGRAM, {"favorite", store_, "5", "Bars"}).status, 0);
  const ProgramRun bars = RunProgram(PROGRAM, {"customize", store_, "Bars", "--as", "chart"});
  ASSERT_EQ(bars.out.find("Changed 79  Bars: bar chart"), 0U) << bars.out << bars.err;
  const ProgramRun drawn = RunProgram(Example(), {store_, "5", "79"});
  EXPECT_EQ(drawn.status, 0) << drawn.err;
  EXPECT_THAT(drawn.out, AllOf(HasSubstr("Net Worth\n"), HasSubstr("Total Assets\t"),
                               HasSubstr(assets + "\n"), HasSubstr("\n\tTotal Liabilities\t")));
}

TEST_F(SmallHost, SaysWhatWasWrong) {
  const ProgramRun nowhere = RunProgram(Example(), {folder_ / "none.qm", "5", "64"});
  EXPECT_EQ(nowhere.status, 1);
  EXPECT_EQ(nowhere.err, "small_host: there is no such file\n");
  EXPECT_EQ(RunProgram(Example(), {}).status, 2);
}

}  // namespace
}  // namespace vetlo::testing
