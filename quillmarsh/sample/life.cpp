#include "quillmarsh/sample/life.h"

#include <algorithm>
#include <array>

namespace quillmarsh {
namespace {

constexpr std::int64_t kThousand = 1000;
constexpr std::int64_t kWholeShare = 10000;
constexpr std::size_t kMostOpenDebts = 3;
constexpr std::int64_t kVoidsAreOneIn = 250;

constexpr std::int64_t kCashStepCents = 2000;
constexpr std::int64_t kCardStepCents = 2500;
constexpr std::int64_t kSweepStepCents = 1000;
// Savings of more than so many reserves go into securities.
constexpr std::int64_t kReservesToSave = 4;
constexpr std::int64_t kNextCarCents = 1650000;

std::int64_t RoundedUp(std::int64_t cents, std::int64_t step) {
  return (cents + step - 1) / step * step;
}

std::int64_t RoundedDown(std::int64_t cents, std::int64_t step) { return cents / step * step; }

std::int32_t FurtherShopsOf(std::int32_t shop_kind, std::int32_t all) {
  constexpr auto kKinds = static_cast<std::int32_t>(std::size(kFurtherShops));
  return shop_kind < 0 ? 0 : (all - shop_kind + kKinds - 1) / kKinds;
}

std::int32_t NumberOfFurtherShop(std::int32_t shop_kind, std::int32_t place) {
  return static_cast<std::int32_t>(std::size(kPayees)) + 1 + shop_kind +
         place * static_cast<std::int32_t>(std::size(kFurtherShops));
}

}  // namespace

Life::Life(Ledger& ledger, const Market& market, const Pace& pace, std::int32_t further_shops,
           Dice& dice)
    : ledger_(ledger),
      pace_(pace),
      dice_(dice),
      investor_(ledger, market, dice),
      further_shops_(further_shops) {}

void Life::Begin() {
  const std::int64_t reserve = pace_.ReserveCents() * pace_.PriceLevel(0) / kThousand;
  ledger_.Open(kEverydayChecking, reserve / 2);
  ledger_.Open(kRainyDaySavings, reserve * 2);
  for (const FirstPurchase& purchase : FirstPurchases()) {
    investor_.BuyFirst(purchase, pace_.FirstDay());
  }
}

void Life::Happen(const Event& event, const Month& month) {
  day_ = event.day;
  if (event.everyday) {
    Ordinary(EverydayLife()[event.index], month);
  } else {
    Rhythmic(Rhythms()[event.index], month);
  }
}

void Life::Rhythmic(const Rhythm& rhythm, const Month& month) {
  const auto payee = [&] { return PayeeOf(rhythm.trade); };
  switch (rhythm.action) {
    case Action::kIncome:
      return Earn(rhythm, month, kThousand);
    case Action::kExpense:
      return Spend(rhythm, month, vetlo::kOrdinaryRecord);
    case Action::kSalary:
      return Earn(rhythm, month, pace_.PayScale());
    case Action::kSplitIncome:
      return SplitIncome(rhythm, month);
    case Action::kVoidedExpense:
      return Spend(rhythm, month, vetlo::kVoidRecord);
    case Action::kEarnInterest:
      return EarnInterest(rhythm);
    case Action::kPayInterest:
      return PayInterest(rhythm);
    case Action::kRepay:
      return Repay(rhythm, month);
    case Action::kRepayOrRenew:
      return RepayOrRenew(rhythm, month);
    case Action::kGainValue:
      return ChangeValue(rhythm, vetlo::kCorrectionUpwards);
    case Action::kLoseValue:
      return ChangeValue(rhythm, vetlo::kCorrectionDownwards);
    case Action::kTransfer:
      return Move(rhythm, AmountOf(rhythm, month));
    case Action::kFillUp:
      return FillUp(rhythm, month);
    case Action::kPayCard:
      return PayCard(rhythm);
    case Action::kSweep:
      return Sweep(rhythm, month);
    case Action::kLend:
      return TakeTurnsOwing(rhythm, month, vetlo::kTransferOut, vetlo::kTransferIn);
    case Action::kBorrow:
      return TakeTurnsOwing(rhythm, month, vetlo::kTransferIn, vetlo::kTransferOut);
    case Action::kInvestCash:
      return investor_.InvestCash(rhythm, payee(), day_);
    case Action::kTrade:
      return investor_.Trade(payee(), day_);
    case Action::kSellHalf:
      return investor_.SellPart(rhythm, 2, payee(), day_);
    case Action::kSellOut:
      return investor_.SellPart(rhythm, 1, payee(), day_);
    case Action::kDividend:
      return investor_.Yield(rhythm, vetlo::kDividend, payee(), day_);
    case Action::kHoldingInterest:
      return investor_.Yield(rhythm, vetlo::kHoldingInterest, payee(), day_);
    case Action::kCapitalGain:
      return investor_.Yield(rhythm, vetlo::kCapitalGain, payee(), day_);
    case Action::kHoldingCost:
      return investor_.Yield(rhythm, vetlo::kHoldingCost, payee(), day_);
    case Action::kReceiveUnits:
      return investor_.MoveUnits(rhythm, vetlo::kUnitsReceived, payee(), day_);
    case Action::kGiveUnitsAway:
      return investor_.MoveUnits(rhythm, vetlo::kUnitsGivenAway, payee(), day_);
  }
}

void Life::Ordinary(const Everyday& everyday, const Month& month) {
  if (everyday.kind == EverydayKind::kTrade) {
    investor_.Trade(PayeeOf(everyday.trade), day_);
    return;
  }
  const std::int64_t usual = everyday.amount * SeasonPercent(everyday.season, month.month) / 100 *
                             pace_.PriceLevel(month.index) / kThousand * pace_.EverydayScale() /
                             kThousand;
  const std::int64_t cents = std::max<std::int64_t>(5, dice_.Around(usual, 55));
  if (everyday.kind == EverydayKind::kSplit) {
    SplitShopping(everyday, cents);
    return;
  }
  const std::int32_t account = everyday.purse[static_cast<std::size_t>(dice_.Roll(0, 3))];
  const bool income = everyday.kind == EverydayKind::kIncome;
  Entry entry = {.type = income ? vetlo::kIncome : vetlo::kExpense,
                 .day = day_,
                 .account = income ? account : PayerOf(account, cents),
                 .category = everyday.category,
                 .payee = PayeeOf(everyday.trade),
                 .cents = cents};
  if (dice_.OneIn(kVoidsAreOneIn)) {
    entry.record_type = vetlo::kVoidRecord;
    entry.memo = "Entered twice";
  }
  Classify(entry);
  Record(entry);
}

std::int64_t Life::AmountOf(const Rhythm& rhythm, const Month& month) {
  const std::int64_t usual = rhythm.amount * SeasonPercent(rhythm.season, month.month) / 100 *
                             pace_.PriceLevel(month.index) / kThousand;
  return dice_.Around(usual, rhythm.spread);
}

Entry Life::EntryOf(const Rhythm& rhythm, std::int32_t type, std::int64_t cents) {
  return {.type = type,
          .day = day_,
          .account = rhythm.account,
          .category = rhythm.category,
          .payee = PayeeOf(rhythm.trade),
          .cents = cents};
}

void Life::Earn(const Rhythm& rhythm, const Month& month, std::int64_t scale) {
  Entry entry = EntryOf(rhythm, vetlo::kIncome, AmountOf(rhythm, month) * scale / kThousand);
  Classify(entry);
  Record(entry);
}

void Life::Spend(const Rhythm& rhythm, const Month& month, std::int32_t record_type) {
  Entry entry = EntryOf(rhythm, vetlo::kExpense, AmountOf(rhythm, month));
  entry.record_type = record_type;
  entry.account = PayerOf(rhythm.account, entry.cents);
  Classify(entry);
  Record(entry);
}

void Life::SplitIncome(const Rhythm& rhythm, const Month& month) {
  const std::int64_t cents = AmountOf(rhythm, month);
  const std::int64_t holiday_pay = cents * 3 / 10;
  const Entry entry = EntryOf(rhythm, vetlo::kIncome, cents - holiday_pay);
  std::array<Entry, kLinesOfSplit> lines = {entry, entry};
  lines[1].category = CategoryOf("Bonus:Holiday Pay");
  lines[1].cents = holiday_pay;
  ledger_.WriteSplit(entry, lines);
}

void Life::SplitShopping(const Everyday& everyday, std::int64_t cents) {
  const std::int64_t food = cents * dice_.Roll(55, 80) / 100;
  Entry entry = {.day = day_,
                 .account = PayerOf(everyday.purse[0], cents),
                 .category = CategoryOf("Food:Groceries"),
                 .payee = PayeeOf(everyday.trade),
                 .cents = food,
                 .memo = "Weekly shopping"};
  std::array<Entry, kLinesOfSplit> lines = {entry, entry};
  lines[1].category = CategoryOf(dice_.OneIn(2) ? "Household:Cleaning" : "Clothing:Children");
  lines[1].cents = cents - food;
  for (Entry& line : lines) {
    Classify(line);
  }
  ledger_.WriteSplit(entry, lines);
}

void Life::EarnInterest(const Rhythm& rhythm) {
  Record(EntryOf(rhythm, vetlo::kIncome,
                 ledger_.CashCents(rhythm.account) * rhythm.amount / kWholeShare));
}

void Life::PayInterest(const Rhythm& rhythm) {
  const std::int64_t cents = -ledger_.CashCents(rhythm.other) * rhythm.amount / kWholeShare;
  Entry entry = EntryOf(rhythm, vetlo::kExpense, cents);
  entry.account = PayerOf(rhythm.account, cents);
  Record(entry);
}

void Life::Repay(const Rhythm& rhythm, const Month& month) {
  const std::int64_t cents = std::min(AmountOf(rhythm, month), -ledger_.CashCents(rhythm.other));
  Entry entry = EntryOf(rhythm, vetlo::kTransferOut, cents);
  entry.account = PayerOf(rhythm.account, cents);
  entry.other = rhythm.other;
  Record(entry);
}

void Life::RepayOrRenew(const Rhythm& rhythm, const Month& month) {
  if (ledger_.CashCents(rhythm.other) < 0) {
    Repay(rhythm, month);
    return;
  }
  Entry entry = EntryOf(rhythm, vetlo::kTransferOut,
                        kNextCarCents * pace_.PriceLevel(month.index) / kThousand);
  entry.account = rhythm.other;
  entry.other = kCar;
  entry.memo = "The next car";
  Record(entry);
}

void Life::ChangeValue(const Rhythm& rhythm, std::int32_t type) {
  Record(EntryOf(rhythm, type, ledger_.CashCents(rhythm.account) * rhythm.amount / kWholeShare));
}

void Life::Move(const Rhythm& rhythm, std::int64_t cents) {
  Entry entry = EntryOf(rhythm, vetlo::kTransferOut, cents);
  entry.other = rhythm.other;
  if (ledger_.CashCents(rhythm.account) >= cents) {
    Record(entry);
  }
}

void Life::FillUp(const Rhythm& rhythm, const Month& month) {
  const std::int64_t missing = AmountOf(rhythm, month) - ledger_.CashCents(rhythm.account);
  Entry entry = EntryOf(rhythm, vetlo::kTransferIn,
                        std::min(RoundedUp(missing, kCashStepCents),
                                 RoundedDown(ledger_.CashCents(rhythm.other), kCashStepCents)));
  entry.other = rhythm.other;
  Record(entry);
}

void Life::PayCard(const Rhythm& rhythm) {
  const std::int64_t owed = -ledger_.CashCents(rhythm.other) * rhythm.amount / kWholeShare;
  Move(rhythm, std::min(RoundedUp(owed, kCardStepCents),
                        RoundedDown(ledger_.CashCents(rhythm.account), kCardStepCents)));
}

void Life::Sweep(const Rhythm& rhythm, const Month& month) {
  const std::int64_t reserve = pace_.ReserveCents() * pace_.PriceLevel(month.index) / kThousand;
  const std::int64_t surplus = ledger_.CashCents(rhythm.account) - reserve / 2;
  Entry entry = EntryOf(rhythm, vetlo::kTransferOut, RoundedDown(surplus, kSweepStepCents));
  entry.other = rhythm.other;
  if (surplus < 0) {
    entry.type = vetlo::kTransferIn;
    entry.cents = std::min(RoundedUp(-surplus, kSweepStepCents),
                           RoundedDown(ledger_.CashCents(rhythm.other), kSweepStepCents));
  } else if (ledger_.CashCents(rhythm.other) > reserve * kReservesToSave) {
    entry.other = kBrokerageCash;
  }
  Record(entry);
}

void Life::TakeTurnsOwing(const Rhythm& rhythm, const Month& month, std::int32_t there,
                          std::int32_t back) {
  auto& open = open_debts_[static_cast<std::size_t>(rhythm.other) - 1];
  Entry entry = EntryOf(rhythm, there, RoundedUp(AmountOf(rhythm, month), kCashStepCents));
  entry.other = rhythm.other;
  const bool settle = open.size() >= kMostOpenDebts;
  if (settle) {
    entry.type = back;
    entry.payee = open.front().payee;
    entry.cents = std::min(entry.cents, open.front().cents);
  }
  if (entry.type == vetlo::kTransferOut && ledger_.CashCents(entry.account) < entry.cents) {
    return;
  }
  Record(entry);
  if (!settle) {
    open.push_back({entry.payee, entry.cents});
    return;
  }
  open.front().cents -= entry.cents;
  if (open.front().cents == 0) {
    open.erase(open.begin());
  }
}

std::int32_t Life::PayerOf(std::int32_t account, std::int64_t cents) const {
  if (account == kMainCard || account == kStoreCard || ledger_.CashCents(account) >= cents) {
    return account;
  }
  return account != kEverydayChecking && ledger_.CashCents(kEverydayChecking) >= cents
             ? kEverydayChecking
             : kMainCard;
}

std::int32_t Life::PayeeOf(const Trade& trade) {
  if (trade.count == 0) {
    return 0;
  }
  const std::int64_t last = trade.count + FurtherShopsOf(trade.shop_kind, further_shops_) - 1;
  // The lower of two rolls: one has one's favourites.
  const std::int64_t first_roll = dice_.Roll(0, last);
  const auto place = static_cast<std::int32_t>(std::min(first_roll, dice_.Roll(0, last)));
  return place < trade.count ? trade.first + place
                             : NumberOfFurtherShop(trade.shop_kind, place - trade.count);
}

void Life::Classify(Entry& entry) {
  constexpr auto kLastItem = static_cast<std::int32_t>(std::size(kClassificationItems));
  const auto choose = [&](std::int32_t first, std::int32_t last) -> ClassificationKey {
    const auto item = static_cast<std::int32_t>(dice_.Roll(first, last));
    const auto sub_item = static_cast<std::int32_t>(dice_.Roll(0, 2));
    const auto& names = kClassificationItems[static_cast<std::size_t>(item) - 1].sub_items;
    const bool has_one = sub_item < 2 && !names[static_cast<std::size_t>(sub_item)].empty();
    return {item, has_one ? SubItemNumber(item, sub_item) : 0};
  };
  if (dice_.OneIn(2)) {
    entry.person = choose(1, kFirstClassificationItems);
  }
  if (dice_.OneIn(8)) {
    entry.project = choose(kFirstClassificationItems + 1, kLastItem);
  }
}

void Life::Record(const Entry& entry) {
  if (entry.cents > 0) {
    ledger_.Write(entry);
  }
}

}  // namespace quillmarsh
