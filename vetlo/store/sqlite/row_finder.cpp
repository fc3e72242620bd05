#include "vetlo/store/sqlite/row_finder.h"

#include <algorithm>
#include <string>

namespace vetlo {
namespace {

// A table whose rows are found, with its columns as ListedColumns tells them.
struct Findable {
  std::string_view table;
  std::string_view date;
  std::string_view kind;
  std::string_view rare;
  std::vector<std::string_view> listed;
};

const std::vector<Findable>& Findables() {
  static const std::vector<Findable> kFindables = {
      {"TransactionRecord",
       "TransactionDate",
       "TransactionType",
       "AccountItemNumber",
       {"AccountItemNumber", "SubCategoryNumber", "PayeeNumber", "CategoryNumber",
        "ToOrFundAccountNumber", "AccountNumber"}},
      {"PriceRecord", "PriceDate", "PriceTypeNumber", "", {"AccountItemNumber"}},
  };
  return kFindables;
}

// More rows are not listed, for the memory that it takes.
constexpr std::int64_t kMostRows = 20'000'000;

std::optional<std::size_t> PlaceOf(const Column* column, const std::vector<const Column*>& among) {
  const auto found = std::ranges::find(among, column);
  return found == among.end() ? std::nullopt
                              : std::optional(static_cast<std::size_t>(found - among.begin()));
}

ListedColumns ColumnsOf(const Findable& findable, const Table& table,
                        const std::vector<IndexedColumn>& columns) {
  ListedColumns found{FindColumn(table, findable.date),
                      FindColumn(table, findable.kind),
                      FindColumn(table, findable.rare),
                      {},
                      {}};
  if (table.key == KeyKind::kUnique) {
    found.indexed.push_back(table.columns.data());
  }
  for (const IndexedColumn& column : columns) {
    if (column.table == &table && column.has_index) {
      found.indexed.push_back(column.column);
    }
  }
  for (const std::string_view name : findable.listed) {
    const Column* const column = FindColumn(table, name);
    if (!PlaceOf(column, found.indexed)) {
      found.listed.push_back(column);
    }
  }
  return found;
}

// ---- from a plan to a search

// Adds what a condition tells of the rows that are sought.
void Narrow(RowSearch& search, const Condition& condition) {
  const ListedColumns& columns = search.table->columns();
  if (condition.op != "=") {
    if (condition.column == columns.date) {
      std::optional<std::size_t>& bound = condition.op[0] == '>' ? search.from : search.to;
      bound = bound.value_or(condition.values[0]);
    }
    return;
  }
  if (condition.column == columns.kind) {
    search.kinds = condition.values;
    return;
  }
  const auto place = PlaceOf(condition.column, columns.listed);
  if (place && condition.values.size() == 1 && (!search.column || *place < *search.column)) {
    search.column = place;
    search.value = condition.values[0];
  }
}

bool IsInOrderOfDates(const SelectPlan& plan, const Column* date) {
  return plan.sources.size() == 1 && plan.order.size() == 2 && plan.order[0].column == date &&
         !plan.order[0].descending && plan.order[1].column == nullptr;
}

// ---- from a search to parts of its table

std::string Quoted(const Column* column) { return '"' + std::string(column->name) + '"'; }

Part PeriodOf(const RowSearch& search, std::span<const StoredValue> values) {
  const std::string date = Quoted(search.table->columns().date);
  return {date + " >= ? AND " + date + " <= ?", {values[*search.from], values[*search.to]}};
}

Part KindsOf(const RowSearch& search, std::span<const StoredValue> values) {
  const std::string kind = Quoted(search.table->columns().kind);
  Part part;
  for (const std::size_t place : search.kinds) {
    part.conditions += (part.values.empty() ? "" : " OR ") + kind + " = ?";
    part.values.push_back(values[place]);
  }
  return part;
}

bool IsOfARareColumn(const RowSearch& search) {
  const ListedColumns& columns = search.table->columns();
  return search.column && columns.listed[*search.column] == columns.rare;
}

std::optional<double> Bound(std::optional<std::size_t> place, std::span<const StoredValue> values) {
  if (!place) {
    return std::nullopt;
  }
  if (const auto* integer = std::get_if<std::int64_t>(&values[*place])) {
    return static_cast<double>(*integer);
  }
  const auto* real = std::get_if<double>(&values[*place]);
  return real != nullptr ? std::optional(*real) : std::nullopt;
}

}  // namespace

RowFinder::RowFinder(sqlite3* handle, const std::vector<IndexedColumn>& columns) : handle_(handle) {
  for (const Findable& findable : Findables()) {
    const Table& table = *FindTable(findable.table);
    ListedColumns listed = ColumnsOf(findable, table, columns);
    if (!listed.listed.empty()) {
      tables_.push_back(std::make_unique<ListedTable>(table, std::move(listed)));
    }
  }
  if (!tables_.empty()) {
    OfferFoundRows(handle_);
  }
}

void RowFinder::BeginSnapshot() {
  in_snapshot_ = true;
  is_fresh_ = false;
}

std::optional<RowSearch> RowFinder::SearchFor(const SelectPlan& plan) const {
  const auto found = std::ranges::find_if(
      tables_, [&](const auto& table) { return &table->table() == plan.sources[0].table; });
  if (found == tables_.end() || !plan.IsPlain()) {
    return std::nullopt;
  }
  RowSearch search;
  search.table = found->get();
  for (const Condition& condition : plan.conditions) {
    if (condition.source != 0) {
      continue;
    }
    if (condition.op == "=" && PlaceOf(condition.column, search.table->columns().indexed)) {
      return std::nullopt;
    }
    Narrow(search, condition);
  }
  search.in_order = IsInOrderOfDates(plan, search.table->columns().date);
  const bool anything = search.column || !search.kinds.empty() || search.IsOfAPeriod();
  return anything ? std::optional(search) : std::nullopt;
}

std::optional<FoundRows> RowFinder::Find(const RowSearch& search,
                                         std::span<const StoredValue> values) {
  if (!in_snapshot_) {
    return std::nullopt;
  }
  ForgetWhatHasChanged();
  const auto* const value =
      search.column ? std::get_if<std::int64_t>(&values[search.value]) : nullptr;
  if ((search.column && value == nullptr) || search.table->RowCount(handle_) > kMostRows) {
    return std::nullopt;
  }
  const RowLists* const lists = ListsFor(search, values);
  if (lists == nullptr) {
    return std::nullopt;
  }
  const DateBounds bounds{Bound(search.from, values), Bound(search.to, values)};
  FoundRows rows =
      value != nullptr ? lists->OfValue(*search.column, *value, bounds) : lists->All(bounds);
  const bool few = static_cast<std::int64_t>(rows.Size()) <= search.table->FewRows(handle_);
  return few ? std::optional(std::move(rows)) : std::nullopt;
}

const RowLists* RowFinder::ListsFor(const RowSearch& search, std::span<const StoredValue> values) {
  ListedTable& table = *search.table;
  const RowLists* lists = table.Whole(search.column);
  // Whether lists of the whole table can serve at all.
  bool whole = search.column.has_value();
  if (lists == nullptr && search.IsOfAPeriod()) {
    const Part period = PeriodOf(search, values);
    lists = table.FewOfPeriod(handle_, period);
    // A period that is known by now holds too many rows, by whatever list.
    whole = whole || !table.IsKnown(period);
  }
  if (lists == nullptr && !search.kinds.empty()) {
    lists = table.FewOf(handle_, KindsOf(search, values));
  }
  if (lists == nullptr && IsOfARareColumn(search)) {
    lists = table.FewOf(handle_, {Quoted(table.columns().rare) + " IS NOT NULL", {}});
  }
  if (lists == nullptr && whole) {
    lists = table.WholeIfWorthIt(handle_, search.column);
  }
  return lists;
}

void RowFinder::ForgetWhatHasChanged() {
  if (is_fresh_) {
    return;
  }
  if (!version_) {
    version_.emplace(handle_, "PRAGMA data_version");
  }
  // What others have changed, and what this connection has.
  const std::int64_t version = version_->Step() ? version_->Integer(0) : 0;
  version_->Reset();
  const std::int64_t changes = sqlite3_total_changes64(handle_);
  if (version != known_version_ || changes != known_changes_) {
    for (const auto& table : tables_) {
      table->Forget();
    }
    known_version_ = version;
    known_changes_ = changes;
  }
  is_fresh_ = true;
}

}  // namespace vetlo
