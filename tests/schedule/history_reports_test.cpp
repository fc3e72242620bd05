#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <tuple>
#include <utility>

#include "tests/support/drawing.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

// The histories as their report and their chart receive them.

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kNone = 99;

SmallStore Household() {
  SmallStore store;
  store.Account(1, "Bank", kCheckingAccount)
      .Insert("Payee", {{"PayeeNumber", 1}, {"PayeeName", "Shop"}})
      .Insert("Category", {{"CategoryNumber", 1}, {"CategoryName", "Pay"}, {"CategoryType", 0}})
      .Insert("Category", {{"CategoryNumber", 2}, {"CategoryName", "Food"}, {"CategoryType", 1}})
      .Insert("Category", {{"CategoryNumber", 3}, {"CategoryName", "Moved"}, {"CategoryType", 2}});
  for (const auto& [number, category] : {std::pair{1, 1}, std::pair{2, 2}, std::pair{3, kNone}}) {
    store.Insert(
        "SubCategory",
        {{"SubCategoryNumber", number}, {"SubCategoryName", "Part"}, {"CategoryNumber", category}});
  }
  store.Insert("Classification", {{"ClassificationNumber", 1}, {"ClassificationName", "Person"}});
  for (const auto& [number, classification] : {std::pair{1, 1}, std::pair{2, kNone}}) {
    store.Insert("ClassificationItem", {{"ClassificationItemNumber", number},
                                        {"ClassificationItemName", "Ann"},
                                        {"ClassificationNumber", classification}});
  }
  for (const auto& [number, item] : {std::pair{1, 1}, std::pair{2, 2}, std::pair{3, kNone}}) {
    store.Insert("ClassificationSubItem", {{"ClassificationSubItemNumber", number},
                                           {"ClassificationSubItemName", "School"},
                                           {"ClassificationItemNumber", item}});
  }
  return store;
}

TestRow RowOf(std::int32_t report_number, ChartOrReport output) {
  return {.number = 1,
          .report_number = report_number,
          .output = output,
          .title = "Mine",
          .range = 15,
          .from = Day(2026, 3, 15),
          .to = Day(2026, 5, 10),
          .group = kCallerParametersGroup};
}

const std::string kCaption = "2026/03/15 Through 2026/05/10";

// ---- title lines

struct TitleCase {
  std::string name;
  std::int32_t report_number = 0;
  Variant parameter1;
  Variant parameter2;
  std::string title;
};

void PrintTo(const TitleCase& a_case, std::ostream* out) { *out << a_case.name; }

class HistoryTitle : public ::testing::TestWithParam<TitleCase> {};

// Without a transaction it stands over nothing but the caption.
TEST_P(HistoryTitle, StandsInTheReport) {
  const auto store =
      Household().Row(RowOf(GetParam().report_number, ChartOrReport::kReport)).Open();
  Drawing drawing;
  drawing.Show(*store, 1, GetParam().parameter1, GetParam().parameter2);
  EXPECT_EQ(drawing.report.Text(),
            "\r\n" + GetParam().title + "\r\n\r\n" + kCaption + "\r\n\r\n\r\n");
}

TEST_P(HistoryTitle, StandsOverTheChart) {
  const auto store = Household().Row(RowOf(GetParam().report_number, ChartOrReport::kChart)).Open();
  Drawing drawing;
  drawing.Show(*store, 1, GetParam().parameter1, GetParam().parameter2);
  EXPECT_EQ(drawing.chart.Title(), GetParam().title);
  EXPECT_EQ(drawing.chart.Footnote(), kCaption);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    OfEverySubject, HistoryTitle,
    ::testing::Values(TitleCase{"Payee", 28, 1, Empty{}, "Mine:Shop"},
                      TitleCase{"PayeeByText", 28, "1", Empty{}, "Mine:Shop"},
                      TitleCase{"PayeeTakesTheFirst", 28, 1, 2, "Mine:Shop"},
                      TitleCase{"PayeeNotThere", 28, kNone, Empty{}, "Mine"},
                      TitleCase{"Income", 29, 1, Empty{}, "Mine :Income Category: Pay"},
                      TitleCase{"Expense", 29, 2, Null{}, "Mine :Expense Category: Food"},
                      TitleCase{"OfNeitherType", 29, 3, Empty{}, "Mine :Expense Category: Moved"},
                      TitleCase{"CategoryNotThere", 29, kNone, Empty{}, "Mine"},
                      TitleCase{"IncomePart", 29, Empty{}, 1, "Mine :Income Category: Pay:Part"},
                      TitleCase{"ExpensePart", 29, 1, 2, "Mine :Expense Category: Food:Part"},
                      TitleCase{"PartNotThere", 29, 1, kNone, "Mine"},
                      TitleCase{"CategoryOfAPartNotThere", 29, 1, 3, "Mine"},
                      TitleCase{"SecondNoNumber", 29, 1, "part", "Mine :Income Category: Pay"},
                      TitleCase{"Item", 30, 1, Empty{}, "Mine:Person:Ann"},
                      TitleCase{"ItemNotThere", 30, kNone, Empty{}, "Mine"},
                      TitleCase{"ClassificationNotThere", 30, 2, Empty{}, "Mine"},
                      TitleCase{"SubItem", 30, Empty{}, 1, "Mine:Person:Ann:School"},
                      TitleCase{"SubItemNotThere", 30, 1, kNone, "Mine"},
                      TitleCase{"ItemOfASubItemNotThere", 30, 1, 3, "Mine"},
                      TitleCase{"ClassificationOfASubItemNotThere", 30, 1, 2, "Mine"}),
    [](const auto& the_case) { return the_case.param.name; });

// ---- no subject

class HistoryWithoutASubject
    : public ::testing::TestWithParam<std::tuple<std::int32_t, std::string>> {
 protected:
  static void Show(Drawing& drawing, ChartOrReport output) {
    const auto& [number, second] = GetParam();
    const auto store = Household().Row(RowOf(number, output)).Open();
    EXPECT_EQ(drawing.TryToShow(*store, 1, "first", Variant(second)), 0);
  }
};

TEST_P(HistoryWithoutASubject, IsAnEmptyReport) {
  Drawing drawing;
  Show(drawing, ChartOrReport::kReport);
  EXPECT_EQ(drawing.report.Text(), "");
  EXPECT_TRUE(drawing.report.Locked());
}

TEST_P(HistoryWithoutASubject, IsAChartOfTitleAndFootnote) {
  Drawing drawing;
  Show(drawing, ChartOrReport::kChart);
  EXPECT_EQ(drawing.chart.Title(), "Mine");
  EXPECT_EQ(drawing.chart.Footnote(), kCaption);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, HistoryWithoutASubject,
                         ::testing::Combine(::testing::Values(28, 29, 30),
                                            ::testing::Values("", "second")));

// A payee's history takes the first parameter alone.
TEST(PayeeHistoryReport, IsEmptyWhereOnlyTheSecondConverts) {
  const auto store = Household().Row(RowOf(28, ChartOrReport::kReport)).Open();
  Drawing drawing;
  drawing.Show(*store, 1, Empty{}, 1);
  EXPECT_EQ(drawing.report.Text(), "");
}

// ---- tables

SmallStore Moved() {
  SmallStore store = Household();
  const auto add = [&](Date date, std::int32_t type, double total, std::int32_t record_type) {
    store.Transaction({.type = type,
                       .date = date,
                       .total = total,
                       .account = 1,
                       .record_type = record_type,
                       .category = 2,
                       .sub_category = 2,
                       .payee = 1,
                       .classification1_item = 1,
                       .classification1_sub_item = 1});
  };
  add(Day(2026, 3, 20), kExpense, 45.5, kOrdinaryRecord);
  add(Day(2026, 5, 1), kIncome, 900, kOrdinaryRecord);
  add(Day(2026, 5, 2), kIncome, 100, kSplitLine);
  return store;
}

struct TableCase {
  std::int32_t report_number = 0;
  Variant parameter1;
  Variant parameter2;
  std::string title;
  std::string may;
};

void PrintTo(const TableCase& a_case, std::ostream* out) { *out << a_case.title; }

class HistoryTable : public ::testing::TestWithParam<TableCase> {};

// A text that ends at the right edge of a column of so many characters.
std::string AtRight(std::size_t width, const std::string& text) {
  return std::string(width + 1 - text.size(), ' ') + text;
}

TEST_P(HistoryTable, IsThisTextWithoutATotal) {
  const auto store = Moved().Row(RowOf(GetParam().report_number, ChartOrReport::kReport)).Open();
  Drawing drawing;
  drawing.Show(*store, 1, GetParam().parameter1, GetParam().parameter2);
  const std::size_t width = std::max<std::size_t>(6, GetParam().may.size());
  EXPECT_EQ(drawing.report.Text(),
            "\r\n" + GetParam().title + "\r\n\r\n" + kCaption + "\r\n\r\n\r\n" +  //
                "Date Range\t" + AtRight(width, "Total") + "\r\n" +               //
                std::string(21 + width + 3, '_') + "\r\n\r\n" +                   //
                "2026/03/15-2026/03/31\t" + AtRight(width, "-45.50") + "\r\n" +   //
                "2026/05/01-2026/05/10\t" + AtRight(width, GetParam().may));
}

TEST_P(HistoryTable, IsAChartOfItsMonths) {
  const auto store = Moved().Row(RowOf(GetParam().report_number, ChartOrReport::kChart)).Open();
  Drawing drawing;
  drawing.Show(*store, 1, GetParam().parameter1, GetParam().parameter2);
  EXPECT_EQ(drawing.chart.Title(), GetParam().title);
  EXPECT_THAT(drawing.Puts("chart", "ColumnLabel"),
              ElementsAre("\"2026/03/15-2026/03/31\"", "\"2026/05/01-2026/05/10\""));
  EXPECT_EQ(drawing.chart.Footnote(), kCaption);
}

INSTANTIATE_TEST_SUITE_P(
    OfEverySubject, HistoryTable,
    ::testing::Values(TableCase{28, 1, Empty{}, "Mine:Shop", "900.00"},
                      TableCase{29, 2, Empty{}, "Mine :Expense Category: Food", "1,000.00"},
                      TableCase{29, 1, 2, "Mine :Expense Category: Food:Part", "1,000.00"},
                      TableCase{30, 1, Empty{}, "Mine:Person:Ann", "1,000.00"},
                      TableCase{30, Empty{}, 1, "Mine:Person:Ann:School", "1,000.00"}));

// A month that fails before its first amount is known takes no room.
TEST(HistoryReport, ThatFailsIsLaidOutForTheMonthsBeforeTheFailure) {
  TestRow row = RowOf(28, ChartOrReport::kReport);
  row.range = 0;
  const auto store = Household()
                         .Transaction({.type = kIncome,
                                       .date = Services().EarliestDate(),
                                       .total = 1,
                                       .account = 1,
                                       .payee = 1})
                         .Transaction({.type = kIncome, .total = 1, .payee = 1})
                         .Row(row)
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1, 1);
  // "Unassigned Date" is 15 characters wide.
  EXPECT_THAT(drawing.Puts("report", "SelTabs"), ElementsAre("283.5", "2278.5"));
}

}  // namespace
}  // namespace vetlo
