#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// What a test and the library that it preloads into a program tell each other.

namespace sweeps {

// The calls that can be made to fail. Some stand for several of the C library that do the same.
enum class Call : std::uint32_t {
  kOpen,
  kRead,
  kPread,
  kWrite,
  kPwrite,
  kPrint,
  kSync,
  kTruncate,
  kUnlink,
  kRename,
  kLock,
  kMakeFolder,
  kLook,
  kMap,
  kAllocate,
};

inline constexpr std::array<std::string_view, 15> kCallNames = {
    "open",   "read",   "pread", "write", "pwrite", "fwrite", "fsync", "ftruncate",
    "unlink", "rename", "lock",  "mkdir", "stat",   "mmap",   "malloc"};

// The n-th call fails, counted from 1, and no other or all after it as well; the 0th never does.
struct Plan {
  Call call = Call::kOpen;
  bool from_then_on = false;
  std::int64_t n = 0;
};

// What became of a run: the status as waitpid gives it, how many calls of each kind there were.
struct Outcome {
  int wait_status = 0;
  std::array<std::int64_t, kCallNames.size()> calls = {};
};

// The program that the library is preloaded into stops before its first statement, its own static
// objects included. From then on it reads a Plan from the first of these descriptors, runs as a
// child by the plan with its output in the third and fourth, writes the Outcome to the second, and
// reads again, until there are no more plans.
inline constexpr int kPlans = 100;
inline constexpr int kOutcomes = 101;
inline constexpr int kOutput = 102;
inline constexpr int kErrors = 103;

// The clock of a run stands still at 2026-03-20 22:30 in UTC.
inline constexpr std::int64_t kNow = 1'774'045'800;

// A run that takes longer is ended by SIGALRM. None does, but machines stand still at times.
inline constexpr unsigned kLongestRunSeconds = 600;

}  // namespace sweeps
