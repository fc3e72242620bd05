// Fails every call that a command makes of the C library, one after another, once and from then on,
// and looks at what the user is told and what lies in his home afterwards.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/sweeps/home.h"
#include "tests/sweeps/served_program.h"
#include "tests/sweeps/swept_commands.h"
#include "tests/sweeps/tally.h"

namespace sweeps {
namespace {

constexpr std::int64_t kMostAllocations = 1500;

// Every line of a text begins as the program's errors do, and there is one.
bool IsTold(const std::string& err) {
  std::istringstream lines(err);
  std::string line;
  std::int64_t told = 0;
  while (std::getline(lines, line)) {
    if (!line.starts_with("quillmarsh: ") || line.ends_with(": ")) {
      return false;
    }
    ++told;
  }
  return told > 0 && err.ends_with('\n');
}

bool operator==(const ServedRun& a, const ServedRun& b) {
  return a.status == b.status && a.out == b.out && a.err == b.err;
}

std::string Described(const Plan& plan) {
  return std::string(kCallNames.at(static_cast<std::size_t>(plan.call))) + " " +
         std::to_string(plan.n) + " fails" + (plan.from_then_on ? " from then on" : "");
}

// The names of the files that are not as they were.
std::string Differences(const Home::Contents& before, const Home::Contents& after) {
  std::string names;
  for (const auto& [name, text] : after) {
    const auto old = before.find(name);
    names += old == before.end()   ? name + " is new\n"
             : old->second != text ? name + " changed\n"
                                   : "";
  }
  for (const auto& [name, text] : before) {
    names += after.contains(name) ? "" : name + " is gone\n";
  }
  return names;
}

class CallSweep : public testing::TestWithParam<SweptCommand> {
 protected:
  CallSweep()
      : home_(GetParam().registered),
        program_(PROGRAM, home_.Words(GetParam().words), home_.Settings()) {
    old_ = home_.Look();
    home_.Restore();
    sound_ = program_.Follow({});
    new_ = home_.Look();
    home_.Restore();
  }

  // Fails every so many-th of the calls of a kind.
  void Sweep(Call call, std::int64_t stride, Tally& tally) {
    tally.calls += 2 * sound_.Calls(call);
    for (std::int64_t n = 1; n <= sound_.Calls(call) && !HasFailure(); n += stride) {
      Try({call, false, n}, tally);
      Try({call, true, n}, tally);
    }
  }

  void Try(const Plan& plan, Tally& tally) {
    SCOPED_TRACE(Described(plan));
    const ServedRun run = program_.Follow(plan);
    const bool without_effect = run == sound_;
    ++tally.faults;
    ++(without_effect ? tally.without_effect : tally.told);
    if (!without_effect) {
      CheckTold(plan, run);
    }
    CheckHome(run);
    home_.Restore();
  }

  // Where nothing can be printed, there is no telling either.
  static void CheckTold(const Plan& plan, const ServedRun& run) {
    const bool failed = run.status == 1 || run.status == 2;
    EXPECT_TRUE(failed && (IsTold(run.err) || plan.call == Call::kPrint))
        << "status " << run.status << "\n"
        << run.out << run.err;
  }

  // What was told to be done is done; what was not is done or not.
  void CheckHome(const ServedRun& run) {
    const Home::Contents found = home_.Look();
    const bool is_new = found == new_;
    EXPECT_TRUE(run.status == 0 ? is_new : is_new || found == old_)
        << "status " << run.status << "\n"
        << run.err << Differences(old_, found);
  }

  Home home_;
  ServedProgram program_;
  Home::Contents old_;
  Home::Contents new_;
  ServedRun sound_;
};

TEST_P(CallSweep, OfFiles) {
  Tally tally;
  for (std::size_t i = 0; i < kCallNames.size(); ++i) {
    if (static_cast<Call>(i) != Call::kAllocate) {
      Sweep(static_cast<Call>(i), 1, tally);
    }
  }
  Print(std::string(GetParam().name) + ", calls on files", tally);
}

TEST_P(CallSweep, OfMemory) {
  const bool every = GetParam().every_allocation || IsWholeSweep();
  const std::int64_t all = sound_.Calls(Call::kAllocate);
  Tally tally;
  Sweep(Call::kAllocate, every ? 1 : StrideFor(all, kMostAllocations), tally);
  Print(std::string(GetParam().name) + ", allocations", tally);
}

INSTANTIATE_TEST_SUITE_P(Commands, CallSweep, testing::ValuesIn(SweptCommands()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace sweeps
