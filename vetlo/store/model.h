#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vetlo {

// The tables and columns of a household's store, and the meaning of the numbers in them.

enum class ColumnType : std::uint8_t {
  kLong,      // 32-bit signed
  kCurrency,  // ten-thousandths of the currency unit
  kDate,      // days since 1899-12-30
  kBoolean,
  kDouble,
  kText,     // at most `length` characters; names sort without regard to ASCII case
  kVariant,  // a Long, a Double or a Text, as it was stored
};

struct Column {
  std::string_view name;
  ColumnType type = ColumnType::kLong;
  bool required = false;          // never Null
  bool is_name = false;           // compares without regard to ASCII case
  std::int32_t length = 0;        // of a Text, 0 where the store sets no limit
  std::string_view initial = {};  // the default as SQL text, empty where there is none
};

// How a table's key identifies a row.
enum class KeyKind : std::uint8_t {
  kNone,        // rows are told apart by their order of entry alone
  kUnique,      // the first `key_columns` columns
  kRepeatable,  // the same, but several rows may share a key
};

struct Table {
  std::string_view name;
  KeyKind key = KeyKind::kNone;
  std::int32_t key_columns = 0;
  std::span<const Column> columns;
};

std::span<const Table> StoreTables();

// Names are found without regard to ASCII case; null where there is no such table or column.
const Table* FindTable(std::string_view name);
const Column* FindColumn(const Table& table, std::string_view name);

bool EqualsIgnoringCase(std::string_view a, std::string_view b);

// Account.AccountType. Any other number is a type that nobody has heard of.
inline constexpr std::int32_t kCheckingAccount = 0;
inline constexpr std::int32_t kSavingsAccount = 1;
inline constexpr std::int32_t kTimeDeposit = 2;
inline constexpr std::int32_t kCashAccount = 3;
inline constexpr std::int32_t kCreditCard = 4;
inline constexpr std::int32_t kCommonAsset = 5;
inline constexpr std::int32_t kLiability = 6;
inline constexpr std::int32_t kCreditorsRights = 7;
inline constexpr std::int32_t kInvestmentAccount = 8;
inline constexpr std::int32_t kOtherAccount = 9;

// The attribute flags of an account type.
inline constexpr std::int32_t AccountAttrCashFlow = 1;
inline constexpr std::int32_t AccountAttrFund = 2;
inline constexpr std::int32_t AccountAttrPositiveBalance = 4;

// TransactionRecord.TransactionRecordType.
inline constexpr std::int32_t kOrdinaryRecord = 0;
inline constexpr std::int32_t kScheduledPattern = 1;
inline constexpr std::int32_t kVoidRecord = 2;
inline constexpr std::int32_t kSplitHead = 3;
inline constexpr std::int32_t kSplitLine = 4;

// TransactionRecord.TransactionType.
inline constexpr std::int32_t kCorrectionUpwards = 0;
inline constexpr std::int32_t kCorrectionDownwards = 1;
inline constexpr std::int32_t kBuy = 2;
inline constexpr std::int32_t kSell = 3;
inline constexpr std::int32_t kDividend = 4;
inline constexpr std::int32_t kUnitsReceived = 5;
inline constexpr std::int32_t kHoldingInterest = 6;
inline constexpr std::int32_t kUnitsGivenAway = 7;
inline constexpr std::int32_t kCapitalGain = 8;
inline constexpr std::int32_t kHoldingCost = 9;
inline constexpr std::int32_t kIncome = 10;
inline constexpr std::int32_t kExpense = 11;
inline constexpr std::int32_t kTransferOut = 12;
inline constexpr std::int32_t kTransferIn = 13;

// PriceType.PriceTypeAttr of the price type that all valuations use.
inline constexpr std::int32_t kDefaultPriceType = 1;

// ChartReportSubType.ChartReportType.
inline constexpr std::int32_t kFavoriteGroup = 4;
inline constexpr std::int32_t kCallerParametersGroup = 5;

// ChartReportSubType.ChartOrReportType: which of the two display objects is drawn into.
enum class ChartOrReport : std::int32_t { kChart = 0, kReport = 1 };

// "No choice": a number in a settings row, or in a change to one, that stands for nothing chosen.
inline constexpr std::int32_t kNothingChosen = 255;

// The store file's marks.
inline constexpr std::int32_t kStoreApplicationId = 0x51554C4D;  // "QULM"
inline constexpr std::int32_t kStoreVersion = 1;

}  // namespace vetlo
