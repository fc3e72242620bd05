#include "tests/sweeps/tally.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace sweeps {
namespace {

bool IsPrime(std::int64_t number) {
  for (std::int64_t factor = 2; factor * factor <= number; ++factor) {
    if (number % factor == 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

void Print(const std::string& what, const Tally& tally) {
  const std::string of = tally.faults < tally.calls ? " of " + std::to_string(tally.calls) : "";
  const std::string line = what + ": " + std::to_string(tally.faults) + of + " faults, " +
                           std::to_string(tally.told) + " told, " +
                           std::to_string(tally.without_effect) + " without effect\n";
  std::cout << line;
  if (const char* const counts = std::getenv("QUILLMARSH_SWEEP_COUNTS")) {
    std::ofstream(counts, std::ios::app) << line;
  }
}

bool IsWholeSweep() { return std::getenv("QUILLMARSH_WHOLE_SWEEP") != nullptr; }

std::int64_t StrideFor(std::int64_t all, std::int64_t most) {
  std::int64_t stride = std::max<std::int64_t>(1, (all + most - 1) / most);
  while (!IsPrime(stride)) {
    ++stride;
  }
  return stride;
}

}  // namespace sweeps
