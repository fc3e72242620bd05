#include <string>
#include <vector>

#include "vetlo/store/sqlite/sqlite_database.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace vetlo {
namespace {

constexpr std::string_view kMostToldOfATable = "20";

bool IsAskedFor(const Column& column) {
  return column.type == ColumnType::kLong || column.type == ColumnType::kDate;
}

// True of a value that no condition meets. Any text, and what is behind all texts, is greater than
// any number; that is asked in place of the type, which takes three times as long. Null is none of
// a condition's business.
std::string IsNone(const Column& column) {
  const std::string name(column.name);
  return name +
         (column.type == ColumnType::kDate ? " >= ''" : " NOT BETWEEN -2147483648 AND 2147483647");
}

// The columns of a table that conditions ask for.
struct AskedFor {
  std::vector<const Column*> columns;
  std::string names;       // each behind a comma
  std::string conditions;  // that one of them is none of its type
};

AskedFor AskedForOf(const Table& table) {
  AskedFor asked;
  for (const Column& column : table.columns) {
    if (IsAskedFor(column)) {
      asked.columns.push_back(&column);
      asked.names += ", " + std::string(column.name);
      asked.conditions += (asked.conditions.empty() ? "" : " OR ") + IsNone(column);
    }
  }
  return asked;
}

void TellOf(sqlite3* handle, const Table& table, FailureListener& listener) {
  const AskedFor asked = AskedForOf(table);
  if (asked.columns.empty()) {
    return;
  }
  Statement rows(handle, "SELECT rowid" + asked.names + " FROM " + std::string(table.name) +
                             " WHERE " + asked.conditions + " LIMIT " +
                             std::string(kMostToldOfATable));
  while (rows.Step()) {
    for (std::size_t i = 0; i < asked.columns.size(); ++i) {
      // What can be read is fine; of what cannot it is told where it stands.
      const Column& column = *asked.columns[i];
      ResumeNext(listener, [&] {
        try {
          static_cast<void>(rows.Value(static_cast<int>(i) + 1, column.type));
        } catch (const Failure& failure) {
          throw Failure(static_cast<FailureNumber>(failure.number()),
                        failure.what() + (": " + PlaceText(table, column, rows.Integer(0))) +
                            std::string(kMendIt));
        }
      });
    }
  }
}

}  // namespace

void TellOfPassedByValues(Database& store, FailureListener& listener) {
  auto* const database = dynamic_cast<SqliteDatabase*>(&store);
  if (database == nullptr) {
    return;
  }
  ResumeNext(listener, [&] {
    for (const Table& table : StoreTables()) {
      if (table.name != "ChartReportSubType") {
        TellOf(database->connection().handle(), table, listener);
      }
    }
  });
}

}  // namespace vetlo
