#include "quillmarsh/sample/scheduled_payments.h"

#include <algorithm>

namespace quillmarsh {
namespace {

// PaymentCalendar.FrequencyType.
enum Frequency : std::int32_t {
  kOnlyOnce,
  kDaily,
  kWeekly,
  kEveryOtherWeek,
  kTwiceAMonth,
  kMonthly,
  kEveryOtherMonth,
  kEveryThreeMonths,
  kTwiceAYear,
  kYearly,
  kEveryOtherYear,
  kEveryFourWeeks,
  kEveryFourMonths,
};

struct ScheduledPayment {
  Frequency frequency;
  std::int32_t count;       // of days, weeks, months or years between two payments
  std::int32_t days_ahead;  // of today; one that was due stays within the current month
  std::int32_t type;
  std::int32_t account;
  std::int32_t other = kNoAccount;
  CategoryKey category = {};
  Trade trade = {};
  std::int32_t cents = 0;
  std::int32_t item = kNoItem;
  std::int32_t units_hundredths = 0;
};

using vetlo::kExpense;
using vetlo::kIncome;

constexpr ScheduledPayment kScheduledPayments[] = {
    {kDaily, 1, 1, kExpense, kWallet, 0, CategoryOf("School:Lunches"), TradeOf("school"), 380},
    {kMonthly, 1, -3, kExpense, kBillsChecking, 0, CategoryOf("Utilities:Phone"), TradeOf("phone"),
     5450},
    {kWeekly, 1, 2, kExpense, kWallet, 0, CategoryOf("Pocket Money"), kNobody, 1000},
    {kTwiceAMonth, 1, 3, kIncome, kEverydayChecking, 0, CategoryOf("Salary:Nora"),
     TradeOf("employer of Nora"), 195000},
    {kOnlyOnce, 1, 4, kExpense, kMainCard, 0, CategoryOf("Household:Furniture"),
     TradeOf("furniture"), 64900},
    {kDaily, 3, 4, kExpense, kWallet, 0, CategoryOf("Pets"), TradeOf("pets"), 650},
    {kMonthly, 1, 5, kExpense, kBillsChecking, 0, CategoryOf("Utilities:Internet"),
     TradeOf("internet"), 4290},
    {kMonthly, 1, 6, vetlo::kTransferOut, kBillsChecking, kMortgage, CategoryOf("Transfers:Debts"),
     kNobody, 43000},
    {kMonthly, 1, 8, vetlo::kBuy, kRetirement, kRetirementCash, kNoCategory, TradeOf("broker"),
     36000, kBalancedFund, 1200},
    {kMonthly, 1, 9, kIncome, kEverydayChecking, 0, CategoryOf("Rent Income"), TradeOf("tenant"),
     24000},
    {kEveryOtherWeek, 1, 10, kExpense, kEverydayChecking, 0, CategoryOf("Personal Care"),
     TradeOf("hairdresser"), 2900},
    {kWeekly, 6, 17, kExpense, kEverydayChecking, 0, CategoryOf("Health:Doctor"), TradeOf("doctor"),
     4500},
    {kEveryFourWeeks, 1, 19, kExpense, kMainCard, 0, CategoryOf("Transport:Public Transit"),
     TradeOf("transit"), 6600},
    {kEveryOtherMonth, 1, 26, kExpense, kBillsChecking, 0, CategoryOf("Utilities:Water"),
     TradeOf("water"), 6100},
    {kEveryThreeMonths, 1, 38, vetlo::kDividend, kBrokerage, kBrokerageCash,
     CategoryOf("Investment Income:Dividends"), kNobody, 5200, kArdenwickRail},
    {kMonthly, 5, 55, kExpense, kEverydayChecking, 0, CategoryOf("Housing:Repairs"),
     TradeOf("craftsman"), 18000},
    {kEveryFourMonths, 1, 64, kExpense, kBillsChecking, 0, CategoryOf("Insurance:Life"),
     TradeOf("insurer"), 13200},
    {kTwiceAYear, 1, 90, kExpense, kBillsChecking, 0, CategoryOf("Insurance:Car"),
     TradeOf("insurer"), 41500},
    {kYearly, 1, 120, kExpense, kBillsChecking, 0, CategoryOf("Insurance:Home"), TradeOf("insurer"),
     64000},
    {kYearly, 3, 200, kExpense, kMainCard, 0, CategoryOf("Car:Service"), TradeOf("garage"), 52000},
    {kEveryOtherYear, 1, 270, kExpense, kBillsChecking, 0, CategoryOf("Car:Registration"),
     TradeOf("authority"), 24800},
};

std::int32_t DueDay(const ScheduledPayment& payment, std::int32_t today) {
  const vetlo::CalendarDay day = vetlo::CalendarDayOf(vetlo::Date{static_cast<double>(today)});
  return std::max(today + payment.days_ahead, today - day.day + 1);
}

Entry PatternOf(const ScheduledPayment& payment, std::int32_t today) {
  return {.record_type = vetlo::kScheduledPattern,
          .type = payment.type,
          .day = DueDay(payment, today),
          .account = payment.account,
          .other = payment.other,
          .category = payment.category,
          .payee = payment.trade.first,
          .item = payment.item,
          .units_hundredths = payment.units_hundredths,
          .cents = payment.cents};
}

}  // namespace

std::int64_t ScheduledPaymentCount() { return std::ssize(kScheduledPayments); }

void WriteScheduledPayments(vetlo::StoreBuilder& store, Ledger& ledger, std::int32_t today) {
  for (const ScheduledPayment& payment : kScheduledPayments) {
    const std::int32_t number = ledger.Write(PatternOf(payment, today));
    store.Insert("PaymentCalendar", {{"TransactionRecordNumber", number},
                                     {"FrequencyType", std::int32_t{payment.frequency}},
                                     {"FrequencyExtInfo", payment.count}});
  }
}

}  // namespace quillmarsh
