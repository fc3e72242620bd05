#include "vetlo/store/sqlite/found_rows.h"

#include <new>

#include "vetlo/store/sqlite/connection.h"

namespace vetlo {
namespace {

// The columns of the table, the last one being the function's argument.
constexpr const char* kTable = "CREATE TABLE rows (number, place, found HIDDEN)";
enum TableColumn { kNumber, kPlace, kFound };

constexpr const char* kPointerType = "vetlo.FoundRows";

// How the rows are walked.
enum Walk { kForwards, kBackwards };

struct RowCursor : sqlite3_vtab_cursor {
  const FoundRows* rows = nullptr;
  std::size_t at = 0;
  std::size_t size = 0;
  bool backwards = false;

  [[nodiscard]] std::size_t Place() const { return backwards ? size - 1 - at : at; }
  [[nodiscard]] std::int64_t Number() const {
    const std::size_t place = Place();
    const std::size_t dated = rows->dated.size();
    return place < dated ? rows->dated[place].number : rows->unsure[place - dated].number;
  }
};

RowCursor& Of(sqlite3_vtab_cursor* cursor) { return *static_cast<RowCursor*>(cursor); }

int Connect(sqlite3* handle, void*, int, const char* const*, sqlite3_vtab** table, char**) {
  const int result = sqlite3_declare_vtab(handle, kTable);
  if (result != SQLITE_OK) {
    return result;
  }
  *table = new (std::nothrow) sqlite3_vtab{};
  return *table == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int Disconnect(sqlite3_vtab* table) {
  delete table;
  return SQLITE_OK;
}

int ChooseWalk(sqlite3_vtab*, sqlite3_index_info* info) {
  constexpr double kFewRows = 100;
  for (int i = 0; i < info->nConstraint; ++i) {
    const auto& constraint = info->aConstraint[i];
    if (constraint.iColumn == kFound && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ &&
        constraint.usable != 0) {
      info->aConstraintUsage[i].argvIndex = 1;
      info->aConstraintUsage[i].omit = 1;
      info->estimatedCost = kFewRows;
      info->estimatedRows = static_cast<sqlite3_int64>(kFewRows);
      const bool by_place = info->nOrderBy == 1 && info->aOrderBy[0].iColumn == kPlace;
      info->orderByConsumed = by_place ? 1 : 0;
      info->idxNum = by_place && info->aOrderBy[0].desc != 0 ? kBackwards : kForwards;
      return SQLITE_OK;
    }
  }
  return SQLITE_CONSTRAINT;
}

int Open(sqlite3_vtab*, sqlite3_vtab_cursor** cursor) {
  *cursor = new (std::nothrow) RowCursor();
  return *cursor == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int Close(sqlite3_vtab_cursor* cursor) {
  delete &Of(cursor);
  return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* cursor, int walk, const char*, int, sqlite3_value** arguments) {
  RowCursor& row = Of(cursor);
  row.rows = static_cast<const FoundRows*>(sqlite3_value_pointer(arguments[0], kPointerType));
  row.at = 0;
  row.size = row.rows == nullptr ? 0 : row.rows->Size();
  row.backwards = walk == kBackwards;
  return SQLITE_OK;
}

int Next(sqlite3_vtab_cursor* cursor) {
  ++Of(cursor).at;
  return SQLITE_OK;
}

int Eof(sqlite3_vtab_cursor* cursor) { return Of(cursor).at >= Of(cursor).size ? 1 : 0; }

int Value(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column) {
  const RowCursor& row = Of(cursor);
  if (column == kNumber) {
    sqlite3_result_int64(context, row.Number());
  } else if (column == kPlace) {
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(row.Place()));
  }
  return SQLITE_OK;
}

int RowId(sqlite3_vtab_cursor* cursor, sqlite3_int64* number) {
  *number = static_cast<sqlite3_int64>(Of(cursor).Place());
  return SQLITE_OK;
}

sqlite3_module Module() {
  sqlite3_module module = {};
  module.xConnect = Connect;
  module.xDisconnect = Disconnect;
  module.xBestIndex = ChooseWalk;
  module.xOpen = Open;
  module.xClose = Close;
  module.xFilter = Filter;
  module.xNext = Next;
  module.xEof = Eof;
  module.xColumn = Value;
  module.xRowid = RowId;
  return module;
}

}  // namespace

void OfferFoundRows(sqlite3* handle) {
  static const sqlite3_module kModule = Module();
  const int result = sqlite3_create_module(handle, kFoundRowsFunction, &kModule, nullptr);
  if (result != SQLITE_OK) {
    RaiseStoreFailure(handle, result);
  }
  // Its table is made when it is first named, which may not be allowed later.
  Statement(handle, "SELECT number FROM " + std::string(kFoundRowsFunction) + "(NULL)");
}

void BindFoundRows(sqlite3_stmt* statement, int parameter, const FoundRows& rows) {
  const int result = sqlite3_bind_pointer(statement, parameter, const_cast<FoundRows*>(&rows),
                                          kPointerType, nullptr);
  if (result != SQLITE_OK) {
    RaiseStoreFailure(sqlite3_db_handle(statement), result);
  }
}

}  // namespace vetlo
