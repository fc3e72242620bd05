#include "vetlo/frame/balance_history.h"

#include "vetlo/frame/subject_reports.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

struct History {
  AmountMatrix amounts;  // one series over the points
  ItemLabels dates;
};

void Compute(const ReportCall& call, const std::int32_t& lngAccountNumber, History& history) {
  Services().BalanceHistory(call.dbDov, lngAccountNumber, call.dtmFromDate, call.dtmToDate,
                            history.amounts, history.dates);
}

void WriteTable(ReportCall& call, ReportPage& page, const History& history, bool computed) {
  page.WriteSeriesTable("Date", history.dates, "Balance",
                        FormatAmountMatrix(history.amounts, call.platform.Locale()), computed);
}

// The dates become the rows.
AmountMatrix DatesAsRows(const AmountMatrix& series) {
  AmountMatrix rows(series.Items(), 1);
  for (std::size_t i = 1; i <= series.Items(); ++i) {
    rows(i, 1) = series(1, i);
  }
  return rows;
}

void WriteChart(ReportCall& call, ChartWriter& writer, const std::int32_t& lngAccountNumber,
                const History& history) {
  const ScaledChart chart =
      ScaleChartData(DatesAsRows(history.amounts), ChartUnit::kMoney, call.platform.Locale());
  writer.SetData(chart.ScaledMatrix);
  writer.LabelRows(history.dates);
  writer.SelectColumn(1);
  writer.LabelColumn(NameOfAccount(call, lngAccountNumber).value_or(""));
  writer.SetAxisTitle(chart.strUnitLabel);
}

// A number that does not convert stays 0, and a chart is titled with the account of that number.
constexpr SubjectFamily<std::int32_t, History> kBalanceHistory = {
    NumberInFirstParameter, Compute, TitleWithAccount, WriteTable, WriteChart, 0};

}  // namespace

void ReportBalanceHistory(ReportCall& call) { ReportSubject(call, kBalanceHistory); }
void ChartBalanceHistory(ReportCall& call) { ChartSubject(call, kBalanceHistory); }

}  // namespace vetlo
