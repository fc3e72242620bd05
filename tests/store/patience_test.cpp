#include "vetlo/store/sqlite/patience.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace vetlo {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kTime{200};

// As the engine does it for one lock: again and again, until there is no more waiting.
milliseconds WaitToTheEnd(Patience& patience) {
  const Clock::time_point start = Clock::now();
  for (int attempts = 0; patience.Wait(attempts); ++attempts) {
  }
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

TEST(Patience, EndsWithItsTime) {
  Patience patience(kTime);
  EXPECT_GE(WaitToTheEnd(patience), kTime);
}

TEST(Patience, IsSharedByAllWaitsThatFollowEachOther) {
  Patience patience(kTime);
  WaitToTheEnd(patience);
  EXPECT_FALSE(patience.Wait(0));
  EXPECT_FALSE(patience.Wait(0));
}

TEST(Patience, AddsUpWaitsThatCameToAnEnd) {
  Patience patience(kTime);
  const Clock::time_point start = Clock::now();
  int waits = 0;
  while (patience.Wait(0)) {
    ++waits;
  }
  EXPECT_GT(waits, 3);
  EXPECT_GE(Clock::now() - start, kTime);
}

TEST(Patience, IsThereAnewOnceNothingWasWaitedForAsLong) {
  Patience patience(kTime);
  WaitToTheEnd(patience);
  std::this_thread::sleep_for(kTime);
  EXPECT_TRUE(patience.Wait(0));
  EXPECT_GE(WaitToTheEnd(patience), kTime / 2);
}

}  // namespace
}  // namespace vetlo
