#include "vetlo/platform/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

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

TEST(Failure, SaysWhatItsNumberMeansWhereItWasGivenNoText) {
  EXPECT_STREQ(Failure(FailureNumber::kInvalidUseOfNull).what(), "a value is empty that is needed");
}

TEST(Failure, OfANumberThatNobodyKnowsSaysSo) {
  EXPECT_STREQ(Failure(static_cast<FailureNumber>(12345)).what(), "the reason is not known");
}

// ---- who hears of what a routine goes on after

class Listener : public FailureListener {
 public:
  void OnFailure(std::int32_t number, const char* text) noexcept override {
    heard.emplace_back(number, text);
  }
  std::vector<std::pair<std::int32_t, std::string>> heard;
};

TEST(FailureListener, HearsOfNothingWhereAPieceSucceeds) {
  Listener listener;
  EXPECT_EQ(ResumeNext(listener, [] {}), 0);
  EXPECT_THAT(listener.heard, IsEmpty());
}

TEST(FailureListener, HearsTheNumberAndTheText) {
  Listener listener;
  EXPECT_EQ(ResumeNext(listener, [] { throw Failure(FailureNumber::kOverflow, "too much"); }), 6);
  EXPECT_THAT(listener.heard, ElementsAre(Pair(6, "too much")));
}

TEST(FailureListener, HearsOfExhaustedMemoryAndOfWhatNobodyForesaw) {
  Listener listener;
  ResumeNext(listener, [] { throw std::bad_alloc(); });
  ResumeNext(listener, [] { throw std::logic_error("unforeseen"); });
  ResumeNext(listener, [] { throw 1; });
  EXPECT_THAT(listener.heard,
              ElementsAre(Pair(7, MeaningOf(7)), Pair(51, "unforeseen"), Pair(51, MeaningOf(51))));
}

TEST(FailureListener, DoesNotHearThatThereIsNothing) {
  Listener listener;
  EXPECT_EQ(ResumeNext(listener, [] { throw NothingThere(FailureNumber::kNoCurrentRecord); }),
            3021);
  EXPECT_THAT(listener.heard, IsEmpty());
}

}  // namespace
}  // namespace vetlo
