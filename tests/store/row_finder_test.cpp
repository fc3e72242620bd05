// A store that lacks indexes finds rows by lists of its own. What it answers does not depend on
// them, whatever the store holds, and it answers again and again at little cost.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "tests/support/plain_store.h"
#include "tests/support/program.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/sqlite_database.h"

namespace vetlo::testing {
namespace {

using Dice = std::mt19937;

int Roll(Dice& dice, int from, int to) {
  return std::uniform_int_distribution<int>(from, to)(dice);
}

constexpr int kTransactions = 1500;
constexpr int kPrices = 600;

Variant NumberOrNull(Dice& dice, int last, int nulls_in_ten) {
  return Roll(dice, 1, 10) <= nulls_in_ten ? Variant(Null{}) : Variant(Roll(dice, 1, last));
}

Date AnyDay(Dice& dice) {
  // Some have a time of day.
  return Date{45000.0 + Roll(dice, 0, 1500) + (Roll(dice, 1, 20) == 1 ? 0.5 : 0)};
}

// A store of records of every kind in no order of their dates.
void WriteRecords(const std::string& path) {
  Dice dice(5);
  SmallStore store(path);
  for (int i = 1; i <= 12; ++i) {
    store.Account(i, "Account " + std::to_string(i), i % 10, i);
  }
  for (int i = 1; i <= kTransactions; ++i) {
    store.Transaction({.type = Roll(dice, 0, 13),
                       .date = AnyDay(dice),
                       .total = Roll(dice, -500, 500) / 10.0,
                       .account = NumberOrNull(dice, 12, 1),
                       .other_account = NumberOrNull(dice, 12, 7),
                       .record_type = Roll(dice, 1, 5) == 1 ? kSplitLine : kOrdinaryRecord,
                       .category = NumberOrNull(dice, 20, 2),
                       .sub_category = NumberOrNull(dice, 40, 5),
                       .payee = NumberOrNull(dice, 60, 2),
                       .item = NumberOrNull(dice, 4, 9)});
  }
  for (int i = 1; i <= kPrices; ++i) {
    store.Insert("PriceRecord", {{"AccountItemNumber", Roll(dice, 1, 9)},
                                 {"PriceTypeNumber", Roll(dice, 1, 2)},
                                 {"PriceDate", AnyDay(dice)},
                                 {"Price", Roll(dice, 1, 99) / 4.0}});
  }
  store.Finish();
  DropIndexes(path);
}

// ---- stores that hold what they should not

constexpr const char* kDamage =
    "UPDATE TransactionRecord SET AccountNumber = 'x' WHERE TransactionRecordNumber % 41 = 0;"
    "UPDATE TransactionRecord SET AccountNumber = 3.5 WHERE TransactionRecordNumber % 43 = 0;"
    "UPDATE TransactionRecord SET CategoryNumber = x'33' WHERE TransactionRecordNumber % 47 = 0;"
    "UPDATE TransactionRecord SET PayeeNumber = 1e300 WHERE TransactionRecordNumber % 53 = 0;"
    "UPDATE TransactionRecord SET TransactionDate = '2026-01-01' WHERE TransactionRecordNumber % "
    "37 = 0;"
    "UPDATE TransactionRecord SET TransactionDate = 9223372036854775807 WHERE "
    "TransactionRecordNumber % 59 = 0;"
    "UPDATE TransactionRecord SET TransactionDate = x'00' WHERE TransactionRecordNumber % 61 = 0;"
    "UPDATE TransactionRecord SET TransactionType = '11' || 'y' WHERE TransactionRecordNumber % 67 "
    "= 0;"
    "UPDATE PriceRecord SET AccountItemNumber = '2 ' WHERE rowid % 31 = 0;"
    "UPDATE PriceRecord SET PriceDate = 'long ago' WHERE rowid % 29 = 0";

// Gives the columns of two tables other types, which is what their values become then.
std::string Retyped(const std::string& table, const std::string& type) {
  std::string columns;
  for (const Column& column : FindTable(table)->columns) {
    const bool key = column.name == "TransactionRecordNumber";
    columns += (columns.empty() ? "" : ", ") + std::string(column.name) + " " +
               (key ? "INTEGER PRIMARY KEY" : type);
  }
  return "CREATE TABLE Copy (" + columns + "); INSERT INTO Copy SELECT * FROM " + table +
         "; DROP TABLE " + table + "; ALTER TABLE Copy RENAME TO " + table + ";";
}

struct Kind {
  const char* name;
  std::string sql;
  double most_work;  // for one that a walk over the table takes

  friend std::ostream& operator<<(std::ostream& out, const Kind& kind) { return out << kind.name; }
};

std::vector<Kind> Kinds() {
  const auto retyped = [](const std::string& type) {
    return Retyped("TransactionRecord", type) + Retyped("PriceRecord", type) + kDamage;
  };
  return {{"AsItShouldBe", "", 0.5},
          {"Damaged", kDamage, 0.5},
          {"OfReals", retyped("REAL"), 0.5},
          {"WithoutTypes", retyped(""), 0.5},
          // Numbers that stand there as texts are in no list, and each of them may be meant.
          {"OfTexts", retyped("TEXT"), 2.5}};
}

// ---- questions

std::string Literal(Dice& dice) {
  return "#" + std::to_string(Roll(dice, 2023, 2027)) + "-0" + std::to_string(Roll(dice, 1, 9)) +
         "-1" + std::to_string(Roll(dice, 0, 9)) + "#";
}

// A text like those of the component, with other numbers and dates each time.
std::string AnyText(Dice& dice) {
  const auto number = [&](int last) { return "= " + std::to_string(Roll(dice, 1, last)); };
  const std::string date = Literal(dice);
  const std::string period =
      Roll(dice, 1, 3) == 1 ? "TransactionDate>=#2024-03-01# AND TransactionDate<=#2024-03-31#"
                            : "TransactionDate>=" + date + " AND TransactionDate<=#2026-12-31#";
  const std::string select = "SELECT * FROM TransactionRecord WHERE ";
  const std::string prices = "SELECT * FROM PriceRecord WHERE AccountItemNumber";
  switch (Roll(dice, 1, 12)) {
    case 1:
      return select + "AccountNumber" + number(12) + " AND TransactionDate<" + date +
             " AND (TransactionRecordType= 0 OR TransactionRecordType= 4)";
    case 2:
      return select + "ToOrFundAccountNumber" + number(12) + " AND TransactionDate<=" + date;
    case 3:
      return select + "TransactionType" + number(13) + " AND " + period + " AND CategoryNumber" +
             number(20);
    case 4:
      return select + "(TransactionType= 4 OR TransactionType= 6 OR TransactionType= 8) AND " +
             period + " AND SubCategoryNumber" + number(40);
    case 5:
      return select + period + " AND PayeeNumber" + number(60) + " ORDER BY TransactionDate";
    case 6:
      return select + "AccountNumber" + number(12) + " AND AccountItemNumber" + number(4) +
             " ORDER BY TransactionRecordNumber";
    case 7:
      return select + period + " AND TransactionType" + number(13) + " AND ISNULL(CategoryNumber)";
    case 8:
      return "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
             "T1.AccountNumber=T2.AccountNumber AND T2.AccountType" +
             number(9) + " AND T1.ToOrFundAccountNumber" + number(12) +
             " AND (T1.TransactionType= 2 OR T1.TransactionType= 9) AND T1.TransactionDate>=" +
             date;
    case 9:
      return "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
             "(T1.AccountNumber=T2.AccountNumber OR T1.ToOrFundAccountNumber=T2.AccountNumber) AND "
             "T2.AccountType" +
             number(9) + " AND T1.PayeeNumber" + number(60) + " ORDER BY T1.TransactionDate";
    case 10:
      return prices + number(9) + " AND PriceTypeNumber= 1 AND PriceDate<=" + date +
             " ORDER BY PriceDate";
    case 11:
      return prices + number(9) + " AND PriceDate>=" + date +
             " AND PriceDate<=#2026-01-01# ORDER BY PriceDate";
    default:
      return select + "CategoryNumber" + number(20) + " AND (NOT ISNULL(SubCategoryNumber))";
  }
}

std::vector<std::string> AnyTexts() {
  Dice dice(77);
  std::vector<std::string> texts(250);
  std::ranges::generate(texts, [&] { return AnyText(dice); });
  return texts;
}

// A row in all its fields, what cannot be read as the number of its failure.
std::string RowText(Recordset& rec, std::string_view table) {
  std::string text;
  for (const Column& column : FindTable(table)->columns) {
    Variant value;
    const std::int32_t failure = ResumeNext([&] { value = rec.Fields(column.name); });
    text += failure != 0    ? "failure " + std::to_string(failure)
            : IsNull(value) ? "Null"
                            : ToText(value);
    text += "|";
  }
  return text;
}

// All rows, in their order where the text asks for one, and then the last once more.
std::vector<std::string> RowsOf(Database& store, const std::string& text) {
  const std::string_view table =
      text.find("PriceRecord") == std::string::npos ? "TransactionRecord" : "PriceRecord";
  std::vector<std::string> rows;
  const auto rec = store.OpenRecordset(text);
  ForEachRow(*rec, [&](Recordset& row) { rows.push_back(RowText(row, table)); });
  if (text.find("ORDER BY") == std::string::npos) {
    std::ranges::sort(rows);
  } else if (!rows.empty()) {
    rec->MoveLast();
    rows.push_back("last: " + RowText(*rec, table));
  }
  return rows;
}

// How much the engine does meanwhile.
double WorkOf(Database& store, const std::function<void()>& piece) {
  sqlite3* const handle = dynamic_cast<SqliteDatabase&>(store).connection().handle();
  constexpr int kInstructionsPerCall = 10;
  int calls = 0;
  const auto count = [](void* to) {
    ++*static_cast<int*>(to);
    return 0;
  };
  sqlite3_progress_handler(handle, kInstructionsPerCall, count, &calls);
  piece();
  sqlite3_progress_handler(handle, 0, nullptr, nullptr);
  return calls;
}

class FoundRowsOf : public ::testing::TestWithParam<Kind> {
 protected:
  FoundRowsOf() {
    WriteRecords(path_);
    if (!GetParam().sql.empty()) {
      RunSql(path_, GetParam().sql);
    }
  }

  TestFolder folder_;
  const std::string path_ = folder_ / "store";
};

INSTANTIATE_TEST_SUITE_P(All, FoundRowsOf, ::testing::ValuesIn(Kinds()),
                         [](const auto& test) { return test.param.name; });

// Outside a snapshot nothing is found, and every text walks over the table.
TEST_P(FoundRowsOf, AreThoseOfAWalk) {
  const auto store = OpenStore(path_, StoreAccess::kReadOnly);
  const auto walking = OpenStore(path_, StoreAccess::kReadOnly);
  const Snapshot snapshot(*store);
  for (const std::string& text : AnyTexts()) {
    EXPECT_EQ(RowsOf(*store, text), RowsOf(*walking, text)) << text;
  }
}

TEST_P(FoundRowsOf, TakeLessWorkThanWalks) {
  const auto store = OpenStore(path_, StoreAccess::kReadOnly);
  const auto ask = [&] {
    for (const std::string& text : AnyTexts()) {
      RowsOf(*store, text);
    }
  };
  const double walking = WorkOf(*store, ask);
  const Snapshot snapshot(*store);
  const double finding = WorkOf(*store, ask);
  EXPECT_LT(finding, GetParam().most_work * walking);
}

// ---- lists and changes

class FoundRows : public ::testing::Test {
 protected:
  FoundRows() { WriteRecords(path_); }

  static std::size_t CountOf(Database& store, const std::string& text) {
    return RowsOf(store, text).size();
  }
  // Asks until there are lists.
  static std::size_t CountAgainAndAgain(Database& store) {
    std::size_t count = 0;
    for (int i = 0; i < 5; ++i) {
      count = CountOf(store, kText);
    }
    return count;
  }

  static constexpr const char* kText =
      "SELECT * FROM TransactionRecord WHERE PayeeNumber= 7 AND TransactionDate>=#2000-01-01#";
  static constexpr const char* kChange =
      "UPDATE TransactionRecord SET PayeeNumber = 7 WHERE TransactionRecordNumber <= 50";

  TestFolder folder_;
  const std::string path_ = folder_ / "store";
};

TEST_F(FoundRows, AreForgottenOnceAnotherProgramHasChangedTheStore) {
  const auto store = OpenStore(path_, StoreAccess::kReadOnly);
  std::size_t before = 0;
  {
    const Snapshot snapshot(*store);
    before = CountAgainAndAgain(*store);
  }
  RunSql(path_, kChange);
  const Snapshot snapshot(*store);
  const std::size_t after = CountAgainAndAgain(*store);
  EXPECT_GT(after, before);
  EXPECT_EQ(after, CountOf(*OpenStore(path_, StoreAccess::kReadOnly), kText));
}

TEST_F(FoundRows, AreKeptFromSnapshotToSnapshot) {
  const auto store = OpenStore(path_, StoreAccess::kReadOnly);
  const auto ask = [&] {
    const Snapshot snapshot(*store);
    CountOf(*store, kText);
  };
  const double first = WorkOf(*store, ask);
  ask();
  ask();
  EXPECT_LT(WorkOf(*store, ask) * 5, first);
}

TEST_F(FoundRows, OfAWalkThatOutlivesItsSnapshotAreShownToItsEnd) {
  RunSql(path_, "PRAGMA journal_mode = WAL");
  const auto store = OpenStore(path_, StoreAccess::kReadOnly);
  std::unique_ptr<Recordset> rec;
  std::size_t count = 0;
  {
    const Snapshot snapshot(*store);
    count = CountAgainAndAgain(*store);
    rec = store->OpenRecordset(kText);
    rec->MoveNext();
  }
  RunSql(path_, kChange);
  {
    const Snapshot snapshot(*store);
    CountAgainAndAgain(*store);
  }
  std::size_t shown = 1;
  for (; !rec->Eof(); rec->MoveNext()) {
    ++shown;
  }
  EXPECT_EQ(shown, count);
}

TEST_F(FoundRows, ShowWhatAChangeHasDoneSoFar) {
  const auto store = OpenStore(path_, StoreAccess::kReadWrite);
  {
    const Snapshot snapshot(*store);
    CountAgainAndAgain(*store);
  }
  const Transaction transaction(*store);
  const auto rows = store->OpenRecordset("ChartReportSubType");
  rows->AddNew();
  for (const Column& column : FindTable("ChartReportSubType")->columns) {
    if (column.required) {
      rows->SetField(column.name, 1);
    }
  }
  rows->Update();
  const Snapshot snapshot(*store);
  EXPECT_EQ(rows->RecordCount(), 1);
  EXPECT_GT(CountAgainAndAgain(*store), 0U);
}

TEST_F(FoundRows, AreNotNeededWhereTheStoreHasItsIndexes) {
  const std::string indexed = folder_ / "indexed";
  SmallStore(indexed).Account(1, "Wallet", kCashAccount).Finish();
  const auto store = OpenStore(indexed, StoreAccess::kReadOnly);
  sqlite3* const handle = dynamic_cast<SqliteDatabase&>(*store).connection().handle();
  EXPECT_NE(
      sqlite3_exec(handle, "SELECT * FROM sqlite_found_rows(NULL)", nullptr, nullptr, nullptr),
      SQLITE_OK);
}

}  // namespace
}  // namespace vetlo::testing
