#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "quillmarsh/sample/household.h"
#include "tests/support/plain_store.h"
#include "tests/support/program.h"
#include "tests/support/stored_bytes.h"
#include "vetlo/store/sqlite/sqlite_store.h"

// The indexes of a store make it fast. What it answers does not depend on them.

namespace vetlo {
namespace {

using Rows = std::vector<std::vector<Variant>>;

quillmarsh::HouseholdPlan Plan() {
  quillmarsh::HouseholdPlan plan;
  plan.years = 3;
  plan.transactions = 1500;
  plan.seed = 7;
  plan.today = DateSerial(2026, 3, 14);
  return plan;
}

enum class Indexes { kAsWritten, kNone, kOthers };

// Indexes that tempt the engine to read the rows in other orders.
constexpr const char* kOtherIndexes =
    "CREATE INDEX a ON TransactionRecord (Total, AccountNumber);"
    "CREATE INDEX b ON TransactionRecord (TransactionDate DESC);"
    "CREATE INDEX c ON PriceRecord (PriceDate, Price DESC);"
    "CREATE INDEX d ON Account (AccountType, AccountName DESC);"
    "CREATE INDEX e ON AssociatedAccountInfo (AssociatedAccountNumber DESC)";

std::unique_ptr<Database> HouseholdWith(Indexes indexes) {
  const testing::TestFolder folder;
  const std::string path = folder / "store";
  StoreBuilder builder(path);
  quillmarsh::WriteHousehold(builder, Plan());
  builder.Finish();
  if (indexes == Indexes::kNone) {
    testing::DropIndexes(path);
  } else if (indexes == Indexes::kOthers) {
    testing::RunSql(path, kOtherIndexes);
  }
  // An open file outlives its name.
  return OpenStore(path, StoreAccess::kReadOnly);
}

std::vector<std::string> ColumnsOf(std::string_view table) {
  std::vector<std::string> names;
  for (const Column& column : FindTable(table)->columns) {
    names.emplace_back(column.name);
  }
  return names;
}

Rows RowsOf(Database& store, std::string_view text, const std::vector<std::string>& columns) {
  Rows rows;
  ForEachRowOf(store, text, [&](Recordset& rec) {
    std::vector<Variant>& row = rows.emplace_back();
    for (const std::string& column : columns) {
      row.push_back(rec.Fields(column));
    }
  });
  return rows;
}

struct Reading {
  const char* text;
  std::vector<std::string> columns;
};

const Reading kReadings[] = {
    {"Account", ColumnsOf("Account")},
    {"PriceRecord", ColumnsOf("PriceRecord")},
    {"AssociatedAccountInfo", ColumnsOf("AssociatedAccountInfo")},
    {"SELECT * FROM Account WHERE AccountType= 8", {"AccountNumber"}},
    {"SELECT * FROM Account ORDER BY AccountName,AccountType,AccountNumber", {"AccountNumber"}},
    {"SELECT * FROM PriceRecord WHERE AccountItemNumber= 1 AND PriceTypeNumber= 1 ORDER BY "
     "PriceDate",
     {"PriceDate", "Price"}},
    {"SELECT * FROM TransactionRecord WHERE AccountNumber= 1 AND (TransactionRecordType= 0 OR "
     "TransactionRecordType= 4) ORDER BY TransactionRecordNumber",
     ColumnsOf("TransactionRecord")},
    {"SELECT * FROM TransactionRecord WHERE TransactionDate>=#2025-01-01# ORDER BY "
     "TransactionDate",
     {"TransactionRecordNumber", "Total"}},
    {"SELECT T1.FrequencyType,T1.FrequencyExtInfo,T2.* FROM PaymentCalendar AS T1,"
     "TransactionRecord AS T2 WHERE T1.TransactionRecordNumber=T2.TransactionRecordNumber ORDER "
     "BY T2.TransactionDate,T2.TransactionRecordNumber",
     {"TransactionRecordNumber", "FrequencyType"}},
    {"SELECT DISTINCT AssociatedAccountNumber,AccountNumber FROM AssociatedAccountInfo",
     {"AssociatedAccountNumber", "AccountNumber"}},
    {"SELECT DISTINCT T1.AccountNumber,T1.AccountName,T1.Balance FROM Account AS T1,"
     "AssociatedAccountInfo AS T2 WHERE T1.AccountNumber=T2.AssociatedAccountNumber",
     {"AccountNumber", "AccountName", "Balance"}},
    {"SELECT SUM(T1.Jan) AS S FROM SubCategoryBudgetInfo AS T1,SubCategory AS T2 WHERE "
     "T1.SubCategoryNumber=T2.SubCategoryNumber AND T2.CategoryNumber= 1",
     {"S"}},
};

class AnswersWithoutIndexes : public ::testing::TestWithParam<Reading> {};

TEST_P(AnswersWithoutIndexes, AreTheSame) {
  const auto store = HouseholdWith(Indexes::kAsWritten);
  const Rows expected = RowsOf(*store, GetParam().text, GetParam().columns);
  ASSERT_FALSE(expected.empty());
  for (const Indexes indexes : {Indexes::kNone, Indexes::kOthers}) {
    const auto other = HouseholdWith(indexes);
    for (const char* reader : {"first", "second"}) {
      EXPECT_TRUE(RowsOf(*other, GetParam().text, GetParam().columns) == expected)
          << reader << " reader of " << GetParam().text;
    }
    const Snapshot snapshot(*other);
    for (const char* reader : {"first", "second", "third", "fourth"}) {
      EXPECT_TRUE(RowsOf(*other, GetParam().text, GetParam().columns) == expected)
          << reader << " reader in a snapshot of " << GetParam().text;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, AnswersWithoutIndexes, ::testing::ValuesIn(kReadings),
                         [](const auto& test) { return std::to_string(test.index); });

}  // namespace
}  // namespace vetlo
