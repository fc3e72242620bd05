#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vetlo/output/tamo_form.h"
#include "vetlo/platform/arrays.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/format.h"

namespace vetlo {

// The numbers of a chart divided by its unit, and the unit in words: "$1", "$10K", "1M%".
struct ScaledChart {
  AmountMatrix ScaledMatrix;
  std::string strUnitLabel;
};

enum class ChartUnit { kMoney, kPercent };

// Brings the numbers below 1000000; where one of them is 10^15 or more, to 1 at the most, under a
// unit without a number. A matrix without elements fails with kSubscriptOutOfRange.
ScaledChart ScaleChartData(const AmountMatrix& amounts, ChartUnit unit, const NumberLocale& locale);

// Sets the control's kind for a stored one (0 line, 1 bar, 2 pie); any other leaves it alone.
void SetChartKind(ChartObject& objChart, std::int32_t lngChartType);

// Clears the chart and sets kind, legend and legend font.
void SetUpChart(ChartObject& objChart, bool blnLegend, std::int32_t lngChartType, frmTamo& form);

// One column of a chart.
struct ChartItem {
  std::string label;
  double amount = 0;  // unscaled, as a pie's label shows it
};

// Writes into one chart: what all charts are made of.
class ChartWriter {
 public:
  // All of them must outlive the writer.
  ChartWriter(ChartObject& chart, std::int32_t lngChartType, frmTamo& form,
              const NumberLocale& locale)
      : chart_(chart), lngChartType_(lngChartType), form_(form), locale_(locale) {}

  // One row without a label and a column for each item, labelled as the kind of chart asks for:
  // a bar by its label, a slice by label and amount, a line not at all. `between` stands between
  // a slice's label and its amount.
  void LabelItems(const std::vector<ChartItem>& items, ChartUnit unit, std::string_view between);

  void LabelRows(const ItemLabels& labels);
  void SelectColumn(std::int32_t column) { chart_.SetColumn(column); }
  // Labels the selected column, cut to half of the chart's width.
  void LabelColumn(std::string_view label);

  void SetData(const AmountMatrix& scaled) { chart_.SetChartData(scaled); }
  void SetAxisTitle(std::string_view text) { chart_.SetAxisTitleText(text); }
  void SetTitle(std::string_view text) { chart_.SetTitleText(text); }
  void SetFootnote(std::string_view text) { chart_.SetFootnoteText(text); }

 private:
  ChartObject& chart_;
  std::int32_t lngChartType_;
  frmTamo& form_;
  const NumberLocale& locale_;
  std::string strColumnLabel_;
};

// Data, labels and unit of a chart of one series.
void WriteSeries(ChartWriter& writer, const AmountMatrix& amounts,
                 const std::vector<std::string>& labels, ChartUnit unit,
                 const NumberLocale& locale);
inline void WriteSeries(ChartWriter& writer, const AmountRows& rows, ChartUnit unit,
                        const NumberLocale& locale) {
  WriteSeries(writer, rows.Amounts(), rows.Labels().elements(), unit, locale);
}

}  // namespace vetlo
