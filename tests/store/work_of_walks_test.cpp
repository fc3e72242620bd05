#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>

#include "tests/support/small_store.h"
#include "vetlo/store/sqlite/select_text.h"
#include "vetlo/store/sqlite/sqlite_database.h"

// What a walk costs, counted in the instructions of the engine.

namespace vetlo {
namespace {

using testing::SmallStore;

constexpr std::int32_t kAccounts = 4000;
constexpr std::int32_t kRareType = 3;
constexpr std::int32_t kAccountsOfRareType = 40;

sqlite3* HandleOf(Database& store) {
  return dynamic_cast<SqliteDatabase&>(store).connection().handle();
}

std::unique_ptr<Database> ManyAccounts() {
  SmallStore store;
  for (std::int32_t i = 1; i <= kAccounts; ++i) {
    const bool rare = i % (kAccounts / kAccountsOfRareType) == 0;
    store.Account(i, "account " + std::to_string(i * 7919 % kAccounts), rare ? kRareType : 1, i);
  }
  return store.Open();
}

// How many instructions it takes to walk a text and read one column of each row.
double WorkOfWalk(Database& store, const std::string& text, std::int32_t expected_rows) {
  constexpr int kInstructionsPerCall = 10;
  int calls = 0;
  const auto count = [](void* to) {
    ++*static_cast<int*>(to);
    return 0;
  };
  sqlite3_progress_handler(HandleOf(store), kInstructionsPerCall, count, &calls);
  std::int32_t rows = 0;
  ForEachRowOf(store, text, [&](Recordset& rec) {
    static_cast<void>(LongField(rec, "AccountNumber"));
    ++rows;
  });
  sqlite3_progress_handler(HandleOf(store), 0, nullptr, nullptr);
  EXPECT_EQ(rows, expected_rows);
  return calls;
}

// The engine's plan for a shape of text whose readers read these columns.
std::string PlanFor(Database& store, std::string_view shape, ColumnSet columns) {
  const std::string sql = SelectSql(PlanOf(shape), columns, Direction::kForward);
  Statement statement(HandleOf(store), "EXPLAIN QUERY PLAN " + sql);
  constexpr int kDetail = 3;
  std::string plan;
  while (statement.Step()) {
    plan += ToText(statement.Value(kDetail, ColumnType::kText)) + "\n";
  }
  return plan;
}

ColumnSet ColumnsNamed(std::string_view shape, std::initializer_list<std::string_view> names) {
  const SelectPlan plan = PlanOf(shape);
  ColumnSet columns = 0;
  for (std::size_t i = 0; i < plan.columns.size(); ++i) {
    for (const std::string_view name : names) {
      columns |= plan.columns[i].name == name ? ColumnSet{1} << i : 0;
    }
  }
  return columns;
}

TEST(WorkOfWalks, IsThatOfOneSearchForTheFirstReaderToo) {
  const auto store = ManyAccounts();
  const std::string text = "SELECT * FROM Account WHERE AccountType=" + std::to_string(kRareType) +
                           " ORDER BY AccountName";
  const double first = WorkOfWalk(*store, text, kAccountsOfRareType);
  const double second = WorkOfWalk(*store, text, kAccountsOfRareType);
  EXPECT_LT(first, 1.3 * second);
}

TEST(WorkOfWalks, FallsWithinTheFirstWalkWhereNothingIsSorted) {
  const auto store = ManyAccounts();
  const std::string text = "SELECT * FROM Account";
  const double first = WorkOfWalk(*store, text, kAccounts);
  const double second = WorkOfWalk(*store, text, kAccounts);
  EXPECT_LT(first, 1.3 * second);
}

TEST(WorkOfWalks, HasNoSortInItForThePayeesRecords) {
  const auto store = SmallStore().Open();
  const std::initializer_list<std::string_view> read = {"Total", "AccountNumber",
                                                        "TransactionType"};
  for (const std::string payee : {"PayeeNumber=?", "ISNULL(PayeeNumber)"}) {
    const std::string shape =
        "SELECT * FROM TransactionRecord WHERE TransactionRecordType=? AND TransactionDate>=? "
        "AND TransactionDate<=? AND " +
        payee + " ORDER BY TransactionDate";
    const std::string plan = PlanFor(*store, shape, ColumnsNamed(shape, read));
    EXPECT_NE(plan.find("COVERING INDEX TransactionsOfPayee"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
  }
}

}  // namespace
}  // namespace vetlo
