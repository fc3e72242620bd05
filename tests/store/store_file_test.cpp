#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using ::testing::HasSubstr;
using testing::Money;

namespace fs = std::filesystem;

// A folder of the test's own, gone with it.
class StoreFile : public ::testing::Test {
 protected:
  StoreFile() {
    std::string pattern = (fs::temp_directory_path() / "store_test_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("no folder for the test");
    }
    folder_ = pattern;
  }
  ~StoreFile() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  [[nodiscard]] std::string Path(const std::string& name = "store") const {
    return (folder_ / name).string();
  }

  // A store of one account, one settings row and many payees.
  std::string NewStore(const std::string& name = "store") const {
    StoreBuilder builder(Path(name));
    builder.Insert("Account", {{"AccountNumber", 1},
                               {"AccountName", "Wallet"},
                               {"AccountType", kCashAccount},
                               {"Balance", Money(5)}});
    builder.Insert("ChartReportSubType", {{"ChartReportSubTypeNumber", 1},
                                          {"ChartReportType", 1},
                                          {"ChartReportSubTypeAttr", 5},
                                          {"ChartOrReportType", 1},
                                          {"ChartType", 1},
                                          {"Legend", false},
                                          {"Title", "first"},
                                          {"DateRangeType", 0}});
    for (std::int32_t i = 1; i <= kPayees; ++i) {
      builder.Insert("Payee", {{"PayeeNumber", i},
                               {"PayeeName", "A payee with a name of some length, number " +
                                                 std::to_string(i)}});
    }
    builder.Finish();
    return Path(name);
  }

  // Runs statements on a file past all our own walls.
  static void Run(const std::string& path, const std::string& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &handle), SQLITE_OK);
    char* message = nullptr;
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, &message), SQLITE_OK)
        << (message == nullptr ? "" : message);
    sqlite3_free(message);
    ASSERT_EQ(sqlite3_close(handle), SQLITE_OK);
  }

  static void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }

  static std::string BytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  static ::testing::AssertionResult IsRefused(const std::string& path) {
    for (const StoreAccess access : {StoreAccess::kReadOnly, StoreAccess::kReadWrite}) {
      if (const auto result =
              Raises(FailureNumber::kStoreUnusable, [&] { OpenStore(path, access); });
          !result) {
        return result;
      }
    }
    return ::testing::AssertionSuccess();
  }

  static std::string TextOfRefusal(const std::string& path) {
    try {
      OpenStore(path, StoreAccess::kReadOnly);
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "";
  }

  static Currency Balance(Database& store) {
    return CurrencyField(*store.OpenRecordset("SELECT * FROM Account"), "Balance");
  }

  static std::string Title(Database& store) {
    return TextField(*store.OpenRecordset("SELECT * FROM ChartReportSubType"), "Title");
  }

  static void ChangeTitle(Database& store, const std::string& title) {
    const auto rec = store.OpenRecordset("ChartReportSubType");
    rec->SetIndex(kPrimaryIndex);
    rec->Seek("=", 1);
    rec->Edit();
    rec->SetField("Title", title);
    rec->Update();
  }

  static constexpr std::int32_t kPayees = 2000;
  fs::path folder_;
};

// ---- what opens

using OpenStoreTest = StoreFile;

TEST_F(OpenStoreTest, ReadsWhatWasWritten) {
  const auto store = OpenStore(NewStore(), StoreAccess::kReadOnly);
  EXPECT_EQ(Balance(*store), Money(5));
  EXPECT_EQ(store->OpenRecordset("Payee")->RecordCount(), kPayees);
}

TEST_F(OpenStoreTest, FollowsALinkToAStore) {
  fs::create_symlink(NewStore(), Path("link"));
  EXPECT_EQ(Balance(*OpenStore(Path("link"), StoreAccess::kReadOnly)), Money(5));
}

TEST_F(OpenStoreTest, FollowsALinkToItsFolder) {
  NewStore();
  fs::create_directory_symlink(folder_, Path("here"));
  EXPECT_EQ(Balance(*OpenStore(Path("here/store"), StoreAccess::kReadOnly)), Money(5));
}

TEST_F(OpenStoreTest, TakesEveryCharacterOfAPathAsItStands) {
  for (const char* name : {"file:x?mode=memory", "100%25.db", "a b'c\"", "ä漢", ":memory:"}) {
    EXPECT_EQ(Balance(*OpenStore(NewStore(name), StoreAccess::kReadOnly)), Money(5)) << name;
  }
}

struct Variation {
  const char* name;
  const char* sql;

  friend std::ostream& operator<<(std::ostream& out, const Variation& variation) {
    return out << variation.name;
  }
};

class HarmlessVariation : public StoreFile, public ::testing::WithParamInterface<Variation> {};

TEST_P(HarmlessVariation, OpensAndReadsAlike) {
  const std::string path = NewStore();
  Run(path, GetParam().sql);
  const auto store = OpenStore(path, StoreAccess::kReadOnly);
  EXPECT_EQ(Balance(*store), Money(5));
}

TEST_P(HarmlessVariation, LetsTheSettingsRowsBeChangedAndNothingElse) {
  const std::string path = NewStore();
  Run(path, GetParam().sql);
  const auto store = OpenStore(path, StoreAccess::kReadWrite);
  ChangeTitle(*store, "second");
  EXPECT_EQ(Title(*store), "second");
  EXPECT_EQ(Balance(*store), Money(5));
}

INSTANTIATE_TEST_SUITE_P(
    All, HarmlessVariation,
    ::testing::Values(
        Variation{"FurtherTable", "CREATE TABLE Further (a, b)"},
        Variation{"FurtherColumn", "ALTER TABLE Account ADD COLUMN Colour TEXT"},
        Variation{"FurtherView", "CREATE VIEW Further AS SELECT * FROM Account"},
        Variation{"NoIndexes", "DROP INDEX TransactionsOfAccount; DROP INDEX PricesOfItem"},
        Variation{"FurtherIndex", "CREATE INDEX ByName ON Account (AccountName)"},
        Variation{"TriggerOnAChange",
                  "CREATE TRIGGER Theft AFTER UPDATE ON ChartReportSubType BEGIN UPDATE Account "
                  "SET Balance = 0; END"},
        Variation{"TriggerInPlaceOfAChange",
                  "CREATE TRIGGER Refusal BEFORE UPDATE ON ChartReportSubType BEGIN SELECT "
                  "raise(ABORT, 'no'); END"},
        Variation{"TableNameInOtherCase",
                  "ALTER TABLE Account RENAME TO Other; ALTER TABLE Other RENAME TO aCCOUNT"},
        Variation{"ColumnNameInOtherCase", "ALTER TABLE Account RENAME COLUMN Balance TO bALANCE"},
        Variation{"OtherOrderOfColumns",
                  "ALTER TABLE Account DROP COLUMN BankName; ALTER TABLE Account ADD COLUMN "
                  "BankName TEXT"},
        Variation{"WriteAheadLog", "PRAGMA journal_mode = WAL"},
        Variation{"OtherPageSize", "PRAGMA page_size = 512; VACUUM"}),
    [](const auto& test) { return test.param.name; });

// ---- what does not

TEST_F(OpenStoreTest, RefusesAFileThatIsNotThere) { EXPECT_TRUE(IsRefused(Path("nothing"))); }

TEST_F(OpenStoreTest, MakesNoFile) {
  ResumeNext([&] { OpenStore(Path("nothing"), StoreAccess::kReadWrite); });
  EXPECT_FALSE(fs::exists(Path("nothing")));
}

TEST_F(OpenStoreTest, RefusesAnEmptyPath) { EXPECT_TRUE(IsRefused("")); }

TEST_F(OpenStoreTest, RefusesAPathWithANullCharacter) {
  EXPECT_TRUE(IsRefused(NewStore() + std::string(1, '\0') + "x"));
}

TEST_F(OpenStoreTest, RefusesAStoreInMemory) { EXPECT_TRUE(IsRefused(":memory:")); }

TEST_F(OpenStoreTest, RefusesAFolder) { EXPECT_TRUE(IsRefused(folder_.string())); }

TEST_F(OpenStoreTest, RefusesAPathThroughAFile) { EXPECT_TRUE(IsRefused(NewStore() + "/store")); }

TEST_F(OpenStoreTest, RefusesAPipe) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_TRUE(IsRefused(Path("pipe")));
}

TEST_F(OpenStoreTest, RefusesALinkToAPipe) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  fs::create_symlink(Path("pipe"), Path("link"));
  EXPECT_TRUE(IsRefused(Path("link")));
}

TEST_F(OpenStoreTest, RefusesADevice) { EXPECT_TRUE(IsRefused("/dev/null")); }

TEST_F(OpenStoreTest, RefusesALinkToNothing) {
  fs::create_symlink(Path("nothing"), Path("link"));
  EXPECT_TRUE(IsRefused(Path("link")));
}

TEST_F(OpenStoreTest, RefusesALinkToItself) {
  fs::create_symlink(Path("link"), Path("link"));
  EXPECT_TRUE(IsRefused(Path("link")));
}

TEST_F(OpenStoreTest, RefusesAnEmptyFile) {
  WriteFile(Path(), "");
  EXPECT_TRUE(IsRefused(Path()));
  EXPECT_EQ(fs::file_size(Path()), 0U);
}

TEST_F(OpenStoreTest, RefusesAFileOfText) {
  WriteFile(Path(), std::string(5000, 'x'));
  EXPECT_TRUE(IsRefused(Path()));
}

TEST_F(OpenStoreTest, SaysOfAFileOfTextThatItIsNoStore) {
  WriteFile(Path(), std::string(5000, 'x'));
  EXPECT_THAT(TextOfRefusal(Path()), HasSubstr("no Quillmarsh store"));
}

TEST_F(OpenStoreTest, RefusesTheFirstBytesOfAStore) {
  const std::string bytes = BytesOf(NewStore());
  for (const std::size_t length : {std::size_t{1}, std::size_t{16}, std::size_t{99},
                                   std::size_t{100}, std::size_t{1000}, std::size_t{4096}}) {
    WriteFile(Path("cut"), bytes.substr(0, length));
    EXPECT_TRUE(IsRefused(Path("cut"))) << length;
  }
}

TEST_F(OpenStoreTest, RefusesTheDatabaseOfAnotherProgram) {
  Run(Path(), "CREATE TABLE Account (AccountNumber INTEGER PRIMARY KEY)");
  EXPECT_TRUE(IsRefused(Path()));
}

TEST_F(OpenStoreTest, SaysThatADatabaseBelongsToAnotherProgram) {
  Run(Path(), "CREATE TABLE Account (AccountNumber INTEGER PRIMARY KEY)");
  EXPECT_THAT(TextOfRefusal(Path()), HasSubstr("belongs to another program"));
}

TEST_F(OpenStoreTest, SaysThatAStoreIsNewer) {
  Run(NewStore(), "PRAGMA user_version = 2");
  EXPECT_THAT(TextOfRefusal(Path()), HasSubstr("newer"));
}

TEST_F(OpenStoreTest, SaysThatAFileIsEmpty) {
  WriteFile(Path(), "");
  EXPECT_THAT(TextOfRefusal(Path()), HasSubstr("the file is empty"));
}

TEST_F(OpenStoreTest, SaysThatATableComputesAColumn) {
  Run(NewStore(), "ALTER TABLE ChartReportSubType ADD COLUMN Bulk TEXT AS (hex(zeroblob(9)))");
  EXPECT_THAT(TextOfRefusal(Path()), HasSubstr("ChartReportSubType computes a column"));
}

class UnusableVariation : public StoreFile, public ::testing::WithParamInterface<Variation> {};

TEST_P(UnusableVariation, IsRefused) {
  const std::string path = NewStore();
  Run(path, GetParam().sql);
  EXPECT_TRUE(StoreFile::IsRefused(path));
}

INSTANTIATE_TEST_SUITE_P(
    All, UnusableVariation,
    ::testing::Values(
        Variation{"NewerVersion", "PRAGMA user_version = 2"},
        Variation{"OtherApplication", "PRAGMA application_id = 1"},
        Variation{"MissingTable", "DROP TABLE PaymentCalendar"},
        Variation{"MissingLastTable", "DROP TABLE ChartReportSubType"},
        Variation{"MissingColumn", "ALTER TABLE Payee RENAME COLUMN PayeeName TO Name"},
        Variation{"ViewInPlaceOfATable",
                  "DROP TABLE Payee; CREATE VIEW Payee AS SELECT 1 AS PayeeNumber, 'x' AS "
                  "PayeeName"},
        Variation{"TableWithoutRowNumbers",
                  "DROP TABLE Payee; CREATE TABLE Payee (PayeeNumber INTEGER PRIMARY KEY, "
                  "PayeeName TEXT) WITHOUT ROWID"},
        Variation{"ComputedColumn",
                  "DROP TABLE Payee; CREATE TABLE Payee (PayeeNumber INTEGER PRIMARY KEY, "
                  "PayeeName TEXT AS (hex(zeroblob(9))))"},
        Variation{"FurtherComputedColumn",
                  "ALTER TABLE ChartReportSubType ADD COLUMN Bulk TEXT AS (hex(zeroblob(9)))"},
        Variation{"ColumnThatHidesTheRowNumber",
                  "DROP TABLE Payee; CREATE TABLE Payee (PayeeNumber INTEGER, PayeeName TEXT, "
                  "rowid TEXT)"},
        Variation{"VirtualTable",
                  "DROP TABLE Payee; CREATE VIRTUAL TABLE Payee USING fts5(PayeeNumber, "
                  "PayeeName)"}),
    [](const auto& test) { return test.param.name; });

// ---- reading alone

using ReadOnlyStore = StoreFile;

TEST_F(ReadOnlyStore, CannotBeChanged) {
  const auto store = OpenStore(NewStore(), StoreAccess::kReadOnly);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { ChangeTitle(*store, "second"); }));
}

TEST_F(ReadOnlyStore, StaysAsItIsToTheByte) {
  const std::string before = BytesOf(NewStore());
  {
    const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
    ResumeNext([&] { ChangeTitle(*store, "second"); });
    ResumeNext([&] { Transaction(*store).Commit(); });
    EXPECT_EQ(Title(*store), "first");
  }
  EXPECT_EQ(BytesOf(Path()), before);
}

TEST_F(ReadOnlyStore, OpensAFileThatCannotBeWritten) {
  NewStore();
  fs::permissions(Path(), fs::perms::owner_read);
  EXPECT_EQ(Balance(*OpenStore(Path(), StoreAccess::kReadOnly)), Money(5));
}

using ReadWriteStore = StoreFile;

TEST_F(ReadWriteStore, ShowsAChangeToTheNextReader) {
  ChangeTitle(*OpenStore(NewStore(), StoreAccess::kReadWrite), "second");
  EXPECT_EQ(Title(*OpenStore(Path(), StoreAccess::kReadOnly)), "second");
}

TEST_F(ReadWriteStore, UndoesATransactionThatIsNotCommitted) {
  {
    const auto store = OpenStore(NewStore(), StoreAccess::kReadWrite);
    const Transaction transaction(*store);
    ChangeTitle(*store, "second");
  }
  EXPECT_EQ(Title(*OpenStore(Path(), StoreAccess::kReadOnly)), "first");
}

TEST_F(ReadWriteStore, CannotChangeTheBooks) {
  const auto store = OpenStore(NewStore(), StoreAccess::kReadWrite);
  const auto rec = store->OpenRecordset("Account");
  rec->Edit();
  rec->SetField("Balance", Money(0));
  EXPECT_NE(ResumeNext([&] { rec->Update(); }), 0);
  EXPECT_EQ(Balance(*store), Money(5));
}

// A row that is kept holds nothing of the store, so that others can write meanwhile.
TEST_F(ReadWriteStore, IsFreeForOthersWhileASoughtRowIsKept) {
  const auto store = OpenStore(NewStore(), StoreAccess::kReadOnly);
  const auto rec = store->OpenRecordset("Account");
  rec->SetIndex(kPrimaryIndex);
  rec->Seek("=", 1);
  ChangeTitle(*OpenStore(Path(), StoreAccess::kReadWrite), "second");
  EXPECT_EQ(rec->Fields("AccountName"), Variant("Wallet"));
}

TEST_F(ReadWriteStore, IsFreeForOthersOnceAWalkIsClosed) {
  const auto store = OpenStore(NewStore(), StoreAccess::kReadOnly);
  const auto rec = store->OpenRecordset("Payee");
  rec->MoveNext();
  rec->Close();
  ChangeTitle(*OpenStore(Path(), StoreAccess::kReadWrite), "second");
  EXPECT_EQ(Title(*store), "second");
}

TEST_F(ReadWriteStore, IsFreeForOthersOnceAFailureDropsAWalk) {
  const auto store = OpenStore(NewStore(), StoreAccess::kReadOnly);
  ResumeNext([&] {
    ForEachRowOf(*store, "SELECT * FROM Payee",
                 [](Recordset&) { throw Failure(FailureNumber::kTypeMismatch); });
  });
  ChangeTitle(*OpenStore(Path(), StoreAccess::kReadWrite), "second");
  EXPECT_EQ(Title(*store), "second");
}

// ---- what a store may ask for

class CheckedStore : public StoreFile {
 protected:
  // A store whose settings rows are checked by this condition whenever one is written.
  std::string StoreWithCheck(const std::string& condition) const {
    Run(NewStore(),
        "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'ToDate DATE', "
        "'ToDate DATE CHECK (" +
            condition + ")') WHERE name = 'ChartReportSubType'");
    return Path();
  }

  static constexpr std::int64_t kMegabyte = 1 << 20;
};

TEST_F(CheckedStore, CannotMakeASaveTakeMuchMemory) {
  const auto store = OpenStore(StoreWithCheck("length(printf(''%.*c'', 50000000, Title)) > 0"),
                               StoreAccess::kReadWrite);
  sqlite3_memory_highwater(1);
  ResumeNext([&] { ChangeTitle(*store, "second"); });
  EXPECT_LT(sqlite3_memory_highwater(0), 10 * kMegabyte);
}

TEST_F(CheckedStore, CannotMakeASaveWorkOutAValueWithoutBounds) {
  const auto store = OpenStore(StoreWithCheck("length(zeroblob(50000000)) > length(Title)"),
                               StoreAccess::kReadWrite);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { ChangeTitle(*store, "second"); }));
  EXPECT_EQ(Title(*store), "first");
}

TEST_F(CheckedStore, MayCheckItsRowsWithinBounds) {
  const std::string path = StoreWithCheck("length(printf(''%.*c'', 50000, Title)) > 0");
  ChangeTitle(*OpenStore(path, StoreAccess::kReadWrite), "second");
  EXPECT_EQ(Title(*OpenStore(path, StoreAccess::kReadOnly)), "second");
}

TEST_F(StoreFile, WithATextOfMegabytesShowsTheOtherRows) {
  Run(NewStore(), "UPDATE Payee SET PayeeName = hex(zeroblob(1000000)) WHERE PayeeNumber = 2");
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const auto rec = store->OpenRecordset("Payee");
  rec->SetIndex(kPrimaryIndex);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] {
    rec->Seek("=", 2);
    static_cast<void>(rec->Fields("PayeeName"));
  }));
  rec->Seek("=", 3);
  EXPECT_THAT(TextField(*rec, "PayeeName"), HasSubstr("number 3"));
}

// ---- snapshots

class SnapshotOfAFile : public StoreFile {
 protected:
  SnapshotOfAFile() { Run(NewStore(), "PRAGMA journal_mode = WAL"); }

  void SetBalance(double balance) const {
    Run(Path(), "UPDATE Account SET Balance = " + std::to_string(Money(balance).units()));
  }

  static std::int32_t CountPayees(Database& store) {
    std::int32_t count = 0;
    ForEachRowOf(store, "SELECT * FROM Payee", [&](Recordset& rec) {
      static_cast<void>(rec.Fields("PayeeNumber"));
      ++count;
    });
    return count;
  }
};

TEST_F(SnapshotOfAFile, ShowsNothingThatIsWrittenMeanwhile) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const Snapshot snapshot(*store);
  ASSERT_EQ(Balance(*store), Money(5));
  SetBalance(6);
  EXPECT_EQ(Balance(*store), Money(5));
}

TEST_F(SnapshotOfAFile, ShowsAllThatWasWrittenOnceItIsGone) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  {
    const Snapshot snapshot(*store);
    ASSERT_EQ(Balance(*store), Money(5));
    SetBalance(6);
  }
  EXPECT_EQ(Balance(*store), Money(6));
}

TEST_F(SnapshotOfAFile, IsNeededForThat) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  ASSERT_EQ(Balance(*store), Money(5));
  SetBalance(6);
  EXPECT_EQ(Balance(*store), Money(6));
}

TEST_F(SnapshotOfAFile, HoldsUntilTheOutermostIsGone) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const Snapshot outer(*store);
  ASSERT_EQ(Balance(*store), Money(5));
  SetBalance(6);
  { const Snapshot inner(*store); }
  EXPECT_EQ(Balance(*store), Money(5));
}

TEST_F(SnapshotOfAFile, HoldsForEveryTable) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const Snapshot snapshot(*store);
  ASSERT_EQ(Balance(*store), Money(5));
  Run(Path(), "DELETE FROM Payee");
  EXPECT_EQ(CountPayees(*store), kPayees);
  EXPECT_EQ(store->OpenRecordset("Payee")->RecordCount(), kPayees);
}

TEST_F(SnapshotOfAFile, HoldsForASeek) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const Snapshot snapshot(*store);
  ASSERT_EQ(Balance(*store), Money(5));
  SetBalance(6);
  const auto rec = store->OpenRecordset("Account");
  rec->SetIndex(kPrimaryIndex);
  rec->Seek("=", 1);
  EXPECT_EQ(rec->Fields("Balance"), Variant(Money(5)));
}

TEST_F(SnapshotOfAFile, HoldsForAWalkThatIsUnderWay) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const Snapshot snapshot(*store);
  const auto rec = store->OpenRecordset("Payee");
  static_cast<void>(rec->Fields("PayeeNumber"));
  Run(Path(), "DELETE FROM Payee WHERE PayeeNumber > 10");
  std::int32_t count = 0;
  for (; !rec->Eof(); rec->MoveNext()) {
    static_cast<void>(rec->Fields("PayeeNumber"));
    ++count;
  }
  EXPECT_EQ(count, kPayees);
}

TEST_F(SnapshotOfAFile, HidesTheChangeOfAnotherOpenStore) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const Snapshot snapshot(*store);
  ASSERT_EQ(Title(*store), "first");
  ChangeTitle(*OpenStore(Path(), StoreAccess::kReadWrite), "second");
  EXPECT_EQ(Title(*store), "first");
}

TEST_F(SnapshotOfAFile, ShowsTheNewStateToTheNextSnapshot) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  {
    const Snapshot snapshot(*store);
    ASSERT_EQ(Title(*store), "first");
    ChangeTitle(*OpenStore(Path(), StoreAccess::kReadWrite), "second");
  }
  const Snapshot snapshot(*store);
  EXPECT_EQ(Title(*store), "second");
}

TEST_F(SnapshotOfAFile, SurvivesAChangeOfTheTablesBehindIt) {
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  {
    const Snapshot snapshot(*store);
    ASSERT_EQ(CountPayees(*store), kPayees);
    Run(Path(), "DROP TABLE Payee");
    EXPECT_EQ(CountPayees(*store), kPayees);
  }
  EXPECT_NE(ResumeNext([&] { CountPayees(*store); }), 0);
}

// ---- damage

class DamagedFile : public StoreFile, public ::testing::WithParamInterface<const char*> {
 protected:
  // Overwrites the middle of the file, most of which is payees.
  void DamagePayees() const {
    std::string bytes = BytesOf(Path());
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2),
              bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() * 3 / 4), '\xff');
    WriteFile(Path(), bytes);
  }
};

TEST_P(DamagedFile, FailsBeforeItsRowsEnd) {
  NewStore();
  DamagePayees();
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  std::int32_t count = 0;
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] {
    ForEachRowOf(*store, GetParam(), [&](Recordset& rec) {
      static_cast<void>(rec.Fields("PayeeName"));
      ++count;
    });
  }));
  EXPECT_LT(count, kPayees);
}

TEST_P(DamagedFile, NeverComesToAnEndOfItsRows) {
  NewStore();
  DamagePayees();
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  const auto rec = store->OpenRecordset(GetParam());
  ResumeNext([&] {
    while (!rec->Eof()) {
      rec->MoveNext();
    }
  });
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->Eof(); }));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->MoveNext(); }));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->Fields("PayeeName"); }));
}

TEST_P(DamagedFile, FailsForEveryReader) {
  NewStore();
  DamagePayees();
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  for (const char* reader : {"first", "second", "third"}) {
    EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] {
      ForEachRowOf(*store, GetParam(),
                   [](Recordset& rec) { static_cast<void>(rec.Fields("PayeeName")); });
    })) << reader;
  }
}

TEST_P(DamagedFile, ShowsTheTablesThatAreWhole) {
  NewStore();
  DamagePayees();
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  ResumeNext([&] { ForEachRowOf(*store, GetParam(), [](Recordset&) {}); });
  EXPECT_EQ(Balance(*store), Money(5));
}

INSTANTIATE_TEST_SUITE_P(All, DamagedFile,
                         ::testing::Values("Payee", "SELECT * FROM Payee",
                                           "SELECT * FROM Payee ORDER BY PayeeName",
                                           "SELECT DISTINCT PayeeName FROM Payee"));

TEST_F(StoreFile, WithDamagedRowsFailsToCountThem) {
  NewStore();
  std::string bytes = BytesOf(Path());
  std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2), bytes.end(), '\xff');
  WriteFile(Path(), bytes);
  const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
  EXPECT_TRUE(
      Raises(FailureNumber::kStoreUnusable, [&] { store->OpenRecordset("Payee")->RecordCount(); }));
}

TEST_F(StoreFile, ThatWasCutOffFails) {
  NewStore();
  fs::resize_file(Path(), fs::file_size(Path()) / 2);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] {
    const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
    ForEachRowOf(*store, "Payee",
                 [](Recordset& rec) { static_cast<void>(rec.Fields("PayeeName")); });
  }));
}

// ---- writing a new one

using StoreBuilderTest = StoreFile;

TEST_F(StoreBuilderTest, RefusesAFileThatIsThere) {
  NewStore();
  const std::string before = BytesOf(Path());
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { StoreBuilder builder(Path()); }));
  EXPECT_EQ(BytesOf(Path()), before);
}

TEST_F(StoreBuilderTest, RefusesALinkThatIsThere) {
  fs::create_symlink(Path("nothing"), Path("link"));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { StoreBuilder builder(Path("link")); }));
  EXPECT_FALSE(fs::exists(Path("nothing")));
}

TEST_F(StoreBuilderTest, RefusesAFolderThatIsThere) {
  EXPECT_TRUE(
      Raises(FailureNumber::kStoreUnusable, [&] { StoreBuilder builder(folder_.string()); }));
}

TEST_F(StoreBuilderTest, RefusesAFolderThatIsNotThere) {
  EXPECT_TRUE(
      Raises(FailureNumber::kStoreUnusable, [&] { StoreBuilder builder(Path("nowhere/store")); }));
}

TEST_F(StoreBuilderTest, LeavesNoStoreWhereItDoesNotFinish) {
  { StoreBuilder builder(Path()); }
  EXPECT_TRUE(IsRefused(Path()));
}

TEST_F(StoreBuilderTest, LeavesNothingBesideTheFile) {
  NewStore();
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
}

}  // namespace
}  // namespace vetlo
