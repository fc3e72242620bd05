#pragma once

#include <sqlite3.h>

#include <chrono>

namespace vetlo {

// How long a store waits for others who are using it. What belongs together (opening a store,
// undoing a save that was broken off, the first snapshot or change behind it) shares one time of
// waiting: its waits add up, and once they have reached the time there is no more waiting. The time
// is there anew when as long has passed without a wait.
class Patience {
 public:
  static constexpr std::chrono::milliseconds kTime{5000};

  explicit Patience(std::chrono::milliseconds time = kTime) : time_(time) {}
  Patience(const Patience&) = delete;
  Patience& operator=(const Patience&) = delete;

  // From here on the connection waits with this patience, which must outlive it.
  void Guide(sqlite3* handle);

  // Waits a little, the longer the more attempts went before; false, at once, where the time is
  // spent.
  bool Wait(int attempts);

 private:
  using Clock = std::chrono::steady_clock;

  std::chrono::milliseconds time_;
  Clock::duration waited_{};
  Clock::time_point end_of_last_wait_{};
};

}  // namespace vetlo
