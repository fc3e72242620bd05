#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "vetlo/cashflow/flow.h"
#include "vetlo/platform/arrays.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// What a category routine is asked for, and where its rows go.
struct CategoryRequest {
  Database& dbDov;
  Date dtmFromDate;
  Date dtmToDate;
  AmountRows& rows;
  ChartOrReport lngChartOrReportType;

  [[nodiscard]] bool ForReport() const { return lngChartOrReportType == ChartOrReport::kReport; }
};

// The words of a direction.
struct FlowWords {
  Flow flow;
  std::int32_t own_category_type;    // passed through first
  std::int32_t other_category_type;  // then this: records booked to the other kind of category
  std::string_view heading;
  std::string_view unassigned_label;
  std::string_view rest_label;
  std::string_view total_label;
};

inline constexpr FlowWords kIncomeWords = {
    Flow::kIncoming,       kIncomeCategory,    kExpenseCategory, "Income",
    "Income - Unassigned", "All Other Income", "Total Income"};
inline constexpr FlowWords kExpensesWords = {
    Flow::kOutgoing,         kExpenseCategory,     kIncomeCategory, "Expenses",
    "Expenses - Unassigned", "All Other Expenses", "Total Expenses"};

// How the amounts of a section are stored.
enum class Stored { kAsTheyAre, kNegatedInCharts };

// Runs a piece unless it is marked as done, and marks it.
template <typename Piece>
void Once(bool& done, const Piece& piece) {
  if (!done) {
    piece();
    done = true;
  }
}

// One section of a category report while its rows are added: a direction's total, what of it has
// been listed, and the marks by which a routine knows what stands already. The routines differ in
// when they set and clear the marks and in what they add then; that is theirs. Headings and blank
// lines are rows of reports alone, but their marks change for charts too.
class CategorySection {
 public:
  CategorySection(const CategoryRequest& request, Stored stored)
      : request_(request), stored_(stored) {}

  bool heading = false;  // the heading is dealt with
  bool spacer = false;   // a blank line is dealt with

  void SetTotal(Currency total) { total_ = total; }
  [[nodiscard]] Currency Total() const { return total_; }
  // The categories and the unassigned records listed so far; subcategories are in theirs.
  [[nodiscard]] Currency Sum() const { return sum_; }
  [[nodiscard]] bool IsComplete() const { return sum_ >= total_; }

  // True for an amount that is large enough to stand by itself.
  [[nodiscard]] bool Passes(Currency amount) const;

  // Both add nothing to a chart.
  void AddHeading(std::string_view label);
  void AddSpacer();
  void AddRow(Currency amount, std::string label);
  // In a report alone.
  void AddTotal(std::string_view label);

  // Lists the categories of one type by name, each that passes after `prepare` has run, in a report
  // with its subcategories.
  void ListCategories(Flow flow, std::int32_t category_type, const std::function<void()>& prepare);
  // Lists the records without a category, where they pass.
  void ListUnassigned(const FlowWords& words, const std::function<void()>& prepare);
  // Lists what is left of the total, where anything is.
  void ListRest(std::string_view label, const std::function<void()>& prepare);

 private:
  void ListParts(Flow flow, std::int32_t category);

  const CategoryRequest& request_;
  Stored stored_;
  Currency total_;
  Currency sum_;
};

}  // namespace vetlo
