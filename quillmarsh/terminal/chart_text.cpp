#include "quillmarsh/terminal/chart_text.h"

#include <algorithm>
#include <string_view>

#include "quillmarsh/terminal/chart_parts.h"
#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/text_layout.h"

namespace quillmarsh {
namespace {

constexpr std::string_view kNoData = "(no data)";
constexpr std::string_view kFailed = "(the figures could not be computed)";
constexpr std::string_view kLineEnd = "\r\n";

std::string CentredLines(std::string_view text, std::size_t columns) {
  std::string lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find(kLineEnd));
    for (const std::string& piece : Wrapped(SafeText(line), columns)) {
      AppendLine(lines, Centred(piece, columns));
    }
    text.remove_prefix(std::min(line.size() + kLineEnd.size(), text.size()));
  }
  return lines;
}

std::string Body(const vetlo::ChartModel& chart, const ChartPage& page, bool failed) {
  if (chart.Data().elements().empty()) {
    return CentredLines(failed ? kFailed : kNoData, page.columns);
  }
  switch (chart.Kind()) {
    case vetlo::ChartKind::kLine:
      return RenderLines(chart, page);
    case vetlo::ChartKind::kPie:
      return RenderSlices(chart, page);
    case vetlo::ChartKind::kBar:
      break;
  }
  return RenderBars(chart, page);
}

}  // namespace

std::size_t ChartColumns(std::size_t columns) {
  return std::clamp(columns, kLeastChartColumns, kMostChartColumns);
}

std::string RenderChart(const vetlo::ChartModel& chart, std::size_t columns,
                        const vetlo::NumberLocale& locale, bool failed) {
  const ChartPage page{ChartColumns(columns), locale};
  const std::string title = CentredLines(chart.Title(), page.columns);
  const std::string footnote = CentredLines(chart.Footnote(), page.columns);
  return title + (title.empty() ? "" : "\n") + Body(chart, page, failed) +
         (footnote.empty() ? "" : "\n") + footnote;
}

}  // namespace quillmarsh
