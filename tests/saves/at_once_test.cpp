// Saves into one store by several programs at the same time.

#include <future>

#include "tests/saves/saved_household.h"

namespace vetlo::testing {
namespace {

class SavesAtOnce : public SavedHousehold {
 protected:
  // One run of the program for each, all at the same time.
  static std::vector<ProgramRun> RunAtOnce(const std::vector<Words>& commands) {
    std::vector<std::future<ProgramRun>> running;
    running.reserve(commands.size());
    for (const Words& words : commands) {
      running.push_back(
          std::async(std::launch::async, [words] { return RunProgram(PROGRAM, words); }));
    }
    std::vector<ProgramRun> runs;
    runs.reserve(running.size());
    for (auto& run : running) {
      runs.push_back(run.get());
    }
    return runs;
  }

  [[nodiscard]] int CountOfFavorites(const std::string& name) const {
    int count = 0;
    const auto store = OpenStore(store_, StoreAccess::kReadOnly);
    ForEachRowOf(*store, "SELECT * FROM ChartReportSubType WHERE ChartReportType= 4",
                 [&](Recordset& rec) {
                   count += TextFieldOrEmpty(rec, "ChartReportSubTypeName") == name ? 1 : 0;
                 });
    return count;
  }
};

TEST_F(SavesAtOnce, OfOneNameMakeOneFavorite) {
  constexpr int kRounds = 25;
  for (int round = 0; round < kRounds; ++round) {
    const std::string name = "Same " + std::to_string(round);
    const auto runs = RunAtOnce({{"favorite", store_, "1", name},
                                 {"favorite", store_, "2", name},
                                 {"favorite", store_, "3", name},
                                 {"favorite", store_, "4", name}});
    int done = 0;
    for (const ProgramRun& run : runs) {
      done += run.status == 0 ? 1 : 0;
      if (run.status != 0) {
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        ExpectOneLine(run.err);
      }
    }
    EXPECT_EQ(done, 1);
    ASSERT_EQ(CountOfFavorites(name), 1);
  }
}

// One name goes and comes again all the time, under the number of the one that went.
TEST_F(SavesAtOnce, TakeAwayTheFavoriteThatWasNamedAndNoOther) {
  constexpr int kRounds = 15;
  ASSERT_EQ(RunProgram(PROGRAM, {"favorite", store_, "1", "Kept"}).status, 0);
  for (int round = 0; round < kRounds; ++round) {
    const auto runs = RunAtOnce({{"favorite", store_, "1", "Passing"},
                                 {"unfavorite", store_, "Passing"},
                                 {"favorite", store_, "2", "Staying " + std::to_string(round)},
                                 {"unfavorite", store_, "Passing"}});
    for (const std::size_t taker : {1U, 3U}) {
      EXPECT_TRUE(runs[taker].status != 0 ||
                  runs[taker].out.find("  Passing: ") != std::string::npos)
          << runs[taker].out;
    }
    ASSERT_EQ(CountOfFavorites("Staying " + std::to_string(round)), 1);
    ASSERT_EQ(CountOfFavorites("Kept"), 1);
  }
}

TEST_F(SavesAtOnce, OfNamesThatDifferInCaseMakeOneEach) {
  const auto runs =
      RunAtOnce({{"favorite", store_, "1", "Same"}, {"favorite", store_, "2", "same"}});
  for (const ProgramRun& run : runs) {
    EXPECT_EQ(run.status, 0) << run.err;
  }
  EXPECT_EQ(CountOfFavorites("Same") + CountOfFavorites("same"), 2);
}

}  // namespace
}  // namespace vetlo::testing
