#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "vetlo/surface/tamo_interface.h"

namespace vetlo {

class LoadedLibrary;

// The component as its host sees it. It keeps no figures: every call computes from the store and
// sees one state of it. The store, the recordset and the display objects stay the host's, and the
// platform must outlive the component. What fails is thrown as a Failure with its number and text.
class Tamo {
 public:
  // Holds the object and with it its library; see Component::NewTamo.
  Tamo(_clsTamo* object, std::shared_ptr<LoadedLibrary> library, Platform& platform);
  ~Tamo();
  Tamo(Tamo&& other) noexcept;
  Tamo& operator=(Tamo&&) = delete;

  // Lets the user save the settings of a row as a favourite, under a name that the dialog starts
  // with. The parameters go into the favourite. True where one was saved.
  bool AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                      std::int32_t lngChartReportSubTypeNumber,
                      std::string_view strDefaultName = "", const Variant& varParameter1 = Empty{},
                      const Variant& varParameter2 = Empty{});

  // Whether a row differs from the defaults of its report number, which a reset would bring back.
  bool ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                    std::int32_t lngChartReportSubTypeNumber);

  // Lets the user change a row. True where the row was written; it is then drawn.
  bool CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                            std::int32_t lngChartReportSubTypeNumber,
                            ChartObject* objChart = nullptr, ReportObject* objReport = nullptr,
                            const Variant& varParameter1 = Empty{},
                            const Variant& varParameter2 = Empty{});

  // How many characters a text has, as a Long.
  Variant LenByte(std::string_view str);

  // Draws a settings row into the chart or into the report, whichever the row asks for, and hides
  // the other. Either may be null; where the one asked for is, or where there is no such row,
  // nothing happens. A row of group 5 takes its parameters from the caller, any other from its own
  // fields. recChartReportSubType is a table recordset; its cursor and index are moved. The result
  // is always false.
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
  // Asks the object; a failure's code becomes a Failure.
  template <typename Result, typename... Parameters, typename... Arguments>
  Result Ask(HRESULT (_clsTamo::*operation)(Parameters...) noexcept, Arguments&&... arguments);

  std::shared_ptr<LoadedLibrary> library_;
  _clsTamo* object_;
  Platform& platform_;
};

}  // namespace vetlo
