#pragma once

#include "tests/support/small_store.h"

namespace vetlo::testing {

inline constexpr std::int32_t kReportRow = 1;
inline constexpr std::int32_t kChartRow = 2;

// The same settings row twice, as a report and as a chart.
inline void AddBothRows(SmallStore& store, TestRow row) {
  row.number = kReportRow;
  row.output = ChartOrReport::kReport;
  store.Row(row);
  row.number = kChartRow;
  row.output = ChartOrReport::kChart;
  store.Row(row);
}

}  // namespace vetlo::testing
