#include "quillmarsh/making/new_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <future>
#include <iostream>
#include <ostream>

#include "tests/support/program.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"
#include "tests/support/system_calls.h"
#include "vetlo/store/sqlite/files_beside.h"

namespace vetlo::testing {
namespace {

using quillmarsh::FileError;
using quillmarsh::NewStore;
using quillmarsh::PlaceTaken;
using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

// Writes a store of many payees of one name, so that a change of all takes dozens of pages.
void WriteStoreOf(const std::string& path, const std::string& payee) {
  constexpr int kPayees = 2000;
  SmallStore store(path);
  store.Row({.number = 1, .title = "Title"});
  for (int i = 1; i <= kPayees; ++i) {
    store.Insert("Payee", {{"PayeeNumber", i}, {"PayeeName", payee}});
  }
  store.Finish();
}

// The name of its payees, of which there is one alone in a store that is whole.
std::string PayeesOf(const std::string& path) {
  std::string names;
  const auto store = OpenStore(path, StoreAccess::kReadOnly);
  ForEachRowOf(*store, "SELECT DISTINCT PayeeName FROM Payee",
               [&](Recordset& rec) { names += TextField(rec, "PayeeName") + ";"; });
  return names;
}

// ---- what may lie under the name and beside it

// Leaves what a program leaves that was killed while it changed a store.
void BreakOffWithJournal(const std::string& store) {
  BreakOffAChange(store, "UPDATE Payee SET PayeeName = 'torn'");
}
void BreakOffWithLog(const std::string& store) {
  RunSql(store, "PRAGMA journal_mode = WAL");
  BreakOffAChange(store,
                  "UPDATE ChartReportSubType SET Title = 'logged'; COMMIT; BEGIN; "
                  "UPDATE Payee SET PayeeName = 'torn'");
}
void LeaveAlone(const std::string&) {}

struct OldCase {
  const char* name;
  std::function<void(const std::string& store)> leave;
};
void PrintTo(const OldCase& old, std::ostream* out) { *out << old.name; }

const auto kOldCases =
    ::testing::Values(OldCase{"Whole", &LeaveAlone}, OldCase{"WithAJournal", &BreakOffWithJournal},
                      OldCase{"WithALog", &BreakOffWithLog});

class Storing : public ::testing::Test {
 protected:
  Storing() { WriteStoreOf(prepared_, "new"); }

  // Makes a new store under the name.
  void Make(NewStore::Old old) const { MakeAt(name_, old); }
  void MakeAt(const std::string& name, NewStore::Old old) const {
    NewStore store(name, old);
    fs::copy_file(prepared_, store.path());
    store.TakeName();
  }
  [[nodiscard]] std::string RefusalOf(NewStore::Old old) const {
    try {
      Make(old);
      return "";
    } catch (const std::exception& error) {
      return error.what();
    }
  }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  TestFolder folder_;
  TestFolder elsewhere_;
  std::string name_ = folder_ / "home.qm";
  std::string prepared_ = elsewhere_ / "new.qm";
};

TEST_F(Storing, TakesAFreeName) {
  Make(NewStore::Old::kStays);
  EXPECT_EQ(PayeesOf(name_), "new;");
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
}

TEST_F(Storing, TakesAFreeNameAlsoWhereItMayReplace) {
  Make(NewStore::Old::kIsReplaced);
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
}

class OldStores : public Storing, public ::testing::WithParamInterface<OldCase> {
 protected:
  void SetUp() override {
    WriteStoreOf(name_, "old");
    GetParam().leave(name_);
  }
};
INSTANTIATE_TEST_SUITE_P(All, OldStores, kOldCases, [](const auto& old) { return old.param.name; });

TEST_P(OldStores, StayWhereTheyAreNotToBeReplaced) {
  const std::string before = ReadFile(name_);
  EXPECT_THROW(Make(NewStore::Old::kStays), PlaceTaken);
  EXPECT_EQ(ReadFile(name_), before);
  EXPECT_EQ(PayeesOf(name_), "old;");
}

TEST_P(OldStores, AreReplacedWithAllThatLiesBesideThem) {
  Make(NewStore::Old::kIsReplaced);
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
  EXPECT_EQ(ReadFile(name_), ReadFile(prepared_));
  EXPECT_EQ(PayeesOf(name_), "new;");
}

// The file went, and what lay beside it stayed.
TEST_P(OldStores, ThatAreGoneLeaveWhatIsRefusedOrTakenAway) {
  fs::remove(name_);
  const bool left = !FilesBeside(name_).empty();
  EXPECT_EQ(RefusalOf(NewStore::Old::kStays).find("is left of another store") != std::string::npos,
            left);
  EXPECT_EQ(fs::exists(name_), !left);
  if (left) {
    Make(NewStore::Old::kIsReplaced);
  }
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
  EXPECT_EQ(PayeesOf(name_), "new;");
}

TEST_P(OldStores, ThatComeUpMeanwhileStay) {
  fs::rename(name_, elsewhere_ / "moved.qm");
  for (const std::string& file : FilesBeside(name_)) {
    fs::rename(file, elsewhere_ / "moved.qm" + file.substr(name_.size()));
  }
  NewStore store(name_, NewStore::Old::kStays);
  fs::copy_file(prepared_, store.path());
  fs::rename(elsewhere_ / "moved.qm", name_);
  for (const std::string& file : FilesBeside(elsewhere_ / "moved.qm")) {
    fs::rename(file, name_ + file.substr((elsewhere_ / "moved.qm").size()));
  }
  EXPECT_THROW(store.TakeName(), PlaceTaken);
  EXPECT_EQ(PayeesOf(name_), "old;");
}

TEST_F(Storing, RefusesWhatIsLeftWhateverItIs) {
  for (const char* const ending : {"-journal", "-wal", "-shm"}) {
    const std::string left = name_ + ending;
    for (const auto& leave : std::vector<std::function<void()>>{
             [&] { WriteFile(left, ""); }, [&] { mkfifo(left.c_str(), 0600); },
             [&] { fs::create_symlink("nowhere", left); }}) {
      leave();
      EXPECT_THAT(RefusalOf(NewStore::Old::kStays), HasSubstr("'" + left + "'"));
      EXPECT_FALSE(fs::exists(name_));
      Make(NewStore::Old::kIsReplaced);
      EXPECT_THAT(Names(), ElementsAre("home.qm"));
      fs::remove(name_);
    }
  }
}

TEST_F(Storing, ReplacesAFileThatIsNoStore) {
  for (const std::string& text : {std::string("a letter"), std::string()}) {
    WriteFile(name_, text);
    EXPECT_THROW(Make(NewStore::Old::kStays), PlaceTaken);
    EXPECT_EQ(ReadFile(name_), text);
    Make(NewStore::Old::kIsReplaced);
    EXPECT_EQ(PayeesOf(name_), "new;");
    fs::remove(name_);
  }
}

TEST_F(Storing, ReplacesADamagedStore) {
  WriteStoreOf(name_, "old");
  std::string bytes = ReadFile(name_);
  bytes.replace(16, 2, "??");  // how large its pages are
  WriteFile(name_, bytes);
  Make(NewStore::Old::kIsReplaced);
  EXPECT_EQ(PayeesOf(name_), "new;");
}

// It may be a store whose beginning its journal has.
TEST_F(Storing, LeavesAFileThatCannotBeReadWithSomethingBesideIt) {
  WriteFile(name_, "a letter");
  WriteFile(name_ + "-journal", "and what belongs to it");
  EXPECT_THAT(RefusalOf(NewStore::Old::kIsReplaced), HasSubstr("move both away"));
  EXPECT_EQ(ReadFile(name_), "a letter");
  EXPECT_EQ(ReadFile(name_ + "-journal"), "and what belongs to it");
}

TEST_F(Storing, LeavesAStoreWhoseJournalIsNoFile) {
  WriteStoreOf(name_, "old");
  mkfifo((name_ + "-journal").c_str(), 0600);
  EXPECT_THAT(RefusalOf(NewStore::Old::kIsReplaced), HasSubstr("no regular file"));
  fs::remove(name_ + "-journal");
  EXPECT_EQ(PayeesOf(name_), "old;");
}

TEST_F(Storing, TakesThePlaceOfALinkAndLeavesWhatItLedTo) {
  const std::string linked = elsewhere_ / "linked.qm";
  WriteStoreOf(linked, "old");
  BreakOffWithJournal(linked);
  fs::create_symlink(linked, name_);
  EXPECT_THROW(Make(NewStore::Old::kStays), PlaceTaken);
  Make(NewStore::Old::kIsReplaced);
  EXPECT_FALSE(fs::is_symlink(name_));
  EXPECT_EQ(PayeesOf(name_), "new;");
  EXPECT_EQ(PayeesOf(linked), "old;");
}

TEST_F(Storing, DoesNotReplaceAFolder) {
  fs::create_directory(name_);
  EXPECT_THAT(RefusalOf(NewStore::Old::kIsReplaced), HasSubstr("it is a folder"));
}

TEST_F(Storing, LeavesTheOldStoreWhereTheNewOneWasNeverWritten) {
  WriteStoreOf(name_, "old");
  NewStore store(name_, NewStore::Old::kIsReplaced);
  EXPECT_THROW(store.TakeName(), FileError);
  EXPECT_EQ(PayeesOf(name_), "old;");
}

// ---- others who use it

TEST_F(Storing, IsRefusedWhereAnotherProgramUsesTheOldStore) {
  struct Use {
    std::string sql;
    bool logged = false;
  };
  const std::vector<Use> uses = {{"BEGIN; SELECT count(*) FROM Payee"},
                                 {"BEGIN IMMEDIATE"},
                                 {"BEGIN EXCLUSIVE"},
                                 {"SELECT count(*) FROM Payee", true}};
  std::vector<std::string> names;
  std::vector<std::unique_ptr<OtherProcess>> others;
  for (const Use& use : uses) {
    names.push_back(folder_ / std::to_string(names.size()));
    WriteStoreOf(names.back(), "old");
    if (use.logged) {
      RunSql(names.back(), "PRAGMA journal_mode = WAL");
    }
    others.push_back(std::make_unique<OtherProcess>(names.back(), use.sql));
  }
  // All of them at the same time, since each takes as long as others are waited for.
  std::vector<std::future<void>> makings;
  for (const std::string& name : names) {
    makings.push_back(
        std::async(std::launch::async, [this, name] { MakeAt(name, NewStore::Old::kIsReplaced); }));
  }
  for (std::size_t i = 0; i < uses.size(); ++i) {
    EXPECT_THROW(makings[i].get(), Failure) << uses[i].sql;
    others[i]->End();
    EXPECT_EQ(PayeesOf(names[i]), "old;") << uses[i].sql;
  }
}

TEST_F(Storing, LetsNobodyWriteTheOldStoreOnceItIsTaken) {
  WriteStoreOf(name_, "old");
  NewStore store(name_, NewStore::Old::kIsReplaced);
  fs::copy_file(prepared_, store.path());
  RunSql(name_, "UPDATE Payee SET PayeeName = 'changed meanwhile'");
  EXPECT_EQ(PayeesOf(name_), "changed meanwhile;") << "until then it can be used";
  store.TakeName();
  EXPECT_EQ(PayeesOf(name_), "new;");
}

// ---- kills

// Kept in memory where that can be: every step of hundreds of makings settles a file.
std::string MemoryFolder() {
  const char* const memory = "/dev/shm";
  return access(memory, W_OK) == 0 ? memory : fs::temp_directory_path().string();
}

void CopyFiles(const TestFolder& from, const fs::path& to) {
  for (const auto& entry : fs::directory_iterator(from.path())) {
    fs::copy_file(entry.path(), to / entry.path().filename());
  }
}

class KilledMaking : public ::testing::Test, public ::testing::WithParamInterface<OldCase> {
 protected:
  KilledMaking() {
    WriteStoreOf(prepared_, "new");
    WriteStoreOf(whole_ / "home.qm", "old");
    CopyFiles(whole_, left_.path());
    GetParam().leave(left_ / "home.qm");
  }

  // Something that is done to make a store of that name, and the part of it that is killed.
  using Making = std::function<int(const std::string& name, int step)>;

  // Has it killed at one step after the other.
  void KillAtEveryStep(const TestFolder& beginning, const Making& make) {
    int answer = 128 + SIGKILL;
    int step = 0;
    while (answer == 128 + SIGKILL && !HasFatalFailure()) {
      SCOPED_TRACE(++step);
      const TestFolder folder(MemoryFolder());
      CopyFiles(beginning, folder.path());
      answer = make(folder / "home.qm", step);
      Look(folder / "home.qm");
    }
    if (answer < 0) {
      GTEST_SKIP() << "no tracing of processes here";
    }
    EXPECT_EQ(answer, 0);
    EXPECT_GE(old_, 2);
    EXPECT_GE(new_, 1);
    std::cout << step << " steps, " << old_ << " left as it was, " << new_ << " new stores\n";
  }

  // All of it in a process that is killed.
  int MakeKilled(const std::string& name, int step) const {
    return KilledAtChange(step, [&] {
      NewStore store(name, NewStore::Old::kIsReplaced);
      fs::copy_file(prepared_, store.path());
      store.TakeName();
      return 0;
    });
  }

  // The new store has nothing beside it, and an old one all that it needs.
  void Look(const std::string& store) {
    const bool is_new = ReadFile(store) == ReadFile(prepared_);
    ++(is_new ? new_ : old_);
    if (is_new) {
      ASSERT_THAT(FilesBeside(store), IsEmpty());
    }
    ASSERT_EQ(fs::exists(store), is_new || fs::exists(left_ / "home.qm"));
    if (fs::exists(store)) {
      ASSERT_EQ(PayeesOf(store), is_new ? "new;" : "old;");
    }
  }

  TestFolder elsewhere_{MemoryFolder()};
  TestFolder whole_{MemoryFolder()};
  TestFolder left_{MemoryFolder()};
  std::string prepared_ = elsewhere_ / "new.qm";
  int old_ = 0;
  int new_ = 0;
};
INSTANTIATE_TEST_SUITE_P(All, KilledMaking, kOldCases,
                         [](const auto& old) { return old.param.name; });

TEST_P(KilledMaking, LeavesTheOldStoreOrTheNewOneAtEveryStep) {
  KillAtEveryStep(left_, [this](const auto& name, int step) { return MakeKilled(name, step); });
}

TEST_P(KilledMaking, LeavesNoNewStoreBesideWhatWasLeftOfAnOldOne) {
  fs::remove(left_ / "home.qm");
  KillAtEveryStep(left_, [this](const auto& name, int step) { return MakeKilled(name, step); });
}

// Another program's change of the old store was broken off while the new one was written.
TEST_P(KilledMaking, LeavesTheOldStoreOrTheNewOneAlsoWhereTheOldOneHasChangedMeanwhile) {
  KillAtEveryStep(whole_, [this](const std::string& name, int step) {
    NewStore store(name, NewStore::Old::kIsReplaced);
    fs::copy_file(prepared_, store.path());
    fs::remove(name);
    CopyFiles(left_, fs::path(name).parent_path());
    return KilledAtChange(step, [&] {
      store.TakeName();
      return 0;
    });
  });
}

}  // namespace
}  // namespace vetlo::testing
