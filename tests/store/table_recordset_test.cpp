#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::Day;
using ::testing::ElementsAre;
using testing::Money;
using testing::SmallStore;

std::unique_ptr<Database> Accounts() {
  SmallStore store;
  store.Account(-3, "below", kCashAccount);
  for (int i = 1; i <= 40; ++i) {
    store.Account(10 * i, "no. " + std::to_string(i), i % 10, i);
  }
  return store.Open();
}

std::unique_ptr<Recordset> Indexed(Database& store, std::string_view table) {
  auto rec = store.OpenRecordset(table);
  rec->SetIndex(kPrimaryIndex);
  return rec;
}

TEST(RecordCount, IsThatOfTheRows) {
  const auto store = Accounts();
  EXPECT_EQ(store->OpenRecordset("Account")->RecordCount(), 41);
}

TEST(RecordCount, OfAnEmptyTableIsZero) {
  const auto store = Accounts();
  EXPECT_EQ(store->OpenRecordset("LatestPriceInfo")->RecordCount(), 0);
}

TEST(RecordCount, OfADynasetIsThatOfTheRows) {
  const auto store = Accounts();
  EXPECT_EQ(store->OpenRecordset("Account", RecordsetType::kDynaset)->RecordCount(), 41);
}

TEST(RecordCount, LeavesTheRowWhereItIs) {
  const auto store = Accounts();
  const auto rec = store->OpenRecordset("Account");
  rec->MoveNext();
  rec->RecordCount();
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(10));
}

TEST(Seek, StandsOnTheRowOfTheKey) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 70);
  EXPECT_FALSE(rec->NoMatch());
  EXPECT_EQ(rec->Fields("AccountName"), Variant("no. 7"));
  EXPECT_EQ(rec->Fields("OpeningBalance"), Variant(Money(7)));
}

TEST(Seek, FindsANegativeKey) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", -3);
  EXPECT_EQ(rec->Fields("AccountName"), Variant("below"));
}

TEST(Seek, ReadsAColumnThatNoSeekReadBefore) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 70);
  EXPECT_EQ(rec->Fields("AccountName"), Variant("no. 7"));
  rec->Seek("=", 80);
  EXPECT_EQ(rec->Fields("AccountType"), Variant(8));
  EXPECT_EQ(rec->Fields("AccountName"), Variant("no. 8"));
  rec->Seek("=", 90);
  EXPECT_EQ(rec->Fields("AccountName"), Variant("no. 9"));
  EXPECT_EQ(rec->Fields("AccountType"), Variant(9));
}

TEST(Seek, ShowsANullThatItFinds) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  for (const int number : {10, 20, 30}) {
    rec->Seek("=", number);
    EXPECT_EQ(rec->Fields("BankName"), Variant(Null{})) << number;
  }
}

TEST(Seek, TakesEveryKindOfNumber) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  for (const Variant& key : {Variant(70), Variant(70.0), Variant(Money(70)), Variant("70")}) {
    rec->Seek("=", key);
    ASSERT_FALSE(rec->NoMatch());
    EXPECT_EQ(rec->Fields("AccountNumber"), Variant(70));
  }
}

TEST(Seek, RefusesAKeyThatIsNoNumber) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { rec->Seek("=", "seven"); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { rec->Seek("=", 1e10); }));
}

TEST(Seek, FindsNothingForAKeyThatThereIsNot) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 71);
  EXPECT_TRUE(rec->NoMatch());
}

TEST(Seek, FindsNothingForNull) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", Null{});
  EXPECT_TRUE(rec->NoMatch());
}

TEST(Seek, ThatFindsNothingLeavesNoCurrentRow) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 70);
  rec->Seek("=", 71);
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->Fields("AccountName"); }));
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->MoveNext(); }));
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->Edit(); }));
}

TEST(Seek, FindsAgainAfterItFoundNothing) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 71);
  rec->Seek("=", 70);
  EXPECT_FALSE(rec->NoMatch());
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(70));
}

TEST(Seek, InAnEmptyTableFindsNothing) {
  const auto store = SmallStore().Open();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 70);
  EXPECT_TRUE(rec->NoMatch());
}

TEST(Seek, NeedsItsIndex) {
  const auto store = Accounts();
  const auto rec = store->OpenRecordset("Account");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->Seek("=", 70); }));
}

TEST(Seek, KnowsNoOtherComparison) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  for (const char* comparison : {"", ">", ">=", "<", "=="}) {
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->Seek(comparison, 70); }));
  }
}

TEST(Seek, TakesNoMoreValuesThanTheKeyHas) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->Seek("=", {70, 1}); }));
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->SeekKey("=", {}); }));
}

TEST(Seek, IsNotForADynaset) {
  const auto store = Accounts();
  const auto rec = store->OpenRecordset("Account", RecordsetType::kDynaset);
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->SetIndex(kPrimaryIndex); }));
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->Seek("=", 70); }));
}

TEST(SetIndex, KnowsThePrimaryIndexAlone) {
  const auto store = Accounts();
  const auto rec = store->OpenRecordset("Account");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->SetIndex("AccountName"); }));
}

TEST(SetIndex, IsNotForATableWithoutAKey) {
  const auto store = Accounts();
  for (const char* table : {"PriceRecord", "PaymentCalendar"}) {
    const auto rec = store->OpenRecordset(table);
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->SetIndex(kPrimaryIndex); }))
        << table;
  }
}

TEST(SetIndex, LeavesTheRowWhereItIs) {
  const auto store = Accounts();
  const auto rec = store->OpenRecordset("Account");
  rec->MoveNext();
  rec->SetIndex(kPrimaryIndex);
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(10));
}

TEST(Seek, LeavesTheWalkAtTheSoughtRow) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 380);
  rec->MoveNext();
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(390));
  rec->MoveNext();
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(400));
  rec->MoveNext();
  EXPECT_TRUE(rec->Eof());
}

TEST(Seek, ToARowBeforeTheWalkTakesItBack) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->MoveLast();
  rec->Seek("=", 10);
  rec->MoveNext();
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(20));
}

TEST(Seek, IsNeitherAtTheStartNorAtTheEndOnTheSoughtRow) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->MoveLast();
  rec->MoveNext();
  rec->Seek("=", 10);
  EXPECT_FALSE(rec->Eof());
  EXPECT_FALSE(rec->Bof());
}

TEST(Seek, GivesWayToMoveFirstAndMoveLast) {
  const auto store = Accounts();
  const auto rec = Indexed(*store, "Account");
  rec->Seek("=", 70);
  rec->MoveFirst();
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(-3));
  rec->Seek("=", 71);
  rec->MoveLast();
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(400));
}

std::unique_ptr<Database> Budgets() {
  SmallStore store;
  for (const auto& [budget, category, jan] :
       {std::tuple{1, 5, 10.0}, {1, 6, 20.0}, {2, 5, 30.0}, {2, 4, 40.0}}) {
    store.Insert("CategoryBudgetInfo",
                 {{"BudgetNumber", budget}, {"CategoryNumber", category}, {"Jan", Money(jan)}});
  }
  return store.Open();
}

TEST(Seek, TakesAKeyOfTwoValues) {
  const auto store = Budgets();
  const auto rec = Indexed(*store, "CategoryBudgetInfo");
  rec->Seek("=", {2, 5});
  EXPECT_EQ(rec->Fields("Jan"), Variant(Money(30)));
}

TEST(Seek, ByTwoValuesNeedsBoth) {
  const auto store = Budgets();
  const auto rec = Indexed(*store, "CategoryBudgetInfo");
  rec->Seek("=", {1, 4});
  EXPECT_TRUE(rec->NoMatch());
  rec->Seek("=", {2, Null{}});
  EXPECT_TRUE(rec->NoMatch());
}

TEST(Seek, ByTheFirstOfTwoValuesFindsTheFirstRowOfTheKeysOrder) {
  const auto store = Budgets();
  const auto rec = Indexed(*store, "CategoryBudgetInfo");
  rec->Seek("=", 2);
  EXPECT_EQ(rec->Fields("CategoryNumber"), Variant(4));
}

TEST(Seek, OfARepeatableKeyFindsTheRowEnteredFirst) {
  SmallStore builder;
  for (const auto& [owner, other] : {std::pair{8, 7}, {3, 9}, {8, 1}, {3, 4}}) {
    builder.Insert("AssociatedAccountInfo",
                   {{"AccountNumber", owner}, {"AssociatedAccountNumber", other}});
  }
  const auto store = builder.Open();
  const auto rec = Indexed(*store, "AssociatedAccountInfo");
  rec->Seek("=", 8);
  EXPECT_EQ(rec->Fields("AssociatedAccountNumber"), Variant(7));
  rec->MoveNext();
  EXPECT_EQ(rec->Fields("AssociatedAccountNumber"), Variant(1));
}

TEST(Seek, WorksOnTheTransactions) {
  SmallStore builder;
  for (int i = 1; i <= 20; ++i) {
    builder.Transaction({.date = Day(2026, 1, 21 - i), .account = 21 - i});
  }
  const auto store = builder.Open();
  const auto rec = Indexed(*store, "TransactionRecord");
  rec->Seek("=", 12);
  EXPECT_EQ(rec->Fields("AccountNumber"), Variant(9));
}

TEST(Seek, OfTwoRecordsetsKeepsThemApart) {
  const auto store = Accounts();
  const auto a = Indexed(*store, "Account");
  const auto b = Indexed(*store, "Account");
  a->Seek("=", 10);
  b->Seek("=", 20);
  EXPECT_EQ(a->Fields("AccountName"), Variant("no. 1"));
  EXPECT_EQ(b->Fields("AccountName"), Variant("no. 2"));
  b->Seek("=", 21);
  EXPECT_FALSE(a->NoMatch());
}

// ---- FindFirst

std::unique_ptr<Database> SomeBudgets() {
  SmallStore store;
  for (const auto& [number, attr] : {std::pair{9, 1}, {2, 0}, {5, 1}, {7, -2}}) {
    store.Insert("Budget", {{"BudgetNumber", number}, {"BudgetAttr", attr}});
  }
  return store.Open();
}

std::unique_ptr<Recordset> Dynaset(Database& store) {
  return store.OpenRecordset("Budget", RecordsetType::kDynaset);
}

TEST(FindFirst, StandsOnTheFirstRowOfTheKeysOrder) {
  const auto store = SomeBudgets();
  const auto rec = Dynaset(*store);
  rec->FindFirst("BudgetAttr= 1");
  EXPECT_FALSE(rec->NoMatch());
  EXPECT_EQ(rec->Fields("BudgetNumber"), Variant(5));
}

TEST(FindFirst, TakesANegativeNumber) {
  const auto store = SomeBudgets();
  const auto rec = Dynaset(*store);
  rec->FindFirst("BudgetAttr=-2");
  EXPECT_EQ(rec->Fields("BudgetNumber"), Variant(7));
}

TEST(FindFirst, ThatFindsNothingLeavesNoCurrentRow) {
  const auto store = SomeBudgets();
  const auto rec = Dynaset(*store);
  rec->FindFirst("BudgetAttr= 3");
  EXPECT_TRUE(rec->NoMatch());
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->Fields("BudgetNumber"); }));
}

TEST(FindFirst, StartsAtTheFirstRowFromAnywhere) {
  const auto store = SomeBudgets();
  const auto rec = Dynaset(*store);
  rec->MoveLast();
  rec->FindFirst("BudgetAttr= 1");
  EXPECT_EQ(rec->Fields("BudgetNumber"), Variant(5));
}

TEST(FindFirst, LeavesTheWalkAtTheFoundRow) {
  const auto store = SomeBudgets();
  const auto rec = Dynaset(*store);
  rec->FindFirst("BudgetAttr= 1");
  rec->MoveNext();
  EXPECT_EQ(rec->Fields("BudgetNumber"), Variant(7));
}

TEST(FindFirst, IsForADynasetAlone) {
  const auto store = SomeBudgets();
  const auto rec = store->OpenRecordset("Budget");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->FindFirst("BudgetAttr= 1"); }));
}

TEST(FindFirst, RefusesCriteriaThatAreNone) {
  const auto store = SomeBudgets();
  const auto rec = Dynaset(*store);
  for (const char* criteria : {"", "BudgetAttr=", "Nothing= 1", "BudgetAttr= 'x'", "= 1"}) {
    EXPECT_TRUE(Raises(FailureNumber::kBadSqlText, [&] { rec->FindFirst(criteria); })) << criteria;
  }
}

TEST(NoMatch, IsFalseBeforeAnythingWasSought) {
  const auto store = SomeBudgets();
  EXPECT_FALSE(store->OpenRecordset("Budget")->NoMatch());
}

TEST(TableRecordset, TakesItsTablesNameInAnyCase) {
  const auto store = SomeBudgets();
  EXPECT_EQ(store->OpenRecordset("bUDGET")->RecordCount(), 4);
}

TEST(TableRecordset, ShowsEveryTableOfTheModel) {
  const auto store = SmallStore().Open();
  for (const Table& table : StoreTables()) {
    EXPECT_TRUE(store->OpenRecordset(table.name)->Eof()) << table.name;
  }
}

}  // namespace
}  // namespace vetlo
