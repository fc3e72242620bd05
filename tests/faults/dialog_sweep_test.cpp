// Fails every operation on the store, one after another, of every way in which a dialog saves, and
// looks at the rows, at what the user is told and at what the caller gets.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>

#include "tests/support/failing_database.h"
#include "tests/support/household.h"
#include "tests/support/played_screen.h"
#include "vetlo/frame/tamo.h"

namespace vetlo::testing {
namespace {

constexpr auto kFailureNumber = FailureNumber::kStoreUnusable;
constexpr auto kFailure = static_cast<std::int32_t>(kFailureNumber);
constexpr std::int32_t kPointerBefore = 2;

// All settings rows, each in all its fields, by number.
using Rows = std::map<std::int32_t, std::vector<Variant>>;

Rows RowsOf(Database& store) {
  Rows rows;
  ForEachRowOf(store, "ChartReportSubType", [&](Recordset& rec) {
    std::vector<Variant>& row = rows[LongField(rec, "ChartReportSubTypeNumber")];
    for (const Column& column : FindTable("ChartReportSubType")->columns) {
      row.push_back(rec.Fields(column.name));
    }
  });
  return rows;
}

// What a user does, and the row that it writes.
struct Deed {
  const char* name;
  std::int32_t row;
  bool (*run)(clsTamo& component, PlayedScreen& screen, Database& store, Recordset& rows);

  friend std::ostream& operator<<(std::ostream& out, const Deed& deed) { return out << deed.name; }
};

template <typename Kind>
Kind& The(Form& form, const char* name) {
  return *form.Find<Kind>(name);
}

bool CustomizeAndAccept(clsTamo& component, PlayedScreen& screen, Database& store,
                        Recordset& rows) {
  screen.user = [](Form& form) {
    The<OptionButton>(form, "optChartOrReportType(0)").Choose();
    The<TextBox>(form, "txtTitle").Type("Changed");
    The<Button>(form, "cmdOK").Click();
  };
  return component.CustomizeChartReport(store, rows, 1);
}

bool Reset(clsTamo& component, PlayedScreen& screen, Database& store, Recordset& rows) {
  screen.user = [](Form& form) { The<Button>(form, "cmdReset").Click(); };
  return component.CustomizeChartReport(store, rows, 103);
}

bool AddFavorite(clsTamo& component, PlayedScreen& screen, Database& store, Recordset& rows) {
  screen.user = [](Form& form) {
    The<ComboBox>(form, "cboName").Type("New");
    The<Button>(form, "cmdOK").Click();
  };
  return component.AddToFavorites(store, rows, 1, "Name", 7);
}

bool ReplaceFavorite(clsTamo& component, PlayedScreen& screen, Database& store, Recordset& rows) {
  screen.answers = {MsgBoxAnswer::kYes};
  screen.user = [](Form& form) {
    The<ComboBox>(form, "cboName").Pick(0);
    The<Button>(form, "cmdOK").Click();
  };
  return component.AddToFavorites(store, rows, 1, "Name", 7);
}

class DialogSweep : public ::testing::TestWithParam<Deed> {
 protected:
  struct Outcome {
    bool saved = false;
    std::int32_t failure = 0;  // that reached the caller
    std::size_t critical_messages = 0;
    Rows rows;
  };

  // One dialog on a store of its own. What the settings rows are opened with does not count.
  Outcome Run(FailurePlan& plan) {
    SmallStore household = HouseholdOfEveryKind();
    household.Row({.number = 200, .report_number = 3, .title = "Kept", .group = kFavoriteGroup});
    household.Execute(
        "UPDATE ChartReportSubType SET ChartReportSubTypeName = 'Old' "
        "WHERE ChartReportSubTypeNumber = 200");
    const auto store = household.Open();
    FailingDatabase failing(*store, plan);
    const auto rows = plan.Unfailing([&] { return failing.OpenRecordset("ChartReportSubType"); });
    PlayedPlatform platform;
    platform.screen.SetMousePointer(kPointerBefore);
    clsTamo component(platform);
    Outcome outcome;
    try {
      outcome.saved = GetParam().run(component, platform.screen, failing, *rows);
    } catch (const Failure& failure) {
      outcome.failure = failure.number();
    }
    EXPECT_EQ(failing.OpenRecordsets(), 1) << "more than the settings rows was left open";
    EXPECT_EQ(platform.screen.MousePointer(), kPointerBefore);
    outcome.critical_messages = static_cast<std::size_t>(std::ranges::count(
        platform.screen.messages, MsgBoxSymbol::kCritical, &PlayedScreen::Message::symbol));
    outcome.rows = RowsOf(*store);
    store->BeginTrans();  // which fails where the dialog has left a change open
    store->Rollback();
    return outcome;
  }

  // The whole deed without a failure, and the rows before it.
  void RunSound() {
    FailurePlan cancelled;
    cancelled.FailAt(1, FailurePlan::Repeat::kOnce, kFailureNumber);
    before_ = Run(cancelled).rows;
    FailurePlan plan;
    sound_ = Run(plan);
    ASSERT_TRUE(sound_.saved);
    ASSERT_NE(sound_.rows, before_);
    operations_ = plan.Operations();
    ASSERT_GT(operations_, 20) << "too few operations to be a whole deed";
    Rows others = sound_.rows;
    others.erase(GetParam().row);
    Rows others_before = before_;
    others_before.erase(GetParam().row);
    ASSERT_EQ(others, others_before);
  }

  void Check(const Outcome& outcome) {
    const bool old_rows = outcome.rows == before_;
    EXPECT_TRUE(old_rows || outcome.rows == sound_.rows) << "neither the old row nor the new one";
    if (outcome.failure != 0) {
      EXPECT_EQ(outcome.failure, kFailure);
      EXPECT_FALSE(outcome.saved);
      EXPECT_EQ(outcome.critical_messages, 0U);
      ++(old_rows ? reached_caller_before_ : reached_caller_after_);
      return;
    }
    // Else the save itself has failed, and the user was told, or it has not.
    EXPECT_EQ(outcome.saved, !old_rows) << "the result does not tell what was saved";
    EXPECT_EQ(outcome.critical_messages, old_rows ? 1U : 0U);
    told_user_ += old_rows ? 1 : 0;
  }

  void Sweep(FailurePlan::Repeat repeat) {
    RunSound();
    for (std::int64_t n = 1; n <= operations_; ++n) {
      SCOPED_TRACE("operation " + std::to_string(n));
      FailurePlan plan;
      plan.FailAt(n, repeat, kFailureNumber);
      const Outcome outcome = Run(plan);
      ASSERT_TRUE(plan.HasFailed());
      Check(outcome);
    }
    EXPECT_GT(reached_caller_before_, 5);
    EXPECT_GT(told_user_, 5);
    // Behind a save the customize dialog draws the row anew.
    EXPECT_EQ(reached_caller_after_ > 0, DrawsAfterwards());
  }

  static bool DrawsAfterwards() { return GetParam().row == 1 || GetParam().row == 103; }

  Rows before_;
  Outcome sound_;
  std::int64_t operations_ = 0;
  int reached_caller_before_ = 0;
  int reached_caller_after_ = 0;
  int told_user_ = 0;
};

TEST_P(DialogSweep, EachOperationFailsOnce) { Sweep(FailurePlan::Repeat::kOnce); }

TEST_P(DialogSweep, EachOperationFailsFromThenOn) { Sweep(FailurePlan::Repeat::kFromThenOn); }

INSTANTIATE_TEST_SUITE_P(Deeds, DialogSweep,
                         ::testing::Values(Deed{"Customize", 1, &CustomizeAndAccept},
                                           Deed{"Reset", 103, &Reset},
                                           Deed{"AddFavorite", 201, &AddFavorite},
                                           Deed{"ReplaceFavorite", 200, &ReplaceFavorite}),
                         [](const auto& deed) { return deed.param.name; });

}  // namespace
}  // namespace vetlo::testing
