#include "tests/sweeps/tally.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

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

// Every line begins as the program's errors do and says something, and there is one.
bool IsOfErrors(const std::string& text) {
  constexpr std::string_view kBeginning = "quillmarsh: ";
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    if (!line.starts_with(kBeginning) || line.size() == kBeginning.size()) {
      return false;
    }
  }
  return text.ends_with('\n');
}

}  // namespace

Ending EndingOf(const ProgramRun& run, const ProgramRun& sound) {
  if (run.status == sound.status && run.out == sound.out && run.err == sound.err) {
    return Ending::kWithoutEffect;
  }
  const bool told = (run.status == 1 || run.status == 2) && IsOfErrors(run.err);
  return told ? Ending::kTold : Ending::kWrong;
}

void Tally::Count(Ending ending) {
  ++(ending == Ending::kTold ? told_ : ending == Ending::kWithoutEffect ? without_effect_ : wrong_);
}

void Tally::Print(const std::string& what) const {
  const std::int64_t tried = told_ + without_effect_ + wrong_;
  std::ostringstream line;
  line << what << ": " << tried << (tried < all_ ? " of " + std::to_string(all_) : "")
       << " faults, " << told_ << " told, " << without_effect_ << " without effect"
       << (wrong_ > 0 ? ", " + std::to_string(wrong_) + " WRONG" : "") << "\n";
  std::cout << line.str();
  if (const char* const counts = std::getenv("QUILLMARSH_SWEEP_COUNTS")) {
    std::ofstream(counts, std::ios::app) << line.str();
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
