// A command that had to leave something out prints what it could, says what it left out and fails.

#include <sqlite3.h>

#include "tests/cli/quill.h"
#include "tests/support/household.h"

namespace vetlo::testing {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class LeftOutTest : public ::testing::Test {
 protected:
  void SetUp() override { WriteHouseholdOfEveryKind(store_); }

  // Damages the store as no program of ours would.
  void Damage(const std::string& sql) const {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(store_.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
  }

  TestFolder folder_;
  std::string store_ = folder_ / "home.qm";
};

constexpr const char* kNoAmount =
    "UPDATE TransactionRecord SET Total = 'x' WHERE TransactionRecordNumber = 1";

TEST_F(LeftOutTest, ShowPrintsTheTitleAndSaysWhatFailed) {
  Damage(kNoAmount);
  const ProgramRun run = Quill({"show", store_, "5", "--today", "2026-03-20"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("Net Worth"));
  EXPECT_THAT(run.out, Not(HasSubstr("Assets")));
  ExpectOneLine(run.err);
  EXPECT_THAT(run.err, HasSubstr("no amount: TransactionRecord.Total, row 1; mend it"));
  EXPECT_THAT(run.err, EndsWith("(failure 13)\n"));
}

TEST_F(LeftOutTest, AChartSaysItInsideTooInsteadOfThatThereIsNoData) {
  Damage(kNoAmount);
  const ProgramRun run = Quill({"report", store_, "5", "--chart"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("the figures could not be computed"));
  EXPECT_THAT(run.out, Not(HasSubstr("no data")));
}

TEST_F(LeftOutTest, AFigureIsPrintedAndCalledIncomplete) {
  Damage(kNoAmount);
  const ProgramRun run = Quill({"figure", store_, "TotalAssets"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, Not(IsEmpty()));
  EXPECT_THAT(run.err, HasSubstr("TransactionRecord.Total, row 1"));
}

TEST_F(LeftOutTest, ATraceIsPrintedWhole) {
  Damage(kNoAmount);
  const ProgramRun run = Quill({"trace", store_, "5", "--today", "2026-03-20"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, EndsWith("{\"on\":\"host\",\"return\":false}\n"));
  ExpectOneLine(run.err);
}

TEST_F(LeftOutTest, ATraceOfACallThatFailsIsATraceLikeAnyOther) {
  Damage("UPDATE ChartReportSubType SET Title = NULL");
  const ProgramRun run = Quill({"trace", store_, "5"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "{\"on\":\"host\",\"failure\":94}\n");
}

TEST_F(LeftOutTest, EachDistinctFailureIsALineOfItsOwn) {
  Damage(
      "UPDATE LatestPriceInfo SET Price = 'x' WHERE AccountItemNumber = 1;"
      "UPDATE TransactionRecord SET Quantity = 'x' WHERE AccountItemNumber = 1");
  const ProgramRun run = Quill({"show", store_, "13", "--today", "2026-03-20"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(std::ranges::count(run.err, '\n'), 2) << run.err;
}

TEST_F(LeftOutTest, ARowOfTheListIsListedAsFarAsItCanBeRead) {
  Damage("UPDATE ChartReportSubType SET ChartType = 'x' WHERE ChartReportSubTypeNumber = 105");
  const ProgramRun run = Quill({"list", store_});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("105"));
  ExpectOneLine(run.err);
  EXPECT_THAT(run.err, HasSubstr("ChartReportSubType.ChartType, row 105"));
}

TEST_F(LeftOutTest, ADamagedRowKeepsNobodyFromAnother) {
  Damage("UPDATE ChartReportSubType SET ChartType = 'x' WHERE ChartReportSubTypeNumber = 105");
  const ProgramRun run = Quill({"show", store_, "5", "--today", "2026-03-20"});
  EXPECT_EQ(run.status, 0) << run.err;
}

TEST_F(LeftOutTest, AValueThatEveryConditionPassesByIsToldToo) {
  for (const std::string damage :
       {"TransactionDate = '2026-01-31'", "AccountNumber = 'x'", "PayeeNumber = 5000000000"}) {
    Damage("UPDATE TransactionRecord SET " + damage + " WHERE TransactionRecordNumber = 1");
    const std::string column = damage.substr(0, damage.find(' '));
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"figure", store_, "TotalAssets"},
          {"show", store_, "5", "--today", "2026-03-20"},
          {"trace", store_, "5", "--today", "2026-03-20"}}) {
      const ProgramRun run = Quill(words);
      EXPECT_EQ(run.status, 1) << words[0] << " " << damage;
      EXPECT_THAT(run.err, HasSubstr("TransactionRecord." + column + ", row 1; mend it"));
    }
    Damage("UPDATE TransactionRecord SET " + column + " = 1 WHERE TransactionRecordNumber = 1");
  }
}

struct OutOfCalendar {
  const char* name;
  std::vector<std::string> words;

  friend std::ostream& operator<<(std::ostream& out, const OutOfCalendar& of) {
    return out << of.name;
  }
};

class RangeOutOfTheCalendar : public LeftOutTest,
                              public ::testing::WithParamInterface<OutOfCalendar> {};

TEST_P(RangeOutOfTheCalendar, IsCalledThatAndNothingElse) {
  std::vector<std::string> words = GetParam().words;
  words.insert(words.begin() + 1, store_);
  const ProgramRun run = Quill(words);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  ExpectOneLine(run.err);
  EXPECT_THAT(run.err, StartsWith("quillmarsh: the date range leaves the calendar"));
}

INSTANTIATE_TEST_SUITE_P(
    Of, RangeOutOfTheCalendar,
    ::testing::Values(
        OutOfCalendar{"AReport", {"report", "1", "--range", "last-n-months", "--n", "25000"}},
        OutOfCalendar{"AChart",
                      {"report", "13", "--chart", "--range", "last-n-months", "--n", "30000"}},
        OutOfCalendar{"ADayTooEarly", {"report", "52", "--today", "0100-01-15"}}),
    [](const auto& of) { return of.param.name; });

TEST_F(LeftOutTest, ADateThatIsNoneIsNamed) {
  Damage("UPDATE ChartReportSubType SET DateRangeType = 15, FromDate = 'abc'");
  const ProgramRun run = Quill({"show", store_, "1"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("no date: ChartReportSubType.FromDate, row 1"));
}

}  // namespace
}  // namespace vetlo::testing
