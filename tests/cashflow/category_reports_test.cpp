#include "vetlo/cashflow/category_reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cashflow/cash_household.h"
#include "tests/support/raises.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Not;

constexpr auto kReport = ChartOrReport::kReport;
constexpr auto kChart = ChartOrReport::kChart;

constexpr std::int32_t kSalary = 1;
constexpr std::int32_t kFood = 2;
constexpr std::int32_t kToys = 3;
constexpr std::int32_t kBakery = 21;
constexpr std::int32_t kMarket = 22;

SmallStore Household() {
  SmallStore store = Accounts();
  AddCategory(store, kSalary, "Salary", kIncomeCategory);
  AddCategory(store, kFood, "Food", kExpenseCategory);
  AddCategory(store, kToys, "toys", kExpenseCategory);
  return store;
}

using Routine = Currency (*)(Database&, Date, Date, AmountRows&, ChartOrReport);

struct Outcome {
  std::vector<ShownRow> rows;
  Currency total;
};

Outcome OutcomeOf(Routine routine, SmallStore& builder, ChartOrReport target) {
  const auto store = builder.Open();
  AmountRows rows;
  const Currency total = routine(*store, kFrom, kTo, rows, target);
  return {RowsIn(rows), total};
}

// ---- the share that a row needs

TEST(CategoryShare, OfATwentiethIsFoldedInAChart) {
  SmallStore builder = Household();
  AddCategory(builder, 4, "Home", kExpenseCategory);
  builder.Transaction(Booked(kExpense, 60, kFood))
      .Transaction(Booked(kExpense, 5, kToys))
      .Transaction(Booked(kExpense, 35, 4));
  const auto [rows, total] = OutcomeOf(ExpensesByCategory, builder, kChart);
  EXPECT_THAT(rows, ElementsAre(ShownRow{60, "Food"}, ShownRow{35, "Home"},
                                ShownRow{5, "All Other Expenses"}));
  EXPECT_EQ(total, Money(100));
}

TEST(CategoryShare, OfATwentiethIsListedInAReport) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kExpense, 95, kFood)).Transaction(Booked(kExpense, 5, kToys));
  EXPECT_THAT(
      OutcomeOf(ExpensesByCategory, builder, kReport).rows,
      ElementsAre(ShownRow{-1, "Expense Category"}, ShownRow{95, "Food"}, ShownRow{5, "toys"}));
}

TEST(CategoryShare, JustAboveATwentiethStandsInAChart) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kExpense, 94.9999, kFood))
      .Transaction(Booked(kExpense, 5.0001, kToys));
  EXPECT_THAT(OutcomeOf(ExpensesByCategory, builder, kChart).rows,
              ElementsAre(ShownRow{94.9999, "Food"}, ShownRow{5.0001, "toys"}));
}

// As doubles of money, 0.07 of 1.40 would come out a little above 0.05.
TEST(CategoryShare, OfJustATwentiethIsFoldedWhateverTheAmounts) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kExpense, 1.33, kFood)).Transaction(Booked(kExpense, 0.07, kToys));
  EXPECT_THAT(OutcomeOf(ExpensesByCategory, builder, kChart).rows,
              ElementsAre(ShownRow{1.33, "Food"}, ShownRow{0.07, "All Other Expenses"}));
}

TEST(CategoryShare, FoldsEveryRowWhereAllAreSmall) {
  SmallStore builder = Accounts();
  for (std::int32_t i = 1; i <= 25; ++i) {
    AddCategory(builder, i, "Category " + std::to_string(i), kExpenseCategory);
    builder.Transaction(Booked(kExpense, 4, i));
  }
  EXPECT_THAT(OutcomeOf(ExpensesByCategory, builder, kChart).rows,
              ElementsAre(ShownRow{100, "All Other Expenses"}));
}

TEST(CategoryShare, FoldsTheUnassignedToo) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kIncome, 95, kSalary)).Transaction(Booked(kIncome, 5));
  EXPECT_THAT(OutcomeOf(IncomeByCategory, builder, kChart).rows,
              ElementsAre(ShownRow{95, "Salary"}, ShownRow{5, "All Other Income"}));
}

TEST(CategoryShare, IsTakenOfThePositiveAmountBelowTheAxis) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kExpense, 95, kFood)).Transaction(Booked(kExpense, 5, kToys));
  const auto [rows, total] = OutcomeOf(IncomeAndExpensesByCategory, builder, kChart);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-95, "Food"}, ShownRow{-5, "All Other Expenses"}));
  EXPECT_EQ(total, Money(-100));
}

// ---- a category that its own total counts and the total of the period does not

TEST(CategoryKeptOut, LeavesOutTheRestAndAddsUpToMore) {
  SmallStore builder = Household();
  AddCategory(builder, 9, "Kept out", kExpenseCategory, 9);
  AddCategory(builder, 10, "Neither", kNeitherCategory);
  builder.Transaction(Booked(kExpense, 60, kFood))
      .Transaction(Booked(kExpense, 50, 9))
      .Transaction(Booked(kExpense, 40, 10));
  const auto [rows, total] = OutcomeOf(ExpensesByCategory, builder, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-1, "Expense Category"}, ShownRow{60, "Food"},
                                ShownRow{50, "Kept out"}));
  EXPECT_EQ(total, Money(100));
}

TEST(CategoryKeptOut, MakesTheRestSmaller) {
  SmallStore builder = Household();
  AddCategory(builder, 9, "Kept out", kExpenseCategory, 9);
  AddCategory(builder, 10, "Neither", kNeitherCategory);
  builder.Transaction(Booked(kExpense, 60, kFood))
      .Transaction(Booked(kExpense, 10, 9))
      .Transaction(Booked(kExpense, 40, 10));
  EXPECT_THAT(
      OutcomeOf(ExpensesByCategory, builder, kReport).rows,
      ElementsAre(ShownRow{-1, "Expense Category"}, ShownRow{60, "Food"}, ShownRow{10, "Kept out"},
                  ShownRow{-1, ""}, ShownRow{30, "All Other Expenses"}));
}

// ---- subcategories

class SubCategories : public ::testing::TestWithParam<Routine> {};

SmallStore WithSubCategories() {
  SmallStore builder = Household();
  AddSubCategory(builder, kBakery, "bakery", kFood);
  AddSubCategory(builder, kMarket, "Market", kFood);
  AddSubCategory(builder, 23, "Aisle", kFood);
  builder.Transaction(Booked(kExpense, 1, kFood, kMarket))
      .Transaction(Booked(kExpense, 2, kFood, kBakery))
      .Transaction(Booked(kExpense, 4, kFood))
      .Transaction(Booked(kExpense, 8, kToys));
  return builder;
}

TEST_P(SubCategories, StandIndentedByNameWithoutRegardToCaseAndWhatIsOnNoneLast) {
  SmallStore builder = WithSubCategories();
  const auto rows = OutcomeOf(GetParam(), builder, kReport).rows;
  std::vector<ShownRow> data;
  for (const ShownRow& row : rows) {
    if (row.amount != -1) {
      data.push_back(row);
    }
  }
  data.resize(5);
  EXPECT_THAT(data,
              ElementsAre(ShownRow{7, "Food"}, ShownRow{2, "    bakery"}, ShownRow{1, "    Market"},
                          ShownRow{4, "    Unassigned Subcategory"}, ShownRow{8, "toys"}));
}

TEST_P(SubCategories, AreNotInCharts) {
  SmallStore builder = WithSubCategories();
  const auto rows = OutcomeOf(GetParam(), builder, kChart).rows;
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].label, "Food");
  EXPECT_EQ(rows[1].label, "toys");
}

TEST_P(SubCategories, HaveNoLineForWhatIsOnNoneWhereThereIsNothing) {
  SmallStore builder = Household();
  AddSubCategory(builder, kBakery, "Bakery", kFood);
  builder.Transaction(Booked(kExpense, 2, kFood, kBakery));
  EXPECT_THAT(OutcomeOf(GetParam(), builder, kReport).rows,
              Not(Contains(::testing::Field(&ShownRow::label, "    Unassigned Subcategory"))));
}

TEST_P(SubCategories, OfACategoryWithoutAnyHaveNoLineForWhatIsOnNone) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kExpense, 2, kFood));
  EXPECT_THAT(OutcomeOf(GetParam(), builder, kReport).rows,
              Not(Contains(::testing::Field(&ShownRow::label, "    Unassigned Subcategory"))));
}

TEST_P(SubCategories, AreListedAlsoBelowZero) {
  SmallStore builder = Household();
  AddSubCategory(builder, kBakery, "Bakery", kFood);
  builder.Transaction(Booked(kExpense, -2, kFood, kBakery)).Transaction(Booked(kExpense, 9, kFood));
  const auto rows = OutcomeOf(GetParam(), builder, kReport).rows;
  EXPECT_THAT(rows, Contains(ShownRow{-2, "    Bakery"}));
  EXPECT_THAT(rows, Contains(ShownRow{9, "    Unassigned Subcategory"}));
}

TEST_P(SubCategories, OfACategoryThatIsNotShownAreNotShown) {
  SmallStore builder = Household();
  AddSubCategory(builder, kBakery, "Bakery", kFood);
  builder.Transaction(Booked(kExpense, 5, kFood, kBakery))
      .Transaction(Booked(kExpense, -5, kFood))
      .Transaction(Booked(kExpense, 8, kToys));
  EXPECT_THAT(OutcomeOf(GetParam(), builder, kReport).rows,
              Not(Contains(::testing::Field(&ShownRow::label, "    Bakery"))));
}

INSTANTIATE_TEST_SUITE_P(OfEveryRoutine, SubCategories,
                         ::testing::Values(ExpensesByCategory, IncomeAndExpensesByCategory,
                                           CashFlowByCategory));

// The subcategories of an income category have the income's figures.
TEST(IncomeByCategory, ListsTheIncomeOfSubcategories) {
  SmallStore builder = Household();
  AddSubCategory(builder, 11, "Bonus", kSalary);
  builder.Transaction(Booked(kIncome, 3, kSalary, 11))
      .Transaction(Booked(kExpense, 1, kSalary, 11));
  EXPECT_THAT(OutcomeOf(IncomeByCategory, builder, kReport).rows,
              ElementsAre(ShownRow{-1, "Income Category"}, ShownRow{3, "Salary"},
                          ShownRow{3, "    Bonus"}));
}

// ---- both directions

TEST(IncomeAndExpensesByCategory, SetsTheSectionsOfAReportBelowOneAnother) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kIncome, 10, kSalary)).Transaction(Booked(kExpense, 25, kFood));
  const auto [rows, total] = OutcomeOf(IncomeAndExpensesByCategory, builder, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-1, "Income"}, ShownRow{-1, ""}, ShownRow{10, "Salary"},
                                ShownRow{-1, ""}, ShownRow{10, "Total Income"},
                                ShownRow{-1, "Expenses"}, ShownRow{-1, ""}, ShownRow{25, "Food"},
                                ShownRow{-1, ""}, ShownRow{25, "Total Expenses"}));
  EXPECT_EQ(total, Money(-15));
}

TEST(IncomeAndExpensesByCategory, DrawsExpensesBelowTheAxis) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kIncome, 10, kSalary))
      .Transaction(Booked(kExpense, 25, kFood))
      .Transaction(Booked(kExpense, 25))
      .Transaction(Booked(kExpense, 1, kToys));
  EXPECT_THAT(
      OutcomeOf(IncomeAndExpensesByCategory, builder, kChart).rows,
      ElementsAre(ShownRow{10, "Salary"}, ShownRow{-25, "Food"},
                  ShownRow{-25, "Expenses - Unassigned"}, ShownRow{-1, "All Other Expenses"}));
}

// ---- the cash flow

TEST(CashFlowByCategory, CountsWhatInvestmentsBroughtAndCostTwice) {
  SmallStore builder = Household();
  builder.Transaction(Funded(kDividend, 7)).Transaction(Funded(kHoldingCost, 2));
  const auto [rows, total] = OutcomeOf(CashFlowByCategory, builder, kReport);
  EXPECT_THAT(
      rows,
      ElementsAre(ShownRow{-1, "Income"}, ShownRow{-1, ""}, ShownRow{7, "Income - Unassigned"},
                  ShownRow{-1, ""}, ShownRow{7, "Total Income"},  //
                  ShownRow{-1, "Expenses"}, ShownRow{-1, ""}, ShownRow{2, "Expenses - Unassigned"},
                  ShownRow{-1, ""}, ShownRow{2, "Total Expenses"},  //
                  ShownRow{-1, ""}, ShownRow{-1, "Income from Investment Accounts"},
                  ShownRow{-1, ""}, ShownRow{7, "Checking Account:Bank"}, ShownRow{-1, ""},
                  ShownRow{7, "Total Income from Investment Accounts"},  //
                  ShownRow{-1, ""}, ShownRow{-1, "Expenses on Investment Accounts"},
                  ShownRow{-1, ""}, ShownRow{2, "Checking Account:Bank"}, ShownRow{-1, ""},
                  ShownRow{2, "Total Expenses on Investment Accounts"}));
  EXPECT_EQ(total, Money(10));
}

TEST(CashFlowByCategory, CountsSalesAndPurchasesOnce) {
  SmallStore builder = Household();
  builder.Transaction(Funded(kSell, 7)).Transaction(Funded(kBuy, 2));
  const auto [rows, total] = OutcomeOf(CashFlowByCategory, builder, kReport);
  EXPECT_THAT(rows,
              ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Income from Investment Accounts"},
                          ShownRow{-1, ""}, ShownRow{7, "Checking Account:Bank"}, ShownRow{-1, ""},
                          ShownRow{7, "Total Income from Investment Accounts"}, ShownRow{-1, ""},
                          ShownRow{-1, "Expenses on Investment Accounts"}, ShownRow{-1, ""},
                          ShownRow{2, "Checking Account:Bank"}, ShownRow{-1, ""},
                          ShownRow{2, "Total Expenses on Investment Accounts"}));
  EXPECT_EQ(total, Money(5));
}

TEST(CashFlowByCategory, DrawsAccountsByTheirNamesAloneAndExpensesBelowTheAxis) {
  SmallStore builder = Household();
  builder.Transaction(Funded(kSell, 7)).Transaction(Funded(kBuy, 2));
  EXPECT_THAT(OutcomeOf(CashFlowByCategory, builder, kChart).rows,
              ElementsAre(ShownRow{7, "Bank"}, ShownRow{-2, "Bank"}));
}

SmallStore WithAccountsInAllOrders() {
  SmallStore builder = Household();
  builder.Account(10, "till", kCashAccount).Account(11, "Till", kSavingsAccount);
  const auto sale = [&](double total, std::int32_t account) {
    TestTransaction record = Funded(kSell, total);
    record.other_account = account;
    builder.Transaction(record);
  };
  sale(5, 10);
  sale(35, 11);
  sale(60, kBank);
  sale(1000, kBroker);
  return builder;
}

TEST(CashFlowByCategory, ListsAccountsByNameAndThenType) {
  SmallStore builder = WithAccountsInAllOrders();
  EXPECT_THAT(
      OutcomeOf(CashFlowByCategory, builder, kReport).rows,
      ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Income from Investment Accounts"},
                  ShownRow{-1, ""}, ShownRow{60, "Checking Account:Bank"},
                  ShownRow{35, "Savings Account:Till"}, ShownRow{5, "Cash:till"}, ShownRow{-1, ""},
                  ShownRow{100, "Total Income from Investment Accounts"}));
}

TEST(CashFlowByCategory, HasNoRestForAccountsTooSmallForAChart) {
  SmallStore builder = WithAccountsInAllOrders();
  const auto [rows, total] = OutcomeOf(CashFlowByCategory, builder, kChart);
  EXPECT_THAT(rows, ElementsAre(ShownRow{60, "Bank"}, ShownRow{35, "Till"}));
  EXPECT_EQ(total, Money(100));
}

TEST(CashFlowByCategory, LeavesOutAnAccountOfTheOppositeSign) {
  SmallStore builder = Household();
  TestTransaction house = Funded(kSell, -2);
  house.other_account = kHouse;
  builder.Transaction(Funded(kSell, 7)).Transaction(house);
  EXPECT_THAT(OutcomeOf(CashFlowByCategory, builder, kReport).rows,
              ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Income from Investment Accounts"},
                          ShownRow{-1, ""}, ShownRow{7, "Checking Account:Bank"}, ShownRow{-1, ""},
                          ShownRow{5, "Total Income from Investment Accounts"}));
}

TEST(CashFlowByCategory, HasNoInvestmentTotalWhereAccountsCancelOut) {
  SmallStore builder = Household();
  TestTransaction house = Funded(kSell, -7);
  house.other_account = kHouse;
  builder.Transaction(Funded(kSell, 7)).Transaction(house);
  EXPECT_THAT(OutcomeOf(CashFlowByCategory, builder, kReport).rows,
              ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Income from Investment Accounts"},
                          ShownRow{-1, ""}, ShownRow{7, "Checking Account:Bank"},
                          ShownRow{-7, "Common Asset:House"}));
}

// ---- what is opened, and when

std::string Categories(std::int32_t type) {
  return "SELECT * FROM Category WHERE CategoryType= " + std::to_string(type) +
         " ORDER BY CategoryName";
}

std::vector<std::string> operator+(std::vector<std::string> events,
                                   const std::vector<std::string>& more) {
  events.insert(events.end(), more.begin(), more.end());
  return events;
}

using Events = std::vector<std::string>;

Events EventsOf(Routine routine, SmallStore& builder, ChartOrReport target) {
  const auto store = builder.Open();
  KeepingStore keeping(*store);
  AmountRows rows;
  ResumeNext([&] { routine(*keeping, kFrom, kTo, rows, target); });
  return keeping.events;
}

// One category of expenses with a subcategory, and one without.
SmallStore WithABakery() {
  SmallStore builder = Household();
  AddSubCategory(builder, kBakery, "Bakery", kFood);
  builder.Transaction(Booked(kExpense, 2, kFood, kBakery)).Transaction(Booked(kExpense, 1, kToys));
  return builder;
}

Events OfCategoryEvents(Flow flow, const std::string& number) {
  return EventsOfCategoryTotal(flow, " AND CategoryNumber= " + number, "Category");
}

TEST(ExpensesByCategory, OpensTheTotalThePassesAndTheUnassignedInThisOrder) {
  SmallStore builder = WithABakery();
  const std::string parts =
      "SELECT * FROM SubCategory WHERE CategoryNumber= 2 ORDER BY "
      "SubCategoryName";
  const std::string no_parts =
      "SELECT * FROM SubCategory WHERE CategoryNumber= 3 ORDER BY "
      "SubCategoryName";
  constexpr Flow kOut = Flow::kOutgoing;
  EXPECT_THAT(
      EventsOf(ExpensesByCategory, builder, kReport),
      ElementsAreArray(
          EventsOfPeriodTotal(kOut) +  //
          Events{"open " + Categories(1)} + OfCategoryEvents(kOut, "2") + Events{"open " + parts} +
          EventsOfCategoryTotal(kOut, " AND SubCategoryNumber= 21", "SubCategory") +
          EventsOfCategoryTotal(kOut, " AND CategoryNumber= 2 AND ISNULL(SubCategoryNumber)",
                                "Category") +
          Events{"close " + parts} + OfCategoryEvents(kOut, "3") +
          Events{"open " + no_parts, "close " + no_parts} + Events{"close " + Categories(1)} +
          Events{"open " + Categories(0)} + OfCategoryEvents(kOut, "1") +
          Events{"close " + Categories(0)} +
          EventsOfCategoryTotal(kOut, " AND ISNULL(CategoryNumber)", "")));
}

TEST(ExpensesByCategory, OpensNoSubcategoriesForAChart) {
  SmallStore builder = WithABakery();
  EXPECT_THAT(EventsAt(EventsOf(ExpensesByCategory, builder, kChart), "SELECT * FROM SubCategory"),
              ::testing::IsEmpty());
}

TEST(IncomeByCategory, PassesThroughTheCategoriesOfIncomeFirst) {
  SmallStore builder = Accounts();
  EXPECT_THAT(
      EventsOf(IncomeByCategory, builder, kReport),
      ElementsAreArray(EventsOfPeriodTotal(Flow::kIncoming) +
                       OneAfterAnother({Categories(0), Categories(1)}) +
                       EventsOfCategoryTotal(Flow::kIncoming, " AND ISNULL(CategoryNumber)", "")));
}

Events EmptyDirection(Flow flow, std::int32_t own, std::int32_t other) {
  return EventsOfPeriodTotal(flow) + OneAfterAnother({Categories(own), Categories(other)}) +
         EventsOfCategoryTotal(flow, " AND ISNULL(CategoryNumber)", "");
}

TEST(IncomeAndExpensesByCategory, TakesIncomeBeforeExpenses) {
  SmallStore builder = Accounts();
  EXPECT_THAT(EventsOf(IncomeAndExpensesByCategory, builder, kReport),
              ElementsAreArray(EmptyDirection(Flow::kIncoming, 0, 1) +
                               EmptyDirection(Flow::kOutgoing, 1, 0)));
}

std::string MovedAt(const std::string& account, const std::string& types) {
  return "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
         "T1.AccountNumber=T2.AccountNumber AND T2.AccountType= 8 AND T1.ToOrFundAccountNumber= " +
         account + " AND " + types +
         "  AND T1.TransactionDate>=#2026-01-01# AND T1.TransactionDate<=#2026-01-31#";
}

TEST(CashFlowByCategory, TakesTheInvestmentsLastEachDirectionTwice) {
  SmallStore builder = Accounts();
  const std::string unordered = "SELECT * FROM Account WHERE AccountType<> 8";
  const std::string ordered = unordered + " ORDER BY AccountName,AccountType";
  const auto direction = [&](const std::string& types) {
    const Events walked = OneAfterAnother({MovedAt("1", types), MovedAt("6", types)});
    return Events{"open " + unordered} + walked + Events{"close " + unordered, "open " + ordered} +
           walked + Events{"close " + ordered};
  };
  EXPECT_THAT(EventsOf(CashFlowByCategory, builder, kReport),
              ElementsAreArray(EmptyDirection(Flow::kIncoming, 0, 1) +
                               EmptyDirection(Flow::kOutgoing, 1, 0) +
                               direction("(T1.TransactionType= 3 OR T1.TransactionType= 4 OR "
                                         "T1.TransactionType= 6 OR T1.TransactionType= 8)") +
                               direction("(T1.TransactionType= 2 OR T1.TransactionType= 9)")));
}

// ---- failures

struct FailingCase {
  std::string name;
  Routine routine;
};

void PrintTo(const FailingCase& a_case, std::ostream* out) { *out << a_case.name; }

class RoutineThatFails : public ::testing::TestWithParam<FailingCase> {};

TEST_P(RoutineThatFails, ClosesWhatItOpenedAndHandsTheFailureOn) {
  const auto store = WithABakery().Open();
  RefusingDatabase refusing(*store, OrdinaryIn(Flow::kOutgoing) + " AND SubCategoryNumber");
  KeepingStore keeping(refusing);
  AmountRows rows;
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable,
                     [&] { GetParam().routine(*keeping, kFrom, kTo, rows, kReport); }));
  const Events last(keeping.events.end() - 4, keeping.events.end());
  EXPECT_THAT(last, ::testing::UnorderedElementsAre(
                        "open Account", "open SubCategory", "close " + Categories(1),
                        "close SELECT * FROM SubCategory WHERE CategoryNumber= 2 ORDER BY "
                        "SubCategoryName"));
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, RoutineThatFails,
                         ::testing::Values(FailingCase{"One", ExpensesByCategory},
                                           FailingCase{"Both", IncomeAndExpensesByCategory},
                                           FailingCase{"CashFlow", CashFlowByCategory}),
                         [](const auto& named) { return named.param.name; });

TEST(CashFlowByCategory, LeavesTheAccountsOfAnInvestmentTotalThatFails) {
  SmallStore builder = Household();
  const auto store = builder.Open();
  RefusingDatabase refusing(*store, "SELECT T1.*");
  KeepingStore keeping(refusing);
  AmountRows rows;
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable,
                     [&] { CashFlowByCategory(*keeping, kFrom, kTo, rows, kReport); }));
  EXPECT_EQ(keeping.events.back(), "open SELECT * FROM Account WHERE AccountType<> 8");
}

TEST(ExpensesByCategory, LeavesAmountsAndLabelsWhereItFails) {
  const auto store = WithABakery().Open();
  RefusingDatabase refusing(*store, OrdinaryIn(Flow::kOutgoing) + " AND ISNULL(CategoryNumber)");
  AmountRows rows;
  ResumeNext([&] { ExpensesByCategory(refusing, kFrom, kTo, rows, kReport); });
  EXPECT_THAT(RowsIn(rows),
              ElementsAre(ShownRow{-1, "Expense Category"}, ShownRow{2, "Food"},
                          ShownRow{2, "    Bakery"}, ShownRow{1, "toys"}, ShownRow{0, ""}));
}

class AmountsGatheredApart : public ::testing::TestWithParam<FailingCase> {};

TEST_P(AmountsGatheredApart, LeaveLabelsAloneWhereTheRoutineFails) {
  const auto store = WithABakery().Open();
  RefusingDatabase refusing(*store, OrdinaryIn(Flow::kOutgoing) + " AND ISNULL(CategoryNumber)");
  AmountRows rows;
  ResumeNext([&] { GetParam().routine(refusing, kFrom, kTo, rows, kReport); });
  EXPECT_EQ(rows.Amounts(), AmountMatrix());
  EXPECT_THAT(rows.Labels().elements(),
              ElementsAre("Expenses", "", "Food", "    Bakery", "toys", ""));
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, AmountsGatheredApart,
                         ::testing::Values(FailingCase{"Both", IncomeAndExpensesByCategory},
                                           FailingCase{"CashFlow", CashFlowByCategory}),
                         [](const auto& named) { return named.param.name; });

TEST(ExpensesByCategory, HasNoArraysWhereTheTotalFails) {
  const auto store = Accounts().Transaction(Booked(kExpense, 1, 77)).Open();
  AmountRows rows;
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord,
                     [&] { ExpensesByCategory(*store, kFrom, kTo, rows, kReport); }));
  EXPECT_EQ(rows.Amounts(), AmountMatrix());
  EXPECT_EQ(rows.Labels().UpperBound(), 0U);
}

TEST(IncomeAndExpensesByCategory, HasItsLabelsStartedWhereTheTotalFails) {
  const auto store = Accounts().Transaction(Booked(kIncome, 1, 77)).Open();
  AmountRows rows;
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord,
                     [&] { IncomeAndExpensesByCategory(*store, kFrom, kTo, rows, kReport); }));
  EXPECT_EQ(rows.Amounts(), AmountMatrix());
  EXPECT_EQ(rows.Labels().UpperBound(), 1U);
}

}  // namespace
}  // namespace vetlo
