#include "vetlo/frame/price_reports.h"

#include <optional>
#include <span>
#include <vector>

#include "vetlo/frame/subject_reports.h"
#include "vetlo/investment/prices.h"

namespace vetlo {
namespace {

// ---- how prices are written

// The prices as texts, and the table that they are measured for.
Matrix<std::string> LayOutPrices(ReportCall& call, ReportPage& page, const PriceHistory& history) {
  Matrix<std::string> texts = FormatAmountMatrix(history.dblPrices, call.platform.Locale());
  page.LayOut({{"Date", ColumnSide::kLeft, history.strDates.elements(), ""},
               {"Investment", ColumnSide::kLeft, history.strItems, ""},
               {"Price", ColumnSide::kRight, texts.elements(), ""}});
  return texts;
}

// A line for each date, and below it one for each item.
void WriteRows(ReportPage& page, const PriceHistory& history, const Matrix<std::string>& texts) {
  page.WriteHeaderLine();
  const std::size_t dates = history.dblPrices.Series();
  const std::size_t items = history.dblPrices.Items();
  for (std::size_t date = 1; date <= dates; ++date) {
    page.Write(history.strDates(date) + "\r\n");
    for (std::size_t item = 1; item <= items; ++item) {
      const bool last_of_date = item == items;
      const bool last = last_of_date && date == dates;
      const std::string_view line_end = last_of_date ? "\r\n\r\n" : "\r\n";
      page.WriteCells(std::vector<std::string>{"", history.strItems[item - 1], texts(date, item)},
                      last ? "" : line_end);
    }
  }
}

// Dates as rows, items as columns.
void WriteChart(ReportCall& call, ChartWriter& writer, const PriceHistory& history,
                std::span<const std::string> items) {
  const ScaledChart chart =
      ScaleChartData(history.dblPrices, ChartUnit::kMoney, call.platform.Locale());
  writer.SetData(chart.ScaledMatrix);
  writer.LabelRows(history.strDates);
  std::int32_t column = 0;
  for (const std::string& item : items) {
    writer.SelectColumn(++column);
    writer.LabelColumn(item);
  }
  writer.SetAxisTitle(chart.strUnitLabel);
}

// ---- of all investments

void ComputeAll(const ReportCall& call, PriceHistory& history) {
  AllInvestmentsPriceHistory(call.dbDov, call.dtmFromDate, call.dtmToDate, history, call.Target());
}

// ---- of one account

void ComputeOfAccount(const ReportCall& call, const std::int32_t& lngAccountNumber,
                      PriceHistory& history) {
  AccountPriceHistory(call.dbDov, lngAccountNumber, call.dtmFromDate, call.dtmToDate, history,
                      call.Target());
}

void WriteAccountTable(ReportCall& call, ReportPage& page, const PriceHistory& history,
                       bool computed) {
  const Matrix<std::string> texts = LayOutPrices(call, page, history);
  if (computed) {
    WriteRows(page, history, texts);
  }
}

void WriteAccountChart(ReportCall& call, ChartWriter& writer, const std::int32_t&,
                       const PriceHistory& history) {
  WriteChart(call, writer, history, history.strItems);
}

constexpr SubjectFamily<std::int32_t, PriceHistory> kAccountPrices = {
    NumberInFirstParameter, ComputeOfAccount, TitleWithAccount, WriteAccountTable,
    WriteAccountChart};

// ---- of one investment

void ComputeOfItem(const ReportCall& call, const std::int32_t& lngAccountItemNumber,
                   PriceHistory& history) {
  ItemPriceHistory(call.dbDov, lngAccountItemNumber, call.dtmFromDate, call.dtmToDate, history);
}

// The investment's name, in a report behind its type's; none where one of them is not found.
std::optional<std::string> NameOfItem(ReportCall& call, std::int32_t lngAccountItemNumber) {
  if (!call.tables.Find(LookUpTable::kAccountItem, lngAccountItemNumber)) {
    return std::nullopt;
  }
  Recordset& recItem = call.tables[LookUpTable::kAccountItem];
  std::string name = TextField(recItem, "AccountItemName");
  if (call.Target() == ChartOrReport::kChart) {
    return name;
  }
  if (!call.tables.Find(LookUpTable::kAccountItemType,
                        LongField(recItem, "AccountItemTypeNumber"))) {
    return std::nullopt;
  }
  return TextField(call.tables[LookUpTable::kAccountItemType], "AccountItemTypeName") + ":" + name;
}

std::string ItemTitle(ReportCall& call, const std::int32_t& lngAccountItemNumber) {
  return TitleWith(call, NameOfItem(call, lngAccountItemNumber));
}

void WriteItemTable(ReportCall& call, ReportPage& page, const PriceHistory& history,
                    bool computed) {
  page.WriteSeriesTable("Date", history.strDates, "Price",
                        FormatAmountMatrix(history.dblPrices, call.platform.Locale()), computed);
}

void WriteItemChart(ReportCall& call, ChartWriter& writer, const std::int32_t& lngAccountItemNumber,
                    const PriceHistory& history) {
  const std::string name = NameOfItem(call, lngAccountItemNumber).value_or("");
  WriteChart(call, writer, history, std::span(&name, 1));
}

constexpr SubjectFamily<std::int32_t, PriceHistory> kItemPrices = {
    NumberInFirstParameter, ComputeOfItem, ItemTitle, WriteItemTable, WriteItemChart};

}  // namespace

void ReportAllPrices(ReportCall& call) {
  PriceHistory history;
  const std::int32_t lngComputeError = call.Guard([&] { ComputeAll(call, history); });
  ReportPage page = call.Page();
  const Matrix<std::string> texts = LayOutPrices(call, page, history);
  // The caption is made last: where a date is none and that fails, the title stands already.
  page.BeginHeading();
  page.WriteTitleLine(call.row.strTitle);
  page.EndHeading(call.Caption());
  if (lngComputeError == 0) {
    WriteRows(page, history, texts);
  }
}

// A routine of its own, as that of the yields by type: what fails in it after computing is cleaned
// up after.
void ChartAllPrices(ReportCall& call) {
  PriceHistory history;
  const std::int32_t lngComputeError = ResumeNext(call.dbDov, [&] { ComputeAll(call, history); });
  ChartWriter writer = call.Writer();
  if (lngComputeError == 0) {
    WriteChart(call, writer, history, history.strItems);
  }
  writer.SetTitle(call.row.strTitle);
  writer.SetFootnote(call.Caption());
}

void ReportAccountPrices(ReportCall& call) { ReportSubject(call, kAccountPrices); }
void ChartAccountPrices(ReportCall& call) { ChartSubject(call, kAccountPrices); }

void ReportItemPrices(ReportCall& call) { ReportSubject(call, kItemPrices); }
void ChartItemPrices(ReportCall& call) { ChartSubject(call, kItemPrices); }

}  // namespace vetlo
