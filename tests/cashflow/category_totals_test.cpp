#include "vetlo/cashflow/category_totals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cashflow/cash_household.h"
#include "tests/support/drawing.h"
#include "tests/support/raises.h"
#include "vetlo/cashflow/period_totals.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

constexpr bool kAssigned = false;
constexpr bool kUnassigned = true;

constexpr std::int32_t kSalary = 1;
constexpr std::int32_t kFood = 2;
constexpr std::int32_t kMoved = 3;  // of neither direction
constexpr std::int32_t kBakery = 21;
constexpr std::int32_t kMovedPart = 31;

SmallStore Household() {
  SmallStore store = Accounts();
  AddCategory(store, kSalary, "Salary", kIncomeCategory);
  AddCategory(store, kFood, "Food", kExpenseCategory);
  AddCategory(store, kMoved, "Moved", kNeitherCategory);
  AddSubCategory(store, kBakery, "Bakery", kFood);
  AddSubCategory(store, kMovedPart, "Van", kMoved);
  return store;
}

Currency Expenses(Database& store, std::int32_t category, bool unassigned = kAssigned) {
  return TotalOfCategory(store, Flow::kOutgoing, kFrom, kTo, category, unassigned).curTotal;
}

Currency ExpensesOfSub(Database& store, std::int32_t number, bool unassigned = kAssigned) {
  return TotalOfSubCategory(store, Flow::kOutgoing, kFrom, kTo, number, unassigned).curTotal;
}

// ---- the texts

using Operation = DatedTotal (*)(Database&, Flow, Date, Date, std::int32_t, bool);

struct TextCase {
  std::string name;
  Operation operation;
  std::int32_t number;
  bool unassigned;
  std::string conditions;
  std::string checked;
};

void PrintTo(const TextCase& a_case, std::ostream* out) { *out << a_case.name; }

class CategoryTotalEvents : public ::testing::TestWithParam<std::tuple<TextCase, Flow>> {};

TEST_P(CategoryTotalEvents, AreTheCheckTheOrdinaryRecordsAndTheInvestments) {
  const auto& [text, flow] = GetParam();
  const auto store = Household().Open();
  KeepingStore keeping(*store);
  text.operation(*keeping, flow, kFrom, kTo, text.number, text.unassigned);
  EXPECT_THAT(keeping.events,
              ElementsAreArray(EventsOfCategoryTotal(flow, text.conditions, text.checked)));
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryCase, CategoryTotalEvents,
    ::testing::Combine(
        ::testing::Values(TextCase{"OfACategory", TotalOfCategory, kFood, kAssigned,
                                   " AND CategoryNumber= 2", "Category"},
                          TextCase{"OfNoCategory", TotalOfCategory, 0, kUnassigned,
                                   " AND ISNULL(CategoryNumber)", ""},
                          TextCase{"OfASubCategory", TotalOfSubCategory, kBakery, kAssigned,
                                   " AND SubCategoryNumber= 21", "SubCategory"},
                          TextCase{"OfNoSubCategory", TotalOfSubCategory, kFood, kUnassigned,
                                   " AND CategoryNumber= 2 AND ISNULL(SubCategoryNumber)",
                                   "Category"}),
        ::testing::Values(Flow::kIncoming, Flow::kOutgoing)),
    [](const auto& named) {
      return std::get<0>(named.param).name +
             (std::get<1>(named.param) == Flow::kIncoming ? "Incoming" : "Outgoing");
    });

// ---- what is refused

struct RefusedCase {
  std::string name;
  Operation operation;
  std::int32_t number;
  bool unassigned;
  std::string checked;
};

void PrintTo(const RefusedCase& a_case, std::ostream* out) { *out << a_case.name; }

class RefusedNumber : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedNumber, GivesNothingAndOpensNoRecords) {
  SmallStore builder = Household();
  const auto store = builder.Transaction(Booked(kExpense, 5, kMoved))
                         .Transaction(Booked(kExpense, 5, 77, 78))
                         .Open();
  KeepingStore keeping(*store);
  const DatedTotal total = GetParam().operation(*keeping, Flow::kOutgoing, kFrom, kTo,
                                                GetParam().number, GetParam().unassigned);
  EXPECT_EQ(total.curTotal, Money(0));
  EXPECT_EQ(total.dtmFirstDate, Services().LatestDate());
  EXPECT_EQ(total.dtmLastDate, Services().EarliestDate());
  EXPECT_THAT(keeping.events,
              ::testing::UnorderedElementsAre("open Account", "open " + GetParam().checked,
                                              "close " + GetParam().checked, "close Account"));
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryCase, RefusedNumber,
    ::testing::Values(
        RefusedCase{"UnknownCategory", TotalOfCategory, 77, kAssigned, "Category"},
        RefusedCase{"CategoryNought", TotalOfCategory, 0, kAssigned, "Category"},
        RefusedCase{"CategoryOfNeither", TotalOfCategory, kMoved, kAssigned, "Category"},
        RefusedCase{"UnknownSubCategory", TotalOfSubCategory, 78, kAssigned, "SubCategory"},
        RefusedCase{"UnassignedOfUnknown", TotalOfSubCategory, 77, kUnassigned, "Category"},
        RefusedCase{"UnassignedOfNeither", TotalOfSubCategory, kMoved, kUnassigned, "Category"}),
    [](const auto& named) { return named.param.name; });

TEST(SubCategoryTotal, DoesNotLookAtTheTypeOfItsCategory) {
  const auto store = Household().Transaction(Booked(kExpense, 5, kMoved, kMovedPart)).Open();
  EXPECT_EQ(ExpensesOfSub(*store, kMovedPart), Money(5));
}

// ---- what counts

TEST(CategoryTotal, CountsTheRecordsOfTheCategoryWithTheirSubCategories) {
  const auto store = Household()
                         .Transaction(Booked(kExpense, 1, kFood))
                         .Transaction(Booked(kExpense, 2, kFood, kBakery))
                         .Transaction(Booked(kExpense, 4))
                         .Transaction(Booked(kExpense, 8, kSalary))
                         .Open();
  EXPECT_EQ(Expenses(*store, kFood), Money(3));
}

TEST(CategoryTotal, OfNoCategoryIgnoresTheNumber) {
  const auto store =
      Household().Transaction(Booked(kExpense, 4)).Transaction(Booked(kExpense, 8, kFood)).Open();
  EXPECT_EQ(Expenses(*store, kFood, kUnassigned), Money(4));
}

TEST(CategoryTotal, OfAnExpenseCategoryCountsTheIncomeBookedToIt) {
  const auto store = Household().Transaction(Booked(kIncome, 4, kFood)).Open();
  EXPECT_EQ(TotalOfCategory(*store, Flow::kIncoming, kFrom, kTo, kFood, kAssigned).curTotal,
            Money(4));
}

TEST(CategoryTotal, OfACategoryThatThePeriodTotalLeavesOutCounts) {
  SmallStore builder = Household();
  AddCategory(builder, 9, "Kept out", kExpenseCategory, 9);
  const auto store = builder.Transaction(Booked(kExpense, 4, 9)).Open();
  EXPECT_EQ(Expenses(*store, 9), Money(4));
  EXPECT_EQ(TotalExpenses(*store, kFrom, kTo), Money(0));
}

TEST(CategoryTotal, CountsAnInvestmentWithoutALookAtItsAccount) {
  TestTransaction cost = Funded(kHoldingCost, 4, kFood);
  cost.account = kHouse;
  const auto store = Household().Transaction(cost).Open();
  const DatedTotal total = TotalOfCategory(*store, Flow::kOutgoing, kFrom, kTo, kFood, kAssigned);
  EXPECT_EQ(total.curTotal, Money(4));
  EXPECT_EQ(total.dtmFirstDate, cost.date);
}

TEST(SubCategoryTotal, CountsTheRecordsOfTheSubCategoryAlone) {
  const auto store = Household()
                         .Transaction(Booked(kExpense, 1, kFood))
                         .Transaction(Booked(kExpense, 2, kFood, kBakery))
                         .Open();
  EXPECT_EQ(ExpensesOfSub(*store, kBakery), Money(2));
}

TEST(SubCategoryTotal, OfNoneCountsWhatTheCategoryHasOnNoSubCategory) {
  const auto store = Household()
                         .Transaction(Booked(kExpense, 1, kFood))
                         .Transaction(Booked(kExpense, 2, kFood, kBakery))
                         .Transaction(Booked(kExpense, 4))
                         .Open();
  EXPECT_EQ(ExpensesOfSub(*store, kFood, kUnassigned), Money(1));
}

// ---- the days

TestTransaction OnDay(std::int32_t day, std::int32_t account) {
  TestTransaction record = Booked(kExpense, 1, kFood);
  record.date = Day(2026, 1, day);
  record.account = account;
  return record;
}

TEST(DatedTotal, TellsTheFirstAndTheLastDayOfWhatCounted) {
  TestTransaction cost = Funded(kHoldingCost, 1, kFood);
  cost.date = Day(2026, 1, 30);
  const auto store = Household()
                         .Transaction(OnDay(12, kBank))
                         .Transaction(OnDay(7, kBank))
                         .Transaction(OnDay(9, kBank))
                         .Transaction(OnDay(2, kHouse))
                         .Transaction(OnDay(31, kHouse))
                         .Transaction(cost)
                         .Open();
  const DatedTotal total = TotalOfCategory(*store, Flow::kOutgoing, kFrom, kTo, kFood, kAssigned);
  EXPECT_EQ(total.dtmFirstDate, Day(2026, 1, 7));
  EXPECT_EQ(total.dtmLastDate, Day(2026, 1, 30));
}

TEST(DatedTotal, HasItsFirstDayAfterItsLastWhereNothingCounted) {
  const auto store = Household().Transaction(OnDay(12, kHouse)).Open();
  const DatedTotal total = TotalOfCategory(*store, Flow::kOutgoing, kFrom, kTo, kFood, kAssigned);
  EXPECT_EQ(total.dtmFirstDate, Services().LatestDate());
  EXPECT_EQ(total.dtmLastDate, Services().EarliestDate());
}

TEST(DatedTotal, PutsItsDaysWhereTheCallerOfTheComponentWantsThem) {
  const auto store = Household().Transaction(OnDay(12, kBank)).Transaction(OnDay(7, kBank)).Open();
  Drawing drawing;
  Date first = Day(1999, 1, 1);
  Date last = Day(2099, 1, 1);
  EXPECT_EQ(drawing.component.TotalExpensesOfCategory(*store, kFrom, kTo, kFood, kAssigned, &first,
                                                      &last),
            Money(2));
  EXPECT_EQ(first, Day(2026, 1, 7));
  EXPECT_EQ(last, Day(2026, 1, 12));
}

TEST(DatedTotal, WipesTheCallersDaysWhereTheNumberIsRefused) {
  const auto store = Household().Open();
  Drawing drawing;
  Date first = Day(1999, 1, 1);
  Date last = Day(2099, 1, 1);
  drawing.component.TotalIncomeOfSubCategory(*store, kFrom, kTo, 77, kAssigned, &first, &last);
  EXPECT_EQ(first, Services().LatestDate());
  EXPECT_EQ(last, Services().EarliestDate());
}

TEST(CategoryTotal, MayLeaveOutNumberAndDays) {
  const auto store = Household().Transaction(Booked(kExpense, 4)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.component.TotalExpensesOfCategory(*store, kFrom, kTo), Money(0));
}

// The four questions that a host asks, each with an answer of its own.
TEST(CategoryTotal, IsAnsweredByTheComponentForEachDirectionAndPart) {
  const auto store = Household()
                         .Transaction(Booked(kExpense, 1, kFood, kBakery))
                         .Transaction(Booked(kExpense, 2, kFood))
                         .Transaction(Booked(kIncome, 4, kFood, kBakery))
                         .Transaction(Booked(kIncome, 8, kFood))
                         .Open();
  Drawing drawing;
  EXPECT_EQ(drawing.component.TotalExpensesOfCategory(*store, kFrom, kTo, kFood), Money(3));
  EXPECT_EQ(drawing.component.TotalIncomeOfCategory(*store, kFrom, kTo, kFood), Money(12));
  EXPECT_EQ(drawing.component.TotalExpensesOfSubCategory(*store, kFrom, kTo, kBakery), Money(1));
  EXPECT_EQ(drawing.component.TotalIncomeOfSubCategory(*store, kFrom, kTo, kBakery), Money(4));
}

// ---- failures

TEST(CategoryTotal, FailsToTheCallerWithoutClosingWhereAnAccountIsMissing) {
  const auto store = Household().Transaction(OnDay(7, 77)).Open();
  KeepingStore keeping(*store);
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { Expenses(*keeping, kFood); }));
  EXPECT_THAT(keeping.events,
              ElementsAre("open Account", "open Category",
                          "open " + OrdinaryIn(Flow::kOutgoing) + " AND CategoryNumber= 2"));
}

}  // namespace
}  // namespace vetlo
