#include "vetlo/cashflow/category_walk.h"

#include "vetlo/cashflow/flow.h"
#include "vetlo/platform/text.h"

namespace vetlo {
namespace {

constexpr std::string_view kIndent = "    ";

}  // namespace

std::string_view HeadingOfCategories(std::int32_t category_type) {
  return category_type == kIncomeCategory ? "Income Category" : "Expense Category";
}

void ForEachCategory(Database& dbDov, std::int32_t category_type,
                     const std::function<void(Recordset&)>& visit) {
  ForEachRowOf(
      dbDov,
      "SELECT * FROM Category WHERE CategoryType=" + Str(category_type) + " ORDER BY CategoryName",
      visit);
}

void ForEachPart(Database& dbDov, std::int32_t category,
                 const std::function<void(const CategoryPart&)>& visit) {
  ScopedRecordset rec(dbDov, "SELECT * FROM SubCategory WHERE CategoryNumber=" + Str(category) +
                                 " ORDER BY SubCategoryName");
  bool any = false;
  ForEachRow(*rec, [&](Recordset& row) {
    any = true;
    visit({LongField(row, "SubCategoryNumber"), false,
           std::string(kIndent) + TextField(row, "SubCategoryName")});
  });
  if (any) {
    visit({category, true, std::string(kIndent) + "Unassigned Subcategory"});
  }
  rec.Close();
}

}  // namespace vetlo
