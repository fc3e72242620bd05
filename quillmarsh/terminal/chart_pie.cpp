#include <algorithm>
#include <cmath>

#include "quillmarsh/terminal/chart_parts.h"
#include "quillmarsh/terminal/text_layout.h"
#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

constexpr std::string_view kGap = "  ";
constexpr std::string_view kSharePicture = "0.0";

// One slice with its label at hand for the table.
struct Slice {
  std::string label;
  double share = 0;  // from 0 to 1
  std::string percent;
};

// The label of a slice carries its amount behind a colon; where a label is too long the name
// gives way.
std::string SliceLabel(const std::string& label, std::size_t cells) {
  const std::size_t colon = label.rfind(':');
  if (CellsOf(label) <= cells || colon == std::string::npos) {
    return Shortened(label, cells);
  }
  const std::string amount = label.substr(colon);
  const std::size_t amount_cells = CellsOf(amount);
  return amount_cells + 2 > cells
             ? Shortened(label, cells)
             : Shortened(label.substr(0, colon), cells - amount_cells) + amount;
}

std::vector<Slice> SlicesOf(const ChartGroup& group, double largest, const ChartPage& page) {
  double sum = 0;
  for (const ChartItem& item : group.items) {
    sum += std::fabs(PartOf(item.value, largest));
  }
  std::vector<Slice> slices;
  for (const ChartItem& item : group.items) {
    const double share = sum > 0 ? std::fabs(PartOf(item.value, largest)) / sum : 0;
    slices.push_back(
        {item.label, share, ValueText(share * 100, kSharePicture, page.locale).append("%")});
  }
  return slices;
}

}  // namespace

std::string RenderSlices(const vetlo::ChartModel& chart, const ChartPage& page) {
  const std::vector<ChartGroup> groups = GroupsOf(chart);
  const double largest = LargestOf(groups);
  std::vector<std::vector<Slice>> pies;
  std::size_t label_cells = 0;
  std::size_t percent_cells = 0;
  for (const ChartGroup& group : groups) {
    pies.push_back(SlicesOf(group, largest, page));
    for (const Slice& slice : pies.back()) {
      label_cells = std::max(label_cells, CellsOf(slice.label));
      percent_cells = std::max(percent_cells, CellsOf(slice.percent));
    }
  }
  label_cells = std::min(label_cells, page.columns / 2);
  const std::size_t used = label_cells + kGap.size() + percent_cells + kGap.size();
  const auto bar_cells = static_cast<double>(page.columns - used);
  std::string text;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    if (groups.size() > 1) {
      AppendLine(text, Shortened(groups[i].label, page.columns));
    }
    for (const Slice& slice : pies[i]) {
      AppendLine(text, PadRight(SliceLabel(slice.label, label_cells), label_cells)
                           .append(kGap)
                           .append(PadLeft(slice.percent, percent_cells))
                           .append(kGap)
                           .append(RightwardBar(slice.share * bar_cells)));
    }
  }
  return text;
}

}  // namespace quillmarsh
