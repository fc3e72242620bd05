#include <algorithm>
#include <cmath>

#include "quillmarsh/terminal/chart_parts.h"
#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/text_layout.h"
#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

constexpr std::string_view kAxis = "│";
constexpr std::string_view kGroupIndent = "  ";
constexpr std::size_t kLeastBarCells = 6;
// Before and behind the bars, and the axis among them.
constexpr std::size_t kGapCells = 3;

// How the columns of the page are shared out.
struct BarLayout {
  std::string_view indent;  // of the labels
  std::size_t label = 0;    // cells, with the indent
  std::size_t left = 0;     // cells on the negative side of the axis
  std::size_t right = 0;
  std::size_t value = 0;
  double unit = 0;     // cells for the largest number
  double largest = 0;  // the number with the longest bar
};

std::string AmountText(double value, const ChartPage& page) {
  return ValueText(value, vetlo::kAmountPicture, page.locale);
}

// Divides the bars between the two sides of the axis so that both have the same scale.
void ShareBars(BarLayout& layout, const std::vector<ChartGroup>& groups, std::size_t cells) {
  double below = 0;
  double above = 0;
  for (const ChartGroup& group : groups) {
    for (const ChartItem& item : group.items) {
      const double part = PartOf(item.value, layout.largest);
      below = std::max(below, -part);
      above = std::max(above, part);
    }
  }
  const auto room = static_cast<double>(cells);
  if (below > 0) {
    const double most_left = above > 0 ? room - 1 : room;
    layout.left = static_cast<std::size_t>(
        std::clamp(std::round(room * below / (below + above)), 1.0, most_left));
  }
  layout.right = cells - layout.left;
  // The tighter side decides.
  layout.unit = room;
  if (below > 0) {
    layout.unit = std::min(layout.unit, static_cast<double>(layout.left) / below);
  }
  if (above > 0) {
    layout.unit = std::min(layout.unit, static_cast<double>(layout.right) / above);
  }
}

BarLayout LayOut(const std::vector<ChartGroup>& groups, const std::string& unit_title,
                 const ChartPage& page) {
  BarLayout layout;
  layout.indent = groups.size() > 1 ? kGroupIndent : "";
  layout.largest = LargestOf(groups);
  for (const ChartGroup& group : groups) {
    for (const ChartItem& item : group.items) {
      layout.label = std::max(layout.label, CellsOf(item.label));
      layout.value = std::max(layout.value, CellsOf(AmountText(item.value, page)));
    }
  }
  layout.value = std::max(layout.value, CellsOf(unit_title));
  layout.label = std::min({layout.label + layout.indent.size(), page.columns / 3,
                           page.columns - layout.value - kGapCells - kLeastBarCells});
  ShareBars(layout, groups, page.columns - layout.label - layout.value - kGapCells);
  return layout;
}

std::string BarLine(const ChartItem& item, const BarLayout& layout, const ChartPage& page) {
  const double cells = PartOf(item.value, layout.largest) * layout.unit;
  const std::string label = std::string(layout.indent) + item.label;
  return PadRight(Shortened(label, layout.label), layout.label) + " " +
         PadLeft(LeftwardBar(std::max(-cells, 0.0)), layout.left).append(kAxis) +
         PadRight(RightwardBar(std::max(cells, 0.0)), layout.right) + " " +
         PadLeft(AmountText(item.value, page), layout.value);
}

}  // namespace

std::string RenderBars(const vetlo::ChartModel& chart, const ChartPage& page) {
  const std::vector<ChartGroup> groups = GroupsOf(chart);
  const std::string unit_title = Shortened(SafeText(chart.AxisTitle()), page.columns / 3);
  const BarLayout layout = LayOut(groups, unit_title, page);
  std::string text;
  if (!unit_title.empty()) {
    AppendLine(text, PadLeft(unit_title, page.columns));
  }
  for (const ChartGroup& group : groups) {
    if (groups.size() > 1) {
      AppendLine(text, Shortened(group.label, page.columns));
    }
    for (const ChartItem& item : group.items) {
      AppendLine(text, BarLine(item, layout, page));
    }
  }
  return text;
}

}  // namespace quillmarsh
