#include "vetlo/store/database.h"

#include <utility>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

// A place for a text. Where it cannot be had, what failed first is what is told.
template <typename Ask>
std::string PlaceIfKnown(const Ask& ask) {
  std::string place;
  ResumeNext([&] { place = ask(); });
  return place;
}

template <typename Convert>
auto Converted(Recordset& rec, std::string_view strName, const Convert& convert) {
  const Variant value = rec.Fields(strName);
  try {
    return convert(value);
  } catch (const Failure& failure) {
    throw Failure(static_cast<FailureNumber>(failure.number()),
                  failure.what() + (": " + PlaceIfKnown([&] { return rec.PlaceOf(strName); })) +
                      std::string(kMendIt));
  }
}

}  // namespace

std::int32_t LongField(Recordset& rec, std::string_view strName) {
  return Converted(rec, strName, ToLong);
}

bool BooleanField(Recordset& rec, std::string_view strName) {
  return Converted(rec, strName, ToBoolean);
}

Currency CurrencyField(Recordset& rec, std::string_view strName) {
  return Converted(rec, strName, ToCurrency);
}

Date DateField(Recordset& rec, std::string_view strName) { return Converted(rec, strName, ToDate); }

double DoubleField(Recordset& rec, std::string_view strName) {
  return Converted(rec, strName, static_cast<double (*)(const Variant&)>(ToDouble));
}

std::string TextField(Recordset& rec, std::string_view strName) {
  return Converted(rec, strName, ToText);
}

std::string TextFieldOrEmpty(Recordset& rec, std::string_view strName) {
  return Converted(rec, strName,
                   [](const Variant& value) { return IsNull(value) ? "" : ToText(value); });
}

namespace {

void Visit(Recordset& rec, const std::function<void(Recordset&)>& visit) {
  try {
    visit(rec);
  } catch (const NothingThere&) {
    throw;
  } catch (const Failure& failure) {
    const std::string place =
        failure.HasText() ? "" : PlaceIfKnown([&] { return rec.PlaceOfRow(); });
    if (place.empty()) {
      throw;
    }
    throw Failure(static_cast<FailureNumber>(failure.number()),
                  failure.what() + (" (met at " + place) + ")");
  }
}

}  // namespace

void ForEachRow(Recordset& rec, const std::function<void(Recordset&)>& visit) {
  if (rec.Bof() && rec.Eof()) {
    return;
  }
  rec.MoveFirst();
  while (!rec.Eof()) {
    Visit(rec, visit);
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
    // What made it go is told by whoever hears of that.
    ResumeNext([this] { rec_->Close(); });
  }
}

void ScopedRecordset::Close() {
  // Let go first: what could not be closed is not closed a second time.
  const std::unique_ptr<Recordset> rec = std::move(rec_);
  rec->Close();
}

}  // namespace vetlo
