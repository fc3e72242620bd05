#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::Day;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::Money;
using testing::SmallStore;

using Numbers = std::vector<std::int32_t>;

Date Noon(Date day) { return Date{day.days + 0.5}; }

std::unique_ptr<Database> Household() {
  return SmallStore()
      .Account(1, "Wallet", kCashAccount, 12.5)
      .Account(2, "Card", kCreditCard, -3)
      .Account(3, "Loan", kLiability)
      .Account(4, "Broker", kInvestmentAccount)
      .Transaction(
          {.type = kIncome, .date = Day(2026, 1, 5), .total = 100, .account = 1, .category = 7})
      .Transaction({.type = kExpense, .date = Day(2026, 1, 10), .total = 40, .account = 1})
      .Transaction({.type = kTransferOut,
                    .date = Noon(Day(2026, 1, 15)),
                    .total = 25,
                    .account = 1,
                    .other_account = 2})
      .Transaction({.type = kExpense,
                    .date = Day(2026, 2, 1),
                    .total = 9.99,
                    .account = 2,
                    .record_type = kSplitLine,
                    .category = -3})
      .Transaction({.type = kBuy,
                    .date = Day(2026, 2, 10),
                    .total = 500,
                    .account = 4,
                    .other_account = 1,
                    .item = 3,
                    .quantity = 5.25})
      .Transaction({.type = kIncome,
                    .date = Day(2025, 12, 31),
                    .total = 1,
                    .other_account = 2,
                    .record_type = kScheduledPattern})
      .Insert("PaymentCalendar",
              {{"TransactionRecordNumber", 6}, {"FrequencyType", 5}, {"FrequencyExtInfo", 2}})
      .Open();
}

Numbers NumbersIn(Database& store, std::string_view text, std::string_view column) {
  Numbers numbers;
  ForEachRowOf(store, text, [&](Recordset& rec) { numbers.push_back(LongField(rec, column)); });
  return numbers;
}

// A condition on the transactions, and the numbers of those that meet it.
struct Condition {
  const char* rule;
  const char* text;
  Numbers numbers;

  friend std::ostream& operator<<(std::ostream& out, const Condition& condition) {
    return out << condition.text;
  }
};

class ConditionOfAText : public ::testing::TestWithParam<Condition> {};

TEST_P(ConditionOfAText, SelectsTheRows) {
  const auto store = Household();
  const std::string text = std::string("SELECT * FROM TransactionRecord WHERE ") + GetParam().text +
                           " ORDER BY TransactionRecordNumber";
  EXPECT_EQ(NumbersIn(*store, text, "TransactionRecordNumber"), GetParam().numbers);
}

const Condition kConditions[] = {
    {"Equal", "AccountNumber= 1", {1, 2, 3}},
    {"EqualToAnotherColumn", "AccountNumber=CategoryNumber", {}},
    {"NotEqual", "TransactionType<> 11", {1, 3, 5, 6}},
    {"Less", "TransactionType< 11", {1, 5, 6}},
    {"LessOrEqual", "TransactionType<= 11", {1, 2, 4, 5, 6}},
    {"Greater", "TransactionType> 11", {3}},
    {"GreaterOrEqual", "TransactionType>= 11", {2, 3, 4}},
    {"And", "AccountNumber= 1 AND TransactionType= 11", {2}},
    {"Or", "AccountNumber= 2 OR TransactionType= 12", {3, 4}},
    {"AndBeforeOr", "AccountNumber= 2 OR AccountNumber= 1 AND TransactionType= 10", {1, 4}},
    {"ParenthesesFirst", "(AccountNumber= 2 OR AccountNumber= 1) AND TransactionType= 11", {2, 4}},
    {"NestedParentheses", "((AccountNumber= 1) AND (NOT (TransactionType= 10)))", {2, 3}},
    {"Not", "NOT TransactionType= 11", {1, 3, 5, 6}},
    {"NotBeforeAnd", "NOT TransactionType= 11 AND AccountNumber= 1", {1, 3}},
    {"NotOfParentheses", "NOT (TransactionType= 11 OR TransactionType= 10)", {3, 5}},
    {"IsNull", "ISNULL(CategoryNumber)", {2, 3, 5, 6}},
    {"IsNullOfATablesColumn", "ISNULL(TransactionRecord.CategoryNumber)", {2, 3, 5, 6}},
    {"NotIsNull", "NOT ISNULL(CategoryNumber)", {1, 4}},
    {"NotIsNullInParentheses", "AccountNumber= 1 AND (NOT ISNULL(CategoryNumber))", {1}},
    {"NotBeforeIsNullInParentheses", "NOT (ISNULL(CategoryNumber))", {1, 4}},
    {"NullIsNoNumber", "CategoryNumber= 0", {}},
    {"NullIsNotUnequal", "CategoryNumber<> 7", {4}},
    {"NullIsNotUnequalUnderNot", "NOT CategoryNumber= 7", {4}},
    {"Date", "TransactionDate=#2026-01-10#", {2}},
    {"DateIsTheStartOfItsDay", "TransactionDate<=#2026-01-15#", {1, 2, 6}},
    {"DateWithTime", "TransactionDate<=#2026-01-15 12:00:00#", {1, 2, 3, 6}},
    {"DateBeforeATime", "TransactionDate<#2026-01-15 12:00:00#", {1, 2, 6}},
    {"DateAfterATime", "TransactionDate>#2026-01-15 11:59:59#", {3, 4, 5}},
    {"DatesBetween", "TransactionDate>=#2026-01-10# AND TransactionDate<=#2026-02-01#", {2, 3, 4}},
    {"FirstRealDate", "TransactionDate<#0100-01-01#", {}},
    {"LastRealDate", "TransactionDate<=#9999-12-31 23:59:59#", {1, 2, 3, 4, 5, 6}},
    {"NegativeNumber", "CategoryNumber=-3", {4}},
    {"NegativeNumberBehindABlank", "CategoryNumber= -3", {4}},
    {"NegativeNumberBehindAComparison", "CategoryNumber>-4", {1, 4}},
    {"NumberWithDecimals", "Quantity= 5.25", {5}},
    {"NegativeNumberWithDecimals", "Quantity>-0.5", {5}},
    {"NumberPast64Bits", "AccountNumber< 99999999999999999999", {1, 2, 3, 4, 5}},
    {"NoBlanks", "AccountNumber=1", {1, 2, 3}},
    {"ManyBlanks", "  AccountNumber   =   1  ", {1, 2, 3}},
    {"WordsInAnyCase", "accountnumber= 1 and not isnull(CATEGORYNUMBER)", {1}},
    {"NumberFirst", " 1=AccountNumber", {1, 2, 3}},
};

INSTANTIATE_TEST_SUITE_P(All, ConditionOfAText, ::testing::ValuesIn(kConditions),
                         [](const auto& test) { return test.param.rule; });

TEST(SqlText, TakesItsWordsAndNamesInAnyCase) {
  EXPECT_THAT(NumbersIn(*Household(),
                        "select t1.* from TRANSACTIONRECORD as T1 where T1.accountnumber= 1 order "
                        "by t1.TRANSACTIONRECORDNUMBER",
                        "transactionRecordNumber"),
              ElementsAre(1, 2, 3));
}

TEST(SqlText, WithoutAConditionShowsAllRows) {
  EXPECT_THAT(NumbersIn(*Household(), "SELECT * FROM Account", "AccountNumber"),
              ElementsAre(1, 2, 3, 4));
}

TEST(SqlText, ShowsTheColumnsItNames) {
  const auto store = Household();
  const auto rec = store->OpenRecordset("SELECT AccountName,AccountNumber FROM Account");
  EXPECT_EQ(rec->Fields("AccountName"), Variant("Wallet"));
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(1));
}

TEST(SqlText, ShowsNoColumnThatItDoesNotName) {
  const auto store = Household();
  const auto rec = store->OpenRecordset("SELECT AccountName,AccountNumber FROM Account");
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn, [&] { rec->Fields("AccountType"); }));
}

TEST(SqlText, OfTwoTablesPairsEachRowWithEach) {
  EXPECT_EQ(NumbersIn(*Household(),
                      "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE T1."
                      "AccountNumber<>T2.AccountNumber ORDER BY T1.TransactionRecordNumber",
                      "TransactionRecordNumber"),
            (Numbers{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5}));
}

TEST(SqlText, JoinsTablesInItsCondition) {
  EXPECT_THAT(
      NumbersIn(*Household(),
                "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE T1.AccountNumber="
                "T2.AccountNumber AND T2.AccountType= 4 ORDER BY T1.TransactionRecordNumber",
                "TransactionRecordNumber"),
      ElementsAre(4));
}

TEST(SqlText, ShowsARowOnceForEachPartnerThatItFinds) {
  EXPECT_EQ(
      NumbersIn(*Household(),
                "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE (T1.AccountNumber="
                "T2.AccountNumber OR T1.ToOrFundAccountNumber=T2.AccountNumber) AND  "
                "T2.AccountType<> 8 ORDER BY T1.TransactionRecordNumber",
                "TransactionRecordNumber"),
      (Numbers{1, 2, 3, 3, 4, 5, 6}));
}

TEST(SqlText, JoinsATableWithItself) {
  EXPECT_THAT(NumbersIn(*Household(),
                        "SELECT T1.* FROM Account AS T1,Account AS T2 WHERE T1.AccountNumber>"
                        "T2.AccountNumber AND T2.AccountType= 6",
                        "AccountNumber"),
              ElementsAre(4));
}

TEST(SqlText, NamesATableByItsOwnNameWhereItHasNoAlias) {
  EXPECT_THAT(NumbersIn(*Household(), "SELECT Account.* FROM Account WHERE Account.AccountType= 4",
                        "AccountNumber"),
              ElementsAre(2));
}

TEST(SqlText, FindsTheTableOfAColumnThatOnlyOneHas) {
  EXPECT_THAT(
      NumbersIn(*Household(),
                "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE T1.AccountNumber="
                "T2.AccountNumber AND AccountType= 3 AND TransactionDate>=#2026-01-10# ORDER BY "
                "TransactionRecordNumber",
                "TransactionRecordNumber"),
      ElementsAre(2, 3));
}

TEST(SqlText, MixesColumnsOfOneTableWithAllOfAnother) {
  const auto store = Household();
  const auto rec = store->OpenRecordset(
      "SELECT T1.FrequencyType,T1.FrequencyExtInfo,T2.* FROM PaymentCalendar AS T1,"
      "TransactionRecord AS T2 WHERE T1.TransactionRecordNumber=T2.TransactionRecordNumber");
  EXPECT_EQ(rec->Fields("FrequencyType"), Variant(5));
  EXPECT_EQ(rec->Fields("FrequencyExtInfo"), Variant(2));
  EXPECT_EQ(rec->Fields("TransactionDate"), Variant(Day(2025, 12, 31)));
}

TEST(SqlText, ShowsTheFirstOfTwoColumnsOfOneName) {
  const auto store = Household();
  const auto rec = store->OpenRecordset(
      "SELECT T2.*,T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE T1.AccountNumber= 4 AND "
      "T2.AccountNumber= 2");
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(2));
}

TEST(SqlText, SumsUnderTheNameThatItGives) {
  const auto store = Household();
  const auto rec = store->OpenRecordset(
      "SELECT SUM(T1.Total) AS Spent FROM TransactionRecord AS T1 WHERE T1.TransactionType= 11");
  EXPECT_EQ(rec->Fields("Spent"), Variant(Money(49.99)));
}

TEST(SqlText, SumOfNothingIsNull) {
  const auto store = Household();
  const auto rec = store->OpenRecordset(
      "SELECT SUM(Total) AS Spent FROM TransactionRecord WHERE TransactionType= 99");
  EXPECT_EQ(rec->Fields("Spent"), Variant(Null{}));
}

TEST(SqlText, SumOfNullsAloneIsNull) {
  const auto store = Household();
  const auto rec = store->OpenRecordset(
      "SELECT SUM(Quantity) AS Units FROM TransactionRecord WHERE TransactionType= 11");
  EXPECT_EQ(rec->Fields("Units"), Variant(Null{}));
}

TEST(SqlText, SumIsOneRow) {
  EXPECT_THAT(NumbersIn(*Household(), "SELECT SUM(AccountType) AS Types FROM Account", "Types"),
              ElementsAre(21));
}

TEST(SqlText, SumIsOfTheTypeOfItsColumn) {
  const auto store = Household();
  const auto units = store->OpenRecordset("SELECT SUM(Quantity) AS S FROM TransactionRecord");
  EXPECT_EQ(units->Fields("S"), Variant(5.25));
  const auto money = store->OpenRecordset("SELECT SUM(OpeningBalance) AS S FROM Account");
  EXPECT_EQ(money->Fields("S"), Variant(Money(9.5)));
}

TEST(SqlText, SumsOverAJoin) {
  const auto store = Household();
  const auto rec = store->OpenRecordset(
      "SELECT SUM(T1.Total) AS S FROM TransactionRecord AS T1,Account AS T2 WHERE "
      "T1.AccountNumber=T2.AccountNumber AND T2.AccountType= 3");
  EXPECT_EQ(rec->Fields("S"), Variant(Money(165)));
}

TEST(SqlText, DistinctShowsEachCombinationOnce) {
  EXPECT_THAT(NumbersIn(*Household(),
                        "SELECT DISTINCT TransactionType FROM TransactionRecord ORDER BY "
                        "TransactionType",
                        "TransactionType"),
              ElementsAre(kBuy, kIncome, kExpense, kTransferOut));
}

TEST(SqlText, DistinctTakesNullForAValue) {
  std::vector<Variant> values;
  ForEachRowOf(*Household(), "SELECT DISTINCT CategoryNumber FROM TransactionRecord",
               [&](Recordset& rec) { values.push_back(rec.Fields("CategoryNumber")); });
  EXPECT_THAT(values, ::testing::UnorderedElementsAre(Variant(7), Variant(Null{}), Variant(-3)));
}

TEST(SqlText, DistinctTakesColumnsTogether) {
  EXPECT_EQ(NumbersIn(*Household(),
                      "SELECT DISTINCT TransactionType,AccountNumber FROM TransactionRecord WHERE "
                      "NOT ISNULL(AccountNumber) ORDER BY TransactionType,AccountNumber",
                      "TransactionType"),
            (Numbers{kBuy, kIncome, kExpense, kExpense, kTransferOut}));
}

TEST(SqlText, OfOneShapeGivesEachItsOwnRows) {
  const auto store = Household();
  for (const auto& [type, number] :
       {std::pair{kCashAccount, 1}, {kCreditCard, 2}, {kLiability, 3}}) {
    EXPECT_THAT(
        NumbersIn(*store, "SELECT * FROM Account WHERE AccountType= " + std::to_string(type),
                  "AccountNumber"),
        ElementsAre(number));
  }
}

// ---- texts that are none

class TextThatIsNone : public ::testing::TestWithParam<const char*> {};

TEST_P(TextThatIsNone, IsRefusedWhenItIsOpened) {
  const auto store = Household();
  EXPECT_TRUE(Raises(FailureNumber::kBadSqlText, [&] { store->OpenRecordset(GetParam()); }));
}

INSTANTIATE_TEST_SUITE_P(
    Words, TextThatIsNone,
    ::testing::Values(
        "SELECT ", "SELECT *", "SELECT * FROM", "SELECT FROM Account", "SELECT * Account",
        "SELECT *, FROM Account", "SELECT , FROM Account",
        "SELECT AccountName AccountNumber FROM Account", "SELECT * FROM Account,",
        "SELECT * FROM Account AS", "SELECT * FROM Account AS 1", "SELECT * FROM Account T1",
        "SELECT * FROM Account HAVING AccountType= 1", "SELECT * FROM Account ORDER",
        "SELECT * FROM Account ORDER BY", "SELECT * FROM Account ORDER BY AccountName,",
        "SELECT * FROM Account ORDER BY AccountName AccountType",
        "SELECT * FROM Account ORDER BY AccountName WHERE AccountType= 1",
        "SELECT * FROM Account LIMIT 1", "SELECT * FROM Account; SELECT * FROM Account",
        "SELECT * FROM Account UNION SELECT * FROM Account", "SELECT COUNT(*) AS N FROM Account"));

INSTANTIATE_TEST_SUITE_P(
    Columns, TextThatIsNone,
    ::testing::Values("SELECT Nothing FROM Account", "SELECT T1.* FROM Account AS T2",
                      "SELECT T1.Nothing FROM Account AS T1",
                      "SELECT * FROM Account WHERE Nothing= 1",
                      "SELECT * FROM Account WHERE T9.AccountType= 1",
                      "SELECT * FROM Account AS T1 WHERE Account.AccountType= 1",
                      "SELECT * FROM Account WHERE ISNULL(Nothing)",
                      "SELECT * FROM Account ORDER BY Nothing",
                      "SELECT * FROM Account WHERE rowid= 1",
                      "SELECT AccountNumber FROM Account,TransactionRecord",
                      "SELECT T1.* FROM Account AS T1,TransactionRecord AS T2 WHERE "
                      "AccountNumber= 1"));

INSTANTIATE_TEST_SUITE_P(Sums, TextThatIsNone,
                         ::testing::Values("SELECT SUM(Balance) FROM Account",
                                           "SELECT SUM(Balance) AS FROM Account",
                                           "SELECT SUM(*) AS S FROM Account",
                                           "SELECT SUM(Nothing) AS S FROM Account",
                                           "SELECT SUM Balance AS S FROM Account",
                                           "SELECT SUM(Balance AS S FROM Account",
                                           "SELECT SUM(Balance) AS S,AccountType FROM Account",
                                           "SELECT DISTINCT SUM(Balance) AS S FROM Account"));

INSTANTIATE_TEST_SUITE_P(Constants, TextThatIsNone,
                         ::testing::Values("SELECT * FROM Account WHERE AccountType= 1.2.3",
                                           "SELECT * FROM Account WHERE AccountType= - 1",
                                           "SELECT * FROM Account WHERE AccountType= --1",
                                           "SELECT * FROM Account WHERE AccountType= +1",
                                           "SELECT * FROM Account WHERE AccountName= 'Wallet'",
                                           "SELECT * FROM Account WHERE AccountName= \"Wallet\"",
                                           "SELECT * FROM Account WHERE AccountType= ?",
                                           "SELECT * FROM Account WHERE AccountType= :1",
                                           "SELECT * FROM Account WHERE AccountType= 1 -- all",
                                           "SELECT * FROM Account WHERE AccountType= 1 /* all */",
                                           "SELECT * FROM [Account]",
                                           "SELECT * FROM Account WHERE\nAccountType= 1"));

INSTANTIATE_TEST_SUITE_P(
    Dates, TextThatIsNone,
    ::testing::Values("SELECT * FROM TransactionRecord WHERE TransactionDate= #",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= ##",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #2026-01-01",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #2026-1-1#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #2026-02-29#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #2026-13-01#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #01/31/2026#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #0099-12-31#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #2026-01-01 #",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= #2026-01-01 1:00#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= "
                      "#2026-01-01T12:00:00#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= "
                      "#2026-01-01 12:00:0x#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= "
                      "#2026-01-01 24:00:00#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= "
                      "#2026-01-01 12:60:00#",
                      "SELECT * FROM TransactionRecord WHERE TransactionDate= "
                      "#2026-01-01 12:00:60#"));

INSTANTIATE_TEST_SUITE_P(
    Conditions, TextThatIsNone,
    ::testing::Values("SELECT * FROM Account WHERE", "SELECT * FROM Account WHERE AND",
                      "SELECT * FROM Account WHERE AccountType= 1 AND",
                      "SELECT * FROM Account WHERE AccountType=",
                      "SELECT * FROM Account WHERE AccountType= 1 2",
                      "SELECT * FROM Account WHERE (AccountType= 1",
                      "SELECT * FROM Account WHERE AccountType= 1)",
                      "SELECT * FROM Account WHERE AccountType =< 1",
                      "SELECT * FROM Account WHERE ISNULL AccountType",
                      "SELECT * FROM Account WHERE ISNULL()",
                      "SELECT * FROM Account WHERE AccountType, AccountNumber",
                      "SELECT * FROM Account,Account WHERE Account.AccountType= 1"));

TEST(SqlText, OfATableThatThereIsNotIsRefused) {
  const auto store = Household();
  for (const char* source :
       {"Accounts", "", " Account", "SELECT * FROM Accounts", "SELECT * FROM Account,Nothing",
        "SELECT * FROM sqlite_schema", "sqlite_schema", "SELECT * FROM sqlite_sequence",
        "UPDATE Account", "DELETE FROM Account"}) {
    EXPECT_TRUE(Raises(FailureNumber::kTableNotFound, [&] { store->OpenRecordset(source); }))
        << source;
  }
}

TEST(SqlText, ThatIsRefusedLeavesTheStoreInOrder) {
  const auto store = Household();
  ResumeNext([&] { store->OpenRecordset("SELECT * FROM Account WHERE Nothing= 1"); });
  EXPECT_THAT(NumbersIn(*store, "SELECT * FROM Account WHERE AccountType= 99", "AccountNumber"),
              IsEmpty());
}

}  // namespace
}  // namespace vetlo
