#include "vetlo/services/report_rows.h"

#include "vetlo/services/common_services.h"

namespace vetlo {

double LeastShareShown(ChartOrReport lngChartOrReportType) {
  return lngChartOrReportType == ChartOrReport::kChart ? 0.05 : 0;
}

std::string AccountLabel(Recordset& recAccount, ChartOrReport lngChartOrReportType) {
  std::string name = TextField(recAccount, "AccountName");
  if (lngChartOrReportType == ChartOrReport::kChart) {
    return name;
  }
  const auto type = Services().AccountTypeInfo(LongField(recAccount, "AccountType"));
  return std::string(type.name) + ":" + name;
}

}  // namespace vetlo
