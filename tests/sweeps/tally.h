#pragma once

#include <cstdint>
#include <string>

#include "tests/support/program.h"

namespace sweeps {

using vetlo::testing::ProgramRun;

// How a run with a fault in it ended, beside one without.
enum class Ending {
  kWithoutEffect,  // the same output and status
  kTold,           // a line or more on standard error that begin as errors do, and a status of them
  kWrong,          // anything else: a signal, a silent difference
};
Ending EndingOf(const ProgramRun& run, const ProgramRun& sound);

// How many runs ended in which way.
class Tally {
 public:
  // Of so many faults that there are, some may be left out.
  void Announce(std::int64_t faults) { all_ += faults; }
  void Count(Ending ending);

  // Prints "<what>: 412 faults, 380 told, 32 without effect"; to the file that
  // QUILLMARSH_SWEEP_COUNTS names, too.
  void Print(const std::string& what) const;

 private:
  std::int64_t all_ = 0;
  std::int64_t told_ = 0;
  std::int64_t without_effect_ = 0;
  std::int64_t wrong_ = 0;
};

// Whether every fault is to be tried where there are so many that it takes long
// (QUILLMARSH_WHOLE_SWEEP is set).
bool IsWholeSweep();

// The distance at which about `most` of `all` things are tried: a prime, so that it keeps step with
// nothing that comes again and again.
std::int64_t StrideFor(std::int64_t all, std::int64_t most);

}  // namespace sweeps
