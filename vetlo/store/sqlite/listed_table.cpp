#include "vetlo/store/sqlite/listed_table.h"

#include <algorithm>
#include <numeric>

namespace vetlo {
namespace {

constexpr std::int64_t kRowsWalkedMeanwhile = 8;

// The walks that take as long as listing a whole table.
constexpr int kWalksOfAList = 2;

constexpr std::size_t kMostParts = 8;

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

}  // namespace

void ListedTable::Forget() {
  row_count_.reset();
  parts_.clear();
  whole_.assign(whole_.size(), WholeList{});
  walks_ = 0;
}

std::int64_t ListedTable::RowCount(sqlite3* handle) {
  if (!row_count_) {
    Statement count(handle, "SELECT count(*) FROM " + Quoted(table_.name));
    row_count_ = count.Step() ? count.Integer(0) : 0;
  }
  return *row_count_;
}

std::int64_t ListedTable::FewRows(sqlite3* handle) {
  return RowCount(handle) / kRowsWalkedMeanwhile;
}

const RowLists* ListedTable::FewOf(sqlite3* handle, const Part& part) {
  if (const KnownPart* const known = Find(part)) {
    return known->rows.get();
  }
  std::vector<std::size_t> all_columns(columns_.listed.size());
  std::iota(all_columns.begin(), all_columns.end(), std::size_t{0});
  KnownPart made{part,
                 List(handle, part, all_columns, RowLists::Keep::kByValueAndAll, FewRows(handle))};
  if (parts_.size() == kMostParts) {
    parts_.erase(parts_.begin());
  }
  parts_.push_back(std::move(made));
  return parts_.back().rows.get();
}

const RowLists* ListedTable::FewOfPeriod(sqlite3* handle, const Part& period) {
  if (!IsKnown(period)) {
    if (walks_ >= kWalksOfAList) {
      return nullptr;
    }
    ++walks_;
  }
  return FewOf(handle, period);
}

const RowLists* ListedTable::Whole(std::optional<std::size_t> column) const {
  return whole_[Place(column)].rows.get();
}

const RowLists* ListedTable::WholeIfWorthIt(sqlite3* handle, std::optional<std::size_t> column) {
  whole_[Place(column)].asked = true;
  if (walks_ < kWalksOfAList) {
    ++walks_;
    return nullptr;
  }
  const auto is_wanted = [&](std::size_t place) {
    return whole_[place].asked && whole_[place].rows == nullptr;
  };
  Part with_any_value;
  std::vector<std::size_t> by_columns;
  for (std::size_t i = 0; i < columns_.listed.size(); ++i) {
    if (is_wanted(i)) {
      with_any_value.conditions +=
          (by_columns.empty() ? "" : " OR ") + Quoted(columns_.listed[i]->name) + " IS NOT NULL";
      by_columns.push_back(i);
    }
  }
  const std::size_t by_date = columns_.listed.size();
  const bool all = is_wanted(by_date);
  const auto rows =
      List(handle, all ? Part{"1", {}} : with_any_value, by_columns,
           all ? RowLists::Keep::kByValueAndAll : RowLists::Keep::kByValue, RowCount(handle));
  for (const std::size_t place : by_columns) {
    whole_[place].rows = rows;
  }
  if (all) {
    whole_[by_date].rows = rows;
  }
  walks_ = 0;
  return rows.get();
}

const ListedTable::KnownPart* ListedTable::Find(const Part& part) const {
  const auto known = std::ranges::find_if(parts_, [&](const KnownPart& other) {
    return other.part.conditions == part.conditions && other.part.values == part.values;
  });
  return known == parts_.end() ? nullptr : &*known;
}

// Null where there are more rows than that.
std::shared_ptr<const RowLists> ListedTable::List(sqlite3* handle, const Part& part,
                                                  const std::vector<std::size_t>& by_columns,
                                                  RowLists::Keep keep, std::int64_t most) const {
  std::string sql = "SELECT rowid, " + Quoted(columns_.date->name);
  for (const std::size_t column : by_columns) {
    sql += ", " + Quoted(columns_.listed[column]->name);
  }
  Statement rows(handle, sql + " FROM " + Quoted(table_.name) + " WHERE " + part.conditions);
  int parameter = 0;
  for (const StoredValue& value : part.values) {
    rows.Bind(++parameter, value);
  }
  const auto lists = std::make_shared<RowLists>(by_columns, keep);
  for (std::int64_t count = 1; rows.Step(); ++count) {
    if (count > most) {
      return nullptr;
    }
    lists->Add(rows);
  }
  lists->Finish();
  return lists;
}

}  // namespace vetlo
