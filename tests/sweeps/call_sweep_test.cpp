// Fails every call that a command makes of the C library, one after another, once and from then on,
// and looks at what the user is told and what lies in his home afterwards.

#include <gtest/gtest.h>

#include "tests/sweeps/home.h"
#include "tests/sweeps/served_program.h"
#include "tests/sweeps/swept_commands.h"
#include "tests/sweeps/tally.h"

namespace sweeps {
namespace {

constexpr std::int64_t kMostAllocations = 1500;

std::string Described(const Plan& plan) {
  return std::string(kCallNames.at(static_cast<std::size_t>(plan.call))) + " " +
         std::to_string(plan.n) + " fails" + (plan.from_then_on ? " from then on" : "");
}

// The files that are not as they were, a line each.
std::string Differences(const Home::Contents& before, const Home::Contents& after) {
  std::string lines;
  for (const auto& [name, text] : after) {
    const auto old = before.find(name);
    if (old == before.end() || old->second != text) {
      lines += name + (old == before.end() ? " is new\n" : " has changed\n");
    }
  }
  for (const auto& [name, text] : before) {
    lines += after.contains(name) ? "" : name + " is gone\n";
  }
  return lines;
}

class CallSweep : public testing::TestWithParam<SweptCommand> {
 protected:
  CallSweep()
      : home_(GetParam().registered),
        program_(PROGRAM, home_.Words(GetParam().words), home_.Settings()) {
    old_ = home_.Look();
    sound_ = program_.Follow({});
    new_ = home_.Look();
    home_.Restore();
  }

  // Fails every so many-th of the calls of a kind.
  void Sweep(Call call, std::int64_t stride) {
    tally_.Announce(2 * sound_.Calls(call));
    for (std::int64_t n = 1; n <= sound_.Calls(call) && !HasFailure(); n += stride) {
      Try({call, false, n});
      Try({call, true, n});
    }
  }

  void Try(const Plan& plan) {
    SCOPED_TRACE(Described(plan));
    const ServedRun run = program_.Follow(plan);
    const Ending ending = IsMute(plan, run) ? Ending::kTold : EndingOf(run, sound_);
    tally_.Count(ending);
    EXPECT_TRUE(ending != Ending::kWrong) << "status " << run.status << "\n" << run.out << run.err;
    CheckHome(run);
    home_.Restore();
  }

  // Where nothing can be printed, the status alone tells of it.
  static bool IsMute(const Plan& plan, const ServedRun& run) {
    return plan.call == Call::kPrint && run.err.empty() && (run.status == 1 || run.status == 2);
  }

  // What ended well is done; what did not is done or not, and nothing between.
  void CheckHome(const ServedRun& run) {
    const Home::Contents found = home_.Look();
    const bool is_new = found == new_;
    EXPECT_TRUE(run.status == sound_.status ? is_new : is_new || found == old_)
        << "status " << run.status << "\n"
        << run.err << Differences(old_, found);
  }

  Home home_;
  ServedProgram program_;
  Home::Contents old_;
  Home::Contents new_;
  ServedRun sound_;
  Tally tally_;
};

TEST_P(CallSweep, OfFiles) {
  for (std::size_t i = 0; i < kCallNames.size(); ++i) {
    if (static_cast<Call>(i) != Call::kAllocate) {
      Sweep(static_cast<Call>(i), 1);
    }
  }
  tally_.Print(std::string(GetParam().name) + ", calls on files");
}

TEST_P(CallSweep, OfMemory) {
  const bool every = GetParam().every_allocation || IsWholeSweep();
  const std::int64_t all = sound_.Calls(Call::kAllocate);
  Sweep(Call::kAllocate, every ? 1 : StrideFor(all, kMostAllocations));
  tally_.Print(std::string(GetParam().name) + ", allocations");
}

INSTANTIATE_TEST_SUITE_P(Commands, CallSweep, testing::ValuesIn(SweptCommands()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace sweeps
