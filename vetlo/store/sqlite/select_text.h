#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/connection.h"

namespace vetlo {

// An SQL text with its numbers and dates taken out: texts of one shape differ in them alone.
//
//   "SELECT * FROM Account WHERE AccountType= 4"  gives
//   "SELECT * FROM Account WHERE AccountType= ?"  and the value 4
struct ShapedText {
  std::string shape;
  std::vector<StoredValue> values;
};

// Fails with kBadSqlText for a character or a date that the dialect does not know.
ShapedText ShapeOf(std::string_view text);

// One table in the FROM list.
struct SelectSource {
  const Table* table = nullptr;
  std::string alias;  // the table's name where the text gives none
};

// One column of the result.
struct SelectColumn {
  std::string name;
  std::string sql;
  ColumnType type = ColumnType::kLong;
  std::size_t source = 0;          // whose row it comes from
  const Column* column = nullptr;  // null for a sum
};

struct OrderTerm {
  std::string sql;
  bool descending = false;
  const Column* column = nullptr;  // null for the rows' own numbers
};

// One of the conditions that a text joins with AND: whatever else it asks for, each row of the
// result meets it.
//
//   TransactionDate<= ?                         "<=" and the place of a value among the text's
//   (TransactionType= ? OR TransactionType= ?)  "=" and the places of two, one of which it is
struct Condition {
  std::size_t source = 0;
  const Column* column = nullptr;
  std::string_view op;  // one of =, <, <=, >, >=
  std::vector<std::size_t> values;
};

// What a shape asks for, in terms that the engine's own SQL is written from.
struct SelectPlan {
  std::vector<SelectSource> sources;
  std::vector<SelectColumn> columns;
  bool distinct = false;
  bool sums = false;
  std::string where;                  // without its keyword; empty where all rows are meant
  std::vector<Condition> conditions;  // those that are plain
  std::vector<OrderTerm> order;       // none where the order is free

  // True where each row of the result is a row of the sources, so that columns that nobody reads
  // can be left out.
  [[nodiscard]] bool IsPlain() const { return !distinct && !sums; }
};

// A set of result columns, one bit each.
using ColumnSet = std::uint64_t;
inline constexpr std::size_t kMostColumns = 64;

ColumnSet AllColumns(const SelectPlan& plan);

// Fails with kTableNotFound for a table that the model does not have, with kBadSqlText for any
// other text that is none of the dialect.
SelectPlan PlanOf(std::string_view shape);

enum class Direction { kForward, kLastRowFirst };

// Where the rows of the first source are taken from: from its table, or just those that have been
// found by their numbers (vetlo/store/sqlite/found_rows.h), perhaps in the plan's own order.
enum class RowsFrom { kTable, kFoundRows, kFoundRowsInOrder };

// The engine's SQL for the columns asked for. In a plain plan the sources' rowids stand in front
// of them; of any other plan the result has all columns. Found rows are the first parameter.
std::string SelectSql(const SelectPlan& plan, ColumnSet columns, Direction direction,
                      RowsFrom from = RowsFrom::kTable);

}  // namespace vetlo
