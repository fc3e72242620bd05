#pragma once

#include <cstddef>
#include <string>

#include "vetlo/host/chart_model.h"
#include "vetlo/platform/format.h"

namespace quillmarsh {

// The narrowest and the widest that a chart is drawn.
inline constexpr std::size_t kLeastChartColumns = 40;
inline constexpr std::size_t kMostChartColumns = 1000;

// The columns on which a chart is drawn where there are so many: that number brought between the
// two limits.
std::size_t ChartColumns(std::size_t columns);

// A chart drawn with characters, as lines ended by "\n" of at most ChartColumns(columns) cells.
// Whatever the data, something is drawn: a number that is not finite is shown as "?" and takes no
// room, and a chart without data says so, or where its figures have failed says that.
std::string RenderChart(const vetlo::ChartModel& chart, std::size_t columns,
                        const vetlo::NumberLocale& locale, bool failed = false);

}  // namespace quillmarsh
