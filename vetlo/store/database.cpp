#include "vetlo/store/database.h"

#include <utility>

#include "vetlo/platform/failure.h"

namespace vetlo {

std::int32_t LongField(Recordset& rec, std::string_view strName) {
  return ToLong(rec.Fields(strName));
}

Currency CurrencyField(Recordset& rec, std::string_view strName) {
  return ToCurrency(rec.Fields(strName));
}

Date DateField(Recordset& rec, std::string_view strName) { return ToDate(rec.Fields(strName)); }

double DoubleField(Recordset& rec, std::string_view strName) {
  return ToDouble(rec.Fields(strName));
}

std::string TextField(Recordset& rec, std::string_view strName) {
  return ToText(rec.Fields(strName));
}

std::string TextFieldOrEmpty(Recordset& rec, std::string_view strName) {
  const Variant value = rec.Fields(strName);
  return IsNull(value) ? "" : ToText(value);
}

void ForEachRow(Recordset& rec, const std::function<void(Recordset&)>& visit) {
  if (rec.Bof() && rec.Eof()) {
    return;
  }
  rec.MoveFirst();
  while (!rec.Eof()) {
    visit(rec);
    rec.MoveNext();
  }
}

void ForEachRowOf(Database& dbDov, std::string_view strSource,
                  const std::function<void(Recordset&)>& visit) {
  ScopedRecordset rec(dbDov, strSource);
  ForEachRow(*rec, visit);
  rec.Close();
}

ScopedRecordset::~ScopedRecordset() {
  if (rec_ != nullptr) {
    ResumeNext([this] { rec_->Close(); });
  }
}

void ScopedRecordset::Close() {
  // Let go first: what could not be closed is not closed a second time.
  const std::unique_ptr<Recordset> rec = std::move(rec_);
  rec->Close();
}

}  // namespace vetlo
