#include "vetlo/platform/failure.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace vetlo {
namespace {

TEST(ResumeNext, AnswersZeroForSuccess) {
  bool ran = false;
  EXPECT_EQ(ResumeNext([&] { ran = true; }), 0);
  EXPECT_TRUE(ran);
}

TEST(ResumeNext, AnswersTheNumberOfAFailure) {
  EXPECT_EQ(ResumeNext([] { throw Failure(FailureNumber::kNoCurrentRecord); }), 3021);
}

TEST(ResumeNext, LeavesUndoneWhatFollowsTheFailure) {
  int steps = 0;
  ResumeNext([&] {
    ++steps;
    if (steps == 1) {
      throw Failure(FailureNumber::kOverflow);
    }
    ++steps;
  });
  EXPECT_EQ(steps, 1);
}

TEST(ResumeNext, TakesExhaustedMemoryForFailure7) {
  EXPECT_EQ(ResumeNext([] { throw std::bad_alloc(); }), 7);
}

TEST(ResumeNext, TakesAnyOtherExceptionForFailure51) {
  EXPECT_EQ(ResumeNext([] { throw std::logic_error("unforeseen"); }), 51);
  EXPECT_EQ(ResumeNext([] { throw 1; }), 51);
}

TEST(Failure, NothingToShowIsANegativeNumber) {
  EXPECT_EQ(Failure(FailureNumber::kNothingToShow).number(), -2147220991);
}

TEST(Failure, CarriesItsText) {
  EXPECT_STREQ(Failure(FailureNumber::kStoreUnusable, "no such file").what(), "no such file");
}

TEST(Failure, HasNoTextUnlessGivenOne) {
  EXPECT_STREQ(Failure(FailureNumber::kOverflow).what(), "");
}

}  // namespace
}  // namespace vetlo
