#include "vetlo/frame/balance_history.h"

#include <vector>

#include "vetlo/output/chart_writer.h"
#include "vetlo/output/date_range_caption.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/report_rows.h"

namespace vetlo {
namespace {

struct History {
  AmountMatrix amounts;  // one series over the points
  ItemLabels dates;
  std::int32_t lngComputeError = 0;
};

// The number in the first parameter; false where it is none.
bool SubjectOf(ReportCall& call, std::int32_t& lngAccountNumber) {
  return call.Guard([&] { lngAccountNumber = ToLong(call.row.varParameter1); }) == 0;
}

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
AmountMatrix Turned(const AmountMatrix& series) {
  AmountMatrix rows(series.Items(), 1);
  for (std::size_t i = 1; i <= series.Items(); ++i) {
    rows(i, 1) = series(1, i);
  }
  return rows;
}

void ChartPoints(ReportCall& call, ChartWriter& writer, std::int32_t lngAccountNumber,
                 const History& history) {
  const ScaledChart chart =
      ScaleChartData(Turned(history.amounts), ChartUnit::kMoney, call.platform.Locale());
  writer.SetData(chart.ScaledMatrix);
  writer.LabelRows(history.dates);
  writer.LabelColumn(1, NameOr(call, lngAccountNumber, "", ""));
  writer.SetAxisTitle(chart.strUnitLabel);
}

}  // namespace

void ReportBalanceHistory(ReportCall& call) {
  std::int32_t lngAccountNumber = 0;
  if (!SubjectOf(call, lngAccountNumber)) {
    return;
  }
  ReportPage page = call.Page();
  page.BeginHeading();
  page.WriteTitleLine(TitleLine(call, lngAccountNumber));
  page.EndHeading(DateRangeCaption(call.dtmFromDate, call.dtmToDate));
  const History history = HistoryOf(call, lngAccountNumber);
  const Matrix<std::string> texts = FormatAmountMatrix(history.amounts, call.platform.Locale());
  page.LayOut({{"Date", ColumnSide::kLeft, history.dates.elements(), ""},
               {"Balance", ColumnSide::kRight, texts.elements(), ""}});
  if (history.lngComputeError != 0) {
    return;
  }
  page.WriteHeaderLine();
  const std::size_t lngItemCount = history.dates.UpperBound();
  for (std::size_t i = 1; i <= lngItemCount; ++i) {
    page.WriteCells(std::vector<std::string>{history.dates(i), texts(1, i)},
                    i == lngItemCount ? "" : "\r\n");
  }
}

void ChartBalanceHistory(ReportCall& call) {
  ChartWriter writer(*call.objChart, call.row.ChartType, call.form, call.platform.Locale());
  std::int32_t lngAccountNumber = 0;
  std::string strTitle = call.row.strTitle;
  if (SubjectOf(call, lngAccountNumber)) {
    const History history = HistoryOf(call, lngAccountNumber);
    if (history.lngComputeError == 0) {
      ChartPoints(call, writer, lngAccountNumber, history);
    }
    strTitle = NameOr(call, lngAccountNumber, strTitle + ":", strTitle);
  }
  writer.SetTitle(strTitle);
  writer.SetFootnote(DateRangeCaption(call.dtmFromDate, call.dtmToDate));
}

}  // namespace vetlo
