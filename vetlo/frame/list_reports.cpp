#include "vetlo/frame/list_reports.h"

#include <vector>

#include "vetlo/balance/account_list.h"
#include "vetlo/frame/text_table.h"
#include "vetlo/schedule/payment_calendar.h"

namespace vetlo {
namespace {

using TextRows = GrowingArray<TextRow>;

void WriteRow(ReportPage& page, const TextRow& row, bool last) {
  page.WriteCells(row, last ? "" : "\r\n");
}

// The last column is one of amounts.
void WriteList(ReportCall& call, const std::vector<std::string>& headers, const TextRows& rows,
               FirstStop first_stop, bool computed) {
  WriteTextReport(
      call, {.headers = headers, .left_columns = headers.size() - 1, .first_stop = first_stop},
      rows.elements(), computed, WriteRow);
}

CalendarFilter FilterOf(std::int32_t report_number) {
  constexpr std::int32_t kPaymentsAlone = 9;
  constexpr std::int32_t kDepositsAlone = 54;
  return {report_number != kDepositsAlone, report_number != kPaymentsAlone};
}

}  // namespace

void ReportAccountList(ReportCall& call) {
  TextRows rows;
  const std::int32_t lngComputeError =
      call.Guard([&] { AccountListRows(call.dbDov, rows, call.platform.Locale()); });
  WriteList(call, {"Account", "Type", "Bank Name", "Account Names", "Account Number", "Balance"},
            rows, FirstStop::kOnIndent, lngComputeError == 0);
}

void ReportPaymentCalendar(ReportCall& call) {
  TextRows rows;
  const std::int32_t lngComputeError = call.Guard([&] {
    PaymentCalendarRows(call.dbDov, call.dtmFromDate, call.dtmToDate, rows,
                        FilterOf(call.row.ChartReportSubTypeAttr), call.platform.Locale());
  });
  WriteList(call, {"Date", "Frequency", "Payee", "Account", "Category", "Amount"}, rows,
            FirstStop::kOnSecondColumn, lngComputeError == 0);
}

}  // namespace vetlo
