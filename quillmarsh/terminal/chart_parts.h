#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/host/chart_model.h"
#include "vetlo/platform/format.h"

namespace quillmarsh {

// What a chart is drawn on.
struct ChartPage {
  std::size_t columns;
  const vetlo::NumberLocale& locale;
};

struct ChartItem {
  std::string label;
  double value = 0;
};

// The items that are compared with each other, under a heading where there are several groups.
struct ChartGroup {
  std::string label;
  std::vector<ChartItem> items;
};

// The rows of a chart, each with its columns as items. Where there is one row or one column, all
// numbers are one group without a label. All labels are safe texts.
std::vector<ChartGroup> GroupsOf(const vetlo::ChartModel& chart);

// A number by a picture; one that would be too long in scientific notation, "?" for one that is
// not finite.
std::string ValueText(double value, std::string_view picture, const vetlo::NumberLocale& locale);

// The largest size of a number among the groups; 0 where there is none.
double LargestOf(const std::vector<ChartGroup>& groups);

// The number as a part of the largest one, from -1 to 1; 0 where there is no largest, or for a
// number that is not finite.
double PartOf(double value, double largest);

// A horizontal bar that starts at its left end, in eighths of a cell. A length above 0 is never
// nothing.
std::string RightwardBar(double cells);
// One that starts at its right end. Fewer lengths can be drawn in this direction.
std::string LeftwardBar(double cells);

// The bodies of the three kinds of chart, whose data is not empty.
std::string RenderBars(const vetlo::ChartModel& chart, const ChartPage& page);
std::string RenderLines(const vetlo::ChartModel& chart, const ChartPage& page);
std::string RenderSlices(const vetlo::ChartModel& chart, const ChartPage& page);

}  // namespace quillmarsh
