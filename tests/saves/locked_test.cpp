// Commands on a store that somebody else is using. A command waits for him, five seconds at most.

#include <chrono>
#include <future>
#include <thread>

#include "tests/saves/saved_household.h"

namespace vetlo::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using ::testing::HasSubstr;

struct TimedRun {
  ProgramRun run;
  milliseconds time{};
};

std::future<TimedRun> Start(const Words& words) {
  return std::async(std::launch::async, [words, start = steady_clock::now()] {
    ProgramRun run = RunProgram(PROGRAM, words);
    return TimedRun{std::move(run),
                    std::chrono::duration_cast<milliseconds>(steady_clock::now() - start)};
  });
}

class LockedStore : public SavedHousehold {
 protected:
  // The command gave up after the time that it waits, and said why.
  static void ExpectRefusedInTime(const TimedRun& refused) {
    EXPECT_EQ(refused.run.status, 1);
    EXPECT_EQ(refused.run.out, "");
    ExpectOneLine(refused.run.err);
    EXPECT_THAT(refused.run.err, HasSubstr("another program is using the store; try again"));
    EXPECT_GE(refused.time, milliseconds(4900));
    EXPECT_LE(refused.time, milliseconds(9000));
  }

  const StoredBytes before_ = ReadStoredBytes(store_, kRow);
};

TEST_F(LockedStore, IsSavedToOnceAReaderHasGone) {
  constexpr milliseconds kReading{400};
  OtherProcess reader(store_, "BEGIN; SELECT count(*) FROM Payee");
  auto save = Start(ShortRow(store_));
  std::this_thread::sleep_for(kReading);
  reader.End();
  const TimedRun done = save.get();
  EXPECT_EQ(done.run.status, 0) << done.run.err;
  EXPECT_GE(done.time, kReading);
  EXPECT_NE(OpenedAndRead(store_).row, before_.row);
}

TEST_F(LockedStore, CanBeReadWhileSomebodyPreparesAChange) {
  const OtherProcess writer(store_, "BEGIN IMMEDIATE; UPDATE ChartReportSubType SET Title = 'x'");
  const ProgramRun show = RunProgram(PROGRAM, {"show", store_, "1"});
  EXPECT_EQ(show.status, 0) << show.err;
}

// All of them at the same time, since each takes as long as a save waits.
TEST_F(LockedStore, RefusesASaveWhereSomebodyStays) {
  const std::vector<std::string> locks = {"BEGIN; SELECT count(*) FROM Payee", "BEGIN IMMEDIATE",
                                          "BEGIN EXCLUSIVE"};
  std::vector<std::unique_ptr<OtherProcess>> others;
  std::vector<std::string> stores;
  for (const std::string& lock : locks) {
    stores.push_back(folder_ / std::to_string(stores.size()));
    std::filesystem::copy_file(store_, stores.back());
    others.push_back(std::make_unique<OtherProcess>(stores.back(), lock));
  }
  std::vector<std::future<TimedRun>> saves;
  for (const std::string& store : stores) {
    saves.push_back(Start(ShortRow(store)));
  }
  saves.push_back(Start({"unfavorite", stores[1], "None"}));
  for (std::size_t i = 0; i < locks.size(); ++i) {
    SCOPED_TRACE(locks[i]);
    ExpectRefusedInTime(saves[i].get());
    others[i]->End();
    EXPECT_EQ(OpenedAndRead(stores[i]), before_);
  }
  EXPECT_THAT(saves.back().get().run.err, HasSubstr("there is no favorite"));
}

TEST_F(LockedStore, LetsAReaderWaitNoLongerThanASave) {
  const OtherProcess writer(store_, "BEGIN EXCLUSIVE");
  std::vector<std::future<TimedRun>> commands;
  for (const Words& words : {Words{"show", store_, "1"}, Words{"list", store_},
                             Words{"figure", store_, "TotalAssets"}, ShortRow(store_)}) {
    commands.push_back(Start(words));
  }
  for (std::future<TimedRun>& command : commands) {
    ExpectRefusedInTime(command.get());
  }
}

}  // namespace
}  // namespace vetlo::testing
