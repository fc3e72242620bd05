#include "vetlo/frame/report_call.h"

#include "vetlo/services/date_range_caption.h"

namespace vetlo {
namespace {

constexpr std::array<std::string_view, 9> kTableNames = {
    "Account",        "AccountItem",        "AccountItemType",       "Category",
    "Classification", "ClassificationItem", "ClassificationSubItem", "Payee",
    "SubCategory"};

}  // namespace

void LookUpTables::Open(Database& dbDov) {
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    tables_.at(i) = dbDov.OpenRecordset(kTableNames.at(i));
  }
}

void LookUpTables::Close() {
  for (auto& table : tables_) {
    if (table != nullptr) {
      table->Close();
      table.reset();
    }
  }
}

bool LookUpTables::Find(LookUpTable table, std::int32_t number) {
  Recordset& rec = (*this)[table];
  rec.SetIndex(kPrimaryIndex);
  rec.Seek("=", number);
  return !rec.NoMatch();
}

std::optional<std::int32_t> ReportCall::NumberIn(const Variant& varParameter) {
  std::optional<std::int32_t> number;
  // That it is none is the answer.
  ResumeNext([&] { number = ToLong(varParameter); });
  blnCleanUpArmed = false;
  return number;
}

std::string ReportCall::Caption() const { return DateRangeCaption(dtmFromDate, dtmToDate); }

}  // namespace vetlo
