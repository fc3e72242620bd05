#include "vetlo/cashflow/category_reports.h"

#include "vetlo/cashflow/category_section.h"
#include "vetlo/cashflow/category_walk.h"
#include "vetlo/cashflow/investment_flows.h"
#include "vetlo/cashflow/period_totals.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/report_rows.h"

namespace vetlo {
namespace {

Currency TotalOf(const CategoryRequest& request, Flow flow) {
  return TotalOfFlow(request.dbDov, flow, request.dtmFromDate, request.dtmToDate);
}

Stored StoredFor(Flow flow) {
  return flow == Flow::kOutgoing ? Stored::kNegatedInCharts : Stored::kAsTheyAre;
}

// ---- one direction alone

// A heading over each of the two passes; a blank line before what has no category and before the
// rest, one where both stand. The rest is written into the spare row.
Currency OneFlowByCategory(const CategoryRequest& request, const FlowWords& words) {
  CategorySection section(request, Stored::kAsTheyAre);
  section.SetTotal(TotalOf(request, words.flow));
  request.rows.Start();
  for (const std::int32_t type : {words.own_category_type, words.other_category_type}) {
    section.heading = false;
    section.ListCategories(words.flow, type, [&] {
      Once(section.heading, [&] { section.AddHeading(HeadingOfCategories(type)); });
    });
  }
  const auto space_once = [&] { Once(section.spacer, [&] { section.AddSpacer(); }); };
  section.ListUnassigned(words, space_once);
  if (section.IsComplete()) {
    request.rows.Close();
    return section.Total();
  }
  space_once();
  request.rows.WriteSpare(section.Total() - section.Sum(), std::string(words.rest_label));
  return section.Total();
}

// ---- both directions

// The heading belongs to the first pass alone: where that has no row, the section has none. A blank
// line stands before each pass and before all that follows.
Currency AddDirection(const CategoryRequest& request, const FlowWords& words) {
  CategorySection section(request, StoredFor(words.flow));
  section.SetTotal(TotalOf(request, words.flow));
  const auto space_once = [&] { Once(section.spacer, [&] { section.AddSpacer(); }); };
  section.ListCategories(words.flow, words.own_category_type, [&] {
    Once(section.heading, [&] { section.AddHeading(words.heading); });
    space_once();
  });
  section.spacer = false;
  section.ListCategories(words.flow, words.other_category_type, space_once);
  section.spacer = false;
  section.ListUnassigned(words, space_once);
  section.ListRest(words.rest_label, space_once);
  if (section.Total() != Currency{}) {
    section.AddTotal(words.total_label);
  }
  return section.Total();
}

// ---- the cash flow

// Heading and blank line before whatever comes first in the section, be it the total.
Currency AddCashFlowDirection(const CategoryRequest& request, const FlowWords& words) {
  CategorySection section(request, StoredFor(words.flow));
  section.SetTotal(TotalOf(request, words.flow));
  const auto head_once = [&] {
    Once(section.heading, [&] {
      section.AddHeading(words.heading);
      section.AddSpacer();
    });
  };
  section.ListCategories(words.flow, words.own_category_type, head_once);
  section.ListCategories(words.flow, words.other_category_type, head_once);
  section.ListUnassigned(words, head_once);
  section.ListRest(words.rest_label, head_once);
  if (section.Total() != Currency{}) {
    head_once();
    section.AddTotal(words.total_label);
  }
  return section.Total();
}

// What investments moved at each other account. A blank line stands before the heading only where
// an account follows it; accounts too small to show are in the total alone.
Currency AddInvestmentDirection(const CategoryRequest& request, const InvestmentFlow& flow) {
  CategorySection section(request, StoredFor(flow.flow));
  section.SetTotal(
      TotalOfInvestmentFlow(request.dbDov, flow, request.dtmFromDate, request.dtmToDate));
  ForEachRowOf(request.dbDov,
               "SELECT * FROM Account WHERE AccountType<>" + Str(kInvestmentAccount) +
                   " ORDER BY AccountName,AccountType",
               [&](Recordset& rec) {
                 const Currency amount =
                     flow.of_account(request.dbDov, request.dtmFromDate, request.dtmToDate,
                                     LongField(rec, "AccountNumber"));
                 if (!section.Passes(amount)) {
                   return;
                 }
                 Once(section.heading, [&] {
                   section.AddSpacer();
                   section.AddHeading(flow.heading);
                   section.AddSpacer();
                 });
                 section.AddRow(amount, AccountLabel(rec, request.lngChartOrReportType));
               });
  if (section.Total() != Currency{}) {
    Once(section.heading, [&] {
      section.AddHeading(flow.heading);
      section.AddSpacer();
    });
    section.AddTotal(flow.total_label);
  }
  return section.Total();
}

}  // namespace

Currency ExpensesByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                            ChartOrReport lngChartOrReportType) {
  return OneFlowByCategory({dbDov, dtmFromDate, dtmToDate, rows, lngChartOrReportType},
                           kExpensesWords);
}

Currency IncomeByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                          ChartOrReport lngChartOrReportType) {
  return OneFlowByCategory({dbDov, dtmFromDate, dtmToDate, rows, lngChartOrReportType},
                           kIncomeWords);
}

Currency IncomeAndExpensesByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                     AmountRows& rows, ChartOrReport lngChartOrReportType) {
  const CategoryRequest request{dbDov, dtmFromDate, dtmToDate, rows, lngChartOrReportType};
  rows.StartApart();
  const Currency curIncome = AddDirection(request, kIncomeWords);
  const Currency curExpenses = AddDirection(request, kExpensesWords);
  rows.Close();
  rows.HandOver();
  return curIncome - curExpenses;
}

Currency CashFlowByCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                            ChartOrReport lngChartOrReportType) {
  const CategoryRequest request{dbDov, dtmFromDate, dtmToDate, rows, lngChartOrReportType};
  rows.StartApart();
  const Currency curIncome = AddCashFlowDirection(request, kIncomeWords);
  Currency curNet = curIncome - AddCashFlowDirection(request, kExpensesWords);
  curNet += AddInvestmentDirection(request, kInvestmentIncome);
  curNet -= AddInvestmentDirection(request, kInvestmentExpenses);
  rows.Close();
  rows.HandOver();
  return curNet;
}

}  // namespace vetlo
