#include <gtest/gtest.h>
#include <sqlite3.h>

#include <ostream>
#include <string>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "vetlo/store/sqlite/sqlite_database.h"

namespace vetlo {
namespace {

using testing::Day;
using testing::SmallStore;

constexpr const char* kRows = "ChartReportSubType";

std::unique_ptr<Database> TwoRows() {
  return SmallStore()
      .Account(1, "Wallet", kCashAccount, 5)
      .Row({.number = 4, .title = "four"})
      .Row({.number = 7, .title = "seven"})
      .Open();
}

std::unique_ptr<Recordset> RowOf(Database& store, std::int32_t number) {
  auto rec = store.OpenRecordset(kRows);
  rec->SetIndex(kPrimaryIndex);
  rec->Seek("=", number);
  return rec;
}

std::string TitleOf(Database& store, std::int32_t number) {
  return TextField(*RowOf(store, number), "Title");
}

void ChangeTitle(Database& store, std::int32_t number, const std::string& title) {
  const auto rec = RowOf(store, number);
  rec->Edit();
  rec->SetField("Title", title);
  rec->Update();
}

void UndoAsTheEngineDoes(Database& store) {
  sqlite3* const handle = dynamic_cast<SqliteDatabase&>(store).connection().handle();
  ASSERT_EQ(sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
}

void SetNeededFields(Recordset& rec, std::int32_t number) {
  rec.SetField("ChartReportSubTypeNumber", number);
  for (const char* field : {"ChartReportType", "ChartReportSubTypeAttr", "ChartOrReportType",
                            "ChartType", "Legend", "DateRangeType"}) {
    rec.SetField(field, 1);
  }
}

TEST(Edit, ChangesTheSoughtRow) {
  const auto store = TwoRows();
  ChangeTitle(*store, 7, "changed");
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Edit, ChangesNoOtherRow) {
  const auto store = TwoRows();
  ChangeTitle(*store, 7, "changed");
  EXPECT_EQ(TitleOf(*store, 4), "four");
}

TEST(Edit, ChangesTheRowOfAWalk) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->MoveNext();
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->Update();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Edit, ChangesTheLastRow) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->MoveLast();
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->Update();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Edit, ShowsTheChangeInTheSoughtRow) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  EXPECT_EQ(rec->Fields("Title"), Variant("seven"));
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->Update();
  EXPECT_EQ(rec->Fields("Title"), Variant("changed"));
}

TEST(Edit, ShowsTheChangeInTheRowOfAWalk) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  EXPECT_EQ(rec->Fields("Title"), Variant("four"));
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->Update();
  EXPECT_EQ(rec->Fields("Title"), Variant("changed"));
}

TEST(Edit, ReachesTheStoreWithUpdate) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  rec->SetField("Title", "changed");
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(Edit, ForgetsWhatWasNotUpdated) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->Edit();
  rec->SetField("ChartType", 2);
  rec->Update();
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(Edit, LeavesTheOtherFieldsAsTheyAre) {
  const auto store = TwoRows();
  ChangeTitle(*store, 7, "changed");
  EXPECT_EQ(LongField(*RowOf(*store, 7), "ChartReportSubTypeAttr"), 5);
}

TEST(Edit, TakesTheLastValueThatAFieldWasSetTo) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  rec->SetField("Title", "first");
  rec->SetField("TITLE", "second");
  rec->Update();
  EXPECT_EQ(TitleOf(*store, 7), "second");
}

TEST(Edit, NeedsARow) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->MoveLast();
  rec->MoveNext();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->Edit(); }));
}

TEST(Edit, NeedsARowInTheTable) {
  const auto store = SmallStore().Open();
  const auto rec = store->OpenRecordset(kRows);
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->Edit(); }));
}

TEST(AddNew, AddsARow) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->AddNew();
  SetNeededFields(*rec, 5);
  rec->SetField("Title", "five");
  rec->Update();
  EXPECT_EQ(rec->RecordCount(), 3);
  EXPECT_EQ(TitleOf(*store, 5), "five");
}

TEST(AddNew, GivesFieldsThatAreNotSetTheirDefault) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->AddNew();
  SetNeededFields(*rec, 5);
  rec->Update();
  EXPECT_EQ(RowOf(*store, 5)->Fields("DateRangeExtInfo"), Variant(1));
  EXPECT_EQ(RowOf(*store, 5)->Fields("FromDate"), Variant(Null{}));
}

TEST(AddNew, FailsForAKeyThatIsThereAlready) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->AddNew();
  SetNeededFields(*rec, 7);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->Update(); }));
  EXPECT_EQ(rec->RecordCount(), 2);
}

TEST(AddNew, CanBeTriedAgainAfterAFailure) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->AddNew();
  SetNeededFields(*rec, 7);
  ResumeNext([&] { rec->Update(); });
  rec->SetField("ChartReportSubTypeNumber", 8);
  rec->Update();
  EXPECT_EQ(rec->RecordCount(), 3);
}

TEST(Update, FailsWithoutAFieldThatARowNeeds) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(kRows);
  rec->AddNew();
  rec->SetField("Title", "five");
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->Update(); }));
  EXPECT_EQ(rec->RecordCount(), 2);
}

TEST(Update, FailsForANullWhereNoneMayBe) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->SetField("ChartType", Null{});
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->Update(); }));
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(Update, NeedsAChangeThatWasBegun) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->Update(); }));
  ChangeTitle(*store, 7, "changed");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->Update(); }));
}

TEST(Update, EndsTheChange) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  rec->SetField("Title", "changed");
  rec->Update();
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->SetField("Title", "again"); }));
}

TEST(SetField, NeedsAChangeThatWasBegun) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { rec->SetField("Title", "x"); }));
}

TEST(SetField, KnowsTheTablesColumnsAlone) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn, [&] { rec->SetField("AccountName", "x"); }));
}

struct Refused {
  const char* field;
  Variant value;
  FailureNumber number;

  friend std::ostream& operator<<(std::ostream& out, const Refused& refused) {
    return out << refused.field;
  }
};

class ValueOfAnotherType : public ::testing::TestWithParam<Refused> {};

TEST_P(ValueOfAnotherType, IsRefused) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  EXPECT_TRUE(
      Raises(GetParam().number, [&] { rec->SetField(GetParam().field, GetParam().value); }));
}

INSTANTIATE_TEST_SUITE_P(
    All, ValueOfAnotherType,
    ::testing::Values(Refused{"ChartType", "pie", FailureNumber::kTypeMismatch},
                      Refused{"ChartType", 1e10, FailureNumber::kOverflow},
                      Refused{"FromDate", "2026-01-01", FailureNumber::kTypeMismatch},
                      Refused{"FromDate", 1e10, FailureNumber::kOverflow},
                      Refused{"Legend", "yes", FailureNumber::kTypeMismatch}));

struct Written {
  const char* field;
  Variant value;
  Variant read;

  friend std::ostream& operator<<(std::ostream& out, const Written& written) {
    return out << written.field;
  }
};

class WrittenValue : public ::testing::TestWithParam<Written> {};

TEST_P(WrittenValue, ComesBackAsTheTypeOfItsColumn) {
  const auto store = TwoRows();
  const auto rec = RowOf(*store, 7);
  rec->Edit();
  rec->SetField(GetParam().field, GetParam().value);
  rec->Update();
  EXPECT_EQ(RowOf(*store, 7)->Fields(GetParam().field), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(
    All, WrittenValue,
    ::testing::Values(Written{"ChartType", 2, 2}, Written{"ChartType", "2", 2},
                      Written{"ChartType", 2.5, 2}, Written{"Legend", true, true},
                      Written{"Legend", -1, true}, Written{"Legend", 0, false},
                      Written{"Title", "Ä'\"漢", "Ä'\"漢"}, Written{"Title", 12, "12"},
                      Written{"Title", Null{}, Null{}}, Written{"Title", Empty{}, Null{}},
                      Written{"FromDate", Day(2026, 3, 1), Day(2026, 3, 1)},
                      Written{"FromDate", Date{46082.25}, Date{46082.25}},
                      Written{"FromDate", 46082, Date{46082}}, Written{"FromDate", Null{}, Null{}},
                      Written{"Parameter1", 12, 12}, Written{"Parameter1", 1.5, 1.5},
                      Written{"Parameter1", "abc", "abc"}, Written{"Parameter1", Null{}, Null{}},
                      Written{"Parameter1", Empty{}, Null{}}));

// ---- what may be changed

class TableOfTheBooks : public ::testing::TestWithParam<const char*> {};

TEST_P(TableOfTheBooks, IsNeverWritten) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset(GetParam());
  const std::int32_t rows = rec->RecordCount();
  rec->AddNew();
  for (const Column& column : FindTable(GetParam())->columns) {
    rec->SetField(column.name, 9);
  }
  EXPECT_NE(ResumeNext([&] { rec->Update(); }), 0);
  EXPECT_EQ(rec->RecordCount(), rows);
}

INSTANTIATE_TEST_SUITE_P(All, TableOfTheBooks, ::testing::ValuesIn([] {
                           std::vector<const char*> names;
                           for (const Table& table : StoreTables()) {
                             if (table.name != kRows) {
                               names.push_back(table.name.data());
                             }
                           }
                           return names;
                         }()),
                         [](const auto& test) { return std::string(test.param); });

TEST(Account, IsNeverChanged) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset("Account");
  rec->Edit();
  rec->SetField("AccountName", "Purse");
  EXPECT_NE(ResumeNext([&] { rec->Update(); }), 0);
  EXPECT_EQ(TextField(*store->OpenRecordset("Account"), "AccountName"), "Wallet");
}

// ---- transactions

TEST(Transaction, ThatIsNotCommittedUndoesItsChanges) {
  const auto store = TwoRows();
  {
    const Transaction transaction(*store);
    ChangeTitle(*store, 4, "changed");
    ChangeTitle(*store, 7, "changed");
    EXPECT_EQ(TitleOf(*store, 7), "changed");
  }
  EXPECT_EQ(TitleOf(*store, 4), "four");
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(Transaction, ThatIsCommittedKeepsItsChanges) {
  const auto store = TwoRows();
  {
    Transaction transaction(*store);
    ChangeTitle(*store, 7, "changed");
    transaction.Commit();
  }
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Transaction, IsUndoneWhereAFailureEndsIt) {
  const auto store = TwoRows();
  ResumeNext([&] {
    const Transaction transaction(*store);
    ChangeTitle(*store, 7, "changed");
    throw Failure(FailureNumber::kStoreUnusable);
  });
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(Transaction, CanFollowAnotherThatWasUndone) {
  const auto store = TwoRows();
  { const Transaction undone(*store); }
  Transaction transaction(*store);
  ChangeTitle(*store, 7, "changed");
  transaction.Commit();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Transaction, CannotBeginInASnapshot) {
  const auto store = TwoRows();
  const Snapshot snapshot(*store);
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { store->BeginTrans(); }));
}

TEST(Transaction, CanBeginBehindASnapshot) {
  const auto store = TwoRows();
  {
    const Snapshot outer(*store);
    const Snapshot inner(*store);
    EXPECT_EQ(TitleOf(*store, 7), "seven");
  }
  Transaction transaction(*store);
  ChangeTitle(*store, 7, "changed");
  transaction.Commit();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

// ---- changes within changes

TEST(InnerTransaction, ThatIsCommittedLastsWithTheOuterOne) {
  const auto store = TwoRows();
  {
    Transaction outer(*store);
    ChangeTitle(*store, 4, "outer");
    Transaction inner(*store);
    ChangeTitle(*store, 7, "inner");
    inner.Commit();
    outer.Commit();
  }
  EXPECT_EQ(TitleOf(*store, 4), "outer");
  EXPECT_EQ(TitleOf(*store, 7), "inner");
}

TEST(InnerTransaction, ThatIsUndoneLeavesTheOuterOne) {
  const auto store = TwoRows();
  Transaction outer(*store);
  ChangeTitle(*store, 4, "outer");
  {
    const Transaction inner(*store);
    ChangeTitle(*store, 4, "inner");
    ChangeTitle(*store, 7, "inner");
  }
  EXPECT_EQ(TitleOf(*store, 4), "outer");
  outer.Commit();
  EXPECT_EQ(TitleOf(*store, 4), "outer");
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(InnerTransaction, GoesWithAnOuterOneThatIsUndone) {
  const auto store = TwoRows();
  {
    const Transaction outer(*store);
    Transaction inner(*store);
    ChangeTitle(*store, 7, "inner");
    inner.Commit();
    EXPECT_EQ(TitleOf(*store, 7), "inner");
  }
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(InnerTransaction, CanFollowAnotherAndHaveOneOfItsOwn) {
  const auto store = TwoRows();
  Transaction outer(*store);
  { const Transaction undone(*store); }
  Transaction inner(*store);
  ChangeTitle(*store, 4, "inner");
  {
    const Transaction innermost(*store);
    ChangeTitle(*store, 4, "innermost");
  }
  inner.Commit();
  outer.Commit();
  EXPECT_EQ(TitleOf(*store, 4), "inner");
}

// The engine undoes a change by itself where it cannot go on, such as on a full disk.
TEST(InnerTransaction, CannotBeginInAChangeThatTheEngineHasUndone) {
  const auto store = TwoRows();
  store->BeginTrans();
  ChangeTitle(*store, 4, "outer");
  UndoAsTheEngineDoes(*store);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { store->BeginTrans(); }));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { store->CommitTrans(); }));
  store->Rollback();
  EXPECT_EQ(TitleOf(*store, 4), "four");
  Transaction next(*store);
  ChangeTitle(*store, 7, "changed");
  next.Commit();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Snapshot, WithinAChangeShowsTheChange) {
  const auto store = TwoRows();
  Transaction transaction(*store);
  ChangeTitle(*store, 7, "changed");
  {
    const Snapshot snapshot(*store);
    const Snapshot inner(*store);
    EXPECT_EQ(TitleOf(*store, 7), "changed");
  }
  transaction.Commit();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Snapshot, WithinAChangeLeavesItToBeUndone) {
  const auto store = TwoRows();
  {
    const Transaction transaction(*store);
    ChangeTitle(*store, 7, "changed");
    { const Snapshot snapshot(*store); }
    EXPECT_EQ(TitleOf(*store, 7), "changed");
  }
  EXPECT_EQ(TitleOf(*store, 7), "seven");
}

TEST(Snapshot, WithinAChangeEndsBeforeIt) {
  const auto store = TwoRows();
  Transaction transaction(*store);
  ChangeTitle(*store, 7, "changed");
  {
    const Snapshot snapshot(*store);
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { transaction.Commit(); }));
  }
  transaction.Commit();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Snapshot, BehindAChangeIsItsOwnAgain) {
  const auto store = TwoRows();
  {
    const Transaction transaction(*store);
    const Snapshot snapshot(*store);
  }
  { const Snapshot snapshot(*store); }
  Transaction transaction(*store);
  ChangeTitle(*store, 7, "changed");
  transaction.Commit();
  EXPECT_EQ(TitleOf(*store, 7), "changed");
}

TEST(Snapshot, ShowsNoChangeOfItsOwnStoreHalfway) {
  const auto store = TwoRows();
  const Snapshot snapshot(*store);
  const auto rec = RowOf(*store, 5);
  ASSERT_TRUE(rec->NoMatch());
  const std::int32_t failure = ResumeNext([&] {
    rec->AddNew();
    SetNeededFields(*rec, 5);
    rec->Update();
  });
  rec->Seek("=", 5);
  EXPECT_EQ(rec->NoMatch(), failure != 0);
  EXPECT_EQ(rec->RecordCount(), failure == 0 ? 3 : 2);
}

TEST(Transaction, LeavesAWalkThatIsUnderWayInOrder) {
  const auto store = TwoRows();
  const auto rec = store->OpenRecordset("SELECT * FROM ChartReportSubType");
  EXPECT_EQ(rec->Fields("ChartReportSubTypeNumber"), Variant(4));
  { const Transaction undone(*store); }
  rec->MoveNext();
  EXPECT_EQ(rec->Fields("ChartReportSubTypeNumber"), Variant(7));
}

}  // namespace
}  // namespace vetlo
