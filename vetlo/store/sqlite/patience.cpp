#include "vetlo/store/sqlite/patience.h"

#include <algorithm>
#include <thread>

namespace vetlo {

void Patience::Guide(sqlite3* handle) {
  sqlite3_busy_handler(
      handle,
      [](void* patience, int attempts) {
        return static_cast<Patience*>(patience)->Wait(attempts) ? 1 : 0;
      },
      this);
}

bool Patience::Wait(int attempts) {
  constexpr int kLongestPause = 50;
  const Clock::time_point start = Clock::now();
  if (start - end_of_last_wait_ >= time_) {
    waited_ = {};
  }
  if (waited_ >= time_) {
    return false;
  }
  const std::chrono::milliseconds pause(std::min(attempts + 1, kLongestPause));
  std::this_thread::sleep_for(std::min<Clock::duration>(pause, time_ - waited_));
  end_of_last_wait_ = Clock::now();
  waited_ += end_of_last_wait_ - start;
  return true;
}

}  // namespace vetlo
