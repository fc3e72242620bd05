#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::Day;
using ::testing::ElementsAre;
using testing::SmallStore;

std::vector<std::string> TextsIn(Database& store, std::string_view source,
                                 std::string_view column) {
  std::vector<std::string> texts;
  ForEachRowOf(store, source, [&](Recordset& rec) {
    const Variant value = rec.Fields(column);
    texts.push_back(IsNull(value) ? "Null" : ToText(value));
  });
  return texts;
}

std::unique_ptr<Database> Banks(const std::vector<std::pair<std::string, Variant>>& accounts) {
  SmallStore store;
  std::int32_t number = 0;
  for (const auto& [name, bank] : accounts) {
    store.Insert("Account", {{"AccountNumber", ++number},
                             {"AccountName", name},
                             {"AccountType", 10 - number},
                             {"BankName", bank}});
  }
  return store.Open();
}

// Prices of one item, entered in this order: day of the month and price.
std::unique_ptr<Database> Prices(const std::vector<std::pair<int, double>>& prices) {
  SmallStore store;
  for (const auto& [day, price] : prices) {
    store.Insert("PriceRecord", {{"AccountItemNumber", 1},
                                 {"PriceTypeNumber", 1},
                                 {"PriceDate", Day(2026, 1, day)},
                                 {"Price", price}});
  }
  return store.Open();
}

constexpr const char* kPricesOfItem =
    "SELECT * FROM PriceRecord WHERE AccountItemNumber= 1 AND PriceTypeNumber= 1 ORDER BY "
    "PriceDate";

TEST(OrderBy, SortsNamesWithoutRegardToCase) {
  const auto store = Banks({{"beta", Null{}}, {"Alpha", Null{}}, {"GAMMA", Null{}}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account ORDER BY AccountName", "AccountName"),
              ElementsAre("Alpha", "beta", "GAMMA"));
}

TEST(OrderBy, SortsTextsThatAreNoNamesWithoutRegardToCaseToo) {
  const auto store = Banks({{"a", "beta"}, {"b", "ALPHA"}, {"c", "alp"}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account ORDER BY BankName", "BankName"),
              ElementsAre("alp", "ALPHA", "beta"));
}

TEST(OrderBy, SortsOtherCharactersByTheirNumber) {
  const auto store = Banks({{"ä", Null{}}, {"z", Null{}}, {"Ä", Null{}}, {"é", Null{}}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account ORDER BY AccountName", "AccountName"),
              ElementsAre("z", "Ä", "ä", "é"));
}

TEST(OrderBy, PutsNullFirst) {
  const auto store = Banks({{"a", "x"}, {"b", Null{}}, {"c", ""}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account ORDER BY BankName", "BankName"),
              ElementsAre("Null", "", "x"));
}

TEST(OrderBy, SortsNumbersByTheirValue) {
  const auto store = Prices({{1, 10}, {2, 9}, {3, -1}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM PriceRecord ORDER BY Price", "Price"),
              ElementsAre("-1", "9", "10"));
}

TEST(OrderBy, SortsByTheNextColumnWhereTheFirstOnesTie) {
  const auto store = Banks({{"same", "B"}, {"SAME", "b"}, {"other", "a"}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account ORDER BY AccountName,BankName,AccountType",
                      "AccountNumber"),
              ElementsAre("3", "2", "1"));
}

TEST(OrderBy, SortsByAColumnThatIsNotShown) {
  const auto store = Banks({{"b", Null{}}, {"a", Null{}}});
  EXPECT_THAT(
      TextsIn(*store, "SELECT AccountNumber FROM Account ORDER BY AccountName", "AccountNumber"),
      ElementsAre("2", "1"));
}

TEST(OrderBy, SortsAJoinByTheColumnsOfEitherTable) {
  const auto store = Banks({{"b", Null{}}, {"a", Null{}}});
  EXPECT_THAT(TextsIn(*store,
                      "SELECT T1.* FROM Account AS T1,Account AS T2 WHERE "
                      "T1.AccountNumber<>T2.AccountNumber ORDER BY T2.AccountName",
                      "AccountName"),
              ElementsAre("b", "a"));
}

TEST(OrderBy, LeavesTiesInTheOrderOfEntry) {
  const auto store = Prices({{2, 5}, {1, 9}, {1, 3}, {1, 6}});
  EXPECT_THAT(TextsIn(*store, kPricesOfItem, "Price"), ElementsAre("9", "3", "6", "5"));
}

TEST(OrderBy, LeavesTheTiesOfNamesInTheOrderOfEntry) {
  const auto store = Banks({{"b", Null{}}, {"SAME", Null{}}, {"same", Null{}}, {"Same", Null{}}});
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account ORDER BY AccountName", "AccountNumber"),
              ElementsAre("1", "2", "3", "4"));
}

TEST(OrderBy, LeavesTheTiesOfAJoinInTheOrderOfEntryOfEachTableInTurn) {
  const auto store = Banks({{"b", Null{}}, {"a", Null{}}});
  std::string pairs;
  ForEachRowOf(*store,
               "SELECT T1.AccountNumber,T2.AccountName FROM Account AS T1,Account AS T2 ORDER BY "
               "T1.BankName",
               [&](Recordset& rec) {
                 pairs += TextField(rec, "AccountNumber") + TextField(rec, "AccountName") + " ";
               });
  EXPECT_EQ(pairs, "1b 1a 2b 2a ");
}

TEST(MoveLast, LandsOnTheLastEnteredOfTies) {
  const auto store = Prices({{2, 7}, {1, 1}, {2, 3}, {2, 5}});
  const auto rec = store->OpenRecordset(kPricesOfItem);
  rec->MoveLast();
  EXPECT_EQ(rec->Fields("Price"), Variant(5.0));
}

// Transactions whose accounts and dates rise and fall while their numbers rise.
std::unique_ptr<Database> MixedTransactions() {
  SmallStore store;
  for (int i = 1; i <= 40; ++i) {
    store.Transaction({.date = Day(2026, 3, 1 + i * 7 % 31), .account = i * 7 % 41});
  }
  return store.Open();
}

// The order is free there, and no other end to begin at.
TEST(MoveLast, LandsWhereAWalkOverTransactionsInAnyOrderEnds) {
  for (const char* condition :
       {"AccountNumber> 0", "TransactionDate>=#2026-03-05#", "TransactionRecordNumber= 7"}) {
    const auto store = MixedTransactions();
    const std::string text = "SELECT * FROM TransactionRecord WHERE " + std::string(condition);
    for (const char* reader : {"first", "second"}) {
      const auto rec = store->OpenRecordset(text);
      rec->MoveLast();
      const Variant last = rec->Fields("TransactionRecordNumber");
      rec->MoveNext();
      EXPECT_TRUE(rec->Eof()) << reader << " reader of " << text;
      std::vector<Variant> walked;
      ForEachRow(*rec,
                 [&](Recordset& row) { walked.push_back(row.Fields("TransactionRecordNumber")); });
      EXPECT_EQ(last, walked.back()) << reader << " reader of " << text;
    }
  }
}

TEST(MoveLast, FindsNoRowWhereAFreeOrderHasNone) {
  const auto store = MixedTransactions();
  const auto rec = store->OpenRecordset("SELECT * FROM TransactionRecord WHERE AccountNumber< 0");
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->MoveLast(); }));
}

// What a text or table shows where nobody asks for an order.
TEST(OrderOfTheKey, HoldsInATextWithoutAnOrder) {
  const auto store = SmallStore()
                         .Account(30, "a", kCashAccount)
                         .Account(-2, "b", kCashAccount)
                         .Account(4, "c", kCashAccount)
                         .Open();
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM Account WHERE AccountType= 3 OR AccountType= 4",
                      "AccountNumber"),
              ElementsAre("-2", "4", "30"));
}

TEST(OrderOfTheKey, IsThatOfTheFirstTableOfAJoin) {
  const auto store =
      SmallStore()
          .Account(2, "a", kCashAccount)
          .Account(1, "b", kCashAccount)
          .Insert("PaymentCalendar", {{"TransactionRecordNumber", 7}, {"FrequencyType", 1}})
          .Insert("PaymentCalendar", {{"TransactionRecordNumber", 3}, {"FrequencyType", 1}})
          .Open();
  EXPECT_THAT(TextsIn(*store,
                      "SELECT T1.AccountNumber,T2.TransactionRecordNumber FROM Account AS T1,"
                      "PaymentCalendar AS T2",
                      "AccountNumber"),
              ElementsAre("1", "1", "2", "2"));
}

std::unique_ptr<Database> Budgets() {
  SmallStore store;
  for (const auto& [budget, category] : {std::pair{2, 1}, {1, 5}, {2, 0}, {1, -2}}) {
    store.Insert("CategoryBudgetInfo", {{"BudgetNumber", budget}, {"CategoryNumber", category}});
  }
  return store.Open();
}

TEST(OrderOfTheKey, TakesBothColumnsOfATextsTable) {
  EXPECT_THAT(TextsIn(*Budgets(), "SELECT * FROM CategoryBudgetInfo", "CategoryNumber"),
              ElementsAre("-2", "5", "0", "1"));
}

TEST(OrderOfTheKey, TakesBothColumnsOfATableOpenedByName) {
  EXPECT_THAT(TextsIn(*Budgets(), "CategoryBudgetInfo", "CategoryNumber"),
              ElementsAre("-2", "5", "0", "1"));
}

TEST(OrderOfTheKey, IsTheOrderOfEntryInATableWithoutOne) {
  const auto store = Prices({{3, 5}, {1, 9}, {2, 3}});
  EXPECT_THAT(TextsIn(*store, "PriceRecord", "Price"), ElementsAre("5", "9", "3"));
  EXPECT_THAT(TextsIn(*store, "SELECT * FROM PriceRecord", "Price"), ElementsAre("5", "9", "3"));
}

TEST(OrderOfTheKey, GroupsARepeatableKeyAndKeepsTheOrderOfEntryInIt) {
  SmallStore builder;
  for (const auto& [owner, other] : {std::pair{8, 1}, {3, 9}, {8, 0}, {3, 4}}) {
    builder.Insert("AssociatedAccountInfo",
                   {{"AccountNumber", owner}, {"AssociatedAccountNumber", other}});
  }
  EXPECT_THAT(TextsIn(*builder.Open(), "AssociatedAccountInfo", "AssociatedAccountNumber"),
              ElementsAre("9", "4", "1", "0"));
}

std::vector<std::int32_t> NumbersOfTransactions(Database& store) {
  std::vector<std::int32_t> numbers;
  ForEachRowOf(store, "TransactionRecord", [&](Recordset& rec) {
    static_cast<void>(rec.Fields("AccountNumber"));
    static_cast<void>(rec.Fields("TransactionDate"));
    numbers.push_back(LongField(rec, "TransactionRecordNumber"));
  });
  return numbers;
}

TEST(OrderOfTheKey, HoldsInTheTableOfTransactions) {
  const auto store = MixedTransactions();
  EXPECT_TRUE(std::ranges::is_sorted(NumbersOfTransactions(*store)));
}

TEST(OrderOfTheKey, HoldsInTheTableOfTransactionsForItsSecondReader) {
  const auto store = MixedTransactions();
  NumbersOfTransactions(*store);
  EXPECT_TRUE(std::ranges::is_sorted(NumbersOfTransactions(*store)));
}

TEST(OrderOfTheKey, HoldsInTheTableOfTransactionsForMoveLast) {
  const auto store = MixedTransactions();
  const auto rec = store->OpenRecordset("TransactionRecord");
  rec->MoveLast();
  EXPECT_EQ(rec->Fields("TransactionRecordNumber"), Variant(40));
}

TEST(Distinct, ShowsItsRowsInTheOrderOfTheFirstEntryOfEach) {
  const auto store = Prices({{2, 5}, {1, 9}, {2, 5}, {3, 1}, {1, 9}});
  EXPECT_THAT(TextsIn(*store, "SELECT DISTINCT PriceDate,Price FROM PriceRecord", "Price"),
              ElementsAre("5", "9", "1"));
}

TEST(Distinct, OfAJoinFollowsTheKeyOfTheFirstTable) {
  SmallStore builder;
  builder.Account(5, "a", kCashAccount).Account(3, "b", kCashAccount);
  for (const auto& [owner, other] : {std::pair{9, 5}, {9, 3}, {8, 5}, {8, 3}}) {
    builder.Insert("AssociatedAccountInfo",
                   {{"AccountNumber", owner}, {"AssociatedAccountNumber", other}});
  }
  EXPECT_THAT(TextsIn(*builder.Open(),
                      "SELECT DISTINCT T1.AccountNumber,T1.AccountName FROM Account AS T1,"
                      "AssociatedAccountInfo AS T2 WHERE "
                      "T1.AccountNumber=T2.AssociatedAccountNumber",
                      "AccountNumber"),
              ElementsAre("3", "5"));
}

TEST(Distinct, FollowsItsOrderFirst) {
  const auto store = Prices({{2, 5}, {1, 9}, {2, 5}, {3, 1}});
  EXPECT_THAT(
      TextsIn(*store, "SELECT DISTINCT PriceDate,Price FROM PriceRecord ORDER BY Price", "Price"),
      ElementsAre("1", "5", "9"));
}

TEST(Distinct, MovesLastToTheRowThatItShowsLast) {
  const auto store = Prices({{2, 5}, {1, 9}, {3, 1}, {1, 9}});
  const auto rec = store->OpenRecordset("SELECT DISTINCT Price FROM PriceRecord");
  rec->MoveLast();
  EXPECT_EQ(rec->Fields("Price"), Variant(1.0));
}

}  // namespace
}  // namespace vetlo
