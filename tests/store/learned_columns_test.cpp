#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "tests/support/small_store.h"

// A store watches which columns the readers of a text read, and fetches those alone for the next
// reader. Whatever it has learned, the rows and values are the same.

namespace vetlo {
namespace {

using testing::Day;
using testing::Money;
using testing::SmallStore;

using Numbers = std::vector<std::int32_t>;

constexpr const char* kAllAccounts = "SELECT * FROM Account ORDER BY AccountName";

std::string NameOf(std::int32_t number) { return "account " + std::to_string(1000 + number); }

std::unique_ptr<Database> AccountsUpTo(std::int32_t last) {
  SmallStore store;
  for (std::int32_t i = 1; i <= last; ++i) {
    store.Account(i, NameOf(i), i % 10, i);
  }
  return store.Open();
}

Numbers UpTo(std::int32_t last) {
  Numbers numbers(static_cast<std::size_t>(last));
  std::iota(numbers.begin(), numbers.end(), 1);
  return numbers;
}

Numbers Walk(Recordset& rec) {
  Numbers numbers;
  ForEachRow(rec, [&](Recordset& row) { numbers.push_back(LongField(row, "AccountNumber")); });
  return numbers;
}

void ExpectRow(Recordset& rec, std::int32_t number) {
  EXPECT_EQ(rec.Fields("AccountNumber"), Variant(number));
  EXPECT_EQ(rec.Fields("AccountName"), Variant(NameOf(number)));
  EXPECT_EQ(rec.Fields("AccountType"), Variant(number % 10));
  EXPECT_EQ(rec.Fields("OpeningBalance"), Variant(Money(number)));
  EXPECT_EQ(rec.Fields("BankName"), Variant(Null{}));
}

class LearnedColumns : public ::testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(Rows, LearnedColumns,
                         ::testing::Values(0, 1, 2, 15, 16, 17, 18, 32, 33, 100));

TEST_P(LearnedColumns, ShowEachRowOnceToTheFirstReader) {
  const auto store = AccountsUpTo(GetParam());
  EXPECT_EQ(Walk(*store->OpenRecordset(kAllAccounts)), UpTo(GetParam()));
}

TEST_P(LearnedColumns, ShowEachRowOnceToTheSecondReader) {
  const auto store = AccountsUpTo(GetParam());
  Walk(*store->OpenRecordset(kAllAccounts));
  EXPECT_EQ(Walk(*store->OpenRecordset(kAllAccounts)), UpTo(GetParam()));
}

TEST_P(LearnedColumns, ShowEachRowOnceInATable) {
  const auto store = AccountsUpTo(GetParam());
  Walk(*store->OpenRecordset("Account"));
  EXPECT_EQ(Walk(*store->OpenRecordset("Account")), UpTo(GetParam()));
}

TEST_P(LearnedColumns, CountRowsOfWhichNothingIsRead) {
  const auto store = AccountsUpTo(GetParam());
  for (const char* reader : {"first", "second"}) {
    std::int32_t rows = 0;
    ForEachRowOf(*store, kAllAccounts, [&](Recordset&) { ++rows; });
    EXPECT_EQ(rows, GetParam()) << reader;
  }
}

TEST_P(LearnedColumns, ShowEachRowOnceToAReaderThatReadsAllColumns) {
  const auto store = AccountsUpTo(GetParam());
  Numbers numbers;
  ForEachRowOf(*store, kAllAccounts, [&](Recordset& rec) {
    for (const Column& column : FindTable("Account")->columns) {
      static_cast<void>(rec.Fields(column.name));
    }
    numbers.push_back(LongField(rec, "AccountNumber"));
  });
  EXPECT_EQ(numbers, UpTo(GetParam()));
}

TEST_P(LearnedColumns, LeaveTheOthersReadable) {
  const auto store = AccountsUpTo(GetParam());
  Walk(*store->OpenRecordset(kAllAccounts));
  std::int32_t number = 0;
  ForEachRowOf(*store, kAllAccounts, [&](Recordset& rec) { ExpectRow(rec, ++number); });
  EXPECT_EQ(number, GetParam());
}

TEST_P(LearnedColumns, LeaveTheOthersReadableLateInTheSameWalk) {
  const auto store = AccountsUpTo(GetParam());
  std::int32_t number = 0;
  ForEachRowOf(*store, kAllAccounts, [&](Recordset& rec) {
    ++number;
    if (number > 16) {
      ExpectRow(rec, number);
    } else {
      EXPECT_EQ(rec.Fields("AccountNumber"), Variant(number));
    }
  });
  EXPECT_EQ(number, GetParam());
}

TEST(LearnedColumns, AreLostToNobodyWhoMovesFirstEarly) {
  const auto store = AccountsUpTo(40);
  const auto rec = store->OpenRecordset(kAllAccounts);
  for (int i = 0; i < 5; ++i) {
    static_cast<void>(rec->Fields("AccountNumber"));
    rec->MoveNext();
  }
  EXPECT_EQ(Walk(*rec), UpTo(40));
}

TEST(LearnedColumns, AreLostToNobodyWhoMovesFirstLate) {
  const auto store = AccountsUpTo(40);
  const auto rec = store->OpenRecordset(kAllAccounts);
  for (int i = 0; i < 25; ++i) {
    static_cast<void>(rec->Fields("AccountType"));
    rec->MoveNext();
  }
  EXPECT_EQ(Walk(*rec), UpTo(40));
}

TEST(LearnedColumns, AreNotNeededToMoveLast) {
  const auto store = AccountsUpTo(40);
  const auto rec = store->OpenRecordset(kAllAccounts);
  rec->MoveLast();
  ExpectRow(*rec, 40);
}

TEST(LearnedColumns, AreNotNeededToMoveLastInMidWalk) {
  const auto store = AccountsUpTo(40);
  const auto rec = store->OpenRecordset(kAllAccounts);
  for (int i = 0; i < 3; ++i) {
    static_cast<void>(rec->Fields("AccountNumber"));
    rec->MoveNext();
  }
  rec->MoveLast();
  ExpectRow(*rec, 40);
  EXPECT_EQ(Walk(*rec), UpTo(40));
}

TEST(LearnedColumns, KeepTwoReadersAtOnceApart) {
  const auto store = AccountsUpTo(40);
  const auto a = store->OpenRecordset(kAllAccounts);
  const auto b = store->OpenRecordset(kAllAccounts);
  std::int32_t number = 0;
  while (!a->Eof()) {
    ++number;
    EXPECT_EQ(a->Fields("AccountNumber"), Variant(number));
    EXPECT_EQ(b->Fields("AccountName"), Variant(NameOf(number)));
    a->MoveNext();
    b->MoveNext();
  }
  EXPECT_EQ(number, 40);
  EXPECT_TRUE(b->Eof());
}

TEST(LearnedColumns, KeepNestedReadersApart) {
  const auto store = AccountsUpTo(20);
  for (const char* reader : {"first", "second"}) {
    Numbers outer;
    ForEachRowOf(*store, kAllAccounts, [&](Recordset& rec) {
      EXPECT_EQ(Walk(*store->OpenRecordset(kAllAccounts)), UpTo(20));
      outer.push_back(LongField(rec, "AccountNumber"));
    });
    EXPECT_EQ(outer, UpTo(20)) << reader;
  }
}

TEST(LearnedColumns, KeepReadersOfOneShapeWithOtherValuesApart) {
  const auto store = AccountsUpTo(40);
  const auto a = store->OpenRecordset("SELECT * FROM Account WHERE AccountType= 3");
  const auto b = store->OpenRecordset("SELECT * FROM Account WHERE AccountType= 4");
  EXPECT_EQ(Walk(*a), (Numbers{3, 13, 23, 33}));
  EXPECT_EQ(Walk(*b), (Numbers{4, 14, 24, 34}));
}

TEST(LearnedColumns, OfOneReaderServeANestedOneThatReadsOthers) {
  const auto store = AccountsUpTo(20);
  Walk(*store->OpenRecordset(kAllAccounts));
  std::int32_t number = 0;
  ForEachRowOf(*store, kAllAccounts, [&](Recordset& rec) {
    ++number;
    const auto inner = store->OpenRecordset(kAllAccounts);
    inner->MoveLast();
    EXPECT_EQ(inner->Fields("AccountName"), Variant(NameOf(20)));
    ExpectRow(rec, number);
  });
}

// ---- joins

std::unique_ptr<Database> ScheduledPayments(std::int32_t last) {
  SmallStore store;
  for (std::int32_t i = 1; i <= last; ++i) {
    store.Transaction({.date = Day(2026, 1, 1 + i % 28), .total = i * 1.5, .account = 100 - i});
    store.Insert("PaymentCalendar", {{"TransactionRecordNumber", last + 1 - i},
                                     {"FrequencyType", i % 13},
                                     {"FrequencyExtInfo", i}});
  }
  return store.Open();
}

constexpr const char* kPayments =
    "SELECT T1.FrequencyType,T1.FrequencyExtInfo,T2.* FROM PaymentCalendar AS T1,TransactionRecord "
    "AS T2 WHERE T1.TransactionRecordNumber=T2.TransactionRecordNumber ORDER BY "
    "T2.TransactionRecordNumber";

TEST(LearnedColumns, OfAJoinShowEachPairOnce) {
  const auto store = ScheduledPayments(40);
  for (const char* reader : {"first", "second"}) {
    Numbers numbers;
    ForEachRowOf(*store, kPayments, [&](Recordset& rec) {
      numbers.push_back(LongField(rec, "TransactionRecordNumber"));
      EXPECT_EQ(rec.Fields("FrequencyExtInfo"), Variant(41 - numbers.back()));
    });
    EXPECT_EQ(numbers, UpTo(40)) << reader;
  }
}

TEST(LearnedColumns, OfAJoinLeaveTheOthersOfEachTableReadable) {
  const auto store = ScheduledPayments(40);
  std::int32_t number = 0;
  ForEachRowOf(*store, kPayments, [&](Recordset& rec) {
    ++number;
    EXPECT_EQ(rec.Fields("TransactionRecordNumber"), Variant(number));
    if (number > 20) {
      EXPECT_EQ(rec.Fields("Total"), Variant(Money(number * 1.5)));
      EXPECT_EQ(rec.Fields("FrequencyType"), Variant((41 - number) % 13));
    }
  });
  EXPECT_EQ(number, 40);
}

// Fewer columns may be read in another order where the text asks for none.
TEST(LearnedColumns, ShowEachRowOnceWhereTheOrderIsFree) {
  const auto store = ScheduledPayments(60);
  for (const char* reader : {"first", "second"}) {
    Numbers accounts;
    ForEachRowOf(*store, "SELECT * FROM TransactionRecord WHERE AccountNumber> 0",
                 [&](Recordset& rec) {
                   static_cast<void>(rec.Fields("Total"));
                   accounts.push_back(100 - LongField(rec, "AccountNumber"));
                 });
    std::ranges::sort(accounts);
    EXPECT_EQ(accounts, UpTo(60)) << reader;
  }
}

}  // namespace
}  // namespace vetlo
