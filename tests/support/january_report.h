#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/drawing.h"
#include "tests/support/small_store.h"

namespace vetlo::testing {

// A report or chart of January 2026 in settings row 1, called "Mine".
inline TestRow RowOfJanuary(std::int32_t report_number,
                            ChartOrReport output = ChartOrReport::kReport) {
  return {.number = 1,
          .report_number = report_number,
          .output = output,
          .title = "Mine",
          .range = 15,
          .from = Day(2026, 1, 1),
          .to = Day(2026, 1, 31)};
}

// What stands over its rows, and alone where it has none.
inline const std::string kJanuaryHeading =
    "\r\nMine\r\n\r\n2026/01/01 Through 2026/01/31\r\n\r\n\r\n";

// The text of that report of a store.
inline std::string ReportOfJanuary(SmallStore builder, std::int32_t report_number) {
  const auto store = builder.Row(RowOfJanuary(report_number)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, 1), 0);
  EXPECT_TRUE(drawing.report.Locked());
  return drawing.report.Text();
}

}  // namespace vetlo::testing
