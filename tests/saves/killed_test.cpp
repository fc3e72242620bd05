// Saves that are killed: the store holds the old row or the new one.

#include <signal.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <sstream>

#include "quillmarsh/cli/command_line.h"
#include "tests/saves/saved_household.h"
#include "tests/support/kill_at_change.h"
#include "tests/support/played_screen.h"
#include "vetlo/dialogs/customize.h"
#include "vetlo/frame/tamo.h"

namespace vetlo::testing {
namespace {

// Whether a process has finished its save, in memory that outlives it.
class SharedFlag {
 public:
  SharedFlag()
      : memory_(mmap(nullptr, sizeof(std::atomic<bool>), PROT_READ | PROT_WRITE,
                     MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
    if (memory_ == MAP_FAILED) {
      throw std::runtime_error("no shared memory");
    }
    flag_ = new (memory_) std::atomic<bool>(false);
  }
  ~SharedFlag() { munmap(memory_, sizeof(std::atomic<bool>)); }
  SharedFlag(const SharedFlag&) = delete;
  SharedFlag& operator=(const SharedFlag&) = delete;

  std::atomic<bool>& operator*() { return *flag_; }

 private:
  void* memory_;
  std::atomic<bool>* flag_;
};

// One save in this process: of the long row or of the short one. False where it was refused.
using Save = std::function<bool(bool long_row)>;
// What saves is made in the process that saves.
using MakeSave = std::function<Save()>;

// ---- the ways to save

bool SaveByCommand(const Words& words) {
  std::vector<const char*> argv = {"quillmarsh"};
  for (const std::string& word : words) {
    argv.push_back(word.c_str());
  }
  std::ostringstream out;
  std::ostringstream err;
  return quillmarsh::RunCommandLine(static_cast<int>(argv.size()), argv.data(), out, err) == 0;
}

// The dialogs of one store that stays open.
class DialogsOnAStore {
 public:
  explicit DialogsOnAStore(const std::string& path)
      : store_(OpenStore(path, StoreAccess::kReadWrite)),
        rows_(store_->OpenRecordset("ChartReportSubType")) {}

  bool Save(std::int32_t row, bool long_row, const std::string& title) {
    platform_.screen.user = [&](Form& shown) {
      auto& form = dynamic_cast<frmCustomize&>(shown);
      form.optChartOrReportType.at(long_row ? 0 : 1).Choose();
      form.txtTitle.Type(title);
      form.cboRange.Pick(form.cboRange.IndexOfItemData(long_row ? 15 : 3));
      form.txtFrom.Type("2026/01/01");  // where the range takes dates at all
      form.txtTo.Type("2026/03/31");
      form.cmdOK.Click();
    };
    return component_.CustomizeChartReport(*store_, *rows_, row);
  }

 private:
  PlayedPlatform platform_;
  clsTamo component_{platform_};
  std::unique_ptr<Database> store_;
  std::unique_ptr<Recordset> rows_;
};

// ---- the kills

class KilledSave : public SavedHousehold {
 protected:
  // The two rows that saves take turns in; the store holds the short one.
  void TakeTurns(const StoredBytes& short_row, const StoredBytes& long_row) {
    ASSERT_NE(short_row.row, long_row.row);
    ASSERT_EQ(short_row.rest, long_row.rest);
    short_ = short_row;
    long_ = long_row;
    now_ = ReadStoredBytes(store_, kRow);
    ASSERT_EQ(now_, short_);
  }

  // The row that is saved next, where now_ stands in the store.
  [[nodiscard]] const StoredBytes& Next() const { return now_.row == long_.row ? short_ : long_; }

  // What a kill has left behind, and what the store holds once it is opened. The program may be
  // the first to open it.
  void Look() {
    ++kills_;
    journals_ += std::filesystem::exists(store_ + "-journal") ? 1 : 0;
    waiting_ += WaitsToBeUndone() ? 1 : 0;
    if (kills_ % 3 == 0) {
      ExpectShown();
    }
    const StoredBytes found = OpenedAndRead(store_);
    ASSERT_TRUE(found == now_ || found == Next()) << "neither old nor new";
    ASSERT_TRUE(!*finished_ || found == Next()) << "a finished save is lost";
    ++(found == now_ ? old_ : new_);
    now_ = found;
  }

  // A journal that was not filled yet says nothing.
  [[nodiscard]] bool WaitsToBeUndone() const {
    const std::string journal = ReadFile(store_ + "-journal");
    return !journal.empty() && journal.front() != '\0';
  }

  void ExpectShown() {
    const ProgramRun show = RunProgram(PROGRAM, {"show", store_, "1"});
    EXPECT_EQ(show.status, 0) << show.err;
    EXPECT_FALSE(WaitsToBeUndone()) << "the program has shown what a broken save had written";
  }

  void Tell() const {
    std::cout << kills_ << " kills: " << old_ << " old rows, " << new_ << " new ones; " << journals_
              << " journals left, " << waiting_ << " of them to be undone\n";
  }

  SharedFlag finished_;
  StoredBytes short_;
  StoredBytes long_;
  StoredBytes now_;
  int kills_ = 0;
  int old_ = 0;
  int new_ = 0;
  int journals_ = 0;
  int waiting_ = 0;
};

// ---- at every change of a file

// A process stands where it changes files or between two changes, so these kills are all that
// there are.
class SaveKilledAtEveryChange : public KilledSave {
 protected:
  // A process that saves the next row and is killed at this change of a file. False where the save
  // is finished before.
  bool KillAt(int change, const MakeSave& make) {
    *finished_ = false;
    const bool killed = KillsItself([&] {
      const Save save = make();
      KillAtChange(change);
      *finished_ = save(now_.row != long_.row);
      return (*finished_).load();
    });
    if (!HasFatalFailure() && !killed) {
      now_ = Next();
      EXPECT_EQ(OpenedAndRead(store_), now_);
    }
    return killed;
  }

  void KillEachSave(const MakeSave& make) {
    for (const StoredBytes& first : {short_, long_}) {
      for (int change = 1; !HasFatalFailure() && KillAt(change, make); ++change) {
        Look();
        BringBack(first, make);
      }
    }
    Tell();
  }

  // The dialogs of a store that is opened once for all saves of a process.
  MakeSave ByDialogs() {
    return [this]() -> Save {
      return [this, dialogs = std::make_shared<DialogsOnAStore>(store_)](bool long_row) {
        return dialogs->Save(kRow, long_row, long_row ? LongTitle() : "Short");
      };
    };
  }
  MakeSave ByCommand() {
    return [this]() -> Save {
      return [this](bool long_row) {
        return SaveByCommand(long_row ? LongRow(store_) : ShortRow(store_));
      };
    };
  }

  // Saves both rows once, and lets them take turns.
  void TakeTurnsBy(const MakeSave& make) {
    const auto saved = [&](bool long_row) {
      EXPECT_TRUE(make()(long_row));
      return ReadStoredBytes(store_, kRow);
    };
    const StoredBytes long_row = saved(true);
    TakeTurns(saved(false), long_row);
  }

  // Whether the work of a child has ended in its being killed.
  template <typename Work>
  static bool KillsItself(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
      bool done = false;
      try {
        done = work();
      } catch (const std::exception&) {
      }
      _exit(done ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const bool killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    EXPECT_TRUE(killed || status == 0) << "the child could not work";
    return killed;
  }

 private:
  // A kill behind the last change that matters has left the new row.
  void BringBack(const StoredBytes& row, const MakeSave& make) {
    if (now_.row != row.row) {
      EXPECT_FALSE(KillAt(0, make)) << "a save that nobody kills was killed";
    }
  }
};

TEST_F(SaveKilledAtEveryChange, InTheDialogLeavesTheOldRow) {
  TakeTurnsBy(ByDialogs());
  KillEachSave(ByDialogs());
  // The last change removes the journal, and so makes the new row the one that is stored.
  EXPECT_EQ(new_, 0);
  EXPECT_GE(waiting_, 4);
}

// A store that somebody has given a log in place of a journal.
TEST_F(SaveKilledAtEveryChange, WithALogLeavesTheOldRowOrTheNewOne) {
  RunSql(store_, "PRAGMA journal_mode = WAL");
  TakeTurnsBy(ByDialogs());
  KillEachSave(ByDialogs());
  EXPECT_GE(old_, 4);
  EXPECT_GE(new_, 1);
  EXPECT_EQ(journals_, 0);
}

TEST_F(SaveKilledAtEveryChange, ByCommandLeavesTheOldRow) {
  TakeTurnsBy(ByCommand());
  KillEachSave(ByCommand());
  EXPECT_EQ(new_, 0);
  EXPECT_GE(waiting_, 4);
}

// Whoever opens the store next takes back what was half written, and can be killed over it.
TEST_F(SaveKilledAtEveryChange, LeavesTheOldRowAlsoWhereItsUndoingIsKilled) {
  TakeTurnsBy(ByDialogs());
  int half_written = 1;
  while (KillAt(half_written, ByDialogs()) && !WaitsToBeUndone()) {
    ++half_written;
  }
  const auto undo_and_be_killed_at = [&](int change) {
    return KillsItself([&] {
      KillAtChange(change);
      OpenStore(store_, StoreAccess::kReadOnly);
      return true;
    });
  };
  int undone = 0;
  while (undo_and_be_killed_at(undone + 1)) {
    ++undone;
    ASSERT_TRUE(WaitsToBeUndone());
    ASSERT_EQ(OpenedAndRead(store_), short_) << "killed at change " << undone;
    ASSERT_TRUE(KillAt(half_written, ByDialogs()));
  }
  EXPECT_GE(undone, 2);
}

// ---- at any time

// The program as users run it, killed by a timer.
class SaveKilledByATimer : public KilledSave {
 protected:
  static constexpr int kMostMicroseconds = 999'999;
#ifdef BUILT_WITH_SANITIZERS
  static constexpr int kRuns = 20;  // each of them takes its time
#else
  static constexpr int kRuns = 160;
#endif

  void KillAfter(int microseconds) {
    const Words words = now_.row == long_.row ? ShortRow(store_) : LongRow(store_);
    const ProgramRun run = RunProgram(PROGRAM, words, {}, [microseconds] {
      // The timer goes with the process, and its signal kills.
      const itimerval timer = {{0, 0}, {0, microseconds}};
      setitimer(ITIMER_REAL, &timer, nullptr);
    });
    *finished_ = run.status == 0;
    Look();
  }
};

// However slow the machine is: a run that was killed too early is followed by one that has a
// little more time, and one that has saved by one that has a little less.
TEST_F(SaveKilledByATimer, LeavesTheOldRowOrTheNewOne) {
  const StoredBytes long_row = Saved(&LongRow);
  ASSERT_EQ(RunProgram(PROGRAM, ShortRow(store_)).status, 0);
  TakeTurns(ReadStoredBytes(store_, kRow), long_row);
  std::mt19937 dice(20260321);
  int longest = 1000;
  while ((kills_ < kRuns || old_ == 0 || new_ == 0) && !HasFatalFailure()) {
    const int old_before = old_;
    KillAfter(std::uniform_int_distribution(1, longest)(dice));
    longest = old_ > old_before ? std::min(longest + longest / 4, kMostMicroseconds)
                                : std::max(longest - longest / 4, 1);
  }
  Tell();
}

}  // namespace
}  // namespace vetlo::testing
