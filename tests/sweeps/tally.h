#pragma once

#include <cstdint>
#include <string>

namespace sweeps {

// How faults ended.
struct Tally {
  std::int64_t faults = 0;
  std::int64_t told = 0;
  std::int64_t without_effect = 0;
  std::int64_t calls = 0;  // of which that many could fail, once and from then on
};

// Prints "<what>: 412 faults, 380 told, 32 without effect", and of how many where some were left
// out. It is printed to the file that QUILLMARSH_SWEEP_COUNTS names too.
void Print(const std::string& what, const Tally& tally);

// Whether every fault is wanted where there are too many to try them all in a short time.
bool IsWholeSweep();

// To try about `most` of `all` things at even distances: a prime, so that it does not keep step
// with anything that comes again and again.
std::int64_t StrideFor(std::int64_t all, std::int64_t most);

}  // namespace sweeps
