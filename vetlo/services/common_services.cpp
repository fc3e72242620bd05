#include "vetlo/services/common_services.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

constexpr std::array<AccountTypeFacts, 10> kAccountTypes = {{
    {"Checking Account", AccountAttrCashFlow | AccountAttrPositiveBalance},
    {"Savings Account", AccountAttrCashFlow | AccountAttrPositiveBalance},
    {"Time Deposit", AccountAttrCashFlow | AccountAttrPositiveBalance},
    {"Cash", AccountAttrCashFlow | AccountAttrPositiveBalance},
    {"Credit Card", AccountAttrCashFlow},
    {"Common Asset", AccountAttrPositiveBalance},
    {"Liability", AccountAttrCashFlow},
    {"Creditor's Rights", AccountAttrCashFlow | AccountAttrPositiveBalance},
    {"Investment", AccountAttrFund | AccountAttrPositiveBalance},
    {"Other", AccountAttrCashFlow | AccountAttrPositiveBalance},
}};

// What a transaction type does at its two ends. Types that stand in no line bring money in.
struct TransactionTypeFacts {
  MoneyFlow own_end;
  MoneyFlow other_end;
};

constexpr auto kIn = MoneyFlow::kEnters;
constexpr auto kOut = MoneyFlow::kLeaves;
constexpr std::array<TransactionTypeFacts, 14> kTransactionTypes = {{
    {kIn, kIn},    // correction upwards
    {kOut, kOut},  // correction downwards
    {kOut, kOut},  // buy
    {kIn, kIn},    // sell
    {kIn, kIn},    // dividend
    {kIn, kIn},    // units received
    {kIn, kIn},    // interest on a holding
    {kIn, kIn},    // units given away
    {kIn, kIn},    // capital gain
    {kOut, kOut},  // cost of a holding
    {kIn, kIn},    // income
    {kOut, kOut},  // expense
    {kOut, kIn},   // transfer out
    {kIn, kOut},   // transfer in
}};

TransactionTypeFacts FactsOf(std::int32_t transaction_type) {
  const auto at = static_cast<std::size_t>(transaction_type);
  return transaction_type >= 0 && at < kTransactionTypes.size() ? kTransactionTypes.at(at)
                                                                : TransactionTypeFacts{kIn, kIn};
}

}  // namespace

const CommonServices& Services() {
  static const CommonServices services;
  return services;
}

AccountTypeFacts CommonServices::AccountTypeInfo(std::int32_t lngAccountType) const {
  const auto at = static_cast<std::size_t>(lngAccountType);
  return lngAccountType >= 0 && at < kAccountTypes.size() ? kAccountTypes.at(at)
                                                          : AccountTypeFacts{"Unknown", 0};
}

MoneyFlow CommonServices::TransactionTypeInfo(std::int32_t lngTransactionType, std::int32_t) const {
  return FactsOf(lngTransactionType).own_end;
}

MoneyFlow CommonServices::InvestmentTransactionInfo(std::int32_t lngTransactionType,
                                                    std::int32_t) const {
  return FactsOf(lngTransactionType).other_end;
}

const ReportDefaults* CommonServices::ChartReportSetting(
    std::int32_t lngChartReportSubTypeAttr) const {
  const auto all = AllReportDefaults();
  const auto found = std::ranges::find(all, lngChartReportSubTypeAttr, &ReportDefaults::number);
  return found == all.end() ? nullptr : &*found;
}

std::span<const DateRangeFacts> CommonServices::DateRanges() const { return AllDateRanges(); }

const DateRangeFacts* CommonServices::DateRangeInfo(std::int32_t lngDateRangeType) const {
  const auto all = AllDateRanges();
  const auto found =
      std::ranges::find(all, static_cast<DateRange>(lngDateRangeType), &DateRangeFacts::range);
  return found == all.end() ? nullptr : &*found;
}

std::int32_t CommonServices::FieldMaxLength(std::string_view strTable,
                                            std::string_view strField) const {
  const Table* const table = FindTable(strTable);
  if (table == nullptr) {
    throw Failure(FailureNumber::kTableNotFound);
  }
  const Column* const column = FindColumn(*table, strField);
  if (column == nullptr) {
    throw Failure(FailureNumber::kNoSuchColumn);
  }
  return column->length;
}

double CommonServices::LatestPriceOfItem(Recordset& recLatestPriceInfo,
                                         std::int32_t lngAccountItemNumber) const {
  recLatestPriceInfo.Seek("=", lngAccountItemNumber);
  if (recLatestPriceInfo.NoMatch()) {
    throw NothingThere(FailureNumber::kNoCurrentRecord);
  }
  return DoubleField(recLatestPriceInfo, "Price");
}

std::string CommonServices::FitLabelToWidth(std::string_view strText, const PictureBox& objFont,
                                            float sngWidth) const {
  if (objFont.TextWidth(strText) <= sngWidth) {
    return std::string(strText);
  }
  const auto shortened = [&](std::size_t count) {
    return std::string(FirstCharacters(strText, count)) + "...";
  };
  // A longer beginning is never narrower, so that the longest that fits can be searched for.
  std::size_t fits = 0;
  std::size_t too_long = CharacterCount(strText) + 1;
  while (fits + 1 < too_long) {
    const std::size_t middle = (fits + too_long) / 2;
    (objFont.TextWidth(shortened(middle)) <= sngWidth ? fits : too_long) = middle;
  }
  return shortened(fits);
}

}  // namespace vetlo
