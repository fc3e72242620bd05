#include <gtest/gtest.h>

#include <string>

#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::FailingDatabase;
using testing::FailurePlan;
using testing::SmallStore;

constexpr const char* kAllAccounts = "SELECT * FROM Account";

class Walks : public ::testing::Test {
 protected:
  std::unique_ptr<Database> store_ = SmallStore()
                                         .Account(1, "one", kCashAccount)
                                         .Account(2, "two", kCashAccount)
                                         .Account(3, "three", kCashAccount)
                                         .Open();
  FailurePlan plan_;
  FailingDatabase failing_{*store_, plan_};
};

TEST_F(Walks, OfForEachRowStartAtTheFirstRow) {
  const auto rec = store_->OpenRecordset(kAllAccounts);
  rec->MoveLast();
  std::string names;
  ForEachRow(*rec, [&](Recordset& row) { names += TextField(row, "AccountName") + " "; });
  EXPECT_EQ(names, "one two three ");
}

TEST_F(Walks, OfForEachRowVisitNothingWithoutARow) {
  const auto rec = store_->OpenRecordset("Payee");
  int visits = 0;
  ForEachRow(*rec, [&](Recordset&) { ++visits; });
  EXPECT_EQ(visits, 0);
}

TEST_F(Walks, OfForEachRowLeaveTheRecordsetOpen) {
  const auto rec = store_->OpenRecordset(kAllAccounts);
  ForEachRow(*rec, [](Recordset&) {});
  EXPECT_TRUE(rec->Eof());
}

TEST_F(Walks, OfForEachRowOfCloseWhatTheyOpened) {
  ForEachRowOf(failing_, kAllAccounts, [](Recordset&) {});
  EXPECT_EQ(failing_.OpenRecordsets(), 0);
}

TEST_F(Walks, OfForEachRowOfPassAFailureOn) {
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] {
    ForEachRowOf(failing_, kAllAccounts,
                 [](Recordset&) { throw Failure(FailureNumber::kTypeMismatch); });
  }));
  EXPECT_EQ(failing_.OpenRecordsets(), 0);
}

TEST_F(Walks, OfForEachRowOfFailWhereverTheStoreFails) {
  ForEachRowOf(failing_, kAllAccounts, [](Recordset&) {});
  const std::int64_t operations = plan_.Operations();
  ASSERT_GT(operations, 0);
  for (std::int64_t i = 1; i <= operations; ++i) {
    FailurePlan plan;
    plan.FailAt(i, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    FailingDatabase failing(*store_, plan);
    EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] {
      ForEachRowOf(failing, kAllAccounts, [](Recordset&) {});
    })) << i;
    EXPECT_EQ(failing.OpenRecordsets(), 0) << i;
  }
}

TEST_F(Walks, OfAScopedRecordsetEndWithIt) {
  {
    ScopedRecordset rec(failing_, kAllAccounts);
    EXPECT_EQ(rec->Fields("AccountNumber"), Variant(1));
    EXPECT_EQ(failing_.OpenRecordsets(), 1);
  }
  EXPECT_EQ(failing_.OpenRecordsets(), 0);
}

TEST_F(Walks, OfAScopedRecordsetCanEndEarly) {
  ScopedRecordset rec(failing_, kAllAccounts);
  rec.Close();
  EXPECT_EQ(failing_.OpenRecordsets(), 0);
}

TEST_F(Walks, ThatEndEarlyPassAFailureToCloseOn) {
  ScopedRecordset rec(failing_, kAllAccounts);
  plan_.FailAt(1, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec.Close(); }));
}

TEST_F(Walks, ThatEndWithTheirScopeKeepAFailureToCloseToThemselves) {
  EXPECT_EQ(ResumeNext([&] {
              const ScopedRecordset rec(failing_, kAllAccounts);
              plan_.FailAt(1, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
            }),
            0);
  EXPECT_TRUE(plan_.HasFailed());
}

TEST_F(Walks, OfAStoreThatNobodyWatchesAreItsOwn) {
  EXPECT_EQ(&store_->Unobserved(), store_.get());
}

}  // namespace
}  // namespace vetlo
