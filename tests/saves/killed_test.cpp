// Saves that are killed at any moment: the store holds the old row or the new one.

#include <signal.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <random>
#include <sstream>

#include "quillmarsh/cli/command_line.h"
#include "tests/saves/saved_household.h"
#include "tests/support/played_screen.h"
#include "vetlo/dialogs/customize.h"
#include "vetlo/frame/tamo.h"

namespace vetlo::testing {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kSlowness = 8;  // of everything, so that there are fewer kills
#else
constexpr int kSlowness = 1;
#endif

// What a process tells of its saves, in memory that outlives it.
struct Progress {
  std::atomic<int> begun = 0;
  std::atomic<int> ended = 0;
};

class SharedProgress {
 public:
  SharedProgress()
      : memory_(mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                     -1, 0)) {
    if (memory_ == MAP_FAILED) {
      throw std::runtime_error("no shared memory");
    }
    progress_ = new (memory_) Progress;
  }
  ~SharedProgress() { munmap(memory_, sizeof(Progress)); }
  SharedProgress(const SharedProgress&) = delete;
  SharedProgress& operator=(const SharedProgress&) = delete;

  Progress* operator->() { return progress_; }

 private:
  void* memory_;
  Progress* progress_;
};

// One save in this process: of the long row or of the short one. False where it was refused.
using Save = std::function<bool(bool long_row)>;

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
  using SavedHousehold::SavedHousehold;

  // Rows in the order in which they take turns.
  void TakeTurns(const StoredBytes& short_row, const StoredBytes& long_row) {
    ASSERT_NE(short_row.row, long_row.row);
    ASSERT_EQ(short_row.rest, long_row.rest);
    short_ = short_row;
    long_ = long_row;
    now_ = ReadStoredBytes(store_, kRow);
    ASSERT_EQ(now_.rest, short_.rest);
  }

  // Saves one row after the other until it is killed. It makes what saves only when it runs.
  [[noreturn]] void SaveForEver(const std::function<Save()>& make) {
    bool long_row = now_.row != long_.row;
    try {
      const Save save = make();
      for (;; long_row = !long_row) {
        ++progress_->begun;
        if (!save(long_row)) {
          break;
        }
        ++progress_->ended;
      }
    } catch (const std::exception&) {
    }
    _exit(1);
  }

  // A process that saves, killed a random while after its first save has begun.
  void KillOnce(const std::function<Save()>& make, int longest_while) {
    progress_->begun = 0;
    progress_->ended = 0;
    const pid_t child = fork();
    if (child == 0) {
      SaveForEver(make);
    }
    int status = 0;
    pid_t gone = 0;
    while (progress_->begun == 0 && gone == 0) {
      usleep(50);
      gone = waitpid(child, &status, WNOHANG);
    }
    ASSERT_EQ(gone, 0) << "it could not save";
    usleep(static_cast<unsigned>(While(longest_while)));
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "a save was refused";
    Look();
  }

  // How long a save of the program takes here and now, in microseconds.
  int TimeOfASave() const {
    const auto start = std::chrono::steady_clock::now();
    Saved(&LongRow);
    const auto time = std::chrono::steady_clock::now() - start;
    return static_cast<int>(std::min(std::chrono::microseconds(80'000 * kSlowness),
                                     std::chrono::duration_cast<std::chrono::microseconds>(time))
                                .count());
  }

  int While(int longest) { return std::uniform_int_distribution(0, longest)(dice_); }

  // What the kill has left behind, and what the store holds once it is opened.
  void Look() {
    const int begun = progress_->begun;
    const int ended = progress_->ended;
    ++kills_;
    journals_ += std::filesystem::exists(store_ + "-journal") ? 1 : 0;
    waiting_ += WaitsToBeUndone() ? 1 : 0;
    later_ += ended > 0 ? 1 : 0;
    constexpr int kOneShownOf = 40;
    if (kills_ % kOneShownOf == 0) {
      ExpectShown();
    }
    const StoredBytes found = OpenedAndRead(store_);
    const bool first_is_long = now_.row != long_.row;
    const auto row_of = [&](int save) -> const StoredBytes& {
      return save == 0 ? now_ : (save % 2 == 1) == first_is_long ? long_ : short_;
    };
    if (begun == ended) {
      ASSERT_EQ(found, row_of(ended)) << "a finished save is lost";
    } else {
      ASSERT_EQ(begun, ended + 1);
      ++inside_;
      ASSERT_TRUE(found == row_of(ended) || found == row_of(begun)) << "neither old nor new";
      ++(found == row_of(ended) ? old_ : new_);
    }
    now_ = found;
  }

  // A journal that was not filled yet says nothing.
  bool WaitsToBeUndone() const {
    const std::string journal = ReadFile(store_ + "-journal");
    return !journal.empty() && journal.front() != '\0';
  }

  // The program may be the first to open the store.
  void ExpectShown() {
    const ProgramRun show = RunProgram(PROGRAM, {"show", store_, "1"});
    EXPECT_EQ(show.status, 0) << show.err;
    EXPECT_FALSE(WaitsToBeUndone()) << "the program has shown what a broken save had written";
  }

  // Stores that a save had begun to write. Where everything is slow and kills are few, those whose
  // save had got no further than its journal count too.
  [[nodiscard]] int FoundUnfinished() const { return kSlowness == 1 ? waiting_ : journals_; }

  void Tell() {
    std::cout << kills_ << " kills, " << inside_ << " inside a save (" << old_ << " old rows, "
              << new_ << " new ones), " << journals_ << " journals left, " << waiting_
              << " of them to be undone, " << later_ << " after the first save\n";
  }

  std::mt19937 dice_{20260321};
  SharedProgress progress_;
  StoredBytes short_;
  StoredBytes long_;
  StoredBytes now_;
  int kills_ = 0;
  int inside_ = 0;
  int old_ = 0;
  int new_ = 0;
  int journals_ = 0;
  int waiting_ = 0;
  int later_ = 0;
};

// Where nothing waits for a disk, a save is short and a kill falls on any step of it alike.
class KilledSaveInMemory : public KilledSave {
 protected:
  KilledSaveInMemory() : KilledSave(MemoryFolder()) {}

  // Kills a process that works in the dialogs of a store that it has opened once.
  void KillDialogs(int kills) {
    const auto saved = [&](bool long_row) {
      DialogsOnAStore(store_).Save(kRow, long_row, long_row ? LongTitle() : "Short");
      return ReadStoredBytes(store_, kRow);
    };
    const StoredBytes long_row = saved(true);
    TakeTurns(saved(false), long_row);
    const auto make = [&]() -> Save {
      return [dialogs = std::make_shared<DialogsOnAStore>(store_)](bool long_title) {
        return dialogs->Save(kRow, long_title, long_title ? LongTitle() : "Short");
      };
    };
    while (kills_ < kills && !HasFatalFailure()) {
      KillOnce(make, 1500 * kSlowness);
    }
    Tell();
  }

 private:
  static std::string MemoryFolder() {
    const char* const memory = "/dev/shm";
    return access(memory, W_OK) == 0 ? memory : std::filesystem::temp_directory_path().string();
  }
};

TEST_F(KilledSaveInMemory, InTheDialogLeavesTheOldRowOrTheNewOne) {
  constexpr int kKills = 1300 / kSlowness;
  KillDialogs(kKills);
  EXPECT_GE(old_, kKills / 20);
  EXPECT_GE(new_, 1);
  EXPECT_GE(FoundUnfinished(), kKills / 100);
}

// A store that somebody has given a log in place of a journal.
TEST_F(KilledSaveInMemory, WithALogLeavesTheOldRowOrTheNewOne) {
  RunSql(store_, "PRAGMA journal_mode = WAL");
  KillDialogs(300 / kSlowness);
  EXPECT_GE(old_, 1);
  EXPECT_GE(new_, 1);
  EXPECT_EQ(journals_, 0);
}

TEST_F(KilledSave, ByCommandLeavesTheOldRowOrTheNewOne) {
  TakeTurns(Saved(&ShortRow), Saved(&LongRow));
  const auto make = [&]() -> Save {
    return
        [&](bool long_row) { return SaveByCommand(long_row ? LongRow(store_) : ShortRow(store_)); };
  };
  constexpr int kKills = 400 / kSlowness;
  const int longest = TimeOfASave();
  while (kills_ < kKills && !HasFatalFailure()) {
    KillOnce(make, longest);
  }
  Tell();
  EXPECT_GE(old_, kKills / 20);
  EXPECT_GE(FoundUnfinished(), 1);
  EXPECT_GE(new_ + later_, 1);
}

TEST_F(KilledSave, OfTheProgramLeavesTheOldRowOrTheNewOne) {
  TakeTurns(Saved(&ShortRow), Saved(&LongRow));
  constexpr int kKills = 160 / kSlowness;
  const int longest = 2 * TimeOfASave();
  while (kills_ < kKills && !HasFatalFailure()) {
    const Words words = now_.row == long_.row ? ShortRow(store_) : LongRow(store_);
    const int moment = While(longest);
    progress_->begun = 1;
    progress_->ended = 0;
    RunProgram(PROGRAM, words, {}, [moment] {
      // The timer goes with the process, and its signal kills.
      const itimerval timer = {{0, 0}, {0, std::min(moment + 1, 999'999)}};
      setitimer(ITIMER_REAL, &timer, nullptr);
    });
    Look();
  }
  Tell();
  EXPECT_GE(old_, 1);
  EXPECT_GE(new_, 1);
}

}  // namespace
}  // namespace vetlo::testing
