#include "quillmarsh/terminal/chart_parts.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/text_layout.h"
#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

// Wide enough for the amounts that there are: fifteen digits and their decimals.
constexpr std::size_t kMostValueCells = 26;
constexpr long kEighths = 8;

constexpr std::string_view kFullBlock = "█";
constexpr std::string_view kRightwardEnds[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
// There are only these two blocks that fill a cell from its right side.
constexpr std::string_view kLeftwardEnds[] = {"", "▕", "▕", "▐", "▐", "▐", "▐", "█"};

struct WholeAndEighths {
  std::size_t whole;
  std::size_t eighths;
};

WholeAndEighths SplitBar(double cells) {
  const long least = cells > 0 ? 1 : 0;
  const long eighths = std::max(std::lround(cells * kEighths), least);
  return {static_cast<std::size_t>(eighths / kEighths),
          static_cast<std::size_t>(eighths % kEighths)};
}

std::string ScientificText(double value) {
  constexpr int kDecimals = 3;
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                    std::chars_format::scientific, kDecimals);
  return {buffer, result.ptr};
}

}  // namespace

std::vector<ChartGroup> GroupsOf(const vetlo::ChartModel& chart) {
  const vetlo::AmountMatrix& data = chart.Data();
  const bool one_column = data.Items() == 1;
  std::vector<ChartGroup> groups;
  for (std::size_t row = 1; row <= data.Series(); ++row) {
    if (row == 1 || !one_column) {
      groups.push_back({data.Series() == 1 ? "" : SafeText(chart.RowLabels()[row - 1]), {}});
    }
    for (std::size_t column = 1; column <= data.Items(); ++column) {
      const bool by_row = one_column && data.Series() > 1;
      const std::string& label =
          by_row ? chart.RowLabels()[row - 1] : chart.ColumnLabels()[column - 1];
      groups.back().items.push_back({SafeText(label), data(row, column)});
    }
  }
  return groups;
}

std::string ValueText(double value, std::string_view picture, const vetlo::NumberLocale& locale) {
  if (!std::isfinite(value)) {
    return "?";
  }
  std::string text = vetlo::Format(value, picture, locale);
  return CellsOf(text) <= kMostValueCells ? text : ScientificText(value);
}

double LargestOf(const std::vector<ChartGroup>& groups) {
  double largest = 0;
  for (const ChartGroup& group : groups) {
    for (const ChartItem& item : group.items) {
      largest = std::isfinite(item.value) ? std::max(largest, std::fabs(item.value)) : largest;
    }
  }
  return largest;
}

double PartOf(double value, double largest) {
  return std::isfinite(value) && largest > 0 ? value / largest : 0;
}

std::string RightwardBar(double cells) {
  const auto [whole, eighths] = SplitBar(cells);
  return Repeated(kFullBlock, whole).append(kRightwardEnds[eighths]);
}

std::string LeftwardBar(double cells) {
  const auto [whole, eighths] = SplitBar(cells);
  return std::string(kLeftwardEnds[eighths]) + Repeated(kFullBlock, whole);
}

}  // namespace quillmarsh
