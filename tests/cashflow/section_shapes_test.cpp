#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "tests/cashflow/cash_household.h"
#include "tests/support/raises.h"
#include "vetlo/cashflow/category_reports.h"

// Which rows a section has, and where a heading and a blank line stand among them, for the three
// routines that list categories. A store has records of one direction alone, so that the section
// of the other stays empty.

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAreArray;

constexpr std::int32_t kOwnNumber = 1;
constexpr std::int32_t kOtherNumber = 2;
constexpr std::int32_t kNeitherNumber = 3;

using Routine = Currency (*)(Database&, Date, Date, AmountRows&, ChartOrReport);

struct Words {
  std::string name;
  std::int32_t record_type;
  std::int32_t own_category_type;
  std::int32_t other_category_type;
  Routine alone;
  std::string own_heading;
  std::string other_heading;
  std::string heading;
  std::string unassigned;
  std::string rest;
  std::string total;
  double chart_sign;  // of the rows beside the other direction
};

void PrintTo(const Words& words, std::ostream* out) { *out << words.name; }

const Words kIncomeSide = {"Income",           kIncome,          kIncomeCategory,
                           kExpenseCategory,   IncomeByCategory, "Income Category",
                           "Expense Category", "Income",         "Income - Unassigned",
                           "All Other Income", "Total Income",   1};
const Words kExpensesSide = {"Expenses",           kExpense,           kExpenseCategory,
                             kIncomeCategory,      ExpensesByCategory, "Expense Category",
                             "Income Category",    "Expenses",         "Expenses - Unassigned",
                             "All Other Expenses", "Total Expenses",   -1};

enum class Kind {
  kOwnHeading,
  kOtherHeading,
  kHeading,
  kBlank,
  kOwn,
  kOther,
  kUnassigned,
  kRest,
  kTotal
};

struct Piece {
  Kind kind;
  double amount = -1;
};

const Piece kOwnHead = {Kind::kOwnHeading};
const Piece kOtherHead = {Kind::kOtherHeading};
const Piece kHead = {Kind::kHeading};
const Piece kBlankLine = {Kind::kBlank};

Piece Own(double amount) { return {Kind::kOwn, amount}; }
Piece Other(double amount) { return {Kind::kOther, amount}; }
Piece Unassigned(double amount) { return {Kind::kUnassigned, amount}; }
Piece Rest(double amount) { return {Kind::kRest, amount}; }
Piece Total(double amount) { return {Kind::kTotal, amount}; }

std::string LabelOf(Kind kind, const Words& words) {
  switch (kind) {
    case Kind::kOwnHeading:
      return words.own_heading;
    case Kind::kOtherHeading:
      return words.other_heading;
    case Kind::kHeading:
      return words.heading;
    case Kind::kBlank:
      return "";
    case Kind::kOwn:
      return "Own";
    case Kind::kOther:
      return "Other";
    case Kind::kUnassigned:
      return words.unassigned;
    case Kind::kRest:
      return words.rest;
    case Kind::kTotal:
      return words.total;
  }
  return "?";
}

std::vector<ShownRow> RowsOf(const std::vector<Piece>& pieces, const Words& words,
                             double sign = 1) {
  std::vector<ShownRow> rows;
  for (const Piece& piece : pieces) {
    rows.push_back({sign * piece.amount, LabelOf(piece.kind, words)});
  }
  return rows;
}

// Amounts of the records, 0 where there is none; "folded" is on a category that no pass lists.
struct Amounts {
  double own = 0;
  double other = 0;
  double unassigned = 0;
  double folded = 0;

  [[nodiscard]] double Sum() const { return own + other + unassigned + folded; }
};

// What the routines show; nothing at all means that they fail.
struct Shape {
  std::string name;
  Amounts amounts;
  std::vector<Piece> alone;      // one direction alone
  std::vector<Piece> both;       // income and expenses
  std::vector<Piece> cash_flow;  // the cash flow
  std::vector<Piece> chart;      // all three
};

void PrintTo(const Shape& shape, std::ostream* out) { *out << shape.name; }

const std::vector<Shape> kShapes = {
    {"Nothing", {}, {}, {}, {}, {}},
    {"OwnCategories",
     {.own = 60},
     {kOwnHead, Own(60)},
     {kHead, kBlankLine, Own(60), kBlankLine, Total(60)},
     {kHead, kBlankLine, Own(60), kBlankLine, Total(60)},
     {Own(60)}},
    {"OtherCategoriesAlone",
     {.other = 60},
     {kOtherHead, Other(60)},
     {kBlankLine, Other(60), kBlankLine, Total(60)},
     {kHead, kBlankLine, Other(60), kBlankLine, Total(60)},
     {Other(60)}},
    {"OwnAndOtherCategories",
     {.own = 60, .other = 40},
     {kOwnHead, Own(60), kOtherHead, Other(40)},
     {kHead, kBlankLine, Own(60), kBlankLine, Other(40), kBlankLine, Total(100)},
     {kHead, kBlankLine, Own(60), Other(40), kBlankLine, Total(100)},
     {Own(60), Other(40)}},
    {"UnassignedAlone",
     {.unassigned = 60},
     {kBlankLine, Unassigned(60)},
     {kBlankLine, Unassigned(60), kBlankLine, Total(60)},
     {kHead, kBlankLine, Unassigned(60), kBlankLine, Total(60)},
     {Unassigned(60)}},
    {"OwnCategoriesAndUnassigned",
     {.own = 60, .unassigned = 40},
     {kOwnHead, Own(60), kBlankLine, Unassigned(40)},
     {kHead, kBlankLine, Own(60), kBlankLine, Unassigned(40), kBlankLine, Total(100)},
     {kHead, kBlankLine, Own(60), Unassigned(40), kBlankLine, Total(100)},
     {Own(60), Unassigned(40)}},
    {"RestAlone",
     {.folded = 60},
     {kBlankLine, Rest(60)},
     {kBlankLine, Rest(60), kBlankLine, Total(60)},
     {kHead, kBlankLine, Rest(60), kBlankLine, Total(60)},
     {Rest(60)}},
    {"OwnCategoriesAndRest",
     {.own = 60, .folded = 40},
     {kOwnHead, Own(60), kBlankLine, Rest(40)},
     {kHead, kBlankLine, Own(60), kBlankLine, Rest(40), kBlankLine, Total(100)},
     {kHead, kBlankLine, Own(60), Rest(40), kBlankLine, Total(100)},
     {Own(60), Rest(40)}},
    {"OtherCategoriesAndRest",
     {.other = 60, .folded = 40},
     {kOtherHead, Other(60), kBlankLine, Rest(40)},
     {kBlankLine, Other(60), kBlankLine, Rest(40), kBlankLine, Total(100)},
     {kHead, kBlankLine, Other(60), Rest(40), kBlankLine, Total(100)},
     {Other(60), Rest(40)}},
    {"UnassignedAndRest",
     {.unassigned = 60, .folded = 40},
     {kBlankLine, Unassigned(60), Rest(40)},
     {kBlankLine, Unassigned(60), Rest(40), kBlankLine, Total(100)},
     {kHead, kBlankLine, Unassigned(60), Rest(40), kBlankLine, Total(100)},
     {Unassigned(60), Rest(40)}},
    {"Everything",
     {.own = 40, .other = 30, .unassigned = 20, .folded = 10},
     {kOwnHead, Own(40), kOtherHead, Other(30), kBlankLine, Unassigned(20), Rest(10)},
     {kHead, kBlankLine, Own(40), kBlankLine, Other(30), kBlankLine, Unassigned(20), Rest(10),
      kBlankLine, Total(100)},
     {kHead, kBlankLine, Own(40), Other(30), Unassigned(20), Rest(10), kBlankLine, Total(100)},
     {Own(40), Other(30), Unassigned(20), Rest(10)}},
    // A total below zero that no row has a part of.
    {"TotalAlone",
     {.folded = -60},
     {},
     {kBlankLine, Total(-60)},
     {kHead, kBlankLine, kBlankLine, Total(-60)},
     {}},
    {"RowsOfTheOppositeSign",
     {.own = 10, .folded = -60},
     {},
     {kBlankLine, Total(-50)},
     {kHead, kBlankLine, kBlankLine, Total(-50)},
     {}},
    {"RowsBelowZero",
     {.own = -60, .other = -40},
     {kOwnHead, Own(-60), kOtherHead, Other(-40)},
     {kHead, kBlankLine, Own(-60), kBlankLine, Other(-40), kBlankLine, Total(-100)},
     {kHead, kBlankLine, Own(-60), Other(-40), kBlankLine, Total(-100)},
     {Own(-60), Other(-40)}},
    {"RowsThatCancelOut",
     {.own = 10, .other = -10},
     {kOwnHead, Own(10), kOtherHead, Other(-10)},
     {kHead, kBlankLine, Own(10), kBlankLine, Other(-10)},
     {kHead, kBlankLine, Own(10), Other(-10)},
     {Own(10), Other(-10)}},
    // What remains of a total of nothing is less than nothing where the rows have more.
    {"RowsThatTheRestCancelsOut",
     {.own = 10, .folded = -10},
     {kOwnHead, Own(10)},
     {kHead, kBlankLine, Own(10)},
     {kHead, kBlankLine, Own(10)},
     {Own(10)}},
    {"RestThatCancelsOutRowsBelowZero",
     {.own = -10, .folded = 10},
     {kOwnHead, Own(-10), kBlankLine, Rest(10)},
     {kHead, kBlankLine, Own(-10), kBlankLine, Rest(10)},
     {kHead, kBlankLine, Own(-10), Rest(10)},
     {Own(-10), Rest(10)}},
};

SmallStore StoreOf(const Amounts& amounts, const Words& words) {
  SmallStore store = Accounts();
  AddCategory(store, kOwnNumber, "Own", words.own_category_type);
  AddCategory(store, kOtherNumber, "Other", words.other_category_type);
  AddCategory(store, kNeitherNumber, "Neither", kNeitherCategory);
  for (const auto& [amount, category] : {std::pair<double, Variant>{amounts.own, kOwnNumber},
                                         {amounts.other, kOtherNumber},
                                         {amounts.unassigned, Null{}},
                                         {amounts.folded, kNeitherNumber}}) {
    if (amount != 0) {
      store.Transaction(Booked(words.record_type, amount, category));
    }
  }
  return store;
}

class SectionShape : public ::testing::TestWithParam<std::tuple<Shape, Words>> {
 protected:
  [[nodiscard]] const Shape& TheShape() const { return std::get<0>(GetParam()); }
  [[nodiscard]] const Words& TheWords() const { return std::get<1>(GetParam()); }

  // Expects these rows and this total, or where there are none the failure of an empty result.
  void ExpectRows(Routine routine, ChartOrReport target, const std::vector<ShownRow>& expected,
                  double total) {
    const auto store = StoreOf(TheShape().amounts, TheWords()).Open();
    AmountRows rows;
    Currency curTotal;
    const auto compute = [&] { curTotal = routine(*store, kFrom, kTo, rows, target); };
    if (expected.empty()) {
      EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, compute));
      return;
    }
    compute();
    EXPECT_THAT(RowsIn(rows), ElementsAreArray(expected));
    EXPECT_EQ(curTotal, Money(total));
  }

  // The total is income less expenses where both count.
  [[nodiscard]] double NetTotal() const {
    return TheShape().amounts.Sum() * (TheWords().record_type == kExpense ? -1 : 1);
  }
};

TEST_P(SectionShape, OfOneDirectionInAReport) {
  ExpectRows(TheWords().alone, ChartOrReport::kReport, RowsOf(TheShape().alone, TheWords()),
             TheShape().amounts.Sum());
}

TEST_P(SectionShape, OfOneDirectionInAChart) {
  ExpectRows(TheWords().alone, ChartOrReport::kChart, RowsOf(TheShape().chart, TheWords()),
             TheShape().amounts.Sum());
}

TEST_P(SectionShape, OfBothDirectionsInAReport) {
  ExpectRows(IncomeAndExpensesByCategory, ChartOrReport::kReport,
             RowsOf(TheShape().both, TheWords()), NetTotal());
}

TEST_P(SectionShape, OfBothDirectionsInAChart) {
  ExpectRows(IncomeAndExpensesByCategory, ChartOrReport::kChart,
             RowsOf(TheShape().chart, TheWords(), TheWords().chart_sign), NetTotal());
}

TEST_P(SectionShape, OfTheCashFlowInAReport) {
  ExpectRows(CashFlowByCategory, ChartOrReport::kReport, RowsOf(TheShape().cash_flow, TheWords()),
             NetTotal());
}

TEST_P(SectionShape, OfTheCashFlowInAChart) {
  ExpectRows(CashFlowByCategory, ChartOrReport::kChart,
             RowsOf(TheShape().chart, TheWords(), TheWords().chart_sign), NetTotal());
}

INSTANTIATE_TEST_SUITE_P(InBothDirections, SectionShape,
                         ::testing::Combine(::testing::ValuesIn(kShapes),
                                            ::testing::Values(kIncomeSide, kExpensesSide)),
                         [](const auto& named) {
                           return std::get<0>(named.param).name + "Of" +
                                  std::get<1>(named.param).name;
                         });

}  // namespace
}  // namespace vetlo
