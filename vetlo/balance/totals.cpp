#include "vetlo/balance/totals.h"

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

enum class Sign { kPositive, kNegative };

// The sum of the balances of one sign, as a positive amount.
class BalanceSum {
 public:
  BalanceSum(Database& dbDov, Date dtmToDate, Sign sign)
      : dbDov_(dbDov), dtmToDate_(dtmToDate), sign_(sign) {}

  void Add(Recordset& recAccount) {
    const std::int32_t lngAccountNumber = LongField(recAccount, "AccountNumber");
    // Where the balance cannot be had, that of the account before stays and counts again.
    ResumeNext(dbDov_, [&] {
      curBalance_ = Services().AccountBalanceOnDate(dbDov_, lngAccountNumber, dtmToDate_);
    });
    if (sign_ == Sign::kPositive && curBalance_ > Currency{}) {
      curTotal_ += curBalance_;
    } else if (sign_ == Sign::kNegative && curBalance_ < Currency{}) {
      curTotal_ -= curBalance_;
    }
  }

  [[nodiscard]] Currency Total() const { return curTotal_; }

 private:
  Database& dbDov_;
  Date dtmToDate_;
  Sign sign_;
  Currency curBalance_;
  Currency curTotal_;
};

Currency TotalOfSign(Database& dbDov, Recordset& recAccount, Date dtmToDate, Sign sign) {
  recAccount.SetIndex(kPrimaryIndex);
  if (recAccount.RecordCount() <= 0) {
    return {};
  }
  BalanceSum sum(dbDov, dtmToDate, sign);
  recAccount.MoveFirst();
  while (!recAccount.Eof()) {
    sum.Add(recAccount);
    recAccount.MoveNext();
  }
  return sum.Total();
}

}  // namespace

Currency TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate) {
  return TotalOfSign(dbDov, recAccount, dtmToDate, Sign::kPositive);
}

Currency TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate) {
  return TotalOfSign(dbDov, recAccount, dtmToDate, Sign::kNegative);
}

Currency TotalCreditCardDebt(Database& dbDov, Date dtmToDate) {
  const auto recAccount =
      dbDov.OpenRecordset("SELECT * FROM Account WHERE AccountType=" + Str(kCreditCard));
  BalanceSum sum(dbDov, dtmToDate, Sign::kNegative);
  ForEachRow(*recAccount, [&](Recordset& rec) { sum.Add(rec); });
  recAccount->Close();
  return sum.Total();
}

}  // namespace vetlo
