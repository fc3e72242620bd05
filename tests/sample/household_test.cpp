#include "quillmarsh/sample/household.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "quillmarsh/sample/markets.h"
#include "quillmarsh/sample/people_and_places.h"
#include "tests/sample/sample_stores.h"
#include "tests/support/raises.h"

namespace quillmarsh {
namespace {

using ::testing::AllOf;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using ::testing::Le;
using ::testing::Not;
using vetlo::Currency;
using vetlo::Database;

bool Counts(const Row& record) {
  const std::int32_t type = record.Long("TransactionRecordType");
  return type == vetlo::kOrdinaryRecord || type == vetlo::kSplitLine;
}

TEST(SamePlan, GivesTheSameRowsInAllTables) {
  const auto one = StoreOf(PlanOf(2, 1500, 7));
  const auto other = StoreOf(PlanOf(2, 1500, 7));
  for (const vetlo::Table& table : vetlo::StoreTables()) {
    EXPECT_TRUE(RowsOf(*one, table.name) == RowsOf(*other, table.name)) << table.name;
  }
}

TEST(OtherSeed, GivesOtherTransactions) {
  const auto one = StoreOf(PlanOf(2, 1500, 7));
  const auto other = StoreOf(PlanOf(2, 1500, 8));
  EXPECT_FALSE(RowsOf(*one, "TransactionRecord") == RowsOf(*other, "TransactionRecord"));
}

TEST(OtherSeed, GivesOtherPrices) {
  const auto one = StoreOf(PlanOf(2, 1500, 7));
  const auto other = StoreOf(PlanOf(2, 1500, 8));
  EXPECT_FALSE(RowsOf(*one, "PriceRecord") == RowsOf(*other, "PriceRecord"));
}

bool IsRefused(const HouseholdPlan& plan) {
  return static_cast<bool>(
      vetlo::Raises(vetlo::FailureNumber::kInvalidCall, [&] { StoreOf(plan); }));
}

TEST(Plan, RefusesNoYears) { EXPECT_TRUE(IsRefused(PlanOf(0, 5000))); }

TEST(Plan, RefusesTooManyYears) { EXPECT_TRUE(IsRefused(PlanOf(kMostYears + 1, 5000))); }

TEST(Plan, RefusesTooFewTransactions) {
  EXPECT_TRUE(IsRefused(PlanOf(3, kFewestTransactions - 1)));
}

TEST(Plan, RefusesTooManyTransactions) { EXPECT_TRUE(IsRefused(PlanOf(3, kMostTransactions + 1))); }

TEST(Plan, RefusesATodayThatIsNoDate) {
  HouseholdPlan plan = PlanOf(3, 5000);
  plan.today = vetlo::Date{1e9};
  EXPECT_TRUE(IsRefused(plan));
}

TEST(Progress, GrowsUpToAllTransactions) {
  HouseholdPlan plan = PlanOf(3, 5000);
  std::vector<std::int64_t> told;
  plan.progress = [&](std::int64_t done, std::int64_t all) {
    EXPECT_EQ(all, 5000);
    told.push_back(done);
  };
  StoreOf(plan);
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_THAT(told, Not(IsEmpty()));
  EXPECT_EQ(told.back(), 5000);
}

class HouseholdOfSize : public ::testing::TestWithParam<Size> {
 protected:
  Database& Store() {
    if (!store_) {
      store_ = StoreOf(PlanOf(GetParam().years, GetParam().transactions));
    }
    return *store_;
  }

 private:
  std::unique_ptr<Database> store_;
};

INSTANTIATE_TEST_SUITE_P(Sizes, HouseholdOfSize, ::testing::ValuesIn(kSizes));

TEST_P(HouseholdOfSize, HasTheTransactionsThatWereAskedFor) {
  const auto asked = static_cast<double>(GetParam().transactions);
  const auto rows = static_cast<double>(Store().OpenRecordset("TransactionRecord")->RecordCount());
  EXPECT_THAT(rows, AllOf(Ge(0.98 * asked), Le(1.02 * asked)));
}

TEST_P(HouseholdOfSize, HasEveryAccountType) {
  EXPECT_EQ(NumbersOf(Store(), "Account", "AccountType"), NumbersUpTo(vetlo::kOtherAccount));
}

TEST_P(HouseholdOfSize, HasEveryRecordType) {
  EXPECT_EQ(NumbersOf(Store(), "TransactionRecord", "TransactionRecordType"),
            NumbersUpTo(vetlo::kSplitLine));
}

TEST_P(HouseholdOfSize, HasEveryTransactionTypeAmongWhatCounts) {
  std::set<std::int32_t> types;
  for (const Row& record : RowsOf(Store(), "TransactionRecord")) {
    if (Counts(record)) {
      types.insert(record.Long("TransactionType"));
    }
  }
  EXPECT_EQ(types, NumbersUpTo(vetlo::kTransferIn));
}

// What the accounts hold by the rules of the transactions alone.
struct Holdings {
  std::map<std::int32_t, Currency> cash;
  std::map<std::int32_t, std::map<std::int32_t, double>> units;
};

void AddCash(Holdings& holdings, const Row& record) {
  const std::int32_t account = record.Number("AccountNumber");
  const std::int32_t other = record.Number("ToOrFundAccountNumber");
  const Currency total = record.Money("Total");
  switch (record.Long("TransactionType")) {
    case 2:
    case 9:
      holdings.cash[other == 0 ? account : other] -= total;
      return;
    case 3:
    case 4:
    case 6:
    case 8:
      holdings.cash[other == 0 ? account : other] += total;
      return;
    case 5:
    case 7:
      return;
    case 1:
    case 11:
    case 12:
      holdings.cash[account] -= total;
      holdings.cash[other] += total;
      return;
    default:
      holdings.cash[account] += total;
      holdings.cash[other] -= total;
  }
}

void AddUnits(Holdings& holdings, const Row& record) {
  const std::int32_t type = record.Long("TransactionType");
  if (record.IsNull("AccountItemNumber") || record.IsNull("Quantity")) {
    return;
  }
  double& units = holdings.units[record.Long("AccountNumber")][record.Long("AccountItemNumber")];
  if (type == 2 || type == 5) {
    units += record.Double("Quantity");
  } else if (type == 3 || type == 7) {
    units -= record.Double("Quantity");
  }
}

Holdings HoldingsOf(Database& store) {
  Holdings holdings;
  for (const Row& account : RowsOf(store, "Account")) {
    holdings.cash[account.Long("AccountNumber")] = account.Money("OpeningBalance");
  }
  for (const Row& record : RowsOf(store, "TransactionRecord")) {
    if (Counts(record)) {
      AddCash(holdings, record);
      AddUnits(holdings, record);
    }
  }
  return holdings;
}

std::map<std::int32_t, double> LatestPrices(Database& store) {
  std::map<std::int32_t, double> prices;
  for (const Row& price : RowsOf(store, "LatestPriceInfo")) {
    prices[price.Long("AccountItemNumber")] = price.Double("Price");
  }
  return prices;
}

TEST_P(HouseholdOfSize, KeepsEveryBalance) {
  Holdings holdings = HoldingsOf(Store());
  const auto prices = LatestPrices(Store());
  for (const Row& account : RowsOf(Store(), "Account")) {
    const std::int32_t number = account.Long("AccountNumber");
    Currency balance = holdings.cash[number];
    if (account.Long("AccountType") == vetlo::kInvestmentAccount) {
      for (const auto& [item, units] : holdings.units[number]) {
        balance += vetlo::CCur(units * prices.at(item));
      }
    }
    EXPECT_EQ(account.Money("Balance").units(), balance.units()) << account.Text("AccountName");
  }
}

TEST_P(HouseholdOfSize, NeverOwesOnAnAccountOfMoney) {
  for (const Row& account : RowsOf(Store(), "Account")) {
    if (account.Long("AccountType") <= vetlo::kCashAccount) {
      EXPECT_GE(account.Money("Balance"), Currency{}) << account.Text("AccountName");
    }
  }
}

TEST_P(HouseholdOfSize, EarnsMoreThanItSpends) {
  std::map<std::int32_t, Currency> totals;
  for (const Row& record : RowsOf(Store(), "TransactionRecord")) {
    if (Counts(record)) {
      totals[record.Long("TransactionType")] += record.Money("Total");
    }
  }
  EXPECT_GT(totals[vetlo::kIncome], totals[vetlo::kExpense]);
  EXPECT_LT(ToDouble(totals[vetlo::kIncome]), 2 * ToDouble(totals[vetlo::kExpense]));
}

TEST_P(HouseholdOfSize, HasSplitLinesThatAddUpToTheirHeads) {
  Currency rest;
  int heads = 0;
  for (const Row& record : RowsOf(Store(), "TransactionRecord")) {
    if (record.Long("TransactionRecordType") == vetlo::kSplitLine) {
      rest -= record.Money("Total");
      continue;
    }
    EXPECT_EQ(rest, Currency{}) << "before record " << record.Long("TransactionRecordNumber");
    if (record.Long("TransactionRecordType") == vetlo::kSplitHead) {
      EXPECT_TRUE(record.IsNull("CategoryNumber"));
      rest = record.Money("Total");
      ++heads;
    }
  }
  EXPECT_GE(heads, 1);
}

TEST_P(HouseholdOfSize, EndsToday) {
  const HouseholdPlan plan = PlanOf(GetParam().years, GetParam().transactions);
  const vetlo::Date first = vetlo::FirstOfMonth(2026 - plan.years, 4);
  for (const Row& record : RowsOf(Store(), "TransactionRecord")) {
    if (record.Long("TransactionRecordType") != vetlo::kScheduledPattern) {
      EXPECT_GE(record.Day("TransactionDate"), first);
      EXPECT_LE(record.Day("TransactionDate"), plan.today);
    }
  }
}

// A column that names a row of another table.
struct Reference {
  std::string_view table;
  std::string_view column;
  std::string_view to_table;
  std::string_view to_column;

  friend std::ostream& operator<<(std::ostream& out, const Reference& reference) {
    return out << reference.table << "." << reference.column;
  }
};

constexpr Reference kReferences[] = {
    {"SubCategory", "CategoryNumber", "Category", "CategoryNumber"},
    {"ClassificationItem", "ClassificationNumber", "Classification", "ClassificationNumber"},
    {"ClassificationSubItem", "ClassificationItemNumber", "ClassificationItem",
     "ClassificationItemNumber"},
    {"AccountItem", "AccountItemTypeNumber", "AccountItemType", "AccountItemTypeNumber"},
    {"TransactionRecord", "AccountNumber", "Account", "AccountNumber"},
    {"TransactionRecord", "ToOrFundAccountNumber", "Account", "AccountNumber"},
    {"TransactionRecord", "CategoryNumber", "Category", "CategoryNumber"},
    {"TransactionRecord", "SubCategoryNumber", "SubCategory", "SubCategoryNumber"},
    {"TransactionRecord", "PayeeNumber", "Payee", "PayeeNumber"},
    {"TransactionRecord", "AccountItemNumber", "AccountItem", "AccountItemNumber"},
    {"TransactionRecord", "Classification1ItemNumber", "ClassificationItem",
     "ClassificationItemNumber"},
    {"TransactionRecord", "Classification1SubItemNumber", "ClassificationSubItem",
     "ClassificationSubItemNumber"},
    {"TransactionRecord", "Classification2ItemNumber", "ClassificationItem",
     "ClassificationItemNumber"},
    {"TransactionRecord", "Classification2SubItemNumber", "ClassificationSubItem",
     "ClassificationSubItemNumber"},
    {"CategoryBudgetInfo", "BudgetNumber", "Budget", "BudgetNumber"},
    {"CategoryBudgetInfo", "CategoryNumber", "Category", "CategoryNumber"},
    {"SubCategoryBudgetInfo", "BudgetNumber", "Budget", "BudgetNumber"},
    {"SubCategoryBudgetInfo", "SubCategoryNumber", "SubCategory", "SubCategoryNumber"},
    {"PriceRecord", "AccountItemNumber", "AccountItem", "AccountItemNumber"},
    {"PriceRecord", "PriceTypeNumber", "PriceType", "PriceTypeNumber"},
    {"LatestPriceInfo", "AccountItemNumber", "AccountItem", "AccountItemNumber"},
    {"AssociatedAccountInfo", "AccountNumber", "Account", "AccountNumber"},
    {"AssociatedAccountInfo", "AssociatedAccountNumber", "Account", "AccountNumber"},
    {"PaymentCalendar", "TransactionRecordNumber", "TransactionRecord", "TransactionRecordNumber"},
};

class ReferenceOf : public ::testing::TestWithParam<Reference> {};

INSTANTIATE_TEST_SUITE_P(All, ReferenceOf, ::testing::ValuesIn(kReferences));

TEST_P(ReferenceOf, NamesRowsThatThereAre) {
  const Reference& reference = GetParam();
  const auto named = NumbersOf(UsualStore(), reference.table, reference.column);
  EXPECT_THAT(named, Not(IsEmpty()));
  EXPECT_THAT(named, IsSubsetOf(NumbersOf(UsualStore(), reference.to_table, reference.to_column)));
}

TEST(SubCategories, BelongToTheCategoryOfTheirRecord) {
  std::map<std::int32_t, std::int32_t> category_of;
  for (const Row& row : RowsOf(UsualStore(), "SubCategory")) {
    category_of[row.Long("SubCategoryNumber")] = row.Long("CategoryNumber");
  }
  for (const Row& record : RowsOf(UsualStore(), "TransactionRecord")) {
    if (!record.IsNull("SubCategoryNumber")) {
      EXPECT_EQ(record.Long("CategoryNumber"), category_of[record.Long("SubCategoryNumber")]);
    }
  }
}

// The columns of a record that are Null in some rows and filled in others.
class OptionalColumn : public ::testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(OfTransactions, OptionalColumn,
                         ::testing::Values("ToOrFundAccountNumber", "CategoryNumber",
                                           "SubCategoryNumber", "PayeeNumber", "AccountItemNumber",
                                           "Classification1ItemNumber",
                                           "Classification1SubItemNumber",
                                           "Classification2ItemNumber",
                                           "Classification2SubItemNumber", "Quantity", "Memo"));

TEST_P(OptionalColumn, IsSometimesNull) {
  std::size_t nulls = 0;
  const Rows records = RowsOf(UsualStore(), "TransactionRecord");
  for (const Row& record : records) {
    if (record.IsNull(GetParam())) {
      ++nulls;
    }
  }
  EXPECT_GT(nulls, 0U);
  EXPECT_LT(nulls, records.size());
}

// How many counting records of a type carry a category that `meets` says yes to.
template <typename Meets>
std::size_t RecordsWithCategory(std::int32_t transaction_type, Meets meets) {
  std::set<std::int32_t> categories;
  for (const Row& row : RowsOf(UsualStore(), "Category")) {
    if (meets(row)) {
      categories.insert(row.Long("CategoryNumber"));
    }
  }
  std::size_t count = 0;
  for (const Row& record : RowsOf(UsualStore(), "TransactionRecord")) {
    if (Counts(record) && record.Long("TransactionType") == transaction_type &&
        categories.contains(record.Number("CategoryNumber"))) {
      ++count;
    }
  }
  return count;
}

auto TypeIs(std::int32_t type) {
  return [type](const Row& row) {
    return row.Long("CategoryType") == type && row.Long("CategoryAttr") == 0;
  };
}

TEST(Categories, OfIncomeAlsoPayOnce) {
  EXPECT_GT(RecordsWithCategory(vetlo::kExpense, TypeIs(kIncomeCategory)), 0U);
}

TEST(Categories, OfExpensesAlsoGiveBack) {
  EXPECT_GT(RecordsWithCategory(vetlo::kIncome, TypeIs(kExpenseCategory)), 0U);
}

TEST(Categories, OfTheThirdKindHaveAnExpense) {
  EXPECT_GT(RecordsWithCategory(vetlo::kExpense, TypeIs(kThirdKindOfCategory)), 0U);
}

TEST(Categories, OutsideTheTotalsHaveExpenses) {
  EXPECT_GT(
      RecordsWithCategory(vetlo::kExpense,
                          [](const Row& row) { return row.Long("CategoryAttr") == kNotInTotals; }),
      0U);
}

TEST(Records, AreEnteredInTheOrderOfTheirDatesButForAFew) {
  std::size_t late = 0;
  vetlo::Date newest = vetlo::kFirstRealDate;
  const Rows records = RowsOf(UsualStore(), "TransactionRecord");
  for (const Row& record : records) {
    if (record.Long("TransactionRecordType") != vetlo::kScheduledPattern) {
      if (record.Day("TransactionDate") < newest) {
        ++late;
      }
      newest = std::max(newest, record.Day("TransactionDate"));
    }
  }
  EXPECT_GT(late, 0U);
  EXPECT_LT(late, records.size() / 20);
}

TEST(Payees, AreMoreInALargerHousehold) {
  const auto larger = StoreOf(PlanOf(3, 12000));
  const std::int32_t usual = UsualStore().OpenRecordset("Payee")->RecordCount();
  EXPECT_GE(usual, 60);
  EXPECT_GT(larger->OpenRecordset("Payee")->RecordCount(), usual);
}

TEST(Payees, HaveNamesOfTheirOwn) {
  std::multiset<std::string> names;
  for (const PayeeRow& payee : kPayees) {
    names.emplace(payee.name);
  }
  for (const std::string_view shopkeeper : kShopkeepers) {
    for (const ShopKind& kind : kFurtherShops) {
      names.insert(std::string(shopkeeper).append(kind.suffix));
    }
  }
  for (const std::string& name : names) {
    EXPECT_EQ(names.count(name), 1U) << name;
  }
}

TEST(AssociatedAccounts, ServeEveryInvestmentAccount) {
  std::set<std::int32_t> investments;
  for (const Row& account : RowsOf(UsualStore(), "Account")) {
    if (account.Long("AccountType") == vetlo::kInvestmentAccount) {
      investments.insert(account.Long("AccountNumber"));
    }
  }
  EXPECT_EQ(NumbersOf(UsualStore(), "AssociatedAccountInfo", "AccountNumber"), investments);
}

TEST(AssociatedAccounts, HoldCash) {
  std::map<std::int32_t, std::int32_t> types;
  for (const Row& account : RowsOf(UsualStore(), "Account")) {
    types[account.Long("AccountNumber")] = account.Long("AccountType");
  }
  for (const Row& pair : RowsOf(UsualStore(), "AssociatedAccountInfo")) {
    EXPECT_LE(types[pair.Long("AssociatedAccountNumber")], vetlo::kCashAccount);
  }
}

TEST(LatestPrices, AreTheLastOnesOfTheDefaultPriceType) {
  std::set<std::int32_t> default_types;
  for (const Row& type : RowsOf(UsualStore(), "PriceType")) {
    if (type.Long("PriceTypeAttr") == vetlo::kDefaultPriceType) {
      default_types.insert(type.Long("PriceTypeNumber"));
    }
  }
  EXPECT_EQ(default_types.size(), 1U);
  std::map<std::int32_t, std::pair<vetlo::Date, double>> last;
  for (const Row& price : RowsOf(UsualStore(), "PriceRecord")) {
    if (default_types.contains(price.Long("PriceTypeNumber"))) {
      auto& newest = last[price.Long("AccountItemNumber")];
      newest = std::max(newest, {price.Day("PriceDate"), price.Double("Price")});
    }
  }
  for (const Row& latest : RowsOf(UsualStore(), "LatestPriceInfo")) {
    const auto& [day, price] = last.at(latest.Long("AccountItemNumber"));
    EXPECT_EQ(latest.Day("PriceDate"), day);
    EXPECT_EQ(latest.Double("Price"), price);
  }
}

TEST(Securities, AreSoldOffOnce) {
  const auto units = HoldingsOf(UsualStore()).units;
  EXPECT_NEAR(units.at(kBrokerage).at(kCorvaneSystems), 0, 1e-9);
}

TEST(Securities, AreHeldWithoutHavingCostAnything) {
  EXPECT_GT(HoldingsOf(UsualStore()).units.at(kBrokerage).at(kHaldenWorks), 0);
  for (const Row& record : RowsOf(UsualStore(), "TransactionRecord")) {
    if (record.Number("AccountItemNumber") == kHaldenWorks) {
      EXPECT_NE(record.Long("TransactionType"), vetlo::kBuy);
    }
  }
}

TEST(Securities, AreWatchedWithoutBeingHeld) {
  EXPECT_FALSE(
      NumbersOf(UsualStore(), "TransactionRecord", "AccountItemNumber").contains(kQuarrystone));
  EXPECT_TRUE(NumbersOf(UsualStore(), "PriceRecord", "AccountItemNumber").contains(kQuarrystone));
}

TEST(Budgets, AreInForceOnce) {
  std::multiset<std::int32_t> attributes;
  for (const Row& budget : RowsOf(UsualStore(), "Budget")) {
    attributes.insert(budget.Long("BudgetAttr"));
  }
  EXPECT_EQ(attributes, (std::multiset<std::int32_t>{0, 1}));
}

class BudgetTable : public ::testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Both, BudgetTable,
                         ::testing::Values("CategoryBudgetInfo", "SubCategoryBudgetInfo"));

TEST_P(BudgetTable, HasMonthsWithoutAnAmount) {
  std::size_t empty = 0;
  std::size_t filled = 0;
  for (const Row& line : RowsOf(UsualStore(), GetParam())) {
    (line.IsNull("Apr") ? empty : filled) += 1;
  }
  EXPECT_GT(empty, 0U);
  EXPECT_GT(filled, 0U);
}

TEST(Calendar, HasEveryFrequency) {
  EXPECT_EQ(NumbersOf(UsualStore(), "PaymentCalendar", "FrequencyType"), NumbersUpTo(12));
}

TEST(Calendar, RepeatsAfterOneAndAfterSeveral) {
  const auto counts = NumbersOf(UsualStore(), "PaymentCalendar", "FrequencyExtInfo");
  EXPECT_EQ(*counts.begin(), 1);
  EXPECT_GT(*counts.rbegin(), 1);
}

// The records that PaymentCalendar names.
Rows ScheduledRecords(Database& store) {
  const auto named = NumbersOf(store, "PaymentCalendar", "TransactionRecordNumber");
  Rows records = RowsOf(store, "TransactionRecord");
  std::erase_if(records, [&](const Row& record) {
    return !named.contains(record.Long("TransactionRecordNumber"));
  });
  return records;
}

TEST(Calendar, NamesPatternsAlone) {
  for (const Row& record : ScheduledRecords(UsualStore())) {
    EXPECT_EQ(record.Long("TransactionRecordType"), vetlo::kScheduledPattern);
  }
}

TEST(Calendar, HasPaymentsAndDepositsInTheCurrentMonth) {
  std::set<std::int32_t> types;
  for (const Row& record : ScheduledRecords(UsualStore())) {
    const vetlo::CalendarDay day = vetlo::CalendarDayOf(record.Day("TransactionDate"));
    if (day.year == 2026 && day.month == 3) {
      types.insert(record.Long("TransactionType"));
    }
  }
  EXPECT_TRUE(types.contains(vetlo::kExpense));
  EXPECT_TRUE(types.contains(vetlo::kIncome));
}

TEST(Calendar, StaysInTheCurrentMonthOnItsFirstDay) {
  HouseholdPlan plan = PlanOf(3, 1000);
  plan.today = vetlo::DateSerial(2026, 3, 1);
  const auto store = StoreOf(plan);
  for (const Row& record : ScheduledRecords(*store)) {
    EXPECT_GE(record.Day("TransactionDate"), plan.today);
  }
}

}  // namespace
}  // namespace quillmarsh
