#include "vetlo/budget/budget_rows.h"

#include <functional>
#include <numeric>
#include <string_view>

#include "vetlo/budget/budget_amounts.h"
#include "vetlo/cashflow/category_totals.h"
#include "vetlo/cashflow/category_walk.h"

namespace vetlo {
namespace {

// The categories of one type, and the words of their part of a report.
struct Group {
  Flow flow;
  std::int32_t category_type;
  std::string_view actual_total_label;
  std::string_view budget_total_label;
};

constexpr Group kGroups[] = {
    {Flow::kOutgoing, kExpenseCategory, "Total Expenses", "Total Expense Budget"},
    {Flow::kIncoming, kIncomeCategory, "Total Income", "Total Income Budget"}};

// What of a category a row is about.
enum class Part { kWholeCategory, kSubCategory, kUnassigned };

struct RowSubject {
  Part part = Part::kWholeCategory;
  std::int32_t number = 0;  // of the category, or of the subcategory
  std::string label;
};

BudgetRow Labelled(std::string_view label, std::size_t columns) {
  BudgetRow row(columns);
  row[0] = label;
  return row;
}

// Lists the rows of one group by name, a heading before the first category and a blank line behind
// the last.
void ListGroup(Database& dbDov, const Group& group, BudgetRows& rows, std::size_t columns,
               const std::function<void(const RowSubject&)>& list) {
  bool heading = false;
  ForEachCategory(dbDov, group.category_type, [&](Recordset& rec) {
    if (!heading) {
      rows.Add(Labelled(HeadingOfCategories(group.category_type), columns));
      heading = true;
    }
    const std::int32_t category = LongField(rec, "CategoryNumber");
    list({Part::kWholeCategory, category, TextField(rec, "CategoryName")});
    ForEachPart(dbDov, category, [&](const CategoryPart& part) {
      list({part.unassigned ? Part::kUnassigned : Part::kSubCategory, part.number, part.label});
    });
  });
  rows.Add(Labelled("", columns));
}

MonthAmounts BudgetOf(Database& dbDov, std::int32_t budget, const RowSubject& subject) {
  if (subject.part == Part::kSubCategory) {
    return SubCategoryBudgetByMonth(dbDov, budget, subject.number);
  }
  return CategoryBudgetByMonth(dbDov, budget, subject.number, subject.part == Part::kUnassigned);
}

// ---- budget against actual

constexpr std::size_t kAgainstActualColumns = 4;

struct Comparison {
  Currency actual;
  Currency budget;
};

BudgetRow ComparisonRow(const std::string& label, const Comparison& figures,
                        const NumberLocale& locale) {
  return {label, Format(figures.actual, kAmountPicture, locale),
          FormatTrimmedNumber(figures.budget, locale),
          Format(figures.actual - figures.budget, kAmountPicture, locale)};
}

Currency ActualOf(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate,
                  const RowSubject& subject) {
  if (subject.part == Part::kWholeCategory) {
    return TotalOfCategory(dbDov, flow, dtmFromDate, dtmToDate, subject.number, false).curTotal;
  }
  return TotalOfSubCategory(dbDov, flow, dtmFromDate, dtmToDate, subject.number,
                            subject.part == Part::kUnassigned)
      .curTotal;
}

// ---- annual budget

constexpr std::size_t kAnnualColumns = 14;

BudgetRow AnnualRow(const std::string& label, const MonthAmounts& months,
                    const NumberLocale& locale) {
  BudgetRow row = {label};
  for (const Currency month : months) {
    row.push_back(FormatTrimmedNumber(month, locale));
  }
  row.push_back(
      FormatTrimmedNumber(std::accumulate(months.begin(), months.end(), Currency{}), locale));
  return row;
}

}  // namespace

void BudgetAgainstActualRows(Database& dbDov, Date dtmFromDate, Date dtmToDate, BudgetRows& rows,
                             const NumberLocale& locale) {
  const std::int32_t budget = BudgetInForce(dbDov);
  rows.Start();
  for (const Group& group : kGroups) {
    Comparison total;
    ListGroup(dbDov, group, rows, kAgainstActualColumns, [&](const RowSubject& subject) {
      Comparison figures;
      figures.budget =
          TotalBudgetOfDateRange(BudgetOf(dbDov, budget, subject), dtmFromDate, dtmToDate);
      figures.actual = ActualOf(dbDov, group.flow, dtmFromDate, dtmToDate, subject);
      if (subject.part == Part::kWholeCategory) {
        total.budget += figures.budget;
        total.actual += figures.actual;
      }
      rows.Add(ComparisonRow(subject.label, figures, locale));
    });
    rows.Add(ComparisonRow(std::string(group.actual_total_label), total, locale));
  }
  rows.Close();
}

void AnnualBudgetRows(Database& dbDov, BudgetRows& rows, const NumberLocale& locale) {
  const std::int32_t budget = BudgetInForce(dbDov);
  rows.Start();
  for (const Group& group : kGroups) {
    MonthAmounts total = {};
    ListGroup(dbDov, group, rows, kAnnualColumns, [&](const RowSubject& subject) {
      const MonthAmounts months = BudgetOf(dbDov, budget, subject);
      rows.Add(AnnualRow(subject.label, months, locale));
      for (std::size_t i = 0; subject.part == Part::kWholeCategory && i < months.size(); ++i) {
        total.at(i) += months.at(i);
      }
    });
    rows.Add(AnnualRow(std::string(group.budget_total_label), total, locale));
  }
  rows.Close();
}

}  // namespace vetlo
