#include "vetlo/store/sqlite/row_lists.h"

#include <algorithm>
#include <cmath>

namespace vetlo {
namespace {

// Past this a whole number may lose its last digits as a double, which dates are ordered as.
constexpr double kExactLimit = 9007199254740992.0;

// Where a statement that lists rows shows what of them.
enum Position { kNumber, kDate, kFirstColumn };

// None where the row's date is none.
std::optional<DatedRow> RowIn(const Statement& row) {
  const std::optional<double> date = row.StoredNumber(kDate);
  const bool known = date && std::fabs(*date) < kExactLimit;
  return known ? std::optional(DatedRow{*date, row.Integer(kNumber)}) : std::nullopt;
}

// The whole number that a value equals, however it is stored.
std::optional<std::int64_t> WholeNumberIn(const Statement& row, int position) {
  if (const auto integer = row.StoredInteger(position)) {
    return integer;
  }
  const std::optional<double> number = row.StoredNumber(position);
  const bool whole = number && std::floor(*number) == *number && std::fabs(*number) < kExactLimit;
  return whole ? std::optional(static_cast<std::int64_t>(*number)) : std::nullopt;
}

void Sort(std::vector<DatedRow>& rows) {
  // Most households enter their records day by day.
  if (!std::ranges::is_sorted(rows)) {
    std::ranges::sort(rows);
  }
}

std::span<const DatedRow> Between(const std::vector<DatedRow>& rows, DateBounds bounds) {
  auto begin = rows.begin();
  auto end = rows.end();
  if (bounds.from) {
    begin = std::ranges::lower_bound(begin, end, *bounds.from, {}, &DatedRow::date);
  }
  if (bounds.to) {
    end = std::ranges::upper_bound(begin, end, *bounds.to, {}, &DatedRow::date);
  }
  return {begin, end};
}

}  // namespace

RowLists::RowLists(std::vector<std::size_t> columns, Keep keep)
    : columns_(std::move(columns)),
      lists_(columns_.empty() ? 0 : std::ranges::max(columns_) + 1),
      keeps_all_(keep == Keep::kByValueAndAll) {}

void RowLists::Add(const Statement& row) {
  const std::optional<DatedRow> known = RowIn(row);
  const DatedRow unknown{.number = row.Integer(kNumber)};
  if (keeps_all_) {
    (known ? all_ : all_unsure_).push_back(known.value_or(unknown));
  }
  int position = kFirstColumn;
  for (const std::size_t column : columns_) {
    const std::optional<std::int64_t> value = WholeNumberIn(row, position);
    if (value && known) {
      lists_[column].by_value[*value].push_back(*known);
    } else if (!row.IsNull(position)) {
      lists_[column].unsure.push_back(unknown);
    }
    ++position;
  }
}

void RowLists::Finish() {
  Sort(all_);
  for (Column& column : lists_) {
    for (auto& [value, rows] : column.by_value) {
      Sort(rows);
    }
  }
}

FoundRows RowLists::OfValue(std::size_t column, std::int64_t value, DateBounds bounds) const {
  const Column& lists = lists_[column];
  const auto found = lists.by_value.find(value);
  const bool any = found != lists.by_value.end();
  return {any ? Between(found->second, bounds) : std::span<const DatedRow>(), lists.unsure,
          shared_from_this()};
}

FoundRows RowLists::All(DateBounds bounds) const {
  return {Between(all_, bounds), all_unsure_, shared_from_this()};
}

}  // namespace vetlo
