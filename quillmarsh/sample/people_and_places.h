#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "vetlo/store/model.h"

namespace quillmarsh {

// Who and what the sample household deals with. A row's number in the store is its place in its
// table, counted from 1.

enum AccountNumber : std::int32_t {
  kNoAccount,
  kEverydayChecking,
  kBillsChecking,
  kRainyDaySavings,
  kYearDeposit,
  kWallet,
  kMainCard,
  kStoreCard,
  kHouse,
  kCar,
  kMortgage,
  kCarLoan,
  kPrivateLoans,
  kLentToFriends,
  kFamilyAdvances,
  kBrokerage,
  kRetirement,
  kBrokerageCash,
  kRetirementCash,
  kVouchers,
};

struct AccountRow {
  std::string_view name;
  std::int32_t type;
  std::int64_t opening_cents;  // of an account that was not opened with the first record
  std::string_view bank;       // an empty text is none
  std::string_view holders;
  std::string_view number;
};

inline constexpr std::string_view kBothHolders = "Nora & Elias Wendmoor";

inline constexpr AccountRow kAccounts[] = {
    {"Everyday Checking", vetlo::kCheckingAccount, 0, "Larkfield Bank", kBothHolders, "4410-2087"},
    {"Bills Checking", vetlo::kCheckingAccount, 60000, "Larkfield Bank", kBothHolders, "4410-2095"},
    {"Rainy Day Savings", vetlo::kSavingsAccount, 0, "Tarn Valley Savings", "Nora Wendmoor",
     "S-77120"},
    {"Year Deposit", vetlo::kTimeDeposit, 1000000, "Tarn Valley Savings", "Nora Wendmoor",
     "T-00318"},
    {"Wallet", vetlo::kCashAccount, 8500, "", "", ""},
    {"Copperleaf Card", vetlo::kCreditCard, -64235, "Larkfield Bank", "Elias Wendmoor",
     "**** 9042"},
    {"Hollin & Marsh Store Card", vetlo::kCreditCard, -4050, "", "Nora Wendmoor", "**** 3317"},
    {"House on Alder Lane", vetlo::kCommonAsset, 26500000, "", kBothHolders, ""},
    {"Family Car", vetlo::kCommonAsset, 1480000, "", "", ""},
    {"Mortgage", vetlo::kLiability, -18600000, "Wexcombe Home Loans", kBothHolders, "M-559-01"},
    {"Car Loan", vetlo::kLiability, -980000, "Larkfield Bank", "Elias Wendmoor", "L-20771"},
    {"Private Loans", vetlo::kLiability, 0, "", "", ""},
    {"Lent to Friends", vetlo::kCreditorsRights, 45000, "", "", ""},
    {"Family Advances", vetlo::kCreditorsRights, 0, "", "", ""},
    {"Brokerage", vetlo::kInvestmentAccount, 0, "Pinnock Securities", kBothHolders, "B-1180"},
    {"Retirement Plan", vetlo::kInvestmentAccount, 0, "Pinnock Securities", "Nora Wendmoor",
     "R-6604"},
    {"Brokerage Cash", vetlo::kCheckingAccount, 2400000, "Pinnock Securities", kBothHolders,
     "B-1180-C"},
    {"Retirement Cash", vetlo::kSavingsAccount, 650000, "Pinnock Securities", "Nora Wendmoor",
     "R-6604-C"},
    {"Gift Vouchers", vetlo::kOtherAccount, 5000, "", "", ""},
};
inline constexpr std::size_t kAccountCount = std::size(kAccounts);

// The account of that number.
constexpr const AccountRow& AccountOf(std::int32_t number) {
  return kAccounts[static_cast<std::size_t>(number) - 1];
}

struct AssociatedPair {
  std::int32_t account;
  std::int32_t cash_account;
};

// The first pair was entered a second time when the broker's contract was renewed.
inline constexpr AssociatedPair kAssociatedPairs[] = {
    {kBrokerage, kBrokerageCash}, {kRetirement, kRetirementCash}, {kBrokerage, kBrokerageCash}};

inline constexpr std::int32_t kIncomeCategory = 0;
inline constexpr std::int32_t kExpenseCategory = 1;
inline constexpr std::int32_t kThirdKindOfCategory = 2;
// CategoryAttr of a category that no total counts.
inline constexpr std::int32_t kNotInTotals = 9;

// A category, or with "Category:Name" one of its subcategories, which follow it. Categories and
// subcategories are numbered separately.
struct CategoryRow {
  std::string_view path;
  std::int32_t type = kExpenseCategory;
  std::int32_t attr = 0;
};

inline constexpr CategoryRow kCategories[] = {
    {"Salary", kIncomeCategory},
    {"Salary:Nora"},
    {"Salary:Elias"},
    {"Bonus", kIncomeCategory},
    {"Bonus:Year-End"},
    {"Bonus:Holiday Pay"},
    {"Interest", kIncomeCategory},
    {"Gifts Received", kIncomeCategory},
    {"Rent Income", kIncomeCategory},
    {"Investment Income", kIncomeCategory},
    {"Investment Income:Dividends"},
    {"Investment Income:Bond Interest"},
    {"Investment Income:Capital Gains"},
    {"Tax Refund", kIncomeCategory},
    {"Other Income", kIncomeCategory},
    {"Other Income:Used Goods"},
    {"Food"},
    {"Food:Groceries"},
    {"Food:Bakery"},
    {"Food:Eating Out"},
    {"Food:Coffee"},
    {"Housing"},
    {"Housing:Mortgage Interest"},
    {"Housing:Repairs"},
    {"Housing:Property Tax"},
    {"Utilities"},
    {"Utilities:Electricity"},
    {"Utilities:Gas"},
    {"Utilities:Water"},
    {"Utilities:Internet"},
    {"Utilities:Phone"},
    {"Insurance"},
    {"Insurance:Home"},
    {"Insurance:Car"},
    {"Insurance:Health"},
    {"Insurance:Life"},
    {"Car"},
    {"Car:Fuel"},
    {"Car:Service"},
    {"Car:Loan Interest"},
    {"Car:Registration"},
    {"Transport"},
    {"Transport:Public Transit"},
    {"Transport:Taxi"},
    {"Household"},
    {"Household:Cleaning"},
    {"Household:Furniture"},
    {"Household:Garden"},
    {"Clothing"},
    {"Clothing:Adults"},
    {"Clothing:Children"},
    {"Health"},
    {"Health:Pharmacy"},
    {"Health:Doctor"},
    {"Health:Dentist"},
    {"Leisure"},
    {"Leisure:Books"},
    {"Leisure:Cinema"},
    {"Leisure:Sports"},
    {"Travel"},
    {"Travel:Lodging"},
    {"Travel:Flights"},
    {"School"},
    {"School:Tuition"},
    {"School:Lunches"},
    {"School:Music Lessons"},
    {"Subscriptions"},
    {"Subscriptions:Streaming"},
    {"Subscriptions:Newspaper"},
    {"Subscriptions:Gym"},
    {"Pets"},
    {"Personal Care"},
    {"Pocket Money"},
    {"Gifts Given"},
    {"Donations"},
    {"Income Tax"},
    {"Bank Fees"},
    {"Bank Fees:Account"},
    {"Bank Fees:Custody"},
    {"Reimbursed Expenses", kExpenseCategory, kNotInTotals},
    {"Reimbursed Expenses:Business Trips"},
    {"Transfers", kThirdKindOfCategory},
    {"Transfers:Own Accounts"},
    {"Transfers:Debts"},
};

constexpr bool IsSubCategory(const CategoryRow& row) {
  return row.path.find(':') != std::string_view::npos;
}

// The numbers of a category and a subcategory, each 0 where there is none.
struct CategoryKey {
  std::int32_t category = 0;
  std::int32_t subcategory = 0;

  friend constexpr bool operator<(const CategoryKey& a, const CategoryKey& b) {
    return a.category != b.category ? a.category < b.category : a.subcategory < b.subcategory;
  }
};

inline constexpr CategoryKey kNoCategory = {};

// The numbers behind a path of kCategories; a path that is not in it does not compile.
constexpr CategoryKey CategoryOf(std::string_view path) {
  CategoryKey last;
  for (const CategoryRow& row : kCategories) {
    (IsSubCategory(row) ? last.subcategory : last.category) += 1;
    if (row.path == path) {
      return {last.category, IsSubCategory(row) ? last.subcategory : 0};
    }
  }
  throw std::out_of_range("no such category");
}

// Payees with the same trade stand together.
struct PayeeRow {
  std::string_view trade;
  std::string_view name;
};

inline constexpr PayeeRow kPayees[] = {
    {"employer of Nora", "Halden Works"},
    {"employer of Elias", "Sallow Bridge Clinic"},
    {"tenant", "Otis Farrow"},
    {"bank", "Larkfield Bank"},
    {"savings bank", "Tarn Valley Savings"},
    {"home loan", "Wexcombe Home Loans"},
    {"broker", "Pinnock Securities"},
    {"electricity", "Brindlewater Power"},
    {"gas", "Northmoor Gas"},
    {"water", "Alder Lane Waterworks"},
    {"internet", "Quickthread Net"},
    {"phone", "Owlcall Telephone"},
    {"insurer", "Stonewick Mutual"},
    {"insurer", "Harbour Oak Insurance"},
    {"health insurer", "Evenfield Health Fund"},
    {"authority", "Town of Marlby"},
    {"tax office", "Revenue Office Marlby"},
    {"school", "Marlby Grammar School"},
    {"music school", "Cadenza Corner"},
    {"streaming", "Flickerbox"},
    {"newspaper", "The Marlby Courier"},
    {"gym", "Kettlebarn Gym"},
    {"charity", "River Rescue Society"},
    {"charity", "Open Door Shelter"},
    {"lodging", "Hotel Seeblick"},
    {"lodging", "Gullhaven Cottages"},
    {"lodging", "Fir Ridge Lodge"},
    {"airline", "Wrenfield Air"},
    {"garage", "Pemberry Motors"},
    {"garage", "Tolliver Tyres"},
    {"craftsman", "Dunstan Roofing"},
    {"craftsman", "Bartle Plumbing"},
    {"craftsman", "Wick Electrical"},
    {"dentist", "Dr. Ottoline Pryce"},
    {"supermarket", "Greenbasket"},
    {"supermarket", "Hobley's Market"},
    {"supermarket", "Corner Pantry"},
    {"supermarket", "Millrace Foods"},
    {"supermarket", "Tidewell Stores"},
    {"bakery", "Crumb & Crust"},
    {"bakery", "Fennick Bakers"},
    {"restaurant", "The Copper Ladle"},
    {"restaurant", "Trattoria Vellano"},
    {"restaurant", "Saffron Yard"},
    {"restaurant", "Noodle House Ming-Tai"},
    {"cafe", "Café Morgenrot"},
    {"cafe", "Bean Street Nine"},
    {"fuel", "Redlane Fuel"},
    {"fuel", "Crossways Filling Station"},
    {"transit", "Marlby Tramways"},
    {"taxi", "Blue Lantern Cabs"},
    {"hardware", "Nailsworthy Tools"},
    {"hardware", "Lobelia Garden Centre"},
    {"furniture", "Birch & Beam"},
    {"fashion", "Hollin & Marsh"},
    {"fashion", "Threadneedle Lane"},
    {"fashion", "Small Steps Shoes"},
    {"pharmacy", "Swan Pharmacy"},
    {"pharmacy", "Pestle & Co"},
    {"doctor", "Dr. Imre Kovacz"},
    {"books", "Inkpot & Quire"},
    {"books", "Dogeared Books"},
    {"cinema", "Lumen Picture House"},
    {"sports", "Peak & Paddle"},
    {"pets", "Whisker Supplies"},
    {"pets", "Vet Clinic Elm Road"},
    {"hairdresser", "Salon Rosalind"},
    {"gift shop", "Ribbon & Bow"},
    {"friend", "Tobias Lindqvist"},
    {"friend", "Mara Oyelaran"},
    {"friend", "Jun Castellane"},
    {"friend", "Petra Vosskamp"},
    {"relative", "Aunt Philippa"},
    {"relative", "Grandfather Aldous"},
};

// Long histories meet more shops: one for each of these trades in turn, under another name each.
struct ShopKind {
  std::string_view trade;
  std::string_view suffix;
};

inline constexpr ShopKind kFurtherShops[] = {
    {"supermarket", " Grocers"}, {"restaurant", "'s Kitchen"}, {"cafe", " Coffee Bar"},
    {"fashion", " Outfitters"},  {"hardware", " Hardware"},    {"books", " Bookshop"},
    {"bakery", " Bakery"},       {"fuel", " Fuel Stop"},
};

inline constexpr std::string_view kShopkeepers[] = {
    "Abernethy",  "Brandreth", "Callowhill",   "Dimmock",   "Eastlake",  "Fothergill", "Gathercole",
    "Hartnoll",   "Inskip",    "Jellicoe",     "Kettering", "Lovibond",  "Mapplebeck", "Nethercot",
    "Oldershaw",  "Pargeter",  "Quennell",     "Rainsford", "Satchell",  "Tattersall", "Umfreville",
    "Venables",   "Wagstaff",  "Yaxley",       "Ashenden",  "Bickerton", "Cheseldine", "Dowsing",
    "Elphick",    "Fairlamb",  "Garrod",       "Honeybun",  "Ibbotson",  "Jessop",     "Kilvert",
    "Lillywhite", "Merridew",  "Nankivell",    "Orchard",   "Penhallow", "Rookwood",   "Sorrell",
    "Tremlett",   "Uttridge",  "Winterbourne",
};
inline constexpr std::size_t kMostFurtherShops = std::size(kFurtherShops) * std::size(kShopkeepers);

// The payees of one trade: so many in kPayees, the first under the number `first`, and after all
// of those every further shop of its kind. An empty one stands for no payee.
struct Trade {
  std::int32_t first = 0;
  std::int32_t count = 0;
  std::int32_t shop_kind = -1;  // in kFurtherShops
};

inline constexpr Trade kNobody = {};

// A trade that is not in kPayees does not compile.
constexpr Trade TradeOf(std::string_view name) {
  Trade trade;
  for (std::int32_t i = 0; const PayeeRow& row : kPayees) {
    ++i;
    if (row.trade == name) {
      trade.first = trade.count == 0 ? i : trade.first;
      ++trade.count;
    }
  }
  if (trade.count == 0) {
    throw std::out_of_range("no such trade");
  }
  for (std::int32_t i = 0; const ShopKind& kind : kFurtherShops) {
    trade.shop_kind = kind.trade == name ? i : trade.shop_kind;
    ++i;
  }
  return trade;
}

inline constexpr std::string_view kClassifications[] = {"Person", "Project"};

// An item of a classification with up to two sub-items.
struct ClassificationRow {
  std::int32_t classification;
  std::string_view name;
  std::array<std::string_view, 2> sub_items;
};

inline constexpr ClassificationRow kClassificationItems[] = {
    {1, "Nora", {"Work", "Choir"}},
    {1, "Elias", {"Work", "Cycling"}},
    {1, "Juna", {"School", "Football"}},
    {1, "Whole Family", {}},
    {2, "Garden Makeover", {"Plants", "Terrace"}},
    {2, "Summer Holiday", {"On the Road", "Souvenirs"}},
    {2, "Home Office", {}},
};

// How many items belong to the first classification; the others belong to the second.
inline constexpr std::int32_t kFirstClassificationItems = static_cast<std::int32_t>(
    std::ranges::count(kClassificationItems, 1, &ClassificationRow::classification));

// The number of an item's sub-item 0 or 1.
constexpr std::int32_t SubItemNumber(std::int32_t item, std::int32_t sub_item) {
  return 2 * (item - 1) + sub_item + 1;
}

}  // namespace quillmarsh
