// What a history or a figure is about must be there: by show, report, favorite and figure.

#include <gmock/gmock.h>

#include "tests/cli/quill.h"
#include "tests/support/household.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

class Subjects : public ::testing::Test {
 protected:
  Subjects() { WriteHouseholdOfEveryKind(store_); }

  // The words with the store behind the first of them.
  ProgramRun QuillOn(Words words) const {
    words.insert(words.begin() + 1, store_);
    return Quill(words);
  }

  std::string Refusal(const Words& words) const {
    const ProgramRun run = QuillOn(words);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    ExpectOneLine(run.err);
    return run.err;
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "home.qm";
};

struct SubjectCase {
  const char* name;
  const char* report;
  Words there;
  Words missing;
  const char* told;
};

class EverySubject : public Subjects, public ::testing::WithParamInterface<SubjectCase> {
 protected:
  static Words With(const Words& words, const Words& parameters) {
    Words all = words;
    all.insert(all.end(), parameters.begin(), parameters.end());
    return all;
  }
};

TEST_P(EverySubject, IsDrawnWhereItIsThere) {
  const SubjectCase& subject = GetParam();
  for (const Words& words : {Words{"report", subject.report}, Words{"show", subject.report}}) {
    const ProgramRun run = QuillOn(With(words, subject.there));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out, "");
  }
}

TEST_P(EverySubject, IsRefusedWithWhatThereIsWhereItIsNot) {
  const SubjectCase& subject = GetParam();
  const std::string told = "quillmarsh: " + std::string(subject.told) + "\n";
  EXPECT_EQ(Refusal(With({"report", subject.report}, subject.missing)), told);
  EXPECT_EQ(Refusal(With({"show", subject.report}, subject.missing)), told);
  EXPECT_EQ(Refusal(With({"favorite", subject.report, "Mine"}, subject.missing)), told);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, EverySubject,
    ::testing::Values(
        SubjectCase{"Account",
                    "25",
                    {"--parameter1", "1"},
                    {"--parameter1", "77"},
                    "there is no account 77; there are 1 Everyday, 2 Card, 3 Loan, 4 Lent, "
                    "5 Broker, 6 House"},
        SubjectCase{"InvestmentAccount",
                    "26",
                    {"--parameter1", "5"},
                    {"--parameter1", "7"},
                    "there is no investment account 7; there are 5 Broker"},
        SubjectCase{"Investment",
                    "27",
                    {"--parameter1", "1"},
                    {"--parameter1", "-1"},
                    "there is no investment -1; there are 1 Alder"},
        SubjectCase{"Payee",
                    "28",
                    {"--parameter1", "1"},
                    {"--parameter1", "0"},
                    "there is no payee 0; there are 1 Corner Shop"},
        SubjectCase{"Category",
                    "29",
                    {"--parameter1", "2"},
                    {"--parameter1", "3"},
                    "there is no category 3; there are 1 Food, 2 Salary"},
        SubjectCase{"SubCategory",
                    "29",
                    {"--parameter2", "1"},
                    {"--parameter1", "1", "--parameter2", "2"},
                    "there is no subcategory 2; there are 1 Bakery"},
        SubjectCase{"CategoryBesideNoSubCategory",
                    "29",
                    {"--parameter1", "1", "--parameter2", "none"},
                    {"--parameter1", "4", "--parameter2", "none"},
                    "there is no category 4; there are 1 Food, 2 Salary"},
        SubjectCase{"Item",
                    "30",
                    {"--parameter1", "1"},
                    {"--parameter1", "9"},
                    "there is no classification item 9; there are 1 Ann"},
        SubjectCase{"SubItem",
                    "30",
                    {"--parameter1", "9", "--parameter2", "1"},
                    {"--parameter2", "9"},
                    "there is no classification sub-item 9; there are 1 School"}),
    [](const auto& test) { return test.param.name; });

TEST_F(Subjects, ThatAreNotGivenAreAskedForWithWhatThereIs) {
  EXPECT_EQ(Refusal({"report", "29"}),
            "quillmarsh: report number 29 is the history of a category: --parameter1 its "
            "CategoryNumber, or --parameter2 a SubCategoryNumber; there are 1 Food, 2 Salary\n");
  EXPECT_EQ(Refusal({"report", "28", "--parameter1", "Corner Shop"}),
            "quillmarsh: report number 28 is the history of a payee: --parameter1 its PayeeNumber; "
            "what was given is no such number; there are 1 Corner Shop\n");
}

TEST_F(Subjects, OfAnotherReportAreNotLookedAt) {
  EXPECT_EQ(QuillOn({"report", "5", "--parameter1", "77"}).status, 0);
}

TEST_F(Subjects, MayBeAnAccountThatHoldsNoInvestments) {
  const ProgramRun run = QuillOn({"report", "26", "--parameter1", "1"});
  EXPECT_EQ(run.status, 0) << run.err;
}

TEST_F(Subjects, AreNotRefusedByATrace) {
  const ProgramRun run = QuillOn({"trace", "25", "--parameter1", "77"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, EndsWith("{\"on\":\"host\",\"return\":false}\n"));
}

TEST_F(Subjects, AreNamedUpToADozen) {
  RunSql(store_,
         "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < 43) "
         "INSERT INTO Payee SELECT i, 'Payee ' || i FROM n");
  EXPECT_THAT(Refusal({"report", "28", "--parameter1", "99"}),
              EndsWith(", 11 Payee 11, 12 Payee 12 and 31 more\n"));
}

TEST_F(Subjects, AreMissedWhereThereIsNone) {
  RunSql(store_, "DELETE FROM Payee");
  EXPECT_EQ(Refusal({"report", "28", "--parameter1", "1"}),
            "quillmarsh: there is no payee 1; the store has none\n");
}

TEST_F(Subjects, AreNamedWithoutWhatWouldTurnTheTerminal) {
  RunSql(store_, "UPDATE Payee SET PayeeName = 'a' || char(27) || '[31m'");
  EXPECT_EQ(Refusal({"report", "28", "--parameter1", "9"}),
            "quillmarsh: there is no payee 9; there are 1 a\uFFFD[31m\n");
}

TEST_F(Subjects, AreNamedAsFarAsTheyCanBeRead) {
  RunSql(store_, "UPDATE Account SET AccountType = 'abc' WHERE AccountNumber < 5");
  EXPECT_THAT(Refusal({"report", "26", "--parameter1", "9"}), EndsWith("there are 5 Broker\n"));
}

// ---- rows that store their parameters

TEST_F(Subjects, OfAFavoriteAreThoseThatItStores) {
  ASSERT_EQ(QuillOn({"favorite", "25", "Everyday's Year", "--parameter1", "1"}).status, 0);
  EXPECT_EQ(QuillOn({"show", "Everyday's Year"}).status, 0);
  RunSql(store_, "DELETE FROM Account WHERE AccountNumber < 5");
  EXPECT_EQ(Refusal({"show", "Everyday's Year"}),
            "quillmarsh: 'Everyday's Year' is the history of an account, but there is no account "
            "1; there are 5 Broker, 6 House\n");
}

TEST_F(Subjects, OfAFavoriteMayBeMissing) {
  ASSERT_EQ(QuillOn({"favorite", "28", "Corner", "--parameter1", "1"}).status, 0);
  RunSql(store_, "UPDATE ChartReportSubType SET Parameter1 = NULL WHERE ChartReportType = 4");
  EXPECT_EQ(Refusal({"show", "Corner"}),
            "quillmarsh: 'Corner' is the history of a payee, but its settings name none\n");
}

// ---- figures

TEST_F(Subjects, OfAFigureMustBeThere) {
  EXPECT_EQ(Refusal({"figure", "TotalExpensesOfCategory", "--number", "3"}),
            "quillmarsh: there is no category 3; there are 1 Food, 2 Salary\n");
  EXPECT_EQ(Refusal({"figure", "TotalExpensesOfSubCategory", "--number", "2"}),
            "quillmarsh: there is no subcategory 2; there are 1 Bakery\n");
  EXPECT_EQ(QuillOn({"figure", "TotalExpensesOfCategory", "--number", "1"}).out, "45.50\n");
}

TEST_F(Subjects, OfWhatHasNoSubcategoryAreCategories) {
  EXPECT_EQ(QuillOn({"figure", "TotalIncomeOfSubCategory", "--number", "2", "--unassigned"}).out,
            "900.00\n");
  EXPECT_THAT(Refusal({"figure", "TotalIncomeOfSubCategory", "--number", "3", "--unassigned"}),
              StartsWith("quillmarsh: there is no category 3; "));
}

TEST_F(Subjects, OfAFigureInJsonAreRefusedInALineAsWell) {
  EXPECT_THAT(Refusal({"figure", "TotalIncomeOfCategory", "--number", "9", "--format", "json"}),
              HasSubstr("there is no category 9"));
}

}  // namespace
}  // namespace vetlo::testing
