#pragma once

#include <cstdint>

namespace quillmarsh {

// A generator of our own, because the distributions of the standard library differ between
// platforms: the same seed gives the same rolls everywhere.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}

  // A whole number from `low` to `high`, both included; low <= high.
  std::int64_t Roll(std::int64_t low, std::int64_t high) {
    if (high <= low) {
      return low;
    }
    const auto faces = static_cast<std::uint64_t>(high - low) + 1;
    return low + static_cast<std::int64_t>(Next() % faces);
  }

  // True once in so many rolls.
  bool OneIn(std::int64_t rolls) { return Roll(1, rolls) == 1; }

  // The amount, up to so many percent off either way.
  std::int64_t Around(std::int64_t amount, std::int64_t percent) {
    return amount + amount * Roll(-10 * percent, 10 * percent) / 1000;
  }

 private:
  // A counter whose bits are stirred until neighbours have nothing in common.
  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }

  std::uint64_t state_;
};

}  // namespace quillmarsh
