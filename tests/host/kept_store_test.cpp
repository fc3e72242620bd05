#include "vetlo/host/kept_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using testing::SmallStore;

class KeptStoreTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const KeptFailure& failure : kept_.Failures()) {
      texts.push_back(std::to_string(failure.number) + " " + failure.Text());
    }
    return texts;
  }

  std::unique_ptr<Database> store_ = SmallStore().Account(1, "Wallet", kCashAccount, 1).Open();
  KeptStore kept_{*store_};
};

TEST_F(KeptStoreTest, KeepsNothingAtFirst) { EXPECT_THAT(kept_.Failures(), IsEmpty()); }

TEST_F(KeptStoreTest, PassesOnWhatTheStoreHolds) {
  const auto accounts = kept_.OpenRecordset("Account");
  EXPECT_EQ(TextField(*accounts, "AccountName"), "Wallet");
}

TEST_F(KeptStoreTest, KeepsEachDistinctFailureOnceInTheOrderInWhichTheyCame) {
  kept_.OnFailure(13, "no amount: row 2");
  kept_.OnFailure(6, "");
  kept_.OnFailure(13, "no amount: row 1");
  kept_.OnFailure(13, "no amount: row 2");
  kept_.OnFailure(6, MeaningOf(6));
  EXPECT_THAT(Texts(), ElementsAre("13 no amount: row 2", std::string("6 ") + MeaningOf(6),
                                   "13 no amount: row 1"));
}

TEST_F(KeptStoreTest, KeepsSoManyAndSaysWhetherThereWereMore) {
  for (std::size_t i = 0; i < KeptStore::kMostKept; ++i) {
    kept_.OnFailure(13, std::to_string(i).c_str());
  }
  EXPECT_FALSE(kept_.HasMore());
  kept_.OnFailure(13, "0");
  EXPECT_FALSE(kept_.HasMore()) << "that one is known";
  kept_.OnFailure(13, "another");
  EXPECT_TRUE(kept_.HasMore());
  EXPECT_THAT(kept_.Failures(), SizeIs(KeptStore::kMostKept));
}

TEST_F(KeptStoreTest, HearsWhatAWrapperAroundItHears) {
  ForwardingDatabase outer(static_cast<Database&>(kept_));
  outer.OnFailure(6, "too much");
  EXPECT_THAT(Texts(), ElementsAre("6 too much"));
}

TEST_F(KeptStoreTest, LetsAKeeperBeneathHearToo) {
  KeptStore outer(static_cast<Database&>(kept_));
  outer.OnFailure(6, "too much");
  EXPECT_THAT(Texts(), ElementsAre("6 too much"));
}

TEST_F(KeptStoreTest, KeepsWhatARoutineGoesOnAfterButNotThatThereIsNothing) {
  ResumeNext(kept_, [] { throw NothingThere(FailureNumber::kNothingToShow); });
  ResumeNext(kept_, [&] { kept_.OpenRecordset("Nowhere"); });
  EXPECT_THAT(Texts(), ElementsAre("3011 no table Nowhere"));
}

}  // namespace
}  // namespace vetlo
