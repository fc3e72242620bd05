#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "vetlo/platform/arrays.h"
#include "vetlo/platform/date.h"
#include "vetlo/platform/display.h"
#include "vetlo/services/catalogue_of_defaults.h"
#include "vetlo/store/database.h"

namespace vetlo {

// What an account type is called, and its flags AccountAttr... .
struct AccountTypeFacts {
  std::string_view name;
  std::int32_t flags = 0;

  [[nodiscard]] bool Has(std::int32_t flag) const { return (flags & flag) != 0; }
};

// Which way a transaction moves money at one of its ends.
enum class MoneyFlow : std::int32_t { kEnters = 0, kLeaves = 1 };

// A change of a settings row. What is left out, and a number that is kNothingChosen, stays as it
// is; in a new row it is Null, and the number 255.
struct SettingsChange {
  std::int32_t lngChartReportSubTypeAttr = 255;
  std::int32_t lngChartReportType = 255;
  std::optional<Variant> varChartReportSubTypeName;
  std::int32_t lngChartOrReportType = 255;
  std::int32_t lngChartType = 255;
  std::optional<Variant> varLegend;
  std::optional<Variant> varTitle;
  std::int32_t lngDateRangeType = 255;
  std::optional<Variant> varDateRangeExtInfo;
  std::optional<Variant> varFromDate;  // a date, or Null for an open end
  std::optional<Variant> varToDate;
  std::optional<Variant> varParameter1;
  std::optional<Variant> varParameter2;
};

enum class SaveMode : std::int32_t { kAddRow = 1, kChangeRow = 2 };

// The host's business rules: what the component needs to know of a household and does not decide.
// It has no state; every answer follows from the arguments and the store.
class CommonServices {
 public:
  // The sentinels of the date model: no lower bound, no upper bound.
  [[nodiscard]] Date EarliestDate() const { return kFirstRealDate; }
  [[nodiscard]] Date LatestDate() const { return Date{2958100}; }

  // Any type that is none of ours is "Unknown" and has no flag.
  [[nodiscard]] AccountTypeFacts AccountTypeInfo(std::int32_t lngAccountType) const;

  // What the transaction does to the account named in AccountNumber.
  [[nodiscard]] MoneyFlow TransactionTypeInfo(std::int32_t lngTransactionType,
                                              std::int32_t lngAccountType) const;
  // What it does to the account at the other end, ToOrFundAccountNumber.
  [[nodiscard]] MoneyFlow InvestmentTransactionInfo(std::int32_t lngTransactionType,
                                                    std::int32_t lngAccountAttr) const;

  // The catalogue's entry of a report number, null for a number that is in no catalogue.
  [[nodiscard]] const ReportDefaults* ChartReportSetting(
      std::int32_t lngChartReportSubTypeAttr) const;

  // The date ranges in the order in which a dialog lists them, and one of them; null for a number
  // that is no range.
  [[nodiscard]] std::span<const DateRangeFacts> DateRanges() const;
  [[nodiscard]] const DateRangeFacts* DateRangeInfo(std::int32_t lngDateRangeType) const;

  // The declared length of a Text column, in characters. Fails with kTableNotFound or
  // kNoSuchColumn.
  [[nodiscard]] std::int32_t FieldMaxLength(std::string_view strTable,
                                            std::string_view strField) const;

  // Writes a settings row in one transaction or not at all. Adding hands the new row's number
  // back. A favourite is not added where a hundred are there already (kTooManyFavorites) or where
  // one has its name to the letter (kDuplicateKey), whoever added that one and however lately.
  // Changing fails with kNoCurrentRecord where the row is gone. A date that equals a sentinel is
  // stored as Null.
  void SaveChartReportSubType(SaveMode lngMode, Database& dbDov, Recordset& recChartReportSubType,
                              std::int32_t& lngChartReportSubTypeNumber,
                              const SettingsChange& change) const;

  // Takes a settings row away. Fails with kNoCurrentRecord where there is none of that number.
  void DeleteChartReportSubType(Database& dbDov, Recordset& recChartReportSubType,
                                std::int32_t lngChartReportSubTypeNumber) const;

  // The balance at the end of a day, in the sign of net worth: what is owed is negative. An
  // account that there is not fails with kNoCurrentRecord.
  [[nodiscard]] Currency AccountBalanceOnDate(Database& dbDov, std::int32_t lngAccountNumber,
                                              Date dtmDate) const;

  // The course of an account's balance: one series over the points of the range, earliest first,
  // and the points' dates as labels. Up to 62 days every day is a point, up to 731 days every
  // seventh counted back from the end, beyond that the end of every month and the end. An open end
  // is that of the account's transactions. Fails with kNothingToShow where there is no point.
  void BalanceHistory(Database& dbDov, std::int32_t lngAccountNumber, Date dtmFromDate,
                      Date dtmToDate, AmountMatrix& matrix, ItemLabels& labels) const;

  // A date between `#` as the store's SQL takes it. Fails with kInvalidCall for a date that there
  // is not.
  [[nodiscard]] std::string SqlDateLiteral(Date dtmDate) const;

  // The price in an open LatestPriceInfo recordset whose index is set. Fails with kNoCurrentRecord
  // where the item has none.
  [[nodiscard]] double LatestPriceOfItem(Recordset& recLatestPriceInfo,
                                         std::int32_t lngAccountItemNumber) const;

  // The text, or its longest beginning that fits the width with "..." behind it; "..." alone where
  // nothing fits. The width is in twips, measured on the surface that carries the font.
  [[nodiscard]] std::string FitLabelToWidth(std::string_view strText, const PictureBox& objFont,
                                            float sngWidth) const;

  // The units of an item that an account holds at present. Fails with kNoCurrentRecord where it
  // holds none.
  [[nodiscard]] double QuantityHeld(Database& dbDov, std::int32_t lngAccountNumber,
                                    std::int32_t lngAccountItemNumber) const;

  // "2026/03/01". Fails with kInvalidCall for a date that there is not.
  [[nodiscard]] std::string DateDisplayText(Date dtmDate) const;

  // Reads year, month and day in this order, separated by "/", "-" or ".". A year of one or two
  // digits lies in 1930 to 2029. Fails with kTypeMismatch for anything else.
  [[nodiscard]] Date ParseDateText(std::string_view strText) const;
};

// The one object that all routines of the component share, made when it is first asked for.
const CommonServices& Services();

}  // namespace vetlo
