#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::SmallStore;

std::unique_ptr<Database> ThreeAccounts() {
  return SmallStore()
      .Account(1, "one", kCashAccount)
      .Account(2, "two", kCashAccount)
      .Account(3, "three", kCashAccount)
      .Open();
}

// A way to open the three accounts.
struct Source {
  const char* name;
  const char* text;
  RecordsetType type = RecordsetType::kByDefault;

  friend std::ostream& operator<<(std::ostream& out, const Source& source) {
    return out << source.name;
  }
};

const Source kSources[] = {
    {"Table", "Account"},
    {"Dynaset", "Account", RecordsetType::kDynaset},
    {"Text", "SELECT * FROM Account"},
    {"OrderedText", "SELECT * FROM Account ORDER BY AccountNumber"},
    {"Distinct", "SELECT DISTINCT AccountNumber,AccountName FROM Account"},
    {"Join",
     "SELECT T1.* FROM Account AS T1,Account AS T2 WHERE T1.AccountNumber=T2.AccountNumber"},
};

class AnyRecordset : public ::testing::TestWithParam<Source> {
 protected:
  [[nodiscard]] std::unique_ptr<Recordset> Open(Database& store) const {
    return store.OpenRecordset(GetParam().text, GetParam().type);
  }

  std::unique_ptr<Database> store_ = ThreeAccounts();
  std::unique_ptr<Recordset> rec_ = Open(*store_);
};

INSTANTIATE_TEST_SUITE_P(All, AnyRecordset, ::testing::ValuesIn(kSources),
                         [](const auto& test) { return test.param.name; });

std::int32_t NumberIn(Recordset& rec) { return LongField(rec, "AccountNumber"); }

TEST_P(AnyRecordset, StandsOnItsFirstRowWhenItIsOpened) { EXPECT_EQ(NumberIn(*rec_), 1); }

TEST_P(AnyRecordset, IsNeitherAtItsStartNorAtItsEndOnARow) {
  EXPECT_FALSE(rec_->Bof());
  EXPECT_FALSE(rec_->Eof());
}

TEST_P(AnyRecordset, WalksToItsEnd) {
  std::vector<std::int32_t> numbers;
  for (; !rec_->Eof(); rec_->MoveNext()) {
    numbers.push_back(NumberIn(*rec_));
  }
  EXPECT_EQ(numbers, (std::vector<std::int32_t>{1, 2, 3}));
  EXPECT_FALSE(rec_->Bof());
}

TEST_P(AnyRecordset, ReadsARowAgain) {
  rec_->MoveNext();
  EXPECT_EQ(TextField(*rec_, "AccountName"), "two");
  EXPECT_EQ(NumberIn(*rec_), 2);
  EXPECT_EQ(TextField(*rec_, "accountNAME"), "two");
}

TEST_P(AnyRecordset, MovesNowhereBehindItsEnd) {
  rec_->MoveLast();
  rec_->MoveNext();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec_->MoveNext(); }));
  EXPECT_TRUE(rec_->Eof());
}

TEST_P(AnyRecordset, HasNoFieldsBehindItsEnd) {
  rec_->MoveLast();
  rec_->MoveNext();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec_->Fields("AccountNumber"); }));
}

TEST_P(AnyRecordset, MovesFirstFromTheMiddle) {
  rec_->MoveNext();
  rec_->MoveFirst();
  EXPECT_EQ(NumberIn(*rec_), 1);
}

TEST_P(AnyRecordset, MovesFirstFromItsEnd) {
  rec_->MoveLast();
  rec_->MoveNext();
  rec_->MoveFirst();
  EXPECT_EQ(NumberIn(*rec_), 1);
  rec_->MoveNext();
  EXPECT_EQ(NumberIn(*rec_), 2);
}

TEST_P(AnyRecordset, MovesFirstFromItsLastRow) {
  rec_->MoveLast();
  rec_->MoveFirst();
  EXPECT_EQ(NumberIn(*rec_), 1);
  rec_->MoveNext();
  EXPECT_EQ(NumberIn(*rec_), 2);
}

TEST_P(AnyRecordset, MovesLastAtOnce) {
  rec_->MoveLast();
  EXPECT_EQ(NumberIn(*rec_), 3);
  EXPECT_FALSE(rec_->Eof());
  EXPECT_FALSE(rec_->Bof());
}

TEST_P(AnyRecordset, MovesLastFromItsEnd) {
  rec_->MoveLast();
  rec_->MoveNext();
  rec_->MoveLast();
  EXPECT_EQ(NumberIn(*rec_), 3);
}

TEST_P(AnyRecordset, MovesLastTwice) {
  rec_->MoveLast();
  rec_->MoveLast();
  EXPECT_EQ(NumberIn(*rec_), 3);
}

TEST_P(AnyRecordset, IsAtItsEndBehindItsLastRow) {
  rec_->MoveLast();
  rec_->MoveNext();
  EXPECT_TRUE(rec_->Eof());
}

TEST_P(AnyRecordset, HasNoColumnOfAnotherName) {
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn, [&] { rec_->Fields("PayeeName"); }));
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn, [&] { rec_->Fields(""); }));
}

TEST_P(AnyRecordset, IsAtBothEndsWithoutARow) {
  const auto store = SmallStore().Open();
  const auto rec = Open(*store);
  EXPECT_TRUE(rec->Bof());
  EXPECT_TRUE(rec->Eof());
}

TEST_P(AnyRecordset, HasNowhereToMoveWithoutARow) {
  const auto store = SmallStore().Open();
  const auto rec = Open(*store);
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->MoveFirst(); }));
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->MoveNext(); }));
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->MoveLast(); }));
  EXPECT_TRUE(rec->Bof() && rec->Eof());
}

TEST_P(AnyRecordset, HasNoFieldsWithoutARow) {
  const auto store = SmallStore().Open();
  const auto rec = Open(*store);
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { rec->Fields("AccountNumber"); }));
}

TEST_P(AnyRecordset, CanBeOpenTwice) {
  const auto other = Open(*store_);
  rec_->MoveNext();
  EXPECT_EQ(NumberIn(*other), 1);
  EXPECT_EQ(NumberIn(*rec_), 2);
}

TEST_P(AnyRecordset, StaysWhereItIsWhenAnotherIsClosed) {
  const auto other = Open(*store_);
  rec_->MoveNext();
  other->MoveNext();
  other->Close();
  EXPECT_EQ(NumberIn(*rec_), 2);
}

// Memory that runs out between two rows.
TEST(Recordset, HasNoRowBehindAFailureToMove) {
  const auto store = ThreeAccounts();
  const auto rec = store->OpenRecordset("SELECT * FROM Account");
  rec->MoveNext();
  const sqlite3_int64 limit = sqlite3_hard_heap_limit64(1);
  const std::int32_t failure = ResumeNext([&] { rec->MoveLast(); });
  sqlite3_hard_heap_limit64(limit);
  ASSERT_NE(failure, 0);
  EXPECT_NE(ResumeNext([&] { rec->Fields("AccountNumber"); }), 0);
}

// ---- once closed

struct Operation {
  const char* name;
  std::function<void(Recordset&)> run;

  friend std::ostream& operator<<(std::ostream& out, const Operation& operation) {
    return out << operation.name;
  }
};

const Operation kOperations[] = {
    {"Close", [](Recordset& rec) { rec.Close(); }},
    {"Bof", [](Recordset& rec) { rec.Bof(); }},
    {"Eof", [](Recordset& rec) { rec.Eof(); }},
    {"MoveFirst", [](Recordset& rec) { rec.MoveFirst(); }},
    {"MoveNext", [](Recordset& rec) { rec.MoveNext(); }},
    {"MoveLast", [](Recordset& rec) { rec.MoveLast(); }},
    {"RecordCount", [](Recordset& rec) { rec.RecordCount(); }},
    {"SetIndex", [](Recordset& rec) { rec.SetIndex(kPrimaryIndex); }},
    {"Seek", [](Recordset& rec) { rec.Seek("=", 1); }},
    {"FindFirst", [](Recordset& rec) { rec.FindFirst("AccountType= 3"); }},
    {"NoMatch", [](Recordset& rec) { rec.NoMatch(); }},
    {"Fields", [](Recordset& rec) { rec.Fields("AccountNumber"); }},
    {"FieldsOfNoColumn", [](Recordset& rec) { rec.Fields("Nothing"); }},
    {"AddNew", [](Recordset& rec) { rec.AddNew(); }},
    {"Edit", [](Recordset& rec) { rec.Edit(); }},
    {"SetField", [](Recordset& rec) { rec.SetField("AccountName", "x"); }},
    {"Update", [](Recordset& rec) { rec.Update(); }},
};

class ClosedRecordset : public ::testing::TestWithParam<std::tuple<Source, Operation>> {};

TEST_P(ClosedRecordset, DoesNothingAnyMore) {
  const auto& [source, operation] = GetParam();
  const auto store = ThreeAccounts();
  const auto rec = store->OpenRecordset(source.text, source.type);
  rec->MoveNext();
  rec->Close();
  EXPECT_TRUE(Raises(FailureNumber::kObjectClosed, [&] { operation.run(*rec); }));
}

INSTANTIATE_TEST_SUITE_P(All, ClosedRecordset,
                         ::testing::Combine(::testing::ValuesIn(kSources),
                                            ::testing::ValuesIn(kOperations)),
                         [](const auto& test) {
                           return std::string(std::get<0>(test.param).name) +
                                  std::get<1>(test.param).name;
                         });

class TextsRecordset : public ::testing::TestWithParam<Operation> {};

TEST_P(TextsRecordset, IsNoTable) {
  const auto store = ThreeAccounts();
  const auto rec = store->OpenRecordset("SELECT * FROM Account");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { GetParam().run(*rec); }));
}

INSTANTIATE_TEST_SUITE_P(All, TextsRecordset, ::testing::ValuesIn([] {
                           std::vector<Operation> operations;
                           for (const Operation& operation : kOperations) {
                             for (const char* name :
                                  {"RecordCount", "SetIndex", "Seek", "FindFirst", "NoMatch",
                                   "AddNew", "Edit", "SetField", "Update"}) {
                               if (std::string_view(operation.name) == name) {
                                 operations.push_back(operation);
                               }
                             }
                           }
                           return operations;
                         }()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vetlo
