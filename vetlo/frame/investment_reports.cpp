#include "vetlo/frame/investment_reports.h"

#include <algorithm>
#include <vector>

#include "vetlo/frame/text_table.h"
#include "vetlo/investment/positions.h"
#include "vetlo/investment/yield.h"

namespace vetlo {
namespace {

// A head has its name alone, a row of data a figure too; a row without a name is a blank line.
void WriteRow(ReportPage& page, const TextRow& row, bool /*last*/) {
  const auto is_empty = [](const std::string& text) { return text.empty(); };
  if (!row[0].empty() && !std::all_of(row.begin() + 1, row.end(), is_empty)) {
    page.WriteCells(row);
  } else if (!row[0].empty()) {
    page.Write(row[0] + "\r\n" + page.RuleLine() + "\r\n");
  }
  page.Write("\r\n");
}

// ---- positions

using PositionsRoutine = Currency (*)(Database&, Positions&, ChartOrReport, const NumberLocale&);

void ReportPositions(ReportCall& call, PositionsRoutine routine) {
  const NumberLocale& locale = call.platform.Locale();
  Positions positions;
  Currency curTotal;
  const std::int32_t lngComputeError = call.Guard(
      [&] { curTotal = routine(call.dbDov, positions, ChartOrReport::kReport, locale); });
  std::vector<TextRow> rows;
  for (const PositionRow& row : positions.report.elements()) {
    rows.push_back({row.strName, row.strQuantity, row.strPrice, row.strValue});
  }
  WriteTextReport(call,
                  {.headers = {"Investment", "Quantity", "Latest Price", "Value"},
                   .total = {"Total", "", "", Format(curTotal, kAmountPicture, locale)}},
                  rows, lngComputeError == 0, WriteRow);
}

Currency ChartedPositions(const ReportCall& call, AmountRows& rows, PositionsRoutine routine) {
  Positions positions;
  const Currency curTotal =
      routine(call.dbDov, positions, ChartOrReport::kChart, call.platform.Locale());
  rows = std::move(positions.chart);
  return curTotal;
}

// ---- yields

using YieldRoutine = Currency (*)(Database&, Yields&, ChartOrReport, const NumberLocale&);

void ReportYields(ReportCall& call, YieldRoutine routine) {
  const NumberLocale& locale = call.platform.Locale();
  Yields yields;
  Currency curTotalGainLoss;
  const std::int32_t lngComputeError = call.Guard(
      [&] { curTotalGainLoss = routine(call.dbDov, yields, ChartOrReport::kReport, locale); });
  std::vector<TextRow> rows;
  for (const YieldRow& row : yields.report.elements()) {
    rows.push_back({row.strName, row.strGain, row.strYield});
  }
  WriteTextReport(call,
                  {.headers = {"Investment", "Gain/Loss", "Yield"},
                   .total = {"Total", Format(curTotalGainLoss, kAmountPicture, locale),
                             Format(yields.curTotalYield, kAmountPicture, locale) + "%"}},
                  rows, lngComputeError == 0, WriteRow);
}

void WriteYieldChart(ReportCall& call, const Yields& yields, bool computed) {
  const NumberLocale& locale = call.platform.Locale();
  ChartWriter writer = call.Writer();
  if (computed) {
    WriteSeries(writer, yields.chart, ChartUnit::kPercent, locale);
  }
  writer.SetTitle(call.row.strTitle);
  writer.SetFootnote(call.Caption());
}

}  // namespace

void ReportInvestmentsByAccount(ReportCall& call) { ReportPositions(call, InvestmentsByAccount); }
void ReportInvestmentsByType(ReportCall& call) { ReportPositions(call, InvestmentsByType); }

Currency ChartedInvestmentsByAccount(const ReportCall& call, AmountRows& rows) {
  return ChartedPositions(call, rows, InvestmentsByAccount);
}

Currency ChartedInvestmentsByType(const ReportCall& call, AmountRows& rows) {
  return ChartedPositions(call, rows, InvestmentsByType);
}

void ReportYieldByAccount(ReportCall& call) { ReportYields(call, YieldByAccount); }
void ReportYieldByType(ReportCall& call) { ReportYields(call, YieldByType); }

void ChartYieldByAccount(ReportCall& call) {
  Yields yields;
  const std::int32_t lngComputeError = call.Guard(
      [&] { YieldByAccount(call.dbDov, yields, ChartOrReport::kChart, call.platform.Locale()); });
  WriteYieldChart(call, yields, lngComputeError == 0);
}

// A routine of its own: what fails in it after computing is cleaned up after.
void ChartYieldByType(ReportCall& call) {
  Yields yields;
  const std::int32_t lngComputeError = ResumeNext(call.dbDov, [&] {
    YieldByType(call.dbDov, yields, ChartOrReport::kChart, call.platform.Locale());
  });
  WriteYieldChart(call, yields, lngComputeError == 0);
}

}  // namespace vetlo
