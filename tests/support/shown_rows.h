#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "quillmarsh/cli/observed_database.h"
#include "vetlo/platform/arrays.h"

namespace vetlo {

// A row that a compute routine has filled.
struct ShownRow {
  double amount = 0;
  std::string label;

  friend bool operator==(const ShownRow&, const ShownRow&) = default;
};

inline void PrintTo(const ShownRow& row, std::ostream* out) {
  *out << "{" << row.amount << ", \"" << row.label << "\"}";
}

inline std::vector<ShownRow> RowsIn(const AmountRows& rows) {
  const AmountMatrix amounts = rows.Amounts();
  std::vector<ShownRow> shown;
  for (std::size_t i = 1; i <= amounts.Items(); ++i) {
    shown.push_back({amounts(1, i), rows.Labels()(i)});
  }
  return shown;
}

// A store that keeps what was opened and closed: "open Account", "close Account".
class KeepingStore {
 public:
  explicit KeepingStore(Database& store)
      : store_(store, {[this](std::string_view source, RecordsetType) {
                         events.push_back("open " + std::string(source));
                       },
                       [this](std::string_view source) {
                         events.push_back("close " + std::string(source));
                       }}) {}

  Database& operator*() { return store_; }

  std::vector<std::string> events;

 private:
  quillmarsh::ObservedDatabase store_;
};

// Each of them opened and closed before the next.
inline std::vector<std::string> OneAfterAnother(const std::vector<std::string>& sources) {
  std::vector<std::string> events;
  for (const std::string& source : sources) {
    events.push_back("open " + source);
    events.push_back("close " + source);
  }
  return events;
}

}  // namespace vetlo
