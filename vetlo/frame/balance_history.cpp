#include "vetlo/frame/balance_history.h"

#include <vector>

#include "vetlo/services/common_services.h"
#include "vetlo/services/report_rows.h"

namespace vetlo {
namespace {

struct History {
  AmountMatrix amounts;  // one series over the points
  ItemLabels dates;
  std::int32_t lngComputeError = 0;
};

History HistoryOf(ReportCall& call, std::int32_t lngAccountNumber) {
  History history;
  history.lngComputeError = call.Guard([&] {
    Services().BalanceHistory(call.dbDov, lngAccountNumber, call.dtmFromDate, call.dtmToDate,
                              history.amounts, history.dates);
  });
  return history;
}

std::string TitleLine(ReportCall& call, std::int32_t lngAccountNumber) {
  if (!call.tables.Find(LookUpTable::kAccount, lngAccountNumber)) {
    return call.row.strTitle;
  }
  return call.row.strTitle + ":" +
         AccountLabel(call.tables[LookUpTable::kAccount], ChartOrReport::kReport);
}

// The account's name behind a prefix, or where there is no such account what stands in its place.
std::string NameOr(ReportCall& call, std::int32_t lngAccountNumber, const std::string& prefix,
                   const std::string& otherwise) {
  return call.tables.Find(LookUpTable::kAccount, lngAccountNumber)
             ? prefix + TextField(call.tables[LookUpTable::kAccount], "AccountName")
             : otherwise;
}

// The dates become the rows.
AmountMatrix DatesAsRows(const AmountMatrix& series) {
  AmountMatrix rows(series.Items(), 1);
  for (std::size_t i = 1; i <= series.Items(); ++i) {
    rows(i, 1) = series(1, i);
  }
  return rows;
}

void ChartPoints(ReportCall& call, ChartWriter& writer, std::int32_t lngAccountNumber,
                 const History& history) {
  const ScaledChart chart =
      ScaleChartData(DatesAsRows(history.amounts), ChartUnit::kMoney, call.platform.Locale());
  writer.SetData(chart.ScaledMatrix);
  writer.LabelRows(history.dates);
  writer.LabelColumn(1, NameOr(call, lngAccountNumber, "", ""));
  writer.SetAxisTitle(chart.strUnitLabel);
}

}  // namespace

void ReportBalanceHistory(ReportCall& call) {
  const auto lngAccountNumber = call.NumberIn(call.row.varParameter1);
  if (!lngAccountNumber) {
    return;
  }
  ReportPage page = call.Page();
  page.BeginHeading();
  page.WriteTitleLine(TitleLine(call, *lngAccountNumber));
  page.EndHeading(call.Caption());
  const History history = HistoryOf(call, *lngAccountNumber);
  page.WriteSeriesTable("Date", history.dates, "Balance",
                        FormatAmountMatrix(history.amounts, call.platform.Locale()),
                        history.lngComputeError == 0);
}

void ChartBalanceHistory(ReportCall& call) {
  ChartWriter writer = call.Writer();
  std::string strTitle = call.row.strTitle;
  if (const auto lngAccountNumber = call.NumberIn(call.row.varParameter1)) {
    const History history = HistoryOf(call, *lngAccountNumber);
    if (history.lngComputeError == 0) {
      ChartPoints(call, writer, *lngAccountNumber, history);
    }
    strTitle = NameOr(call, *lngAccountNumber, strTitle + ":", strTitle);
  }
  writer.SetTitle(strTitle);
  writer.SetFootnote(call.Caption());
}

}  // namespace vetlo
