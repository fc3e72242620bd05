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

// A row of a table in which names are looked up, with the number of the wider one that holds it.
struct NamedRow {
  std::int32_t number = 0;
  std::string name;
  std::int32_t belongs_to = kNone;
};

// The first row of every table has the number 0, so that it is neither what is asked for nor what
// no number stands for.
void AddRows(SmallStore& store, const std::string& table, const std::string& belongs_to,
             const std::vector<NamedRow>& rows) {
  const std::string number = table + "Number";
  const std::string name = table + "Name";
  const auto add = [&](const NamedRow& row) {
    StoreBuilder::Values values = {{number, row.number}, {name, row.name}};
    if (!belongs_to.empty()) {
      values.emplace_back(belongs_to, row.belongs_to);
    }
    store.Insert(table, values);
  };
  add({0, "Nought", 0});
  std::ranges::for_each(rows, add);
}

// No two tables share a number but 0: a name that is looked up in the wrong one is not found.
SmallStore Household() {
  SmallStore store;
  store.Account(1, "Bank", kCheckingAccount);
  AddRows(store, "Payee", "", {{11, "Shop"}});
  AddRows(store, "Category", "CategoryType", {{21, "Pay", 0}, {22, "Food", 1}, {23, "Moved", 2}});
  AddRows(store, "SubCategory", "CategoryNumber",
          {{31, "Part", 21}, {32, "Part", 22}, {33, "Part", kNone}});
  AddRows(store, "Classification", "", {{41, "Person"}});
  AddRows(store, "ClassificationItem", "ClassificationNumber",
          {{51, "Ann", 41}, {52, "Ann", kNone}});
  AddRows(store, "ClassificationSubItem", "ClassificationItemNumber",
          {{61, "School", 51}, {62, "School", 52}, {63, "School", kNone}});
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
    ::testing::Values(TitleCase{"Payee", 28, 11, Empty{}, "Mine:Shop"},
                      TitleCase{"PayeeByText", 28, "11", Empty{}, "Mine:Shop"},
                      TitleCase{"PayeeTakesTheFirst", 28, 11, 0, "Mine:Shop"},
                      TitleCase{"PayeeNotThere", 28, kNone, Empty{}, "Mine"},
                      TitleCase{"PayeeOfNumberNought", 28, 0, Empty{}, "Mine:Nought"},
                      TitleCase{"Income", 29, 21, Empty{}, "Mine :Income Category: Pay"},
                      TitleCase{"Expense", 29, 22, Null{}, "Mine :Expense Category: Food"},
                      TitleCase{"OfNeitherType", 29, 23, Empty{}, "Mine :Expense Category: Moved"},
                      TitleCase{"CategoryNotThere", 29, kNone, Empty{}, "Mine"},
                      TitleCase{"IncomePart", 29, Empty{}, 31, "Mine :Income Category: Pay:Part"},
                      TitleCase{"ExpensePart", 29, 21, 32, "Mine :Expense Category: Food:Part"},
                      TitleCase{"PartNotThere", 29, 21, kNone, "Mine"},
                      TitleCase{"CategoryOfAPartNotThere", 29, 21, 33, "Mine"},
                      TitleCase{"SecondNoNumber", 29, 21, "part", "Mine :Income Category: Pay"},
                      TitleCase{"Item", 30, 51, Empty{}, "Mine:Person:Ann"},
                      TitleCase{"ItemNotThere", 30, kNone, Empty{}, "Mine"},
                      TitleCase{"ClassificationNotThere", 30, 52, Empty{}, "Mine"},
                      TitleCase{"SubItem", 30, Empty{}, 61, "Mine:Person:Ann:School"},
                      TitleCase{"SubItemNotThere", 30, 51, kNone, "Mine"},
                      TitleCase{"ItemOfASubItemNotThere", 30, 51, 63, "Mine"},
                      TitleCase{"ClassificationOfASubItemNotThere", 30, 51, 62, "Mine"}),
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
  drawing.Show(*store, 1, Empty{}, 11);
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
                       .category = 22,
                       .sub_category = 32,
                       .payee = 11,
                       .classification1_item = 51,
                       .classification1_sub_item = 61});
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
    ::testing::Values(TableCase{28, 11, Empty{}, "Mine:Shop", "900.00"},
                      TableCase{29, 22, Empty{}, "Mine :Expense Category: Food", "1,000.00"},
                      TableCase{29, 21, 32, "Mine :Expense Category: Food:Part", "1,000.00"},
                      TableCase{30, 51, Empty{}, "Mine:Person:Ann", "1,000.00"},
                      TableCase{30, Empty{}, 61, "Mine:Person:Ann:School", "1,000.00"}));

// A month that fails before its first amount is known takes no room.
TEST(HistoryReport, ThatFailsIsLaidOutForTheMonthsBeforeTheFailure) {
  TestRow row = RowOf(28, ChartOrReport::kReport);
  row.range = 0;
  const auto store = Household()
                         .Transaction({.type = kIncome,
                                       .date = Services().EarliestDate(),
                                       .total = 1,
                                       .account = 1,
                                       .payee = 11})
                         .Transaction({.type = kIncome, .total = 1, .payee = 11})
                         .Row(row)
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1, 11);
  // "Unassigned Date" is 15 characters wide.
  EXPECT_THAT(drawing.Puts("report", "SelTabs"), ElementsAre("283.5", "2278.5"));
}

}  // namespace
}  // namespace vetlo
