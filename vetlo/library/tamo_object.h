#pragma once

#include <optional>

#include "vetlo/frame/tamo.h"
#include "vetlo/library/module.h"
#include "vetlo/surface/tamo_interface.h"

namespace vetlo {

// A clsTamo behind its interface: failures become result codes.
class TamoObject final : public CountedObject, public _clsTamo, public IObjectWithPlatform {
 public:
  HRESULT QueryInterface(const GUID& iid, void** object) noexcept override;
  std::uint32_t AddRef() noexcept override { return AddReference(); }
  std::uint32_t Release() noexcept override { return ReleaseReference(); }

  HRESULT SetPlatform(Platform* platform) noexcept override;

  HRESULT AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                         std::int32_t lngChartReportSubTypeNumber, std::string_view strDefaultName,
                         const Variant& varParameter1, const Variant& varParameter2,
                         bool* result) noexcept override;
  HRESULT ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                       std::int32_t lngChartReportSubTypeNumber,
                                       bool* result) noexcept override;
  HRESULT CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                               std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                               ReportObject* objReport, const Variant& varParameter1,
                               const Variant& varParameter2, bool* result) noexcept override;
  HRESULT LenByte(std::string_view str, Variant* result) noexcept override;
  HRESULT ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                          std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                          ReportObject* objReport, const Variant& varParameter1,
                          const Variant& varParameter2, bool* result) noexcept override;
  HRESULT TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate,
                      Currency* result) noexcept override;
  HRESULT TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                        Currency* result) noexcept override;
  HRESULT TotalExpensesOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                  std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                  Date* dtmFirstDate, Date* dtmLastDate,
                                  Currency* result) noexcept override;
  HRESULT TotalExpensesOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                     std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                     Date* dtmFirstDate, Date* dtmLastDate,
                                     Currency* result) noexcept override;
  HRESULT TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                      Currency* result) noexcept override;
  HRESULT TotalIncomeOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                Date* dtmFirstDate, Date* dtmLastDate,
                                Currency* result) noexcept override;
  HRESULT TotalIncomeOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                   std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                   Date* dtmFirstDate, Date* dtmLastDate,
                                   Currency* result) noexcept override;
  HRESULT TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate,
                           Currency* result) noexcept override;
  HRESULT TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate, Date dtmToDate,
                                 Currency* result) noexcept override;
  HRESULT TotalCreditCardDebt(Database& dbDov, Date dtmToDate, Currency* result) noexcept override;

 private:
  ~TamoObject() override = default;

  // Asks an operation of the class and puts its answer where the caller wants it.
  template <typename Result, typename... Parameters, typename... Arguments>
  HRESULT Answer(Result* result, Result (clsTamo::*operation)(Parameters...),
                 Arguments&&... arguments) noexcept;

  Platform* platform_ = nullptr;
  std::optional<clsTamo> tamo_;
};

}  // namespace vetlo
