#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "vetlo/platform/display.h"
#include "vetlo/platform/platform.h"
#include "vetlo/store/database.h"
#include "vetlo/surface/unknown.h"

namespace vetlo {

// The class that the component's library makes objects of.
inline constexpr GUID CLSID_clsTamo = {
    0xA88191EF, 0x1604, 0x46AA, {0xAB, 0x2F, 0x10, 0xF7, 0x1C, 0x9C, 0x16, 0x5B}};
inline constexpr std::string_view kTamoProgId = "Vetlo.clsTamo";

// Its default interface: the whole of what a host can ask, in the order of its table. Host and
// library are built by one compiler, against the same release of these headers.
//
// Each operation puts its result where the last argument points, and gives S_OK; E_POINTER where
// there is no such place; else the code of a failure, see result_codes.h, with its text handed to
// Platform::SetErrorInfo. The result is left alone then. The meaning of the operations is told in
// vetlo/host/tamo.h, whose class a host will rather use.
class _clsTamo : public IUnknown {
 public:
  virtual HRESULT AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                                 std::int32_t lngChartReportSubTypeNumber,
                                 std::string_view strDefaultName, const Variant& varParameter1,
                                 const Variant& varParameter2, bool* result) noexcept = 0;
  virtual HRESULT ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                               std::int32_t lngChartReportSubTypeNumber,
                                               bool* result) noexcept = 0;
  virtual HRESULT CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                                       std::int32_t lngChartReportSubTypeNumber,
                                       ChartObject* objChart, ReportObject* objReport,
                                       const Variant& varParameter1, const Variant& varParameter2,
                                       bool* result) noexcept = 0;
  virtual HRESULT LenByte(std::string_view str, Variant* result) noexcept = 0;
  virtual HRESULT ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                                  std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                                  ReportObject* objReport, const Variant& varParameter1,
                                  const Variant& varParameter2, bool* result) noexcept = 0;
  virtual HRESULT TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate,
                              Currency* result) noexcept = 0;
  virtual HRESULT TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                Currency* result) noexcept = 0;
  virtual HRESULT TotalExpensesOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                          std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                          Date* dtmFirstDate, Date* dtmLastDate,
                                          Currency* result) noexcept = 0;
  virtual HRESULT TotalExpensesOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                             std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                             Date* dtmFirstDate, Date* dtmLastDate,
                                             Currency* result) noexcept = 0;
  virtual HRESULT TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                              Currency* result) noexcept = 0;
  virtual HRESULT TotalIncomeOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                        std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                        Date* dtmFirstDate, Date* dtmLastDate,
                                        Currency* result) noexcept = 0;
  virtual HRESULT TotalIncomeOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                           std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                           Date* dtmFirstDate, Date* dtmLastDate,
                                           Currency* result) noexcept = 0;
  virtual HRESULT TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate,
                                   Currency* result) noexcept = 0;
  virtual HRESULT TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate,
                                         Date dtmToDate, Currency* result) noexcept = 0;
  virtual HRESULT TotalCreditCardDebt(Database& dbDov, Date dtmToDate,
                                      Currency* result) noexcept = 0;

 protected:
  ~_clsTamo() = default;
};

// Named as such identifiers are, after their interface.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
inline constexpr GUID IID__clsTamo = {
    0x6C6B8233, 0x853D, 0x450E, {0xA1, 0x16, 0x8D, 0x12, 0xBD, 0xCE, 0x99, 0x53}};

// How a new object comes to know its surroundings. Until then every operation fails with
// kObjectNotSet.
class IObjectWithPlatform : public IUnknown {
 public:
  // The platform must outlive the object.
  virtual HRESULT SetPlatform(Platform* platform) noexcept = 0;

 protected:
  ~IObjectWithPlatform() = default;
};

inline constexpr GUID IID_IObjectWithPlatform = {
    0xBD630DA3, 0x970E, 0x41E2, {0x9F, 0xC9, 0xCD, 0x71, 0xD6, 0x31, 0x2A, 0x74}};

// What a library says of itself. The texts live as long as it is loaded.
struct LibraryFacts {
  std::string_view type_library;  // its name
  std::string_view text;          // the same for people
  std::string_view version;       // of the file
};

// Told by the class factory.
class ILibraryInfo : public IUnknown {
 public:
  virtual HRESULT GetFacts(LibraryFacts* facts) noexcept = 0;

 protected:
  ~ILibraryInfo() = default;
};

inline constexpr GUID IID_ILibraryInfo = {
    0x8C650391, 0xF784, 0x436A, {0xA1, 0x4C, 0xBB, 0xFA, 0x70, 0x7C, 0xAE, 0x0D}};

}  // namespace vetlo
