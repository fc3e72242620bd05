#include "vetlo/store/model.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vetlo {
namespace {

TEST(FindTable, TakesNamesInAnyCase) {
  ASSERT_NE(FindTable("payMENTcalendar"), nullptr);
  EXPECT_EQ(FindTable("payMENTcalendar")->name, "PaymentCalendar");
}

TEST(FindTable, KnowsNoOtherName) {
  for (const char* name : {"", "Accounts", "Accoun", " Account", "sqlite_schema"}) {
    EXPECT_EQ(FindTable(name), nullptr) << name;
  }
}

TEST(FindColumn, TakesNamesInAnyCase) {
  const Column* const column = FindColumn(*FindTable("Account"), "ACCOUNTNAME");
  ASSERT_NE(column, nullptr);
  EXPECT_EQ(column->name, "AccountName");
}

TEST(FindColumn, KnowsNoColumnOfAnotherTable) {
  EXPECT_EQ(FindColumn(*FindTable("Account"), "PayeeName"), nullptr);
}

TEST(EqualsIgnoringCase, LooksAwayFromTheCaseOfAsciiLettersAlone) {
  EXPECT_TRUE(EqualsIgnoringCase("Az", "aZ"));
  EXPECT_FALSE(EqualsIgnoringCase("Ä", "ä"));
  EXPECT_FALSE(EqualsIgnoringCase("@[", "`{"));
}

TEST(EqualsIgnoringCase, TellsABeginningFromTheWhole) {
  EXPECT_FALSE(EqualsIgnoringCase("Account", "Acc"));
  EXPECT_FALSE(EqualsIgnoringCase("Acc", "Account"));
}

TEST(StoreTables, HaveNamesOfTheirOwn) {
  std::set<std::string_view> names;
  for (const Table& table : StoreTables()) {
    EXPECT_TRUE(names.insert(table.name).second) << table.name;
  }
  EXPECT_EQ(names.size(), 19U);
}

TEST(StoreTables, HaveTheirKeyInFront) {
  for (const Table& table : StoreTables()) {
    EXPECT_EQ(table.key == KeyKind::kNone, table.key_columns == 0) << table.name;
    for (std::int32_t i = 0; i < table.key_columns; ++i) {
      const Column& column = table.columns[static_cast<std::size_t>(i)];
      EXPECT_EQ(column.type, ColumnType::kLong) << table.name;
      EXPECT_TRUE(column.required) << table.name;
    }
  }
}

}  // namespace
}  // namespace vetlo
