#include "vetlo/host/tamo.h"

#include <utility>

#include "vetlo/surface/result_codes.h"

namespace vetlo {

Tamo::Tamo(_clsTamo* object, std::shared_ptr<LoadedLibrary> library, Platform& platform)
    : library_(std::move(library)), object_(object), platform_(platform) {}

Tamo::Tamo(Tamo&& other) noexcept
    : library_(std::move(other.library_)),
      object_(std::exchange(other.object_, nullptr)),
      platform_(other.platform_) {}

Tamo::~Tamo() {
  if (object_ != nullptr) {
    object_->Release();
  }
}

template <typename Result, typename... Parameters, typename... Arguments>
Result Tamo::Ask(HRESULT (_clsTamo::*operation)(Parameters...) noexcept, Arguments&&... arguments) {
  Result answer{};
  platform_.SetErrorInfo("");
  const HRESULT result = (object_->*operation)(std::forward<Arguments>(arguments)..., &answer);
  if (Failed(result)) {
    throw Failure(static_cast<FailureNumber>(FailureOfResult(result)), platform_.ErrorInfo());
  }
  return answer;
}

bool Tamo::AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                          std::int32_t lngChartReportSubTypeNumber, std::string_view strDefaultName,
                          const Variant& varParameter1, const Variant& varParameter2) {
  return Ask<bool>(&_clsTamo::AddToFavorites, dbDov, recChartReportSubType,
                   lngChartReportSubTypeNumber, strDefaultName, varParameter1, varParameter2);
}

bool Tamo::ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                        std::int32_t lngChartReportSubTypeNumber) {
  return Ask<bool>(&_clsTamo::ChartReportHasBeenCustomized, recChartReportSubType,
                   lngChartReportSubTypeNumber);
}

bool Tamo::CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                                std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                                ReportObject* objReport, const Variant& varParameter1,
                                const Variant& varParameter2) {
  return Ask<bool>(&_clsTamo::CustomizeChartReport, dbDov, recChartReportSubType,
                   lngChartReportSubTypeNumber, objChart, objReport, varParameter1, varParameter2);
}

Variant Tamo::LenByte(std::string_view str) { return Ask<Variant>(&_clsTamo::LenByte, str); }

bool Tamo::ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                           std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                           ReportObject* objReport, const Variant& varParameter1,
                           const Variant& varParameter2) {
  return Ask<bool>(&_clsTamo::ShowChartReport, dbDov, recChartReportSubType,
                   lngChartReportSubTypeNumber, objChart, objReport, varParameter1, varParameter2);
}

Currency Tamo::TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate) {
  return Ask<Currency>(&_clsTamo::TotalAssets, dbDov, recAccount, dtmToDate);
}

Currency Tamo::TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate) {
  return Ask<Currency>(&_clsTamo::TotalLiabilities, dbDov, recAccount, dtmToDate);
}

Currency Tamo::TotalCreditCardDebt(Database& dbDov, Date dtmToDate) {
  return Ask<Currency>(&_clsTamo::TotalCreditCardDebt, dbDov, dtmToDate);
}

Currency Tamo::TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate) {
  return Ask<Currency>(&_clsTamo::TotalIncome, dbDov, dtmFromDate, dtmToDate);
}

Currency Tamo::TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate) {
  return Ask<Currency>(&_clsTamo::TotalExpenses, dbDov, dtmFromDate, dtmToDate);
}

Currency Tamo::TotalIncomeOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                     std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                     Date* dtmFirstDate, Date* dtmLastDate) {
  return Ask<Currency>(&_clsTamo::TotalIncomeOfCategory, dbDov, dtmFromDate, dtmToDate,
                       lngCategoryNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

Currency Tamo::TotalExpensesOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                       std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                       Date* dtmFirstDate, Date* dtmLastDate) {
  return Ask<Currency>(&_clsTamo::TotalExpensesOfCategory, dbDov, dtmFromDate, dtmToDate,
                       lngCategoryNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

Currency Tamo::TotalIncomeOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                        std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                        Date* dtmFirstDate, Date* dtmLastDate) {
  return Ask<Currency>(&_clsTamo::TotalIncomeOfSubCategory, dbDov, dtmFromDate, dtmToDate,
                       lngNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

Currency Tamo::TotalExpensesOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                          std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                          Date* dtmFirstDate, Date* dtmLastDate) {
  return Ask<Currency>(&_clsTamo::TotalExpensesOfSubCategory, dbDov, dtmFromDate, dtmToDate,
                       lngNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

Currency Tamo::TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate,
                                      Date dtmToDate) {
  return Ask<Currency>(&_clsTamo::TotalBudgetOfDateRange, cur, dtmFromDate, dtmToDate);
}

}  // namespace vetlo
