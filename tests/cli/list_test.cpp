// The list of reports, and what it says of rows that somebody has changed.

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/cli/quill.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Words = std::vector<std::string>;

constexpr int kReportNumbers = 59;

class SampleList : public ::testing::Test {
 protected:
  SampleList() {
    EXPECT_EQ(
        Quill({"sample", store_, "--years", "1", "--transactions", "200", "--until", "2026-03-20"})
            .status,
        0);
  }

  // The line of a row in the list, without the blanks before its number.
  std::string LineOf(const std::string& number) const {
    std::istringstream list(Quill({"list", store_}).out);
    for (std::string line; std::getline(list, line);) {
      std::istringstream words(line);
      std::string first;
      if (words >> first && first == number) {
        return line.substr(line.find(number));
      }
    }
    return "";
  }

  void Do(Words words) const {
    words.insert(words.begin() + 1, store_);
    const ProgramRun run = Quill(words);
    EXPECT_EQ(run.status, 0) << run.err;
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "home.qm";
};

TEST_F(SampleList, HasEveryReportNumberUnderItsOwnNumber) {
  EXPECT_EQ(LineOf("5"), "5  Net Worth                                  report      Up to Today");
  for (int number = 1; number <= kReportNumbers; ++number) {
    EXPECT_NE(LineOf(std::to_string(number)), "") << number;
  }
}

TEST_F(SampleList, HasNoRowThatIsCustomized) {
  EXPECT_THAT(Quill({"list", store_}).out, Not(HasSubstr("customized")));
}

TEST_F(SampleList, IsWhatResettingEveryRowGives) {
  const auto settings = [&] {
    std::vector<std::string> rows;
    for (int number = 1; number <= kReportNumbers; ++number) {
      rows.push_back(ReadStoredBytes(store_, number).row);
    }
    return rows;
  };
  const auto before = settings();
  for (int number = 1; number <= kReportNumbers; ++number) {
    Do({"reset", std::to_string(number)});
  }
  EXPECT_EQ(settings(), before);
}

TEST_F(SampleList, MarksARowAsLongAsItDiffersFromItsDefaults) {
  Do({"customize", "5", "--as", "chart"});
  EXPECT_EQ(LineOf("5"),
            "5  Net Worth                                  bar chart   Up to Today  (customized)");
  EXPECT_THAT(LineOf("6"), Not(HasSubstr("customized")));
  Do({"customize", "5", "--as", "report"});
  EXPECT_THAT(LineOf("5"), Not(HasSubstr("customized")));
}

TEST_F(SampleList, MarksEveryKindOfChange) {
  const std::vector<Words> changes = {{"--as", "chart"},
                                      {"--kind", "line"},
                                      {"--legend", "off"},
                                      {"--title", "Ours"},
                                      {"--range", "all-dates"}};
  for (const Words& change : changes) {
    Words words = {"customize", "1"};
    words.insert(words.end(), change.begin(), change.end());
    Do(words);
    EXPECT_THAT(LineOf("1"), HasSubstr("customized")) << change.front();
    Do({"reset", "1"});
    EXPECT_THAT(LineOf("1"), Not(HasSubstr("customized"))) << change.front();
  }
}

TEST_F(SampleList, MarksNoFavorite) {
  Do({"customize", "5", "--as", "chart"});
  Do({"favorite", "5", "Mine"});
  EXPECT_THAT(LineOf("79"), ::testing::StartsWith("79  Mine"));
  EXPECT_THAT(LineOf("79"), Not(HasSubstr("customized")));
}

TEST_F(SampleList, ListsARowThatSomebodyDamaged) {
  RunSql(store_,
         "UPDATE ChartReportSubType SET DateRangeType = 'abc' WHERE ChartReportSubTypeNumber = 5");
  EXPECT_THAT(LineOf("5"), HasSubstr("Net Worth"));
  EXPECT_NE(LineOf("6"), "");
}

}  // namespace
}  // namespace vetlo::testing
