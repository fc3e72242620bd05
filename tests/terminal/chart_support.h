#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "quillmarsh/terminal/chart_text.h"
#include "quillmarsh/terminal/text_width.h"
#include "vetlo/host/chart_model.h"

namespace quillmarsh {

using Labels = std::vector<std::string>;
using Rows = std::vector<std::vector<double>>;

// A chart of these rows; as many labels as there are rows and columns.
inline vetlo::ChartModel ChartOf(vetlo::ChartKind kind, const Labels& rows, const Labels& columns,
                                 const Rows& values) {
  vetlo::AmountMatrix data(rows.size(), columns.size());
  vetlo::ChartModel chart(0);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < columns.size(); ++column) {
      data(row + 1, column + 1) = values[row][column];
    }
  }
  chart.SetChartType(kind);
  chart.SetChartData(data);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    chart.SetRow(static_cast<std::int32_t>(row + 1));
    chart.SetRowLabel(rows[row]);
  }
  for (std::size_t column = 0; column < columns.size(); ++column) {
    chart.SetColumn(static_cast<std::int32_t>(column + 1));
    chart.SetColumnLabel(columns[column]);
  }
  return chart;
}

// A chart of one row, its labels and numbers in pairs.
inline vetlo::ChartModel ChartOf(vetlo::ChartKind kind,
                                 const std::vector<std::pair<std::string, double>>& items) {
  Labels labels;
  std::vector<double> values;
  for (const auto& [label, value] : items) {
    labels.push_back(label);
    values.push_back(value);
  }
  return ChartOf(kind, {""}, labels, {values});
}

inline std::string Draw(const vetlo::ChartModel& chart, std::size_t columns = 40) {
  return RenderChart(chart, columns, vetlo::NumberLocale());
}

inline Labels LinesOf(const std::string& text) {
  Labels lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    lines.push_back(text.substr(at, end - at));
    at = end == std::string::npos ? text.size() : end + 1;
  }
  return lines;
}

inline std::size_t WidestOf(const std::string& text) {
  std::size_t widest = 0;
  for (const std::string& line : LinesOf(text)) {
    widest = std::max(widest, CellsOf(line));
  }
  return widest;
}

}  // namespace quillmarsh
