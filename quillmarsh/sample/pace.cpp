#include "quillmarsh/sample/pace.h"

#include <algorithm>
#include <cmath>

namespace quillmarsh {
namespace {

constexpr std::int64_t kMonthsAYear = 12;
constexpr std::int64_t kThousand = 1000;
constexpr std::int64_t kWholeShare = 10000;

// The share of all records that the rhythms may take, in percent.
constexpr std::int64_t kRoomForRhythms = 60;
// Everyday records a month for which the amounts of the table are meant.
constexpr std::int64_t kUsualEveryday = 110;
constexpr std::int64_t kSmallestScale = 100;
// What the household earns, in percent of what it spends.
constexpr std::int64_t kThrift = 108;
// What prices rise in a month, in hundredths of a thousandth of today's.
constexpr std::int64_t kMonthlyRise = 200;

std::int64_t CeilingOf(std::int64_t numerator, std::int64_t denominator) {
  return (numerator + denominator - 1) / denominator;
}

std::int64_t RootOf(std::int64_t value) {
  return static_cast<std::int64_t>(std::sqrt(static_cast<double>(value)));
}

// The sum of `value_of(entry)` over a table.
template <typename Table, typename ValueOf>
std::int64_t SumOf(const Table& table, ValueOf value_of) {
  std::int64_t sum = 0;
  for (const auto& entry : table) {
    sum += value_of(entry);
  }
  return sum;
}

// What one occurrence takes from the household, in cents: less than 0 for what it brings. What
// comes back in the end, and what only changes places, is nothing.
std::int64_t CostOf(const Rhythm& rhythm) {
  switch (rhythm.action) {
    case Action::kExpense:
    case Action::kRepay:
    case Action::kRepayOrRenew:
      return rhythm.amount;
    case Action::kPayInterest:
      return -AccountOf(rhythm.other).opening_cents * rhythm.amount / kWholeShare;
    case Action::kTransfer:
      return rhythm.account == kEverydayChecking ? rhythm.amount : 0;
    case Action::kIncome:
    case Action::kSplitIncome:
      return -rhythm.amount;
    default:
      return 0;
  }
}

std::int64_t CostOf(const Everyday& everyday) {
  switch (everyday.kind) {
    case EverydayKind::kIncome:
      return -everyday.amount;
    case EverydayKind::kTrade:
      return 0;
    default:
      return everyday.amount;
  }
}

// The mean cost of an everyday record in the amounts of the table.
std::int64_t MeanEverydayCost() {
  const auto cost = SumOf(EverydayLife(), [](const Everyday& e) { return e.weight * CostOf(e); });
  const auto records =
      SumOf(EverydayLife(), [](const Everyday& e) { return e.weight * RecordsOf(e.kind); });
  return cost / records;
}

}  // namespace

Pace::Pace(const HouseholdPlan& plan, std::int64_t scheduled_patterns)
    : records_(plan.transactions - scheduled_patterns) {
  CountMonths(plan);
  CountOccurrences(static_cast<std::int64_t>(FirstPurchases().size()));
  SetPay();
}

void Pace::CountMonths(const HouseholdPlan& plan) {
  const vetlo::CalendarDay today = vetlo::CalendarDayOf(plan.today);
  const std::int64_t count = plan.years * kMonthsAYear;
  for (std::int64_t i = 0; i < count; ++i) {
    const std::int64_t month = today.month - (count - 1) + i;
    const vetlo::Date first = vetlo::FirstOfMonth(today.year, month);
    const vetlo::Date next = vetlo::FirstOfMonth(today.year, month + 1);
    months_.push_back({static_cast<std::int32_t>(i), vetlo::CalendarDayOf(first).month,
                       static_cast<std::int32_t>(first.days),
                       static_cast<std::int32_t>(next.days) - 1});
  }
  months_.back().last_day = static_cast<std::int32_t>(vetlo::DayOf(plan.today).days);
}

void Pace::CountOccurrences(std::int64_t first_records) {
  const auto months = static_cast<std::int64_t>(months_.size());
  const std::int64_t room = (records_ - first_records) * kRoomForRhythms / 100;
  const std::int64_t wanted = SumOf(Rhythms(), [&](const Rhythm& rhythm) {
    return rhythm.yearly * months / kMonthsAYear * RecordsOf(rhythm.action);
  });
  const std::int64_t kept = std::min(room, wanted);
  everyday_records_ = records_ - first_records;
  for (const Rhythm& rhythm : Rhythms()) {
    const std::int64_t times = rhythm.yearly * months / kMonthsAYear * kept / wanted;
    times_.push_back(std::max<std::int64_t>(1, times));
    everyday_records_ -= times_.back() * RecordsOf(rhythm.action);
  }
  everyday_records_ = std::max<std::int64_t>(0, everyday_records_);
  const std::int64_t a_month = std::max(kUsualEveryday, everyday_records_ / months);
  everyday_scale_ =
      std::max(kSmallestScale, RootOf(kThousand * kThousand * kUsualEveryday / a_month));
}

void Pace::SetPay() {
  std::int64_t cost = everyday_records_ * MeanEverydayCost() * everyday_scale_ / kThousand;
  std::int64_t pay = 0;
  std::int64_t largest_pay = 0;
  for (std::size_t i = 0; i < times_.size(); ++i) {
    const Rhythm& rhythm = Rhythms()[i];
    cost += times_[i] * CostOf(rhythm);
    if (rhythm.action == Action::kSalary) {
      pay += times_[i] * rhythm.amount;
      largest_pay = std::max<std::int64_t>(largest_pay, rhythm.amount);
    }
  }
  pay_scale_ = std::max<std::int64_t>(1, cost * kThrift / 100 * kThousand / pay);
  reserve_cents_ = std::max(cost / static_cast<std::int64_t>(months_.size()),
                            largest_pay * pay_scale_ / kThousand);
}

std::int64_t Pace::ShiftOf(std::size_t rhythm) const {
  const Rhythm& r = Rhythms()[rhythm];
  const auto months = static_cast<std::int64_t>(months_.size());
  if (r.yearly == 0) {
    return months * r.anchor / 100;
  }
  if (times_[rhythm] < r.yearly * months / kMonthsAYear) {
    // Slowed down: no month is the right one, so the rhythms begin one after another.
    const auto place = static_cast<std::int64_t>(rhythm);
    return months * place / (times_[rhythm] * static_cast<std::int64_t>(times_.size()));
  }
  const std::int64_t period = std::max<std::int64_t>(1, kMonthsAYear / r.yearly);
  return (r.anchor - months_.front().month + kMonthsAYear) % period;
}

std::int64_t Pace::Occurrences(std::size_t rhythm, std::int32_t month) const {
  const std::int64_t since = month - ShiftOf(rhythm);
  const auto months = static_cast<std::int64_t>(months_.size());
  const auto before = [&](std::int64_t count) { return CeilingOf(count * times_[rhythm], months); };
  return since < 0 ? 0 : before(since + 1) - before(since);
}

std::int64_t Pace::RecordsUpTo(const Month& month) const {
  return records_ * (month.last_day - FirstDay() + 1) / (LastDay() - FirstDay() + 1);
}

std::int64_t Pace::PriceLevel(std::int32_t month) const {
  const std::int64_t ago = static_cast<std::int64_t>(months_.size()) - 1 - month;
  return kThousand * kThousand * 100 / (kThousand * 100 + kMonthlyRise * ago);
}

}  // namespace quillmarsh
