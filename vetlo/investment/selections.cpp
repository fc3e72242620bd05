#include "vetlo/investment/selections.h"

#include "vetlo/platform/text.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

constexpr std::int32_t kInvestmentBasicType = 2;  // AccountItemType.BasicAccountType

}  // namespace

std::string InvestmentItemsText() {
  return "SELECT T1.* FROM AccountItem AS T1,AccountItemType AS T2 WHERE "
         "T1.AccountItemTypeNumber=T2.AccountItemTypeNumber AND T2.BasicAccountType=" +
         Str(kInvestmentBasicType);
}

std::string InvestmentAccountsText() {
  return "SELECT * FROM Account WHERE AccountType=" + Str(kInvestmentAccount);
}

std::string InvestmentTypesText() {
  return "SELECT * FROM AccountItemType WHERE BasicAccountType=" + Str(kInvestmentBasicType) +
         " ORDER BY AccountItemTypeNumber";
}

std::string ItemsOfTypeText(std::int32_t lngAccountItemTypeNumber) {
  return "SELECT * FROM AccountItem WHERE AccountItemTypeNumber=" + Str(lngAccountItemTypeNumber) +
         " ORDER BY AccountItemName";
}

}  // namespace vetlo
