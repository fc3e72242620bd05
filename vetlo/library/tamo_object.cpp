#include "vetlo/library/tamo_object.h"

#include <new>
#include <utility>

#include "vetlo/surface/result_codes.h"

namespace vetlo {

HRESULT TamoObject::QueryInterface(const GUID& iid, void** object) noexcept {
  if (object == nullptr) {
    return E_POINTER;
  }
  if (iid == IID_IUnknown || iid == IID__clsTamo) {
    *object = static_cast<_clsTamo*>(this);
  } else if (iid == IID_IObjectWithPlatform) {
    *object = static_cast<IObjectWithPlatform*>(this);
  } else {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT TamoObject::SetPlatform(Platform* platform) noexcept {
  platform_ = platform;
  tamo_.reset();
  if (platform != nullptr) {
    tamo_.emplace(*platform);
  }
  return S_OK;
}

template <typename Result, typename... Parameters, typename... Arguments>
HRESULT TamoObject::Answer(Result* result, Result (clsTamo::*operation)(Parameters...),
                           Arguments&&... arguments) noexcept {
  if (result == nullptr) {
    return E_POINTER;
  }
  if (!tamo_) {
    return ResultOfFailure(static_cast<std::int32_t>(FailureNumber::kObjectNotSet));
  }
  const std::int32_t failure = ResumeNext([&] {
    try {
      *result = ((*tamo_).*operation)(std::forward<Arguments>(arguments)...);
    } catch (const std::exception& error) {
      ResumeNext([&] { platform_->SetErrorInfo(error.what()); });
      throw;
    }
  });
  return failure == 0 ? S_OK : ResultOfFailure(failure);
}

HRESULT TamoObject::AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                                   std::int32_t lngChartReportSubTypeNumber,
                                   std::string_view strDefaultName, const Variant& varParameter1,
                                   const Variant& varParameter2, bool* result) noexcept {
  return Answer(result, &clsTamo::AddToFavorites, dbDov, recChartReportSubType,
                lngChartReportSubTypeNumber, strDefaultName, varParameter1, varParameter2);
}

HRESULT TamoObject::ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                                 std::int32_t lngChartReportSubTypeNumber,
                                                 bool* result) noexcept {
  return Answer(result, &clsTamo::ChartReportHasBeenCustomized, recChartReportSubType,
                lngChartReportSubTypeNumber);
}

HRESULT TamoObject::CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                                         std::int32_t lngChartReportSubTypeNumber,
                                         ChartObject* objChart, ReportObject* objReport,
                                         const Variant& varParameter1, const Variant& varParameter2,
                                         bool* result) noexcept {
  return Answer(result, &clsTamo::CustomizeChartReport, dbDov, recChartReportSubType,
                lngChartReportSubTypeNumber, objChart, objReport, varParameter1, varParameter2);
}

HRESULT TamoObject::LenByte(std::string_view str, Variant* result) noexcept {
  return Answer(result, &clsTamo::LenByte, str);
}

HRESULT TamoObject::ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                                    std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                                    ReportObject* objReport, const Variant& varParameter1,
                                    const Variant& varParameter2, bool* result) noexcept {
  return Answer(result, &clsTamo::ShowChartReport, dbDov, recChartReportSubType,
                lngChartReportSubTypeNumber, objChart, objReport, varParameter1, varParameter2);
}

HRESULT TamoObject::TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate,
                                Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalAssets, dbDov, recAccount, dtmToDate);
}

HRESULT TamoObject::TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                  Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalExpenses, dbDov, dtmFromDate, dtmToDate);
}

HRESULT TamoObject::TotalExpensesOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                            std::int32_t lngCategoryNumber,
                                            bool blnCalcAllUnassigned, Date* dtmFirstDate,
                                            Date* dtmLastDate, Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalExpensesOfCategory, dbDov, dtmFromDate, dtmToDate,
                lngCategoryNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

HRESULT TamoObject::TotalExpensesOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                               std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                               Date* dtmFirstDate, Date* dtmLastDate,
                                               Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalExpensesOfSubCategory, dbDov, dtmFromDate, dtmToDate,
                lngNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

HRESULT TamoObject::TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalIncome, dbDov, dtmFromDate, dtmToDate);
}

HRESULT TamoObject::TotalIncomeOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                          std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                          Date* dtmFirstDate, Date* dtmLastDate,
                                          Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalIncomeOfCategory, dbDov, dtmFromDate, dtmToDate,
                lngCategoryNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

HRESULT TamoObject::TotalIncomeOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                             std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                             Date* dtmFirstDate, Date* dtmLastDate,
                                             Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalIncomeOfSubCategory, dbDov, dtmFromDate, dtmToDate,
                lngNumber, blnCalcAllUnassigned, dtmFirstDate, dtmLastDate);
}

HRESULT TamoObject::TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate,
                                     Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalLiabilities, dbDov, recAccount, dtmToDate);
}

HRESULT TamoObject::TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate,
                                           Date dtmToDate, Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalBudgetOfDateRange, cur, dtmFromDate, dtmToDate);
}

HRESULT TamoObject::TotalCreditCardDebt(Database& dbDov, Date dtmToDate,
                                        Currency* result) noexcept {
  return Answer(result, &clsTamo::TotalCreditCardDebt, dbDov, dtmToDate);
}

}  // namespace vetlo
