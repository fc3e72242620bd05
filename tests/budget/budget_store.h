#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/small_store.h"
#include "vetlo/budget/budget_amounts.h"

namespace vetlo::testing {

inline constexpr std::int32_t kInForce =
    1;  // the number of the budget that these tests put in force

// What is budgeted for a month, by the month's number from 1; Null where nothing is.
using Budgeted = std::vector<std::pair<std::int32_t, Variant>>;

inline Budgeted EveryMonth(double amount) {
  Budgeted months;
  for (std::int32_t month = 1; month <= 12; ++month) {
    months.emplace_back(month, Money(amount));
  }
  return months;
}

inline void AddBudgetRow(SmallStore& store, std::string_view table, std::string_view key,
                         std::int32_t budget, std::int32_t number, const Budgeted& months) {
  StoreBuilder::Values values = {{"BudgetNumber", budget}, {key, number}};
  for (const auto& [month, amount] : months) {
    values.push_back({kMonthNames.at(static_cast<std::size_t>(month - 1)), amount});
  }
  store.Insert(table, values);
}

inline void BudgetCategory(SmallStore& store, std::int32_t category, const Budgeted& months,
                           std::int32_t budget = kInForce) {
  AddBudgetRow(store, "CategoryBudgetInfo", "CategoryNumber", budget, category, months);
}

inline void BudgetSubCategory(SmallStore& store, std::int32_t sub_category, const Budgeted& months,
                              std::int32_t budget = kInForce) {
  AddBudgetRow(store, "SubCategoryBudgetInfo", "SubCategoryNumber", budget, sub_category, months);
}

// The statement that adds up a month over the subcategories of a category.
inline std::string SumText(std::string_view month, const std::string& category,
                           const std::string& budget) {
  const std::string name(month);
  return "SELECT SUM(T1." + name + ") AS Total" + name +
         " FROM SubCategoryBudgetInfo AS T1,SubCategory AS T2 WHERE "
         "T1.SubCategoryNumber=T2.SubCategoryNumber AND T2.CategoryNumber= " +
         category + " AND T1.BudgetNumber= " + budget;
}

}  // namespace vetlo::testing
