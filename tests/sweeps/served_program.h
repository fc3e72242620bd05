#pragma once

#include <string>
#include <vector>

#include "tests/support/program.h"
#include "tests/sweeps/preload/plan.h"

namespace sweeps {

// What a run that followed a plan gave, and how many calls of each kind it made.
struct ServedRun : vetlo::testing::ProgramRun {
  std::array<std::int64_t, kCallNames.size()> calls = {};

  [[nodiscard]] std::int64_t Calls(Call call) const {
    return calls.at(static_cast<std::size_t>(call));
  }
};

// A program that is loaded once and then runs as often as asked for, from its first statement on,
// each time with the same words and settings and with some of its calls failing.
class ServedProgram {
 public:
  // Settings are "NAME=value"; there are no others.
  ServedProgram(const std::string& program, const std::vector<std::string>& words,
                const std::vector<std::string>& settings);
  ~ServedProgram();
  ServedProgram(const ServedProgram&) = delete;
  ServedProgram& operator=(const ServedProgram&) = delete;

  // Fails with a std::runtime_error where the program cannot be run at all.
  ServedRun Follow(const Plan& plan);

 private:
  int process_ = 0;
  int plans_ = -1;
  int outcomes_ = -1;
  int output_ = -1;
  int errors_ = -1;
};

}  // namespace sweeps
