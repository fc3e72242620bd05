#include "quillmarsh/cli/read_back.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "quillmarsh/cli/user_error.h"
#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo::testing {
namespace {

using quillmarsh::ReadBackDatabase;
using ::testing::AllOf;
using ::testing::HasSubstr;

constexpr std::int32_t kRow = 7;

std::string TitleOf(const std::vector<quillmarsh::SettingsRowFacts>& rows) {
  return rows.size() == 1 ? rows.front().name : "";
}

// A save of the row under another title.
void SaveTitle(Database& store, const std::string& title) {
  Transaction change(store);
  const auto rows = store.OpenRecordset("ChartReportSubType");
  rows->SetIndex(kPrimaryIndex);
  rows->Seek("=", kRow);
  rows->Edit();
  rows->SetField("Title", title);
  rows->Update();
  change.Commit();
}

// A store in which another program saves right behind every change.
class OvertakenDatabase : public ForwardingDatabase {
 public:
  using ForwardingDatabase::ForwardingDatabase;
  void CommitTrans() override {
    ForwardingDatabase::CommitTrans();
    SaveTitle(Store(), "Another's");
  }
};

class ReadBack : public ::testing::Test {
 protected:
  [[nodiscard]] std::string StoredTitle() const {
    return TitleOf(quillmarsh::ReadSettingsRows(*store_));
  }
  static std::string ErrorOf(const ReadBackDatabase& read_back) {
    try {
      return TitleOf(read_back.Rows()).empty() ? "nothing was read back" : "";
    } catch (const quillmarsh::UserError& error) {
      return error.what();
    }
  }

  std::unique_ptr<Database> store_ = SmallStore().Row({.number = kRow, .title = "Old"}).Open();
};

TEST_F(ReadBack, IsWhatWasSaved) {
  ReadBackDatabase read_back(*store_);
  SaveTitle(read_back, "Mine");
  EXPECT_EQ(TitleOf(read_back.Rows()), "Mine");
}

TEST_F(ReadBack, IsWhatThisProgramSavedWhereAnotherSavesBehindIt) {
  OvertakenDatabase overtaken(*store_);
  ReadBackDatabase read_back(overtaken);
  EXPECT_FALSE(read_back.HasChanged());
  SaveTitle(read_back, "Mine");
  EXPECT_TRUE(read_back.HasChanged());
  EXPECT_EQ(StoredTitle(), "Another's");
  EXPECT_EQ(TitleOf(read_back.Rows()), "Mine");
}

TEST_F(ReadBack, ThatFailsKeepsNoChangeFromBeingMadeAndIsTold) {
  FailurePlan plan;
  FailingDatabase failing(*store_, plan);
  ReadBackDatabase read_back(failing);
  SaveTitle(read_back, "Mine");
  const std::int64_t saving = plan.Operations();
  int failed = 0;
  for (std::int64_t operation = 1; operation <= saving; ++operation) {
    const std::string title = "Mine " + std::to_string(operation);
    FailurePlan one;
    one.FailAt(operation, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    FailingDatabase store(*store_, one);
    ReadBackDatabase once(store);
    const bool saved = ResumeNext([&] { SaveTitle(once, title); }) == 0;
    ASSERT_EQ(StoredTitle() == title, saved) << operation;
    if (saved && !ErrorOf(once).empty()) {
      ++failed;
      EXPECT_THAT(ErrorOf(once),
                  AllOf(HasSubstr("was saved"), HasSubstr("a failure that was asked for")));
    }
  }
  EXPECT_GE(failed, 3);
}

TEST_F(ReadBack, ThatFailedIsForgottenWithTheNextChange) {
  FailurePlan plan;
  FailingDatabase failing(*store_, plan);
  SaveTitle(failing, "Plain");
  // Reading back begins where a plain save commits.
  plan.FailAt(plan.Operations(), FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
  ReadBackDatabase read_back(failing);
  SaveTitle(read_back, "Mine");
  EXPECT_NE(ErrorOf(read_back), "");
  SaveTitle(read_back, "Mine again");
  EXPECT_EQ(TitleOf(read_back.Rows()), "Mine again");
}

TEST_F(ReadBack, OfAChangeThatFailedIsNotToldAsSaved) {
  class Uncommitting : public ForwardingDatabase {
   public:
    using ForwardingDatabase::ForwardingDatabase;
    void CommitTrans() override { throw Failure(FailureNumber::kStoreUnusable); }
  };
  Uncommitting uncommitting(*store_);
  ReadBackDatabase read_back(uncommitting);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { SaveTitle(read_back, "Mine"); }));
  EXPECT_FALSE(read_back.HasChanged());
  EXPECT_EQ(StoredTitle(), "Old");
}

}  // namespace
}  // namespace vetlo::testing
