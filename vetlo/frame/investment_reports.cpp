#include "vetlo/frame/investment_reports.h"

#include <optional>
#include <vector>

#include "vetlo/frame/text_table.h"
#include "vetlo/investment/positions.h"
#include "vetlo/investment/prices.h"
#include "vetlo/investment/yield.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/report_rows.h"

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

// ---- prices

// The prices as texts, and the table that they are measured for.
Matrix<std::string> LayOutPrices(ReportCall& call, ReportPage& page, const PriceHistory& history) {
  Matrix<std::string> texts = FormatAmountMatrix(history.dblPrices, call.platform.Locale());
  page.LayOut({{"Date", ColumnSide::kLeft, history.strDates.elements(), ""},
               {"Investment", ColumnSide::kLeft, history.strItems, ""},
               {"Price", ColumnSide::kRight, texts.elements(), ""}});
  return texts;
}

// A line for each date, and below it one for each item.
void WritePriceTable(ReportPage& page, const PriceHistory& history,
                     const Matrix<std::string>& texts) {
  page.WriteHeaderLine();
  const std::size_t dates = history.dblPrices.Series();
  const std::size_t items = history.dblPrices.Items();
  for (std::size_t date = 1; date <= dates; ++date) {
    page.Write(history.strDates(date) + "\r\n");
    for (std::size_t item = 1; item <= items; ++item) {
      const bool last_of_date = item == items;
      const bool last = last_of_date && date == dates;
      page.WriteCells(TextRow{"", history.strItems[item - 1], texts(date, item)}, last ? ""
                                                                                  : last_of_date
                                                                                      ? "\r\n\r\n"
                                                                                      : "\r\n");
    }
  }
}

// Dates as rows, items as columns.
void WritePriceChart(ReportCall& call, ChartWriter& writer, const PriceHistory& history) {
  const ScaledChart chart =
      ScaleChartData(history.dblPrices, ChartUnit::kMoney, call.platform.Locale());
  writer.SetData(chart.ScaledMatrix);
  writer.LabelRows(history.strDates);
  for (std::size_t item = 0; item < history.strItems.size(); ++item) {
    writer.LabelColumn(static_cast<std::int32_t>(item) + 1, history.strItems[item]);
  }
  writer.SetAxisTitle(chart.strUnitLabel);
}

// The names of a subject; none where it is not found.
std::optional<std::string> AccountOf(ReportCall& call, std::int32_t lngAccountNumber,
                                     ChartOrReport form) {
  if (!call.tables.Find(LookUpTable::kAccount, lngAccountNumber)) {
    return std::nullopt;
  }
  return AccountLabel(call.tables[LookUpTable::kAccount], form);
}

std::optional<std::string> ItemOf(ReportCall& call, std::int32_t lngAccountItemNumber,
                                  ChartOrReport form) {
  if (!call.tables.Find(LookUpTable::kAccountItem, lngAccountItemNumber)) {
    return std::nullopt;
  }
  Recordset& recItem = call.tables[LookUpTable::kAccountItem];
  std::string name = TextField(recItem, "AccountItemName");
  if (form == ChartOrReport::kChart) {
    return name;
  }
  if (!call.tables.Find(LookUpTable::kAccountItemType,
                        LongField(recItem, "AccountItemTypeNumber"))) {
    return std::nullopt;
  }
  return TextField(call.tables[LookUpTable::kAccountItemType], "AccountItemTypeName") + ":" + name;
}

// The title and the subject's name, or where it is not found the bare title.
std::string TitleWith(const ReportCall& call, const std::optional<std::string>& name) {
  return name ? call.row.strTitle + ":" + *name : call.row.strTitle;
}

void WriteHeading(ReportCall& call, ReportPage& page, const std::string& title) {
  page.BeginHeading();
  page.WriteTitleLine(title);
  page.EndHeading(call.Caption());
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

void ReportAllPrices(ReportCall& call) {
  PriceHistory history;
  const std::int32_t lngComputeError = call.Guard([&] {
    AllInvestmentsPriceHistory(call.dbDov, call.dtmFromDate, call.dtmToDate, history,
                               ChartOrReport::kReport);
  });
  ReportPage page = call.Page();
  const Matrix<std::string> texts = LayOutPrices(call, page, history);
  WriteHeading(call, page, call.row.strTitle);
  if (lngComputeError == 0) {
    WritePriceTable(page, history, texts);
  }
}

// A routine of its own, as that of the yields by type.
void ChartAllPrices(ReportCall& call) {
  PriceHistory history;
  const std::int32_t lngComputeError = ResumeNext([&] {
    AllInvestmentsPriceHistory(call.dbDov, call.dtmFromDate, call.dtmToDate, history,
                               ChartOrReport::kChart);
  });
  ChartWriter writer = call.Writer();
  if (lngComputeError == 0) {
    WritePriceChart(call, writer, history);
  }
  writer.SetTitle(call.row.strTitle);
  writer.SetFootnote(call.Caption());
}

void ReportAccountPrices(ReportCall& call) {
  const auto lngAccountNumber = call.NumberIn(call.row.varParameter1);
  if (!lngAccountNumber) {
    return;
  }
  ReportPage page = call.Page();
  WriteHeading(call, page,
               TitleWith(call, AccountOf(call, *lngAccountNumber, ChartOrReport::kReport)));
  PriceHistory history;
  const std::int32_t lngComputeError = call.Guard([&] {
    AccountPriceHistory(call.dbDov, *lngAccountNumber, call.dtmFromDate, call.dtmToDate, history,
                        ChartOrReport::kReport);
  });
  const Matrix<std::string> texts = LayOutPrices(call, page, history);
  if (lngComputeError == 0) {
    WritePriceTable(page, history, texts);
  }
}

void ChartAccountPrices(ReportCall& call) {
  ChartWriter writer = call.Writer();
  std::string strTitle = call.row.strTitle;
  if (const auto lngAccountNumber = call.NumberIn(call.row.varParameter1)) {
    PriceHistory history;
    const std::int32_t lngComputeError = call.Guard([&] {
      AccountPriceHistory(call.dbDov, *lngAccountNumber, call.dtmFromDate, call.dtmToDate, history,
                          ChartOrReport::kChart);
    });
    if (lngComputeError == 0) {
      WritePriceChart(call, writer, history);
    }
    strTitle = TitleWith(call, AccountOf(call, *lngAccountNumber, ChartOrReport::kChart));
  }
  writer.SetTitle(strTitle);
  writer.SetFootnote(call.Caption());
}

void ReportItemPrices(ReportCall& call) {
  const auto lngAccountItemNumber = call.NumberIn(call.row.varParameter1);
  if (!lngAccountItemNumber) {
    return;
  }
  ReportPage page = call.Page();
  WriteHeading(call, page,
               TitleWith(call, ItemOf(call, *lngAccountItemNumber, ChartOrReport::kReport)));
  PriceHistory history;
  const std::int32_t lngComputeError = call.Guard([&] {
    ItemPriceHistory(call.dbDov, *lngAccountItemNumber, call.dtmFromDate, call.dtmToDate, history);
  });
  const Matrix<std::string> texts = FormatAmountMatrix(history.dblPrices, call.platform.Locale());
  page.WriteSeriesTable("Date", history.strDates, "Price", texts, lngComputeError == 0);
}

void ChartItemPrices(ReportCall& call) {
  ChartWriter writer = call.Writer();
  std::string strTitle = call.row.strTitle;
  if (const auto lngAccountItemNumber = call.NumberIn(call.row.varParameter1)) {
    PriceHistory history;
    const std::int32_t lngComputeError = call.Guard([&] {
      ItemPriceHistory(call.dbDov, *lngAccountItemNumber, call.dtmFromDate, call.dtmToDate,
                       history);
    });
    if (lngComputeError == 0) {
      history.strItems = {ItemOf(call, *lngAccountItemNumber, ChartOrReport::kChart).value_or("")};
      WritePriceChart(call, writer, history);
    }
    strTitle = TitleWith(call, ItemOf(call, *lngAccountItemNumber, ChartOrReport::kChart));
  }
  writer.SetTitle(strTitle);
  writer.SetFootnote(call.Caption());
}

}  // namespace vetlo
