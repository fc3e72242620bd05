#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "vetlo/store/database.h"

namespace vetlo {

// The walk that all tables of categories share.

// "Income Category" or "Expense Category".
std::string_view HeadingOfCategories(std::int32_t category_type);

// The categories of one type, by name.
void ForEachCategory(Database& dbDov, std::int32_t category_type,
                     const std::function<void(Recordset&)>& visit);

// A subcategory, or what of a category is on none of them: the number is the category's then.
struct CategoryPart {
  std::int32_t number = 0;
  bool unassigned = false;
  std::string label;  // four blanks in
};

// The subcategories of a category, by name, and last, where there is any, what is on none.
void ForEachPart(Database& dbDov, std::int32_t category,
                 const std::function<void(const CategoryPart&)>& visit);

}  // namespace vetlo
