#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "quillmarsh/terminal/chart_parts.h"
#include "quillmarsh/terminal/dot_plot.h"
#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/text_layout.h"
#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

constexpr std::string_view kTick = "┤";
constexpr std::string_view kAxis = "│";
constexpr std::string_view kCorner = "└";
constexpr std::string_view kFloor = "─";
constexpr std::string_view kZeroLine = "┄";
constexpr std::string_view kPlainLegend = "──";
constexpr std::string_view kLegendGap = "   ";
constexpr std::size_t kLabelGap = 2;  // cells between the labels below
constexpr long kPlotLines = 15;
constexpr double kWantedIntervals = 4;

// Numbers of which nothing would be seen any more, and those past which sums overflow.
constexpr double kTiny = 1e-12;
constexpr double kHuge = 1e300;
// A range so much smaller than its numbers is the noise of their last digits.
constexpr double kNoise = 1e-9;

constexpr std::string_view kMarkers[] = {"●", "○", "■", "□", "▲", "△", "◆", "◇", "A", "B", "C", "D",
                                         "E", "F", "G", "H", "I", "J", "K", "L", "M", "N", "O", "P",
                                         "Q", "R", "S", "T", "U", "V", "W", "X", "Y", "Z"};

struct Series {
  std::string name;
  std::vector<double> values;
};

struct LineData {
  std::vector<std::string> labels;  // of the points
  std::vector<Series> series;
};

// Ticks lie at whole multiples of the step.
struct ValueScale {
  double step = 1;
  double lowest = 0;  // in steps
  std::size_t intervals = 1;
  std::size_t lines_per_interval = 1;

  [[nodiscard]] std::size_t Lines() const { return intervals * lines_per_interval + 1; }
  // The middle of the line in which a number lies, counted from the top; not rounded.
  [[nodiscard]] double LineOf(double value) const {
    const double above_lowest = value / step - lowest;
    return (static_cast<double>(intervals) - above_lowest) *
           static_cast<double>(lines_per_interval);
  }
};

// The points run along the rows; a single row is a series itself.
LineData DataOf(const vetlo::ChartModel& chart) {
  const vetlo::AmountMatrix& data = chart.Data();
  const bool one_row = data.Series() == 1;
  LineData lines;
  lines.labels = one_row ? chart.ColumnLabels() : chart.RowLabels();
  const std::vector<std::string>& names = one_row ? chart.RowLabels() : chart.ColumnLabels();
  for (const std::string& name : names) {
    lines.series.push_back({SafeText(name), {}});
  }
  for (std::size_t row = 1; row <= data.Series(); ++row) {
    for (std::size_t column = 1; column <= data.Items(); ++column) {
      lines.series[one_row ? 0 : column - 1].values.push_back(data(row, column));
    }
  }
  return lines;
}

// The least of 1, 2, 5 and 10 times a power of ten that is no less.
double RoundStep(double step) {
  const double power = std::pow(10, std::floor(std::log10(step)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (step <= factor * power) {
      return factor * power;
    }
  }
  return 10 * power;
}

ValueScale ScaleOver(double least, double most) {
  const double size = std::max(std::fabs(least), std::fabs(most));
  if (size < kTiny) {
    least = 0;
    most = 1;
  } else if (most - least < size * kNoise) {
    // A level line is seen against the zero.
    least = std::min(least, 0.0);
    most = std::max(most, 0.0);
  }
  ValueScale scale;
  scale.step = RoundStep((most - least) / kWantedIntervals);
  scale.lowest = std::floor(least / scale.step);
  const double intervals = std::max(std::ceil(most / scale.step) - scale.lowest, 1.0);
  scale.intervals = static_cast<std::size_t>(intervals);
  scale.lines_per_interval = static_cast<std::size_t>(
      std::max(std::lround(static_cast<double>(kPlotLines) / intervals), 1L));
  return scale;
}

// Nothing for a number that cannot be drawn.
std::optional<double> Drawable(double value) {
  return std::isfinite(value) ? std::optional(std::clamp(value, -kHuge, kHuge)) : std::nullopt;
}

ValueScale ScaleOf(const LineData& lines) {
  std::optional<double> least;
  std::optional<double> most;
  for (const Series& series : lines.series) {
    for (const double value : series.values) {
      if (const std::optional<double> drawable = Drawable(value)) {
        least = std::min(least.value_or(*drawable), *drawable);
        most = std::max(most.value_or(*drawable), *drawable);
      }
    }
  }
  return ScaleOver(least.value_or(0), most.value_or(0));
}

// As many decimals as tell the ticks apart.
std::string TickPicture(double step) {
  constexpr double kMostDecimals = 12;
  const double decimals = std::clamp(std::ceil(-std::log10(step)), 0.0, kMostDecimals);
  std::string picture = "#,##0";
  if (decimals > 0) {
    picture.append(".").append(static_cast<std::size_t>(decimals), '0');
  }
  return picture;
}

std::vector<std::string> TickTexts(const ValueScale& scale, const vetlo::NumberLocale& locale) {
  const std::string picture = TickPicture(scale.step);
  std::vector<std::string> texts;
  for (std::size_t i = 0; i <= scale.intervals; ++i) {
    const double tick = scale.lowest + static_cast<double>(scale.intervals - i);
    texts.push_back(ValueText(tick * scale.step, picture, locale));
  }
  return texts;
}

std::string_view MarkerOf(std::size_t series) { return kMarkers[series % std::size(kMarkers)]; }

// Where along a length the point of a number lies; a single one lies in the middle.
double AlongOf(std::size_t point, std::size_t points, std::size_t length) {
  const auto last = static_cast<double>(length - 1);
  return points < 2 ? last / 2
                    : static_cast<double>(point) * last / static_cast<double>(points - 1);
}

void DrawSeries(DotPlot& plot, const std::vector<double>& values, const ValueScale& scale,
                std::size_t dots, std::string_view marker) {
  constexpr double kMiddle = (static_cast<double>(DotPlot::kDotsDown) - 1) / 2;
  DotPlot::Dot before;
  bool connected = false;
  std::optional<std::size_t> marked;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::optional<double> value = Drawable(values[i]);
    if (!value) {
      connected = false;
      continue;
    }
    const DotPlot::Dot dot{std::round(AlongOf(i, values.size(), dots)),
                           scale.LineOf(*value) * DotPlot::kDotsDown + kMiddle};
    plot.Connect(connected ? before : dot, dot);
    before = dot;
    connected = true;
    // Crowded points get one marker a column, or they would pile up.
    const auto column = static_cast<std::size_t>(dot.x) / DotPlot::kDotsAcross;
    if (!marker.empty() && column != marked) {
      plot.Mark(dot, marker);
      marked = column;
    }
  }
}

// The labels of the first, the last and, where there is room, the middle point.
std::string PointLabels(const std::vector<std::string>& labels, std::size_t cells) {
  const std::size_t most = (cells - kLabelGap) / 2;
  const std::string first = Shortened(SafeText(labels.front()), most);
  if (labels.size() == 1) {
    return Centred(first, cells);
  }
  const std::string last = Shortened(SafeText(labels.back()), most);
  const std::size_t middle = labels.size() / 2;
  const std::string between = SafeText(labels[middle]);
  const std::size_t width = CellsOf(between);
  const auto at = static_cast<std::size_t>(std::lround(AlongOf(middle, labels.size(), cells)));
  const std::size_t start = at > width / 2 ? at - width / 2 : 0;
  const bool room = labels.size() > 2 && start >= CellsOf(first) + kLabelGap &&
                    start + width + kLabelGap + CellsOf(last) <= cells;
  const std::string line = room ? PadRight(first, start) + between : first;
  return line + PadLeft(last, cells - CellsOf(line));
}

std::string Legend(const LineData& lines, std::size_t columns) {
  std::string text;
  std::string line;
  for (std::size_t i = 0; i < lines.series.size(); ++i) {
    const std::string_view sign = lines.series.size() == 1 ? kPlainLegend : MarkerOf(i);
    const std::string entry =
        Shortened(std::string(sign).append(" ").append(lines.series[i].name), columns);
    if (!line.empty() && CellsOf(line) + kLegendGap.size() + CellsOf(entry) > columns) {
      AppendLine(text, Centred(line, columns));
      line.clear();
    }
    line += line.empty() ? entry : std::string(kLegendGap) + entry;
  }
  AppendLine(text, Centred(line, columns));
  return text;
}

bool HasLegend(const vetlo::ChartModel& chart, const LineData& lines) {
  const bool named = std::any_of(lines.series.begin(), lines.series.end(),
                                 [](const Series& series) { return !series.name.empty(); });
  return named && (chart.ShowLegend() || lines.series.size() > 1);
}

DotPlot PlotOf(const LineData& lines, const ValueScale& scale, std::size_t cells) {
  DotPlot plot(cells, scale.Lines());
  for (std::size_t i = 0; i < lines.series.size(); ++i) {
    const std::vector<double>& values = lines.series[i].values;
    // One line needs no marker, one point could hardly be seen without.
    const bool marked = lines.series.size() > 1 || values.size() == 1;
    DrawSeries(plot, values, scale, cells * DotPlot::kDotsAcross,
               marked ? MarkerOf(i) : std::string_view());
  }
  return plot;
}

// The plot between the axes.
std::string Framed(const DotPlot& plot, const ValueScale& scale,
                   const std::vector<std::string>& ticks, std::size_t tick_cells) {
  const double zero_line = scale.LineOf(0);
  std::string text;
  for (std::size_t line = 0; line < scale.Lines(); ++line) {
    const bool tick = line % scale.lines_per_interval == 0;
    const bool zero = zero_line == static_cast<double>(line) && line + 1 < scale.Lines();
    AppendLine(text, PadLeft(tick ? ticks[line / scale.lines_per_interval] : "", tick_cells) + " " +
                         std::string(tick ? kTick : kAxis) +
                         plot.Line(line, zero ? kZeroLine : " "));
  }
  return text;
}

}  // namespace

std::string RenderLines(const vetlo::ChartModel& chart, const ChartPage& page) {
  const LineData lines = DataOf(chart);
  const ValueScale scale = ScaleOf(lines);
  const std::vector<std::string> ticks = TickTexts(scale, page.locale);
  const std::string unit_title = Shortened(SafeText(chart.AxisTitle()), page.columns / 3);
  std::size_t tick_cells = CellsOf(unit_title);
  for (const std::string& tick : ticks) {
    tick_cells = std::max(tick_cells, CellsOf(tick));
  }
  // A blank and the axis stand before the plot.
  const std::size_t margin = tick_cells + 2;
  const std::size_t cells = page.columns - margin;

  std::string text;
  if (!unit_title.empty()) {
    AppendLine(text, PadLeft(unit_title, tick_cells));
  }
  text += Framed(PlotOf(lines, scale, cells), scale, ticks, tick_cells);
  AppendLine(text, std::string(margin - 1, ' ').append(kCorner).append(Repeated(kFloor, cells)));
  const std::string labels = PointLabels(lines.labels, cells);
  if (!WithoutTrailingBlanks(labels).empty()) {
    AppendLine(text, std::string(margin, ' ') + labels);
  }
  if (HasLegend(chart, lines)) {
    text.append("\n").append(Legend(lines, page.columns));
  }
  return text;
}

}  // namespace quillmarsh
