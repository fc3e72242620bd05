// Fails every operation on the store, one after another, of every settings row of a small
// household, and looks at what the caller and the display objects see.

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "tests/support/drawing.h"
#include "tests/support/failing_database.h"
#include "tests/support/household.h"
#include "vetlo/host/kept_store.h"

namespace vetlo::testing {
namespace {

constexpr auto kFailureNumber = FailureNumber::kStoreUnusable;
constexpr auto kFailure = static_cast<std::int32_t>(kFailureNumber);

// How far a call has come, as its events tell.
enum class Stretch {
  kReadingTheRow,  // nothing was changed yet: a failure reaches the caller
  kPreparing,      // the hourglass shows: a failure ends the call quietly, with nothing drawn
  kDrawing,        // a failure leaves the heading alone, is swallowed, or reaches the caller
  kClosing,        // all is drawn: a failure reaches the caller
};

bool Has(const EventLog& log, std::string_view member) {
  return std::ranges::any_of(log.events(),
                             [&](const Event& event) { return event.member == member; });
}

bool HasPut(const EventLog& log, std::string_view member, bool value) {
  return std::ranges::any_of(log.events(), [&](const Event& event) {
    const bool* const put = std::get_if<bool>(&event.value);
    return event.member == member && put != nullptr && *put == value;
  });
}

bool IsDrawn(const EventLog& log) { return Has(log, "SelStart") || HasPut(log, "Repaint", true); }

Stretch StretchOf(const EventLog& log) {
  if (!Has(log, "MousePointer")) {
    return Stretch::kReadingTheRow;
  }
  if (!Has(log, "Locked") && !Has(log, "Repaint")) {
    return Stretch::kPreparing;
  }
  return IsDrawn(log) ? Stretch::kClosing : Stretch::kDrawing;
}

bool PointersRestored(const Drawing& drawing) {
  return drawing.window.MousePointer() == kDefaultPointer &&
         drawing.report.MousePointer() == kDefaultPointer &&
         drawing.chart.MousePointer() == kDefaultPointer;
}

// The lines over a table: all that there is of a report whose figures failed.
std::string HeadingOf(const std::string& report) {
  const std::size_t rule = report.find("___");
  if (rule == std::string::npos) {
    return report;
  }
  // The header line stands right over the first rule.
  return report.substr(0, report.rfind('\n', report.rfind('\n', rule) - 1) + 1);
}

// What became of the operations that failed.
struct Counts {
  std::int64_t operations = 0;
  std::int64_t to_the_caller = 0;
  std::int64_t told = 0;
  std::int64_t harmless = 0;
};

class FaultSweep : public ::testing::TestWithParam<std::int32_t> {
 protected:
  FaultSweep() : store_(HouseholdWithEveryRow()), failing_(*store_, plan_) {}

  // One call on a store that may fail. What the settings rows are opened with does not count.
  std::int32_t Draw(Drawing& drawing) {
    const auto rows = plan_.Unfailing([&] { return failing_.OpenRecordset("ChartReportSubType"); });
    std::int32_t number = 0;
    KeptStore kept(failing_);
    try {
      drawing.component.ShowChartReport(kept, *rows, GetParam(), &drawing.chart, &drawing.report,
                                        SubjectOfRow(GetParam()), Empty{});
    } catch (const Failure& failure) {
      number = failure.number();
    }
    EXPECT_EQ(failing_.OpenRecordsets(), 1) << "more than the settings rows was left open";
    told_ = !kept.Failures().empty();
    return number;
  }

  // The call without a failure: what it draws, and how far it has come at each operation.
  void DrawSound() {
    plan_.on_operation = [this](std::int64_t) { stretches_.push_back(StretchOf(sound_.log)); };
    ASSERT_EQ(Draw(sound_), 0);
    plan_.on_operation = nullptr;
  }

  void Sweep(FailurePlan::Repeat repeat) {
    DrawSound();
    ASSERT_GT(stretches_.size(), 20U) << "too few operations to be a whole call";
    for (std::size_t n = 1; n <= stretches_.size(); ++n) {
      SCOPED_TRACE("operation " + std::to_string(n));
      plan_.FailAt(static_cast<std::int64_t>(n), repeat, kFailureNumber);
      Drawing drawing;
      const std::int32_t number = Draw(drawing);
      ASSERT_TRUE(plan_.HasFailed());
      Check(stretches_[n - 1], drawing, number);
      CheckTold(drawing, number);
      plan_.NeverFail();
    }
    Drawing after;
    EXPECT_EQ(Draw(after), 0);
    EXPECT_EQ(after.Events(), sound_.Events()) << "the store does not serve afterwards";
  }

  void Check(Stretch stretch, const Drawing& drawing, std::int32_t number) {
    switch (stretch) {
      case Stretch::kReadingTheRow:
        EXPECT_EQ(number, kFailure);
        EXPECT_TRUE(drawing.log.events().empty()) << "something was touched";
        break;
      case Stretch::kPreparing:
        EXPECT_EQ(number, 0);
        EXPECT_TRUE(PointersRestored(drawing));
        EXPECT_FALSE(Has(drawing.log, "Locked") || Has(drawing.log, "RowCount"))
            << "something was drawn";
        break;
      case Stretch::kDrawing:
        CheckDrawing(drawing, number);
        break;
      case Stretch::kClosing:
        EXPECT_EQ(number, kFailure);
        EXPECT_EQ(drawing.report.Text(), sound_.report.Text());
        break;
    }
  }

  void CheckDrawing(const Drawing& drawing, std::int32_t number) {
    if (number != 0) {
      EXPECT_EQ(number, kFailure);
      EXPECT_FALSE(PointersRestored(drawing)) << "the hourglass was taken away";
      EXPECT_FALSE(IsDrawn(drawing.log)) << "what is unfinished looks finished";
      return;
    }
    EXPECT_TRUE(PointersRestored(drawing));
    EXPECT_TRUE(IsDrawn(drawing.log) || Has(drawing.log, "RowCount"));
    const std::string heading = HeadingOf(sound_.ReportText());
    const std::string text = drawing.ReportText();
    EXPECT_TRUE(text == heading || text.starts_with(heading)) << text;
    // A chart shows data under all of its labels or no data at all.
    if (Has(drawing.log, "ChartData") && IsDrawn(drawing.log)) {
      EXPECT_TRUE(Has(drawing.log, "TitleText") && Has(drawing.log, "FootnoteText"));
    }
  }

  // What is drawn otherwise than it should be is never without a word.
  void CheckTold(const Drawing& drawing, std::int32_t number) {
    const bool harmless = number == 0 && drawing.Events() == sound_.Events();
    EXPECT_TRUE(harmless || number != 0 || told_) << "something was left out in silence";
    ++counts_.operations;
    counts_.to_the_caller += number != 0 ? 1 : 0;
    counts_.told += number == 0 && told_ ? 1 : 0;
    counts_.harmless += harmless && !told_ ? 1 : 0;
  }

  static void TearDownTestSuite() {
    std::cout << "store operations failed: " << counts_.operations << ", of which "
              << counts_.to_the_caller << " reached the caller, " << counts_.told
              << " were told to the keeper, " << counts_.harmless << " changed nothing\n";
  }

  static inline Counts counts_;

  bool told_ = false;  // whether the last call left something out and said so
  std::unique_ptr<Database> store_;
  FailurePlan plan_;
  FailingDatabase failing_;
  Drawing sound_;
  std::vector<Stretch> stretches_;
};

TEST_P(FaultSweep, EachOperationFailsOnce) { Sweep(FailurePlan::Repeat::kOnce); }

TEST_P(FaultSweep, EachOperationFailsFromThenOn) { Sweep(FailurePlan::Repeat::kFromThenOn); }

INSTANTIATE_TEST_SUITE_P(Rows, FaultSweep, ::testing::ValuesIn(RowsOfEveryForm()),
                         [](const auto& row) { return "Row" + std::to_string(row.param); });

}  // namespace
}  // namespace vetlo::testing
