#include "tests/support/small_store.h"

namespace vetlo::testing {

Currency Money(double amount) { return CCur(amount); }

Date Day(int year, int month, int day) { return DateSerial(year, month, day); }

SmallStore& SmallStore::Account(std::int32_t number, const std::string& name, std::int32_t type,
                                double opening_balance) {
  return Insert("Account", {{"AccountNumber", number},
                            {"AccountName", name},
                            {"AccountType", type},
                            {"Balance", Money(opening_balance)},
                            {"OpeningBalance", Money(opening_balance)}});
}

SmallStore& SmallStore::Transaction(const TestTransaction& transaction) {
  return Insert("TransactionRecord",
                {{"TransactionRecordNumber", ++transactions_},
                 {"TransactionRecordType", transaction.record_type},
                 {"TransactionType", transaction.type},
                 {"TransactionDate", transaction.date},
                 {"AccountNumber", transaction.account},
                 {"ToOrFundAccountNumber", transaction.other_account},
                 {"CategoryNumber", transaction.category},
                 {"SubCategoryNumber", transaction.sub_category},
                 {"PayeeNumber", transaction.payee},
                 {"AccountItemNumber", transaction.item},
                 {"Classification1ItemNumber", transaction.classification1_item},
                 {"Classification1SubItemNumber", transaction.classification1_sub_item},
                 {"Classification2ItemNumber", transaction.classification2_item},
                 {"Classification2SubItemNumber", transaction.classification2_sub_item},
                 {"Quantity", transaction.quantity},
                 {"Total", Money(transaction.total)}});
}

SmallStore& SmallStore::Row(const TestRow& row) {
  return Insert("ChartReportSubType", {{"ChartReportSubTypeNumber", row.number},
                                       {"ChartReportType", row.group},
                                       {"ChartReportSubTypeAttr", row.report_number},
                                       {"ChartOrReportType", static_cast<std::int32_t>(row.output)},
                                       {"ChartType", row.chart_type},
                                       {"Legend", row.legend},
                                       {"Title", row.title},
                                       {"DateRangeType", row.range},
                                       {"DateRangeExtInfo", row.range_number},
                                       {"FromDate", row.from},
                                       {"ToDate", row.to},
                                       {"Parameter1", row.parameter1},
                                       {"Parameter2", row.parameter2}});
}

SmallStore& SmallStore::Insert(std::string_view table, const StoreBuilder::Values& values) {
  builder_.Insert(table, values);
  return *this;
}

SmallStore& SmallStore::Execute(const std::string& sql) {
  builder_.Execute(sql);
  return *this;
}

}  // namespace vetlo::testing
