#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "vetlo/store/database.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace vetlo::testing {

// 12.34 as an amount.
Currency Money(double amount);

// A day by its parts.
Date Day(int year, int month, int day);

// A transaction with the fields that most tests care for; all else is Null.
struct TestTransaction {
  std::int32_t type = kIncome;
  Date date = Day(2026, 1, 15);
  double total = 0;
  Variant account = Null{};
  Variant other_account = Null{};  // ToOrFundAccountNumber
  std::int32_t record_type = kOrdinaryRecord;
  Variant category = Null{};
  Variant sub_category = Null{};
  Variant payee = Null{};
  Variant item = Null{};
  Variant quantity = Null{};
  Variant classification1_item = Null{};
  Variant classification1_sub_item = Null{};
  Variant classification2_item = Null{};
  Variant classification2_sub_item = Null{};
};

// A settings row; what is not named is a report of all dates.
struct TestRow {
  std::int32_t number = 1;
  std::int32_t report_number = 5;
  ChartOrReport output = ChartOrReport::kReport;
  std::int32_t chart_type = 1;
  Variant legend = false;
  Variant title = "Title";
  std::int32_t range = 0;
  std::int32_t range_number = 1;
  Variant from = Null{};
  Variant to = Null{};
  std::int32_t group = 1;
  Variant parameter1 = Null{};
  Variant parameter2 = Null{};
};

// A store built in a few lines, in memory:
//
//   auto store = SmallStore().Account(1, "Wallet", kCashAccount, 12.5).Row({.number = 7}).Open();
class SmallStore {
 public:
  SmallStore() = default;
  // In a new file; it is complete after Finish.
  explicit SmallStore(const std::string& path) : builder_(path) {}

  SmallStore& Account(std::int32_t number, const std::string& name, std::int32_t type,
                      double opening_balance = 0);
  // Numbered in the order in which they are added, from 1.
  SmallStore& Transaction(const TestTransaction& transaction);
  SmallStore& Row(const TestRow& row);
  // Any row of any table.
  SmallStore& Insert(std::string_view table, const StoreBuilder::Values& values);
  // Runs an SQL statement as it stands, to damage what is there.
  SmallStore& Execute(const std::string& sql);

  std::unique_ptr<Database> Open() { return builder_.Open(); }
  void Finish() { builder_.Finish(); }

 private:
  StoreBuilder builder_;
  std::int32_t transactions_ = 0;
};

}  // namespace vetlo::testing
