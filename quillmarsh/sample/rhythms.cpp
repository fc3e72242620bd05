#include "quillmarsh/sample/rhythms.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace quillmarsh {
namespace {

constexpr Purse kMostlyCard = {kMainCard, kMainCard, kMainCard, kEverydayChecking};
constexpr Purse kMostlyCash = {kWallet, kWallet, kWallet, kMainCard};
constexpr Purse kByDebit = {kEverydayChecking, kEverydayChecking, kMainCard, kWallet};
constexpr Purse kAtTheShop = {kStoreCard, kStoreCard, kMainCard, kVouchers};
constexpr Purse kCashOnly = {kWallet, kWallet, kWallet, kWallet};

constexpr CategoryKey kOwnAccounts = CategoryOf("Transfers:Own Accounts");
constexpr CategoryKey kDebts = CategoryOf("Transfers:Debts");
constexpr CategoryKey kCustody = CategoryOf("Bank Fees:Custody");
constexpr CategoryKey kDividends = CategoryOf("Investment Income:Dividends");

// What comes in.
constexpr Rhythm kReceipts[] = {
    {Action::kSalary, 24, 1, 1, kEverydayChecking, 0, CategoryOf("Salary:Nora"),
     TradeOf("employer of Nora"), 195000, 2},
    {Action::kSalary, 24, 2, 1, kEverydayChecking, 0, CategoryOf("Salary:Elias"),
     TradeOf("employer of Elias"), 142000, 3},
    {Action::kSplitIncome, 1, 15, 12, kEverydayChecking, 0, CategoryOf("Bonus:Year-End"),
     TradeOf("employer of Nora"), 140000, 20},
    {Action::kIncome, 12, 3, 1, kEverydayChecking, 0, CategoryOf("Rent Income"), TradeOf("tenant"),
     24000},
    {Action::kIncome, 3, 20, 2, kEverydayChecking, 0, CategoryOf("Gifts Received"),
     TradeOf("relative"), 12000, 50},
    {Action::kIncome, 1, 22, 12, kVouchers, 0, CategoryOf("Gifts Received"), TradeOf("relative"),
     7500, 30},
    {Action::kIncome, 1, 24, 6, kEverydayChecking, 0, CategoryOf("Tax Refund"),
     TradeOf("tax office"), 38000, 40},
    {Action::kIncome, 5, 18, 2, kEverydayChecking, 0,
     CategoryOf("Reimbursed Expenses:Business Trips"), TradeOf("employer of Nora"), 16000, 30},
    // Goods that went back to the shop: money that comes in under an expense category.
    {Action::kIncome, 3, 23, 1, kStoreCard, 0, CategoryOf("Clothing:Adults"), TradeOf("fashion"),
     6800, 40},
    {Action::kEarnInterest, 12, 28, 1, kRainyDaySavings, 0, CategoryOf("Interest"),
     TradeOf("savings bank"), 15},
    {Action::kEarnInterest, 1, 28, 11, kYearDeposit, 0, CategoryOf("Interest"),
     TradeOf("savings bank"), 260},
    {Action::kEarnInterest, 4, 28, 3, kRetirementCash, 0, CategoryOf("Interest"), TradeOf("broker"),
     30},
};

// What goes out.
constexpr Rhythm kBills[] = {
    {Action::kPayInterest, 12, 4, 1, kBillsChecking, kMortgage,
     CategoryOf("Housing:Mortgage Interest"), TradeOf("home loan"), 29},
    // Without a payee: what is owed on these loans is owed to nobody by name.
    {Action::kRepay, 12, 4, 1, kBillsChecking, kMortgage, kDebts, kNobody, 43000},
    {Action::kPayInterest, 12, 6, 1, kBillsChecking, kCarLoan, CategoryOf("Car:Loan Interest"),
     TradeOf("bank"), 45},
    {Action::kRepayOrRenew, 12, 6, 1, kBillsChecking, kCarLoan, kDebts, kNobody, 24000},
    {Action::kExpense, 3, 17, 2, kEverydayChecking, 0, CategoryOf("Housing:Repairs"),
     TradeOf("craftsman"), 34000, 60},
    {Action::kExpense, 2, 15, 3, kBillsChecking, 0, CategoryOf("Housing:Property Tax"),
     TradeOf("authority"), 96000},
    {Action::kExpense, 12, 9, 1, kBillsChecking, 0, CategoryOf("Utilities:Electricity"),
     TradeOf("electricity"), 8800, 9, Season::kCooling},
    {Action::kExpense, 12, 11, 1, kBillsChecking, 0, CategoryOf("Utilities:Gas"), TradeOf("gas"),
     7900, 10, Season::kHeating},
    {Action::kExpense, 6, 13, 1, kBillsChecking, 0, CategoryOf("Utilities:Water"), TradeOf("water"),
     6100, 12, Season::kGarden},
    {Action::kExpense, 12, 8, 1, kBillsChecking, 0, CategoryOf("Utilities:Internet"),
     TradeOf("internet"), 4290},
    {Action::kExpense, 12, 14, 1, kBillsChecking, 0, CategoryOf("Utilities:Phone"),
     TradeOf("phone"), 5450, 15},
    {Action::kExpense, 1, 10, 5, kBillsChecking, 0, CategoryOf("Insurance:Home"),
     TradeOf("insurer"), 64000, 2},
    {Action::kExpense, 2, 10, 2, kBillsChecking, 0, CategoryOf("Insurance:Car"), TradeOf("insurer"),
     41500, 3},
    {Action::kExpense, 12, 5, 1, kBillsChecking, 0, CategoryOf("Insurance:Health"),
     TradeOf("health insurer"), 21800},
    {Action::kExpense, 4, 12, 1, kBillsChecking, 0, CategoryOf("Insurance:Life"),
     TradeOf("insurer"), 13200},
    {Action::kExpense, 2, 21, 4, kMainCard, 0, CategoryOf("Car:Service"), TradeOf("garage"), 31000,
     45},
    {Action::kExpense, 1, 19, 7, kBillsChecking, 0, CategoryOf("Car:Registration"),
     TradeOf("authority"), 12400},
    {Action::kExpense, 2, 3, 3, kEverydayChecking, 0, CategoryOf("School:Tuition"),
     TradeOf("school"), 115000},
    {Action::kExpense, 12, 7, 1, kEverydayChecking, 0, CategoryOf("School:Lunches"),
     TradeOf("school"), 6400, 10},
    {Action::kExpense, 12, 16, 1, kEverydayChecking, 0, CategoryOf("School:Music Lessons"),
     TradeOf("music school"), 8200},
    {Action::kExpense, 12, 12, 1, kMainCard, 0, CategoryOf("Subscriptions:Streaming"),
     TradeOf("streaming"), 1399},
    {Action::kExpense, 12, 2, 1, kMainCard, 0, CategoryOf("Subscriptions:Newspaper"),
     TradeOf("newspaper"), 950},
    {Action::kExpense, 12, 5, 1, kMainCard, 0, CategoryOf("Subscriptions:Gym"), TradeOf("gym"),
     3900},
    {Action::kExpense, 4, 19, 3, kEverydayChecking, 0, CategoryOf("Donations"), TradeOf("charity"),
     7500, 30},
    {Action::kExpense, 1, 15, 4, kEverydayChecking, 0, CategoryOf("Income Tax"),
     TradeOf("tax office"), 145000, 25},
    {Action::kExpense, 2, 18, 1, kMainCard, 0, CategoryOf("Travel:Lodging"), TradeOf("lodging"),
     89000, 30},
    {Action::kExpense, 1, 11, 6, kMainCard, 0, CategoryOf("Travel:Flights"), TradeOf("airline"),
     126000, 20},
    {Action::kExpense, 6, 18, 2, kMainCard, 0, CategoryOf("Gifts Given"), TradeOf("gift shop"),
     5200, 50, Season::kFestive},
    {Action::kExpense, 2, 22, 5, kEverydayChecking, 0, CategoryOf("Health:Dentist"),
     TradeOf("dentist"), 16500, 50},
    // The bank takes it without being named.
    {Action::kExpense, 12, 27, 1, kEverydayChecking, 0, CategoryOf("Bank Fees:Account"), kNobody,
     650},
    {Action::kExpense, 6, 9, 1, kMainCard, 0, CategoryOf("Reimbursed Expenses:Business Trips"),
     TradeOf("lodging"), 14000, 35},
    // Part of a rent paid back: money that goes out under an income category.
    {Action::kExpense, 1, 26, 8, kEverydayChecking, 0, CategoryOf("Rent Income"), TradeOf("tenant"),
     9500, 10},
    // A fee that was filed under the transfer that it belonged to.
    {Action::kExpense, 1, 25, 10, kEverydayChecking, 0, kOwnAccounts, TradeOf("bank"), 2500},
    {Action::kVoidedExpense, 1, 13, 9, kMainCard, 0, CategoryOf("Leisure:Sports"),
     TradeOf("sports"), 8900},
};

// What only changes places.
constexpr Rhythm kMoves[] = {
    {Action::kFillUp, 12, 2, 1, kBillsChecking, kEverydayChecking, kOwnAccounts, kNobody, 250000},
    {Action::kFillUp, 36, 4, 1, kWallet, kEverydayChecking, kOwnAccounts, kNobody, 26000},
    {Action::kPayCard, 12, 25, 1, kEverydayChecking, kMainCard, kOwnAccounts, kNobody, 9000},
    {Action::kPayCard, 12, 20, 1, kEverydayChecking, kStoreCard, kOwnAccounts, kNobody, 10000},
    {Action::kSweep, 12, 27, 1, kEverydayChecking, kRainyDaySavings, kOwnAccounts, kNobody},
    {Action::kTransfer, 12, 3, 1, kEverydayChecking, kRetirementCash, kOwnAccounts, kNobody, 36000},
    {Action::kTransfer, 2, 16, 6, kRainyDaySavings, kYearDeposit, kOwnAccounts, kNobody, 50000},
    {Action::kLend, 5, 14, 1, kEverydayChecking, kLentToFriends, kDebts, TradeOf("friend"), 32000,
     60},
    {Action::kLend, 2, 17, 5, kEverydayChecking, kFamilyAdvances, kDebts, TradeOf("relative"),
     22000, 40},
    {Action::kTransfer, 0, 21, 70, kLentToFriends, kFamilyAdvances, kDebts, TradeOf("friend"),
     4000},
    {Action::kBorrow, 4, 24, 2, kEverydayChecking, kPrivateLoans, kDebts, TradeOf("relative"),
     90000, 40},
    {Action::kGainValue, 1, 30, 6, kHouse, 0, kNoCategory, kNobody, 190},
    {Action::kLoseValue, 1, 30, 12, kCar, 0, kNoCategory, kNobody, 1100},
    {Action::kLoseValue, 3, 29, 2, kWallet, 0, kNoCategory, kNobody, 400},
};

// What happens to the securities.
constexpr Rhythm kInvestments[] = {
    {Action::kInvestCash, 12, 6, 1, kRetirement, kRetirementCash, kNoCategory, TradeOf("broker"), 0,
     0, Season::kNone, kBalancedFund},
    {Action::kTrade, 10, 18, 1, kBrokerage, kBrokerageCash, kNoCategory, TradeOf("broker")},
    {Action::kSellHalf, 0, 12, 35, kBrokerage, kBrokerageCash, kNoCategory, TradeOf("broker"), 0, 0,
     Season::kNone, kCorvaneSystems},
    // Nobody said where the rest should go, so it stayed with the broker.
    {Action::kSellOut, 0, 8, 60, kBrokerage, kNoAccount, kNoCategory, TradeOf("broker"), 0, 0,
     Season::kNone, kCorvaneSystems},
    {Action::kDividend, 4, 16, 2, kBrokerage, kBrokerageCash, kDividends, kNobody, 75, 5,
     Season::kNone, kArdenwickRail},
    {Action::kDividend, 2, 20, 5, kBrokerage, kNoAccount, kDividends, kNobody, 120, 5,
     Season::kNone, kBluecairnFoods},
    {Action::kHoldingInterest, 2, 30, 6, kBrokerage, kBrokerageCash,
     CategoryOf("Investment Income:Bond Interest"), kNobody, 200, 0, Season::kNone, kDunmereBond},
    {Action::kCapitalGain, 1, 19, 12, kBrokerage, kBrokerageCash,
     CategoryOf("Investment Income:Capital Gains"), kNobody, 210, 20, Season::kNone, kGrowthFund},
    {Action::kCapitalGain, 1, 19, 12, kRetirement, kRetirementCash, kNoCategory, kNobody, 150, 20,
     Season::kNone, kBalancedFund},
    {Action::kHoldingCost, 2, 22, 1, kBrokerage, kBrokerageCash, kCustody, TradeOf("broker"), 25, 0,
     Season::kNone, kGrowthFund},
    {Action::kHoldingCost, 1, 22, 3, kBrokerage, kNoAccount, kCustody, TradeOf("broker"), 15, 0,
     Season::kNone, kBluecairnFoods},
    {Action::kReceiveUnits, 1, 31, 3, kBrokerage, 0, kNoCategory, TradeOf("employer of Nora"), 600,
     0, Season::kNone, kHaldenWorks},
    {Action::kGiveUnitsAway, 1, 5, 12, kBrokerage, 0, kNoCategory, TradeOf("charity"), 100, 0,
     Season::kNone, kHaldenWorks},
};

constexpr auto kRhythms = [] {
  std::array<Rhythm,
             std::size(kReceipts) + std::size(kBills) + std::size(kMoves) + std::size(kInvestments)>
      all{};
  auto* end = std::ranges::copy(kReceipts, all.begin()).out;
  end = std::ranges::copy(kBills, end).out;
  end = std::ranges::copy(kMoves, end).out;
  std::ranges::copy(kInvestments, end);
  return all;
}();

using enum EverydayKind;

constexpr Everyday kEveryday[] = {
    {kExpense, 260, kMostlyCard, CategoryOf("Food:Groceries"), TradeOf("supermarket"), 5400},
    {kExpense, 110, kMostlyCash, CategoryOf("Food:Bakery"), TradeOf("bakery"), 680},
    {kExpense, 100, kMostlyCard, CategoryOf("Food:Eating Out"), TradeOf("restaurant"), 3600},
    {kExpense, 110, kMostlyCash, CategoryOf("Food:Coffee"), TradeOf("cafe"), 470},
    {kExpense, 25, kMostlyCash, CategoryOf("Food"), kNobody, 1650},
    {kExpense, 60, kMostlyCard, CategoryOf("Car:Fuel"), TradeOf("fuel"), 4700},
    {kExpense, 60, kMostlyCash, CategoryOf("Transport:Public Transit"), TradeOf("transit"), 320},
    {kExpense, 12, kMostlyCash, CategoryOf("Transport:Taxi"), TradeOf("taxi"), 1850},
    {kExpense, 40, kMostlyCard, CategoryOf("Household:Cleaning"), TradeOf("supermarket"), 1900},
    {kExpense, 4, kMostlyCard, CategoryOf("Household:Furniture"), TradeOf("furniture"), 26000},
    {kExpense, 20, kByDebit, CategoryOf("Household:Garden"), TradeOf("hardware"), 3100,
     Season::kGarden},
    {kExpense, 30, kAtTheShop, CategoryOf("Clothing:Adults"), TradeOf("fashion"), 6200,
     Season::kFestive},
    {kExpense, 22, kAtTheShop, CategoryOf("Clothing:Children"), TradeOf("fashion"), 3400},
    {kExpense, 8, kAtTheShop, CategoryOf("Clothing"), TradeOf("fashion"), 2600},
    {kExpense, 30, kByDebit, CategoryOf("Health:Pharmacy"), TradeOf("pharmacy"), 1700},
    {kExpense, 10, kByDebit, CategoryOf("Health:Doctor"), TradeOf("doctor"), 4500},
    {kExpense, 20, kMostlyCard, CategoryOf("Leisure:Books"), TradeOf("books"), 2100,
     Season::kFestive},
    {kExpense, 20, kMostlyCash, CategoryOf("Leisure:Cinema"), TradeOf("cinema"), 2600},
    {kExpense, 10, kMostlyCard, CategoryOf("Leisure:Sports"), TradeOf("sports"), 4400},
    {kExpense, 20, kByDebit, CategoryOf("Pets"), TradeOf("pets"), 3300},
    {kExpense, 18, kMostlyCash, CategoryOf("Personal Care"), TradeOf("hairdresser"), 2900},
    {kExpense, 35, kCashOnly, CategoryOf("Pocket Money"), kNobody, 800},
    // Nobody remembers what these were for.
    {kExpense, 20, kByDebit, kNoCategory, TradeOf("supermarket"), 2300},
    {kExpense, 15, kCashOnly, kNoCategory, kNobody, 1200},
    {kIncome, 14, kByDebit, CategoryOf("Other Income:Used Goods"), kNobody, 2800},
    {kIncome, 5, kByDebit, kNoCategory, TradeOf("friend"), 1500},
    {kSplit, 12, kMostlyCard, kNoCategory, TradeOf("supermarket"), 9800},
    {kTrade, 9, {}, kNoCategory, TradeOf("broker")},
};

constexpr FirstPurchase kFirstPurchases[] = {
    {kBrokerage, kBrokerageCash, kArdenwickRail, 6000},
    {kBrokerage, kBrokerageCash, kBluecairnFoods, 2500},
    {kBrokerage, kBrokerageCash, kCorvaneSystems, 12000},
    {kBrokerage, kBrokerageCash, kDunmereBond, 4000},
    {kBrokerage, kBrokerageCash, kGrowthFund, 9525},
    {kRetirement, kRetirementCash, kBalancedFund, 25750},
    {kBrokerage, kNoAccount, kHaldenWorks, 1500},
};

using YearCourse = std::array<std::int64_t, 12>;

constexpr YearCourse kCourses[] = {
    {100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100},  // kNone
    {205, 190, 150, 95, 50, 30, 25, 25, 45, 90, 130, 165},         // kHeating
    {105, 100, 90, 80, 80, 110, 140, 140, 100, 80, 80, 95},        // kCooling
    {70, 80, 85, 90, 95, 90, 85, 80, 90, 100, 135, 200},           // kFestive
    {20, 30, 110, 200, 220, 160, 120, 90, 100, 90, 40, 20},        // kGarden
};

}  // namespace

std::int64_t SeasonPercent(Season season, std::int32_t month) {
  return kCourses[static_cast<std::size_t>(season)][static_cast<std::size_t>(month) - 1];
}

std::span<const Rhythm> Rhythms() { return kRhythms; }

std::int64_t RecordsOf(Action action) {
  return action == Action::kSplitIncome ? 1 + kLinesOfSplit : 1;
}

std::span<const Everyday> EverydayLife() { return kEveryday; }

std::int64_t RecordsOf(EverydayKind kind) { return kind == kSplit ? 1 + kLinesOfSplit : 1; }

std::span<const FirstPurchase> FirstPurchases() { return kFirstPurchases; }

}  // namespace quillmarsh
