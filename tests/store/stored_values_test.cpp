#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::Day;
using testing::Money;
using testing::SmallStore;

constexpr auto kMismatch = FailureNumber::kTypeMismatch;
constexpr auto kTooLarge = FailureNumber::kOverflow;

// One row, numbered 1, in each table of the cases.
SmallStore OneRowEach() {
  SmallStore store;
  store.Account(1, "Wallet", kCashAccount, 1)
      .Transaction({.account = 1, .quantity = 1.5})
      .Row({.number = 1})
      .Insert("LatestPriceInfo", {{"AccountItemNumber", 1}, {"Price", 2.5}});
  return store;
}

// The row of a table as an SQL statement leaves it.
std::unique_ptr<Database> StoreWith(const std::string& table, const std::string& column,
                                    const std::string& value) {
  return OneRowEach().Execute("UPDATE " + table + " SET " + column + " = " + value).Open();
}

// ---- values that are none of their column's type

struct Damage {
  const char* name;
  const char* table;
  const char* column;
  const char* value;  // as SQL
  FailureNumber number;

  friend std::ostream& operator<<(std::ostream& out, const Damage& damage) {
    return out << damage.name;
  }
};

class DamagedValue : public ::testing::TestWithParam<Damage> {
 protected:
  [[nodiscard]] ::testing::AssertionResult RaisesIn(Recordset& rec) const {
    return Raises(GetParam().number, [&] { rec.Fields(GetParam().column); });
  }

  std::unique_ptr<Database> store_ =
      StoreWith(GetParam().table, GetParam().column, GetParam().value);
  std::string text_ = std::string("SELECT * FROM ") + GetParam().table;
};

TEST_P(DamagedValue, FailsInAText) {
  const auto rec = store_->OpenRecordset(text_);
  EXPECT_TRUE(RaisesIn(*rec));
}

TEST_P(DamagedValue, FailsAgainInAText) {
  ResumeNext([&] { store_->OpenRecordset(text_)->Fields(GetParam().column); });
  const auto rec = store_->OpenRecordset(text_);
  EXPECT_TRUE(RaisesIn(*rec));
  EXPECT_TRUE(RaisesIn(*rec));
}

TEST_P(DamagedValue, FailsInATable) {
  EXPECT_TRUE(RaisesIn(*store_->OpenRecordset(GetParam().table)));
}

TEST_P(DamagedValue, FailsInASoughtRow) {
  const auto rec = store_->OpenRecordset(GetParam().table);
  rec->SetIndex(kPrimaryIndex);
  for (const char* time : {"first", "second"}) {
    rec->Seek("=", 1);
    ASSERT_FALSE(rec->NoMatch());
    EXPECT_TRUE(RaisesIn(*rec)) << time;
  }
}

TEST_P(DamagedValue, FailsBehindMoveLast) {
  const auto rec = store_->OpenRecordset(text_);
  rec->MoveLast();
  EXPECT_TRUE(RaisesIn(*rec));
}

TEST_P(DamagedValue, FailsInDistinctRows) {
  const auto rec = store_->OpenRecordset("SELECT DISTINCT " + std::string(GetParam().column) +
                                         " FROM " + GetParam().table);
  EXPECT_TRUE(RaisesIn(*rec));
}

TEST_P(DamagedValue, LeavesTheOtherColumnsReadable) {
  const Table& table = *FindTable(GetParam().table);
  const auto rec = store_->OpenRecordset(text_);
  EXPECT_EQ(rec->Fields(table.columns[0].name), Variant(1));
}

const Damage kDamages[] = {
    {"TextInALong", "Account", "AccountType", "'abc'", kMismatch},
    {"BlobInALong", "Account", "AccountType", "x'31'", kMismatch},
    {"RealInALong", "Account", "AccountType", "1.5", kMismatch},
    {"HugeRealInALong", "Account", "AccountType", "1e300", kMismatch},
    {"LongPast32Bits", "Account", "AccountType", "2147483648", kTooLarge},
    {"LongBelow32Bits", "Account", "AccountType", "-2147483649", kTooLarge},
    {"NullableLongPast32Bits", "TransactionRecord", "PayeeNumber", "9223372036854775807",
     kTooLarge},
    {"TextInACurrency", "Account", "Balance", "'12.5 dollars'", kMismatch},
    {"RealInACurrency", "Account", "Balance", "12.5", kMismatch},
    {"HugeRealInACurrency", "Account", "Balance", "1e19", kMismatch},
    {"BlobInACurrency", "Account", "Balance", "x'31'", kMismatch},
    {"TextInADate", "TransactionRecord", "TransactionDate", "'2026-01-01'", kMismatch},
    {"BlobInADate", "TransactionRecord", "TransactionDate", "x'31'", kMismatch},
    {"TextInADouble", "LatestPriceInfo", "Price", "'dear'", kMismatch},
    {"BlobInADouble", "LatestPriceInfo", "Price", "x'31'", kMismatch},
    {"TextInABoolean", "ChartReportSubType", "Legend", "'yes'", kMismatch},
    {"RealInABoolean", "ChartReportSubType", "Legend", "0.5", kMismatch},
    {"BlobInABoolean", "ChartReportSubType", "Legend", "x'31'", kMismatch},
    {"BlobInAText", "Account", "BankName", "x'31'", kMismatch},
    {"BlobInAName", "Account", "AccountName", "x'31'", kMismatch},
    {"BlobInAVariant", "ChartReportSubType", "Parameter1", "x'31'", kMismatch},
};

INSTANTIATE_TEST_SUITE_P(All, DamagedValue, ::testing::ValuesIn(kDamages),
                         [](const auto& test) { return test.param.name; });

// A date that the calendar does not have is seen where it is taken for one.
TEST(DamagedDate, FailsAsADate) {
  for (const char* days : {"2958466", "-657435", "1e300", "9223372036854775807"}) {
    const auto store = StoreWith("TransactionRecord", "TransactionDate", days);
    const auto rec = store->OpenRecordset("TransactionRecord");
    EXPECT_TRUE(Raises(kTooLarge, [&] { DateField(*rec, "TransactionDate"); })) << days;
  }
}

// ---- sums

std::unique_ptr<Database> TotalsWith(const std::string& value) {
  SmallStore store;
  store.Transaction({.total = 1}).Transaction({.total = 2}).Transaction({.total = 3});
  return store
      .Execute("UPDATE TransactionRecord SET Total = " + value +
               " WHERE TransactionRecordNumber = 2")
      .Open();
}

constexpr const char* kSumOfTotals = "SELECT SUM(Total) AS S FROM TransactionRecord";

TEST(Sum, OverAValueThatIsNoAmountFails) {
  for (const char* value : {"'abc'", "1.5", "x'31'", "1e300"}) {
    const auto store = TotalsWith(value);
    const auto rec = store->OpenRecordset(kSumOfTotals);
    EXPECT_TRUE(Raises(kMismatch, [&] { rec->Fields("S"); })) << value;
  }
}

TEST(Sum, Past64BitsOverflows) {
  const auto store = TotalsWith("9223372036854775807");
  const auto rec = store->OpenRecordset(kSumOfTotals);
  EXPECT_TRUE(Raises(kTooLarge, [&] { rec->Fields("S"); }));
}

TEST(Sum, ThatFailedIsNoEndOfRows) {
  const auto store = TotalsWith("9223372036854775807");
  const auto rec = store->OpenRecordset(kSumOfTotals);
  ResumeNext([&] { rec->Eof(); });
  EXPECT_NE(ResumeNext([&] { rec->Eof(); }), 0);
  EXPECT_NE(ResumeNext([&] { rec->Fields("S"); }), 0);
}

TEST(Sum, OfTheLargestAmountIsExact) {
  SmallStore builder;
  builder.Transaction({.total = 0});
  const auto store =
      builder.Execute("UPDATE TransactionRecord SET Total = 9223372036854775807").Open();
  const auto rec = store->OpenRecordset(kSumOfTotals);
  EXPECT_EQ(rec->Fields("S"),
            Variant(Currency::FromUnits(std::numeric_limits<std::int64_t>::max())));
}

TEST(Sum, OfLongsPast32BitsOverflows) {
  const auto store =
      SmallStore().Account(2147483647, "a", kCashAccount).Account(1, "b", kCashAccount).Open();
  const auto rec = store->OpenRecordset("SELECT SUM(AccountNumber) AS S FROM Account");
  EXPECT_TRUE(Raises(kTooLarge, [&] { rec->Fields("S"); }));
}

// ---- values that are right

struct Held {
  const char* name;
  const char* table;
  const char* column;
  const char* value;  // as SQL
  Variant expected;

  friend std::ostream& operator<<(std::ostream& out, const Held& held) { return out << held.name; }
};

class HeldValue : public ::testing::TestWithParam<Held> {};

TEST_P(HeldValue, IsReadAsItsType) {
  const auto store = StoreWith(GetParam().table, GetParam().column, GetParam().value);
  const auto rec = store->OpenRecordset(GetParam().table);
  EXPECT_EQ(rec->Fields(GetParam().column), GetParam().expected);
}

const Held kHelds[] = {
    {"LargestLong", "Account", "AccountType", "2147483647", 2147483647},
    {"SmallestLong", "Account", "AccountType", "-2147483648",
     std::numeric_limits<std::int32_t>::min()},
    {"NullLong", "TransactionRecord", "PayeeNumber", "NULL", Null{}},
    {"Currency", "Account", "Balance", "-123400", Currency::FromUnits(-123400)},
    {"SmallestCurrency", "Account", "Balance", "-9223372036854775808",
     Currency::FromUnits(std::numeric_limits<std::int64_t>::min())},
    {"CurrencyPastTheDoubles", "Account", "Balance", "9007199254740993",
     Currency::FromUnits(9007199254740993)},
    {"Day", "TransactionRecord", "TransactionDate", "36526", Date{36526}},
    {"Moment", "TransactionRecord", "TransactionDate", "36526.75", Date{36526.75}},
    {"NullDate", "ChartReportSubType", "FromDate", "NULL", Null{}},
    {"Double", "LatestPriceInfo", "Price", "0.1", 0.1},
    {"WholeDouble", "LatestPriceInfo", "Price", "7", 7.0},
    {"NullDouble", "TransactionRecord", "Quantity", "NULL", Null{}},
    {"True", "ChartReportSubType", "Legend", "1", true},
    {"False", "ChartReportSubType", "Legend", "0", false},
    {"Text", "Account", "BankName", "'Bank Ä 漢'", "Bank Ä 漢"},
    {"EmptyText", "Account", "BankName", "''", ""},
    {"NumberAsText", "Account", "Accounts", "'0012'", "0012"},
    {"NullText", "Account", "BankName", "NULL", Null{}},
    {"LongVariant", "ChartReportSubType", "Parameter1", "12", 12},
    {"DoubleVariant", "ChartReportSubType", "Parameter1", "1.5", 1.5},
    {"TextVariant", "ChartReportSubType", "Parameter1", "'abc'", "abc"},
    {"NullVariant", "ChartReportSubType", "Parameter1", "NULL", Null{}},
};

INSTANTIATE_TEST_SUITE_P(All, HeldValue, ::testing::ValuesIn(kHelds),
                         [](const auto& test) { return test.param.name; });

TEST(HeldValue, OfAWholeDoubleVariantPast32BitsIsADouble) {
  const auto store = SmallStore().Row({.number = 1, .parameter1 = 3e9}).Open();
  EXPECT_EQ(store->OpenRecordset("ChartReportSubType")->Fields("Parameter1"), Variant(3e9));
}

// ---- the value of a column as a type of its own

TEST(LongField, RefusesNull) {
  const auto store = OneRowEach().Open();
  const auto rec = store->OpenRecordset("TransactionRecord");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [&] { LongField(*rec, "PayeeNumber"); }));
}

TEST(DateField, RefusesNull) {
  const auto store = OneRowEach().Open();
  const auto rec = store->OpenRecordset("ChartReportSubType");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [&] { DateField(*rec, "FromDate"); }));
}

TEST(TextField, RefusesNull) {
  const auto store = OneRowEach().Open();
  const auto rec = store->OpenRecordset("Account");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [&] { TextField(*rec, "BankName"); }));
}

TEST(CurrencyField, RefusesNull) {
  const auto store = SmallStore()
                         .Insert("CategoryBudgetInfo", {{"BudgetNumber", 1}, {"CategoryNumber", 1}})
                         .Open();
  const auto rec = store->OpenRecordset("CategoryBudgetInfo");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [&] { CurrencyField(*rec, "Jan"); }));
}

TEST(DoubleField, RefusesNull) {
  const auto store = SmallStore().Transaction({}).Open();
  const auto rec = store->OpenRecordset("TransactionRecord");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [&] { DoubleField(*rec, "Quantity"); }));
}

TEST(Fields, AreReadAsTheTypesOfTheirColumns) {
  const auto store = OneRowEach().Open();
  const auto account = store->OpenRecordset("Account");
  EXPECT_EQ(LongField(*account, "AccountNumber"), 1);
  EXPECT_EQ(CurrencyField(*account, "Balance"), Money(1));
  EXPECT_EQ(TextField(*account, "AccountName"), "Wallet");
  const auto transaction = store->OpenRecordset("TransactionRecord");
  EXPECT_EQ(DateField(*transaction, "TransactionDate"), Day(2026, 1, 15));
  EXPECT_EQ(DoubleField(*transaction, "Quantity"), 1.5);
}

}  // namespace
}  // namespace vetlo
