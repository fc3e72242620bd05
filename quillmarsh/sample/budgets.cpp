#include "quillmarsh/sample/budgets.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "quillmarsh/sample/ledger.h"

namespace quillmarsh {
namespace {

using vetlo::StoreBuilder;
using vetlo::Variant;

constexpr std::int32_t kMonthsAYear = 12;
constexpr std::int64_t kThousand = 1000;
constexpr std::int64_t kStepCents = 500;
constexpr std::string_view kMonthColumns[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

using Year = std::array<std::int64_t, kMonthsAYear>;
using Expectations = std::map<CategoryKey, Year>;

struct BudgetRow {
  std::string_view name;
  std::int32_t attr;
  std::int64_t percent;  // of what is expected
};

constexpr BudgetRow kBudgets[] = {{"Last Year's Budget", 0, 93}, {"Family Budget", 1, 100}};

std::int32_t TypeOf(const CategoryKey& key) {
  const auto* const row = std::ranges::find(
      kCategories, key.category, [](const CategoryRow& r) { return CategoryOf(r.path).category; });
  return row->type;
}

// Nobody plans for what comes in under an expense category, or goes out under one of income.
bool IsPlanned(const Rhythm& rhythm) {
  switch (rhythm.action) {
    case Action::kExpense:
      return TypeOf(rhythm.category) == kExpenseCategory;
    case Action::kIncome:
    case Action::kSalary:
    case Action::kSplitIncome:
      return TypeOf(rhythm.category) == kIncomeCategory;
    default:
      return false;
  }
}

// The amounts of the last twelve months of the history, each under its month of the calendar.
void ExpectRhythms(const Pace& pace, Expectations& expected) {
  const auto last = pace.Months().end();
  for (std::size_t i = 0; i < Rhythms().size(); ++i) {
    const Rhythm& rhythm = Rhythms()[i];
    if (!IsPlanned(rhythm)) {
      continue;
    }
    const std::int64_t scale = rhythm.action == Action::kSalary ? pace.PayScale() : kThousand;
    for (auto month = last - kMonthsAYear; month != last; ++month) {
      expected[rhythm.category][static_cast<std::size_t>(month->month) - 1] +=
          pace.Occurrences(i, month->index) * rhythm.amount *
          SeasonPercent(rhythm.season, month->month) / 100 * scale / kThousand;
    }
  }
}

void ExpectEverydayLife(const Pace& pace, Expectations& expected) {
  std::int64_t weights = 0;
  for (const Everyday& everyday : EverydayLife()) {
    weights += everyday.weight * RecordsOf(everyday.kind);
  }
  const std::int64_t records = pace.EverydayRecords() / std::ssize(pace.Months());
  for (const Everyday& everyday : EverydayLife()) {
    if (everyday.category.category == 0) {
      continue;
    }
    const std::int64_t usual = everyday.amount * pace.EverydayScale() / kThousand * records *
                               everyday.weight / std::max<std::int64_t>(1, weights);
    for (std::int32_t month = 1; month <= kMonthsAYear; ++month) {
      expected[everyday.category][static_cast<std::size_t>(month) - 1] +=
          usual * SeasonPercent(everyday.season, month) / 100;
    }
  }
}

void WriteLine(StoreBuilder& store, std::int32_t budget, std::int64_t percent,
               const CategoryKey& key, const Year& year) {
  const bool of_category = key.subcategory == 0;
  StoreBuilder::Values values = {{"BudgetNumber", budget}};
  values.emplace_back(of_category ? "CategoryNumber" : "SubCategoryNumber",
                      of_category ? key.category : key.subcategory);
  for (std::size_t month = 0; month < year.size(); ++month) {
    const std::int64_t cents = (year[month] * percent / 100 + kStepCents - 1) / kStepCents;
    values.emplace_back(kMonthColumns[month], cents == 0 ? Variant(vetlo::Null{})
                                                         : Variant(FromCents(cents * kStepCents)));
  }
  store.Insert(of_category ? "CategoryBudgetInfo" : "SubCategoryBudgetInfo", values);
}

}  // namespace

void WriteBudgets(StoreBuilder& store, const Pace& pace) {
  Expectations expected;
  ExpectRhythms(pace, expected);
  ExpectEverydayLife(pace, expected);
  for (std::int32_t number = 0; const BudgetRow& budget : kBudgets) {
    ++number;
    store.Insert("Budget", {{"BudgetNumber", number},
                            {"BudgetName", std::string(budget.name)},
                            {"BudgetAttr", budget.attr}});
    for (const auto& [key, year] : expected) {
      WriteLine(store, number, budget.percent, key, year);
    }
  }
}

}  // namespace quillmarsh
