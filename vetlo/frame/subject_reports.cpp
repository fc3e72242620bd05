#include "vetlo/frame/subject_reports.h"

#include "vetlo/services/report_rows.h"

namespace vetlo {

std::optional<std::int32_t> NumberInFirstParameter(ReportCall& call) {
  return call.NumberIn(call.row.varParameter1);
}

std::string TitleWith(const ReportCall& call, const std::optional<std::string>& name) {
  return name ? call.row.strTitle + ":" + *name : call.row.strTitle;
}

std::optional<std::string> NameOfAccount(ReportCall& call, std::int32_t lngAccountNumber) {
  if (!call.tables.Find(LookUpTable::kAccount, lngAccountNumber)) {
    return std::nullopt;
  }
  return AccountLabel(call.tables[LookUpTable::kAccount], call.Target());
}

std::string TitleWithAccount(ReportCall& call, const std::int32_t& lngAccountNumber) {
  return TitleWith(call, NameOfAccount(call, lngAccountNumber));
}

}  // namespace vetlo
