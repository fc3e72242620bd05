#include "tests/support/household.h"

#include "vetlo/services/catalogue_of_defaults.h"

namespace vetlo::testing {
namespace {

constexpr std::int32_t kChartRowOffset = 100;

void AddAccounts(SmallStore& store) {
  store.Account(1, "Everyday", kCheckingAccount, 1000)
      .Account(2, "Card", kCreditCard)
      .Account(3, "Loan", kLiability, -500)
      .Account(4, "Lent", kCreditorsRights, 75)
      .Account(5, "Broker", kInvestmentAccount)
      .Account(6, "House", kCommonAsset, 2000)
      .Insert("AssociatedAccountInfo", {{"AccountNumber", 5}, {"AssociatedAccountNumber", 1}});
}

void AddNames(SmallStore& store) {
  const auto category = [&](std::int32_t number, const char* name, std::int32_t type) {
    store.Insert("Category",
                 {{"CategoryNumber", number}, {"CategoryName", name}, {"CategoryType", type}});
  };
  category(1, "Food", 1);
  category(2, "Salary", 0);
  store.Insert("SubCategory",
               {{"SubCategoryNumber", 1}, {"SubCategoryName", "Bakery"}, {"CategoryNumber", 1}});
  store.Insert("Payee", {{"PayeeNumber", 1}, {"PayeeName", "Corner Shop"}});
  store.Insert("Classification", {{"ClassificationNumber", 1}, {"ClassificationName", "Person"}});
  store.Insert("ClassificationItem", {{"ClassificationItemNumber", 1},
                                      {"ClassificationItemName", "Ann"},
                                      {"ClassificationNumber", 1}});
  store.Insert("ClassificationSubItem", {{"ClassificationSubItemNumber", 1},
                                         {"ClassificationSubItemName", "School"},
                                         {"ClassificationItemNumber", 1}});
}

void AddSecurities(SmallStore& store) {
  store.Insert(
      "AccountItemType",
      {{"AccountItemTypeNumber", 1}, {"AccountItemTypeName", "Stock"}, {"BasicAccountType", 2}});
  store.Insert("PriceType", {{"PriceTypeNumber", 1}, {"PriceTypeAttr", 1}});
  store.Insert(
      "AccountItem",
      {{"AccountItemNumber", 1}, {"AccountItemName", "Alder"}, {"AccountItemTypeNumber", 1}});
  for (const auto& [day, price] : {std::pair{5, 10.0}, std::pair{12, 12.5}}) {
    store.Insert("PriceRecord", {{"AccountItemNumber", 1},
                                 {"PriceTypeNumber", 1},
                                 {"PriceDate", Day(2026, 3, day)},
                                 {"Price", price}});
  }
  store.Insert("LatestPriceInfo", {{"AccountItemNumber", 1}, {"Price", 12.5}});
}

void AddTransactions(SmallStore& store) {
  store
      .Transaction({.type = kIncome,
                    .date = Day(2026, 2, 27),
                    .total = 900,
                    .account = 1,
                    .category = 2,
                    .payee = 1})
      .Transaction({.type = kExpense,
                    .date = Day(2026, 3, 3),
                    .total = 45.5,
                    .account = 2,
                    .category = 1,
                    .sub_category = 1,
                    .payee = 1,
                    .classification1_item = 1,
                    .classification1_sub_item = 1})
      .Transaction({.type = kTransferOut,
                    .date = Day(2026, 3, 4),
                    .total = 60,
                    .account = 1,
                    .other_account = 4,
                    .payee = 1})
      .Transaction({.type = kTransferOut,
                    .date = Day(2026, 3, 4),
                    .total = 25,
                    .account = 1,
                    .other_account = 3,
                    .payee = 1})
      .Transaction({.type = kBuy,
                    .date = Day(2026, 3, 6),
                    .total = 100,
                    .account = 5,
                    .other_account = 1,
                    .item = 1,
                    .quantity = 10.0})
      .Transaction({.type = kDividend,
                    .date = Day(2026, 3, 9),
                    .total = 5,
                    .account = 5,
                    .other_account = 1,
                    .item = 1})
      .Transaction({.type = kExpense,
                    .date = Day(2026, 3, 25),
                    .total = 30,
                    .account = 1,
                    .record_type = kScheduledPattern,
                    .category = 1,
                    .payee = 1});
  store.Transaction({.type = kIncome,
                     .date = Day(2026, 3, 27),
                     .total = 950,
                     .account = 1,
                     .record_type = kScheduledPattern,
                     .category = 2});
  store.Insert("PaymentCalendar",
               {{"TransactionRecordNumber", 8}, {"FrequencyType", 4}, {"FrequencyExtInfo", 1}});
  store.Insert("PaymentCalendar",
               {{"TransactionRecordNumber", 7}, {"FrequencyType", 5}, {"FrequencyExtInfo", 1}});
}

void AddBudget(SmallStore& store) {
  store.Insert("Budget", {{"BudgetNumber", 1}, {"BudgetAttr", 1}});
  store.Insert("CategoryBudgetInfo",
               {{"BudgetNumber", 1}, {"CategoryNumber", 1}, {"Mar", Money(80)}});
  store.Insert("SubCategoryBudgetInfo",
               {{"BudgetNumber", 1}, {"SubCategoryNumber", 1}, {"Mar", Money(20)}});
}

bool TakesSubject(std::int32_t report_number) { return report_number >= 25 && report_number <= 30; }

void AddRows(SmallStore& store) {
  for (const ReportDefaults& report : AllReportDefaults()) {
    TestRow row;
    row.report_number = report.number;
    row.title = std::string(report.title);
    row.group = TakesSubject(report.number) ? kCallerParametersGroup : 1;
    row.chart_type = report.chart_type;
    row.number = report.number;
    store.Row(row);
    row.number += kChartRowOffset;
    row.output = ChartOrReport::kChart;
    store.Row(row);
  }
}

void AddAll(SmallStore& store) {
  AddAccounts(store);
  AddNames(store);
  AddSecurities(store);
  AddTransactions(store);
  AddBudget(store);
  AddRows(store);
}

}  // namespace

SmallStore HouseholdOfEveryKind() {
  SmallStore store;
  AddAll(store);
  return store;
}

void WriteHouseholdOfEveryKind(const std::string& path) {
  SmallStore store(path);
  AddAll(store);
  store.Finish();
}

std::unique_ptr<Database> HouseholdWithEveryRow() { return HouseholdOfEveryKind().Open(); }

Variant SubjectOfRow(std::int32_t row) {
  constexpr std::int32_t kAccountPrices = 26;
  constexpr std::int32_t kBroker = 5;
  return row % kChartRowOffset == kAccountPrices ? kBroker : 1;
}

std::vector<std::int32_t> RowsOfEveryForm() {
  std::vector<std::int32_t> rows;
  for (const ReportDefaults& report : AllReportDefaults()) {
    rows.push_back(report.number);
    rows.push_back(report.number + kChartRowOffset);
  }
  return rows;
}

}  // namespace vetlo::testing
