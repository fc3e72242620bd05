#include "vetlo/schedule/payment_calendar.h"

#include <array>

#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

// How a frequency is called, and where it can be repeated by a number, the unit that is counted.
struct Frequency {
  std::string_view name;
  std::string_view unit;  // empty: the name stands whatever the number
};

constexpr std::array<Frequency, 13> kFrequencies = {{
    {"Only Once", ""},
    {"Daily", "days"},
    {"Weekly", "weeks"},
    {"Every other Week", ""},
    {"Twice a month", ""},
    {"Monthly", "months"},
    {"Every other month", ""},
    {"Every three months", ""},
    {"Twice a year", ""},
    {"Yearly", "years"},
    {"Every other year", ""},
    {"Every four weeks", ""},
    {"Every four months", ""},
}};

// The tables in which the names of a row are looked up.
struct Names {
  explicit Names(Database& dbDov)
      : account(dbDov, "Account"),
        category(dbDov, "Category"),
        payee(dbDov, "Payee"),
        sub_category(dbDov, "SubCategory") {
    for (ScopedRecordset* const table : {&account, &category, &payee, &sub_category}) {
      (*table)->SetIndex(kPrimaryIndex);
    }
  }

  ScopedRecordset account;
  ScopedRecordset category;
  ScopedRecordset payee;
  ScopedRecordset sub_category;
};

// The name that a number stands for; nothing where there is no number.
std::string NameIn(ScopedRecordset& table, const Variant& number, std::string_view column) {
  if (IsNull(number)) {
    return "";
  }
  table->Seek("=", number);
  return TextField(*table, column);
}

struct Movement {
  Currency curTotal;
  bool blnOutflow = false;
  std::string strAccount;
};

// An investment's account shows where its money comes from.
Movement MovementOf(Recordset& rec, Names& names) {
  Movement movement{CurrencyField(rec, "Total"), false, ""};
  const std::int32_t account = LongField(rec, "AccountNumber");
  const std::int32_t transaction_type = LongField(rec, "TransactionType");
  names.account->Seek("=", account);
  const std::int32_t account_type = LongField(*names.account, "AccountType");
  const auto type = Services().AccountTypeInfo(account_type);
  if (type.Has(AccountAttrCashFlow)) {
    movement.blnOutflow =
        Services().TransactionTypeInfo(transaction_type, account_type) == MoneyFlow::kLeaves;
    movement.strAccount = TextField(*names.account, "AccountName");
  } else {
    movement.blnOutflow =
        Services().InvestmentTransactionInfo(transaction_type, type.flags) == MoneyFlow::kLeaves;
    movement.strAccount = NameIn(names.account, rec.Fields("ToOrFundAccountNumber"), "AccountName");
  }
  if (movement.blnOutflow) {
    movement.curTotal = -movement.curTotal;
  }
  return movement;
}

std::string DateText(Date date) {
  const bool unset = date == Services().EarliestDate() || date == Services().LatestDate();
  return unset ? "" : Services().DateDisplayText(date);
}

std::string CategoryText(Recordset& rec, Names& names) {
  std::string category = NameIn(names.category, rec.Fields("CategoryNumber"), "CategoryName");
  const std::string part =
      NameIn(names.sub_category, rec.Fields("SubCategoryNumber"), "SubCategoryName");
  if (!category.empty() && !part.empty()) {
    category += ":" + part;
  }
  return category;
}

}  // namespace

std::string FrequencyText(std::int32_t lngFrequencyType, std::int32_t lngFrequencyExtInfo) {
  const auto at = static_cast<std::uint32_t>(lngFrequencyType);
  if (at >= kFrequencies.size()) {
    return "";
  }
  const Frequency& frequency = kFrequencies.at(at);
  return lngFrequencyExtInfo >= 2 && !frequency.unit.empty()
             ? "Every " + std::to_string(lngFrequencyExtInfo) + " " + std::string(frequency.unit)
             : std::string(frequency.name);
}

void PaymentCalendarRows(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                         GrowingArray<CalendarRow>& rows, CalendarFilter filter,
                         const NumberLocale& locale) {
  Names names(dbDov);
  rows.Start();
  ForEachRowOf(
      dbDov,
      "SELECT T1.FrequencyType,T1.FrequencyExtInfo,T2.* FROM PaymentCalendar AS "
      "T1,TransactionRecord AS T2 WHERE T1.TransactionRecordNumber=T2.TransactionRecordNumber AND "
      "T2.TransactionDate>=" +
          Services().SqlDateLiteral(dtmFromDate) +
          " AND T2.TransactionDate<=" + Services().SqlDateLiteral(dtmToDate) +
          " ORDER BY T2.TransactionDate,T2.TransactionRecordNumber",
      [&](Recordset& rec) {
        const Date date = DateField(rec, "TransactionDate");
        const std::int32_t repeat_count = LongField(rec, "FrequencyExtInfo");
        const std::string frequency = FrequencyText(LongField(rec, "FrequencyType"), repeat_count);
        const Movement movement = MovementOf(rec, names);
        const std::string payee = NameIn(names.payee, rec.Fields("PayeeNumber"), "PayeeName");
        const std::string category = CategoryText(rec, names);
        if (movement.blnOutflow ? filter.blnWithPayments : filter.blnWithDeposits) {
          rows.Add({DateText(date), frequency, payee, movement.strAccount, category,
                    Format(movement.curTotal, kAmountPicture, locale)});
        }
      });
  rows.Close();
}

}  // namespace vetlo
