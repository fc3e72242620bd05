#pragma once

#include <span>
#include <string_view>

#include "vetlo/output/tamo_form.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/platform.h"
#include "vetlo/store/database.h"

namespace vetlo {

struct ReportCall;

// The component's one class, behind the interface of its library. What the operations are for, and
// who owns what, is told where a host calls them: vetlo/host/tamo.h. Every call computes from the
// store, sees one state of it and keeps nothing.
class clsTamo {
 public:
  // The platform must outlive the component.
  explicit clsTamo(Platform& platform) : platform_(platform), form_(platform) {}

  bool AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                      std::int32_t lngChartReportSubTypeNumber,
                      std::string_view strDefaultName = "", const Variant& varParameter1 = Empty{},
                      const Variant& varParameter2 = Empty{});
  bool ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                    std::int32_t lngChartReportSubTypeNumber);
  bool CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                            std::int32_t lngChartReportSubTypeNumber,
                            ChartObject* objChart = nullptr, ReportObject* objReport = nullptr,
                            const Variant& varParameter1 = Empty{},
                            const Variant& varParameter2 = Empty{});
  Variant LenByte(std::string_view str);

  // Failures: reading the row fails to the caller. A report whose figures fail stands under its
  // title without them. What fails while the report is being written reaches the caller, with the
  // document unfinished and the hourglass showing.
  bool ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                       std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart = nullptr,
                       ReportObject* objReport = nullptr, const Variant& varParameter1 = Empty{},
                       const Variant& varParameter2 = Empty{});

  Currency TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate);
  Currency TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate);
  Currency TotalCreditCardDebt(Database& dbDov, Date dtmToDate);

  Currency TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate);
  Currency TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate);

  // The days of what was counted go where the caller wants them; what stood there is gone also
  // where the total fails.
  Currency TotalIncomeOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                 std::int32_t lngCategoryNumber = 0,
                                 bool blnCalcAllUnassigned = false, Date* dtmFirstDate = nullptr,
                                 Date* dtmLastDate = nullptr);
  Currency TotalExpensesOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                   std::int32_t lngCategoryNumber = 0,
                                   bool blnCalcAllUnassigned = false, Date* dtmFirstDate = nullptr,
                                   Date* dtmLastDate = nullptr);
  Currency TotalIncomeOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                    std::int32_t lngNumber, bool blnCalcAllUnassigned = false,
                                    Date* dtmFirstDate = nullptr, Date* dtmLastDate = nullptr);
  Currency TotalExpensesOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                      std::int32_t lngNumber, bool blnCalcAllUnassigned = false,
                                      Date* dtmFirstDate = nullptr, Date* dtmLastDate = nullptr);
  Currency TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate, Date dtmToDate);

 private:
  void Draw(ReportCall& call, DisplayObject* other);

  Platform& platform_;
  frmTamo form_;
};

}  // namespace vetlo
