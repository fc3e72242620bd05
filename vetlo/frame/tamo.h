#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "vetlo/output/tamo_form.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/platform.h"
#include "vetlo/store/database.h"

namespace vetlo {

struct ReportCall;

// The component as its host sees it. It keeps no figures: every call computes from the store and
// sees one state of it. The store, the recordset and the display objects stay the host's.
class clsTamo {
 public:
  // The platform must outlive the component.
  explicit clsTamo(Platform& platform) : platform_(platform) {}

  // Lets the user save the settings of this row as a favourite, under a name that the dialog starts
  // with. The parameters go into the favourite. True where one was saved.
  bool AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                      std::int32_t lngChartReportSubTypeNumber,
                      std::string_view strDefaultName = "", const Variant& varParameter1 = Empty{},
                      const Variant& varParameter2 = Empty{});

  // Whether the row of this number differs from the defaults of its report number, which a reset
  // would bring back. False where there is no such row.
  bool ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                    std::int32_t lngChartReportSubTypeNumber);

  // Lets the user change the row of this number. True where the row was written; it is then drawn,
  // as ShowChartReport draws it.
  bool CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                            std::int32_t lngChartReportSubTypeNumber,
                            ChartObject* objChart = nullptr, ReportObject* objReport = nullptr,
                            const Variant& varParameter1 = Empty{},
                            const Variant& varParameter2 = Empty{});

  // How many characters a text has, as a Long. It counts no bytes, whatever its name says.
  Variant LenByte(std::string_view str);

  // Draws the settings row of this number into the chart or into the report, whichever the row
  // asks for, and hides the other. Either may be null; where the one asked for is, or where there
  // is no such row, nothing happens. A row of group 5 takes its parameters from the caller, any
  // other from its own fields. recChartReportSubType is a table recordset; its cursor and index
  // are moved. The result is always false.
  //
  // Failures: reading the row fails to the caller. A report whose figures fail stands under its
  // title without them. What fails while the report is being written reaches the caller, with the
  // document unfinished and the hourglass showing.
  bool ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                       std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart = nullptr,
                       ReportObject* objReport = nullptr, const Variant& varParameter1 = Empty{},
                       const Variant& varParameter2 = Empty{});

  // What there is and what is owed at the end of a day, both zero or more. recAccount is the
  // caller's table "Account".
  Currency TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate);
  Currency TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate);
  Currency TotalCreditCardDebt(Database& dbDov, Date dtmToDate);

  // What came in and what went out between two days, both included. Of one category, or where
  // blnCalcAllUnassigned is set of the records without any; of one subcategory, or where it is set
  // of the records of a category without any. The first and the last day of what was counted go
  // where the caller wants them: the first lies after the last where nothing was.
  Currency TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate);
  Currency TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate);
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

  // The amounts of all months that a range touches, of twelve that begin with January's. Fails
  // with kSubscriptOutOfRange where one of them is not there.
  Currency TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate, Date dtmToDate);

 private:
  const frmTamo& Form();
  void Draw(ReportCall& call, DisplayObject* other);

  Platform& platform_;
  std::optional<frmTamo> form_;  // made when it is first needed
};

}  // namespace vetlo
