#include "vetlo/store/sqlite/schema.h"

#include <array>
#include <functional>
#include <set>

#include "vetlo/platform/failure.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

struct Index {
  std::string_view name;
  std::string_view table;
  std::string_view columns;
  std::string_view condition = {};  // with its keyword
};

// Each index holds all that its readers read, so that they never go to the table's own rows.
constexpr std::array kIndexes = {
    // What moved an account's own cash up to a date.
    Index{"TransactionsOfAccount", "TransactionRecord",
          "AccountNumber, TransactionDate, TransactionRecordType, TransactionType, "
          "ToOrFundAccountNumber, Total"},
    // What moved an account's cash from the other end.
    Index{"TransactionsOfOtherAccount", "TransactionRecord",
          "ToOrFundAccountNumber, TransactionDate, TransactionRecordType, TransactionType, "
          "AccountNumber, Total"},
    // What moved an account's holdings.
    Index{"TransactionsOfHolding", "TransactionRecord",
          "AccountNumber, AccountItemNumber, TransactionRecordType, TransactionType, "
          "TransactionDate, Quantity",
          " WHERE AccountItemNumber IS NOT NULL"},
    // What came in or went out in a period.
    Index{"TransactionsOfType", "TransactionRecord",
          "TransactionType, TransactionDate, TransactionRecordType, AccountNumber, "
          "ToOrFundAccountNumber, CategoryNumber, Total"},
    // The same of one category, and of its records without a subcategory.
    Index{"TransactionsOfCategory", "TransactionRecord",
          "CategoryNumber, TransactionType, TransactionDate, SubCategoryNumber, "
          "TransactionRecordType, AccountNumber, ToOrFundAccountNumber, Total"},
    Index{"TransactionsOfSubCategory", "TransactionRecord",
          "SubCategoryNumber, TransactionType, TransactionDate, TransactionRecordType, "
          "AccountNumber, ToOrFundAccountNumber, Total",
          " WHERE SubCategoryNumber IS NOT NULL"},
    Index{"SubCategoriesOfCategory", "SubCategory", "CategoryNumber"},
    // What went between the household and a payee. The records of a day stand in the order of their
    // numbers, which is how a text ordered by the day shows them: nothing is left to sort.
    Index{"TransactionsOfPayee", "TransactionRecord",
          "PayeeNumber, TransactionRecordType, TransactionDate, TransactionRecordNumber, "
          "TransactionType, AccountNumber, ToOrFundAccountNumber, Total"},
    // What an investment cost and brought.
    Index{"TransactionsOfItem", "TransactionRecord",
          "AccountItemNumber, TransactionType, TransactionRecordType, AccountNumber, Total",
          " WHERE AccountItemNumber IS NOT NULL"},
    Index{"ItemsOfType", "AccountItem", "AccountItemTypeNumber"},
    Index{"PricesOfItem", "PriceRecord", "AccountItemNumber, PriceTypeNumber, PriceDate, Price"},
    Index{"AccountsServed", "AssociatedAccountInfo", "AccountNumber"},
};

std::string_view FirstColumn(const Index& index) {
  return index.columns.substr(0, index.columns.find(','));
}

std::string_view DeclaredType(ColumnType type) {
  static constexpr std::array<std::string_view, 7> kNames = {
      "INTEGER", "CURRENCY", "DATE", "BOOLEAN", "DOUBLE", "TEXT", "VARIANT"};
  return kNames.at(static_cast<std::size_t>(type));
}

bool IsSingleKey(const Table& table) {
  return table.key == KeyKind::kUnique && table.key_columns == 1;
}

std::string ColumnSql(const Table& table, const Column& column) {
  std::string sql = std::string(column.name) + " " + std::string(DeclaredType(column.type));
  if (column.length > 0) {
    sql += "(" + std::to_string(column.length) + ")";
  }
  if (IsSingleKey(table) && &column == table.columns.data()) {
    return sql + " PRIMARY KEY";
  }
  sql += column.required ? " NOT NULL" : "";
  sql += column.is_name ? " COLLATE NOCASE" : "";
  return column.initial.empty() ? sql : sql + " DEFAULT " + std::string(column.initial);
}

std::string KeySql(const Table& table) {
  if (table.key != KeyKind::kUnique || IsSingleKey(table)) {
    return "";
  }
  std::string columns;
  for (std::int32_t i = 0; i < table.key_columns; ++i) {
    columns += (i == 0 ? "" : ", ");
    columns += table.columns[static_cast<std::size_t>(i)].name;
  }
  return ", PRIMARY KEY (" + columns + ")";
}

std::string TableSql(const Table& table) {
  std::string columns;
  for (const Column& column : table.columns) {
    columns += (columns.empty() ? "" : ", ") + ColumnSql(table, column);
  }
  return "CREATE TABLE " + std::string(table.name) + " (" + columns + KeySql(table) + ")";
}

std::string Folded(std::string name) {
  for (char& c : name) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return name;
}

[[noreturn]] void RaiseNotOurs(const std::string& why) {
  throw Failure(FailureNumber::kStoreUnusable, "this is no Quillmarsh store: " + why);
}

void ForEachName(Connection& connection, const std::string& sql,
                 const std::function<void(const std::string& name)>& visit) {
  Statement statement(connection.handle(), sql);
  while (statement.Step()) {
    // What an expression begins with has no name.
    if (const Variant name = statement.Value(0, ColumnType::kText); !IsNull(name)) {
      visit(ToText(name));
    }
  }
}

// The real tables with numbered rows (no view, nothing virtual), and those among them that cannot
// be taken; all folded.
struct FoundTables {
  std::set<std::string> real;
  std::set<std::string> computing;  // have a column that no writer fills
  std::set<std::string> hiding;     // call a column by the name of the rows' numbers
};

FoundTables TablesOf(Connection& connection) {
  // Of each table its first column, and any that is of these kinds.
  Statement statement(connection.handle(),
                      "SELECT t.name, c.hidden <> 0, c.name = 'rowid' COLLATE NOCASE "
                      "FROM pragma_table_list AS t, pragma_table_xinfo(t.name) AS c "
                      "WHERE t.schema = 'main' AND t.type = 'table' AND t.wr = 0 "
                      "AND (c.cid = 0 OR c.hidden <> 0 OR c.name = 'rowid' COLLATE NOCASE)");
  FoundTables found;
  while (statement.Step()) {
    const std::string table = Folded(ToText(statement.Value(0, ColumnType::kText)));
    found.real.insert(table);
    if (statement.Integer(1) != 0) {
      found.computing.insert(table);
    }
    if (statement.Integer(2) != 0) {
      found.hiding.insert(table);
    }
  }
  return found;
}

void CheckTable(Connection& connection, const Table& table, const FoundTables& found) {
  const std::string name(table.name);
  if (found.hiding.contains(Folded(name))) {
    RaiseNotOurs("its table " + name + " hides the numbers of its rows");
  }
  for (const Column& column : table.columns) {
    const bool there = found.real.contains(Folded(name)) &&
                       sqlite3_table_column_metadata(connection.handle(), "main", table.name.data(),
                                                     column.name.data(), nullptr, nullptr, nullptr,
                                                     nullptr, nullptr) == SQLITE_OK;
    if (!there) {
      RaiseNotOurs("it has no table " + name + " with a column " + std::string(column.name));
    }
  }
  // Whoever reads or writes a row would have to work out what the store's maker put there.
  if (found.computing.contains(Folded(name))) {
    RaiseNotOurs("its table " + name + " computes a column by itself");
  }
}

}  // namespace

void CreateSchema(Connection& connection) {
  connection.Execute("PRAGMA application_id = " + std::to_string(kStoreApplicationId));
  connection.Execute("PRAGMA user_version = " + std::to_string(kStoreVersion));
  for (const Table& table : StoreTables()) {
    connection.Execute(TableSql(table));
  }
}

void CreateIndexes(Connection& connection) {
  for (const Index& index : kIndexes) {
    connection.Execute("CREATE INDEX IF NOT EXISTS " + std::string(index.name) + " ON " +
                       std::string(index.table) + " (" + std::string(index.columns) + ")" +
                       std::string(index.condition));
  }
}

std::size_t CountMissingIndexes(Connection& connection) {
  std::set<std::string> missing;
  for (const Index& index : kIndexes) {
    missing.insert(std::string(index.name));
  }
  ForEachName(connection, "SELECT name FROM sqlite_schema WHERE type = 'index'",
              [&](const std::string& name) { missing.erase(name); });
  return missing.size();
}

std::vector<IndexedColumn> ColumnsOfMissingIndexes(Connection& connection) {
  if (CountMissingIndexes(connection) == 0) {
    return {};
  }
  std::set<std::string> first_columns;
  ForEachName(connection,
              "SELECT i.tbl_name || '.' || c.name FROM sqlite_schema AS i, "
              "pragma_index_info(i.name) AS c WHERE i.type = 'index' AND c.seqno = 0",
              [&](const std::string& name) { first_columns.insert(Folded(name)); });
  std::vector<IndexedColumn> columns;
  for (const Index& index : kIndexes) {
    const Table& table = *FindTable(index.table);
    const std::string name = std::string(index.table) + "." + std::string(FirstColumn(index));
    columns.push_back(
        {&table, FindColumn(table, FirstColumn(index)), first_columns.contains(Folded(name))});
  }
  return columns;
}

void CheckSchema(Connection& connection) {
  if (connection.QueryInteger("PRAGMA application_id") != kStoreApplicationId) {
    const bool empty = connection.QueryInteger("PRAGMA page_count") == 0;
    RaiseNotOurs(empty ? "the file is empty" : "it belongs to another program");
  }
  if (connection.QueryInteger("PRAGMA user_version") > kStoreVersion) {
    throw Failure(FailureNumber::kStoreUnusable,
                  "this store was written by a newer Quillmarsh; update this one");
  }
  const FoundTables found = TablesOf(connection);
  for (const Table& table : StoreTables()) {
    CheckTable(connection, table, found);
  }
}

}  // namespace vetlo
