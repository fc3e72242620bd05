#include "vetlo/output/chart_writer.h"

#include <array>
#include <cmath>

#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

struct Unit {
  double below;  // the largest number must be
  double divisor;
  std::string_view text;
};

constexpr std::array kUnits = {
    Unit{1e6, 1, "1"},       Unit{1e7, 1e1, "10"},    Unit{1e8, 1e2, "100"}, Unit{1e9, 1e3, "1K"},
    Unit{1e10, 1e4, "10K"},  Unit{1e11, 1e5, "100K"}, Unit{1e12, 1e6, "1M"}, Unit{1e13, 1e7, "10M"},
    Unit{1e14, 1e8, "100M"}, Unit{1e15, 1e9, "1G"},
};

double LargestMagnitude(const AmountMatrix& amounts) {
  double dblMaximum = std::fabs(amounts(1, 1));
  for (const double amount : amounts.elements()) {
    if (std::fabs(amount) > dblMaximum) {
      dblMaximum = std::fabs(amount);
    }
  }
  return dblMaximum;
}

Unit UnitFor(double dblMaximum) {
  for (const Unit& unit : kUnits) {
    if (dblMaximum < unit.below) {
      return unit;
    }
  }
  return {0, dblMaximum, ""};
}

// Finds out where the sign stands by looking at a number written with it.
std::string WithCurrencySign(std::string_view text, const NumberLocale& locale) {
  const std::string strPositive = FormatCurrency(1, 0, LeadingDigit::kYes, locale);
  const std::string strSign = FormatCurrency(0, 0, LeadingDigit::kNo, locale);
  const bool in_front = FirstCharacters(strPositive, 1) == FirstCharacters(strSign, 1);
  return in_front ? strSign + std::string(text) : std::string(text) + strSign;
}

}  // namespace

ScaledChart ScaleChartData(const AmountMatrix& amounts, ChartUnit unit,
                           const NumberLocale& locale) {
  const Unit scale = UnitFor(LargestMagnitude(amounts));
  ScaledChart chart{AmountMatrix(amounts.Series(), amounts.Items()), {}};
  for (std::size_t series = 1; series <= amounts.Series(); ++series) {
    for (std::size_t item = 1; item <= amounts.Items(); ++item) {
      chart.ScaledMatrix(series, item) = amounts(series, item) / scale.divisor;
    }
  }
  chart.strUnitLabel = unit == ChartUnit::kPercent ? std::string(scale.text) + "%"
                                                   : WithCurrencySign(scale.text, locale);
  return chart;
}

void SetChartKind(ChartObject& objChart, std::int32_t lngChartType) {
  switch (lngChartType) {
    case kLineChart:
      objChart.SetChartType(ChartKind::kLine);
      break;
    case kBarChart:
      objChart.SetChartType(ChartKind::kBar);
      break;
    case kPieChart:
      objChart.SetChartType(ChartKind::kPie);
      break;
    default:
      break;
  }
}

void SetUpChart(ChartObject& objChart, bool blnLegend, std::int32_t lngChartType, frmTamo& form) {
  objChart.SetRepaint(false);
  objChart.SetRowCount(0);
  objChart.SetColumnCount(0);
  objChart.SetShowLegend(blnLegend);
  SetChartKind(objChart, lngChartType);
  objChart.SetLegendFont(form.picLegendFont().GetFont());
}

void ChartWriter::LabelItems(const std::vector<ChartItem>& items, ChartUnit unit,
                             std::string_view between) {
  chart_.SetRow(1);
  chart_.SetRowLabel("");
  std::int32_t column = 0;
  for (const ChartItem& item : items) {
    if (lngChartType_ == kBarChart) {
      strColumnLabel_ = item.label;
    } else if (lngChartType_ == kPieChart) {
      strColumnLabel_ = item.label + std::string(between) +
                        Format(item.amount, kAmountPicture, locale_) +
                        (unit == ChartUnit::kPercent ? "%" : "");
    }
    SelectColumn(++column);
    LabelColumn(strColumnLabel_);
  }
}

void ChartWriter::LabelRows(const ItemLabels& labels) {
  for (std::size_t i = 1; i <= labels.UpperBound(); ++i) {
    chart_.SetRow(static_cast<std::int32_t>(i));
    chart_.SetRowLabel(labels(i));
  }
}

void ChartWriter::LabelColumn(std::string_view label) {
  chart_.SetColumnLabel(
      Services().FitLabelToWidth(label, form_.picLegendFont(), chart_.Width() / 2));
}

void WriteSeries(ChartWriter& writer, const AmountMatrix& amounts,
                 const std::vector<std::string>& labels, ChartUnit unit,
                 const NumberLocale& locale) {
  const ScaledChart chart = ScaleChartData(amounts, unit, locale);
  writer.SetData(chart.ScaledMatrix);
  std::vector<ChartItem> items;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    items.push_back({labels[i], amounts(1, i + 1)});
  }
  writer.LabelItems(items, unit, ":");
  writer.SetAxisTitle(chart.strUnitLabel);
}

}  // namespace vetlo
