#include "vetlo/frame/investment_reports.h"

#include <vector>

#include "vetlo/frame/text_table.h"
#include "vetlo/investment/positions.h"
#include "vetlo/investment/yield.h"

namespace vetlo {
namespace {

// ---- tables of sections: positions and yields

// A table of text whose rows are heads, blank lines and data; its headers, its total line, and the
// column that is empty in a head.
struct SectionTable {
  std::vector<std::string> headers;
  std::vector<TextRow> rows;
  TextRow total;
  std::size_t telling_column = 0;
};

void WriteSections(ReportCall& call, const SectionTable& table, bool computed) {
  ReportPage page = call.Page();
  LayOutTexts(page, {table.headers, 1, table.total}, table.rows);
  page.WriteHeading(call.row.strTitle, call.Caption());
  if (!computed) {
    return;
  }
  page.WriteHeaderLine();
  for (const TextRow& row : table.rows) {
    if (!row[0].empty() && !row[table.telling_column].empty()) {
      page.WriteCells(row);
    } else if (!row[0].empty()) {
      page.Write(row[0] + "\r\n" + page.RuleLine() + "\r\n");
    }
    page.Write("\r\n");
  }
  page.WriteTotal(table.total);
}

using PositionsRoutine = Currency (*)(Database&, Positions&, ChartOrReport, const NumberLocale&);

void ReportPositions(ReportCall& call, PositionsRoutine routine) {
  const NumberLocale& locale = call.platform.Locale();
  Positions positions;
  Currency curTotal;
  const std::int32_t lngComputeError = call.Guard(
      [&] { curTotal = routine(call.dbDov, positions, ChartOrReport::kReport, locale); });
  SectionTable table{{"Investment", "Quantity", "Latest Price", "Value"},
                     {},
                     {"Total", "", "", Format(curTotal, kAmountPicture, locale)},
                     3};
  for (const PositionRow& row : positions.report.elements()) {
    table.rows.push_back({row.strName, row.strQuantity, row.strPrice, row.strValue});
  }
  WriteSections(call, table, lngComputeError == 0);
}

Currency ChartedPositions(const ReportCall& call, AmountRows& rows, PositionsRoutine routine) {
  Positions positions;
  const Currency curTotal =
      routine(call.dbDov, positions, ChartOrReport::kChart, call.platform.Locale());
  rows = std::move(positions.chart);
  return curTotal;
}

using YieldRoutine = void (*)(Database&, Yields&, ChartOrReport, const NumberLocale&);

void ReportYields(ReportCall& call, YieldRoutine routine) {
  const NumberLocale& locale = call.platform.Locale();
  Yields yields;
  const std::int32_t lngComputeError =
      call.Guard([&] { routine(call.dbDov, yields, ChartOrReport::kReport, locale); });
  SectionTable table{{"Investment", "Gain/Loss", "Yield"},
                     {},
                     {"Total", Format(yields.curTotalGainLoss, kAmountPicture, locale),
                      Format(yields.curTotalYield, kAmountPicture, locale) + "%"},
                     1};
  for (const YieldRow& row : yields.report.elements()) {
    table.rows.push_back({row.strName, row.strGain, row.strYield});
  }
  WriteSections(call, table, lngComputeError == 0);
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
  const std::int32_t lngComputeError = ResumeNext(
      [&] { YieldByType(call.dbDov, yields, ChartOrReport::kChart, call.platform.Locale()); });
  WriteYieldChart(call, yields, lngComputeError == 0);
}

}  // namespace vetlo
