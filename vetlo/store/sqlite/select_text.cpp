#include "vetlo/store/sqlite/select_text.h"

#include <array>
#include <charconv>
#include <optional>

#include "vetlo/platform/date.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/found_rows.h"

namespace vetlo {
namespace {

[[noreturn]] void RaiseBadText(const std::string& why) {
  throw Failure(FailureNumber::kBadSqlText, why);
}

// What a character is for in a text.
enum class Use : std::uint8_t { kNone, kName, kDigit, kSign, kDate, kMinus };

constexpr std::array<Use, 256> UsesOfCharacters() {
  std::array<Use, 256> uses = {};
  const auto set = [&](std::string_view characters, Use use) {
    for (const char c : characters) {
      uses.at(static_cast<unsigned char>(c)) = use;
    }
  };
  set("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_", Use::kName);
  set("0123456789", Use::kDigit);
  set(" .,()*=<>", Use::kSign);
  set("#", Use::kDate);
  set("-", Use::kMinus);
  return uses;
}

constexpr std::array<Use, 256> kUses = UsesOfCharacters();

Use UseOf(char c) { return kUses[static_cast<unsigned char>(c)]; }
bool IsDigit(char c) { return UseOf(c) == Use::kDigit; }
bool IsNameStart(char c) { return UseOf(c) == Use::kName; }
bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c); }

// ---- taking the values out of a text

// "2000-01-01" or "2000-01-01 13:45:00" as days.
StoredValue DateConstant(std::string_view text) {
  constexpr std::size_t kDayLength = 10;
  constexpr std::size_t kFullLength = 19;
  constexpr double kSecondsPerDay = 86400;
  const double day = ParseIsoDate(text.substr(0, kDayLength)).days;
  if (text.size() == kDayLength) {
    return static_cast<std::int64_t>(day);
  }
  const std::string_view time = text.substr(kDayLength);
  if (text.size() != kFullLength || time[0] != ' ' || time[3] != ':' || time[6] != ':') {
    throw Failure(FailureNumber::kTypeMismatch);
  }
  int seconds = 0;
  for (const std::size_t at : {std::size_t{1}, std::size_t{4}, std::size_t{7}}) {
    if (!IsDigit(time[at]) || !IsDigit(time[at + 1])) {
      throw Failure(FailureNumber::kTypeMismatch);
    }
    const int part = (time[at] - '0') * 10 + (time[at + 1] - '0');
    if (part > (at == 1 ? 23 : 59)) {
      throw Failure(FailureNumber::kTypeMismatch);
    }
    seconds = seconds * 60 + part;
  }
  return day + seconds / kSecondsPerDay;
}

StoredValue NumberConstant(std::string_view text) {
  std::int64_t whole = 0;
  const char* const end = text.data() + text.size();
  if (const auto result = std::from_chars(text.data(), end, whole);
      result.ec == std::errc{} && result.ptr == end) {
    return whole;
  }
  double number = 0;
  if (const auto result = std::from_chars(text.data(), end, number);
      result.ec == std::errc{} && result.ptr == end) {
    return number;
  }
  RaiseBadText("a number that is none: " + std::string(text));
}

class Shaper {
 public:
  explicit Shaper(std::string_view text) : text_(text) { result_.shape.reserve(text.size()); }

  ShapedText Run() {
    while (at_ < text_.size()) {
      CopyWords();
      if (at_ == text_.size()) {
        break;
      }
      const Use use = UseOf(text_[at_]);
      const bool negative = use == Use::kMinus && at_ + 1 < text_.size() && IsDigit(text_[at_ + 1]);
      if (use == Use::kDigit || negative) {
        TakeNumber();
      } else if (use == Use::kDate) {
        TakeDate();
      } else {
        RaiseBadText(std::string("a character that has no meaning here: ") + text_[at_]);
      }
    }
    return std::move(result_);
  }

 private:
  // Names, which may have digits in them, and signs.
  void CopyWords() {
    const std::size_t start = at_;
    for (; at_ < text_.size(); ++at_) {
      const Use use = UseOf(text_[at_]);
      const bool in_name = use == Use::kDigit && at_ > start && IsNamePart(text_[at_ - 1]);
      if (use != Use::kName && use != Use::kSign && !in_name) {
        break;
      }
    }
    result_.shape.append(text_.substr(start, at_ - start));
  }

  void TakeNumber() {
    const std::size_t start = at_++;
    while (at_ < text_.size() && (IsDigit(text_[at_]) || text_[at_] == '.')) {
      ++at_;
    }
    Take(NumberConstant(text_.substr(start, at_ - start)));
  }

  void TakeDate() {
    const std::size_t end = text_.find('#', at_ + 1);
    if (end == std::string_view::npos) {
      RaiseBadText("a date without its end");
    }
    const std::string_view date = text_.substr(at_ + 1, end - at_ - 1);
    try {
      Take(DateConstant(date));
    } catch (const Failure&) {
      RaiseBadText("a date that is none: " + std::string(date));
    }
    at_ = end + 1;
  }

  void Take(StoredValue value) {
    result_.shape += '?';
    result_.values.push_back(std::move(value));
  }

  std::string_view text_;
  std::size_t at_ = 0;
  ShapedText result_;
};

// ---- reading a shape

std::vector<std::string_view> TokensOf(std::string_view shape) {
  std::vector<std::string_view> tokens;
  std::size_t at = 0;
  while (at < shape.size()) {
    std::size_t length = 1;
    if (shape[at] == ' ') {
      ++at;
      continue;
    }
    if (IsNameStart(shape[at])) {
      while (at + length < shape.size() && IsNamePart(shape[at + length])) {
        ++length;
      }
    } else if (const std::string_view two = shape.substr(at, 2);
               two == "<>" || two == "<=" || two == ">=") {
      length = 2;
    }
    tokens.push_back(shape.substr(at, length));
    at += length;
  }
  return tokens;
}

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

class Parser {
 public:
  explicit Parser(std::string_view shape) : tokens_(TokensOf(shape)) {}

  SelectPlan Run() {
    Expect("SELECT");
    plan_.distinct = Accept("DISTINCT");
    // The columns can only be understood once the tables are known.
    const std::size_t items = at_;
    while (at_ < tokens_.size() && !Is("FROM")) {
      ++at_;
    }
    ReadSources();
    const std::size_t rest = at_;
    at_ = items;
    ReadItems();
    at_ = rest;
    ReadWhere();
    ReadOrder();
    if (at_ != tokens_.size()) {
      RaiseBadText("a word too many: " + std::string(tokens_[at_]));
    }
    FinishOrder();
    return std::move(plan_);
  }

 private:
  [[nodiscard]] bool Is(std::string_view word) const {
    return at_ < tokens_.size() && EqualsIgnoringCase(tokens_[at_], word);
  }

  bool Accept(std::string_view word) {
    const bool found = Is(word);
    at_ += found ? 1 : 0;
    return found;
  }

  void Expect(std::string_view word) {
    if (!Accept(word)) {
      RaiseBadText("without its " + std::string(word));
    }
  }

  std::string_view Name() {
    if (at_ >= tokens_.size() || !IsNameStart(tokens_[at_][0])) {
      RaiseBadText("without a name where one is needed");
    }
    return tokens_[at_++];
  }

  void ReadSources() {
    Expect("FROM");
    do {
      const std::string_view name = Name();
      const Table* const table = FindTable(name);
      if (table == nullptr) {
        throw Failure(FailureNumber::kTableNotFound, "no table " + std::string(name));
      }
      plan_.sources.push_back({table, std::string(Accept("AS") ? Name() : name)});
    } while (Accept(","));
  }

  void ReadItems() {
    do {
      if (Accept("*")) {
        for (std::size_t source = 0; source < plan_.sources.size(); ++source) {
          AddAllOf(source);
        }
      } else if (Accept("SUM")) {
        AddSum();
      } else if (at_ + 2 < tokens_.size() && tokens_[at_ + 1] == "." && tokens_[at_ + 2] == "*") {
        AddAllOf(SourceNamed(Name()));
        at_ += 2;
      } else {
        AddColumn(ReadColumn());
      }
    } while (Accept(","));
    if (!Is("FROM") || plan_.columns.size() > kMostColumns) {
      RaiseBadText("a list of columns that cannot be read");
    }
    if (plan_.sums && (plan_.columns.size() != 1 || plan_.distinct)) {
      RaiseBadText("a sum beside other columns");
    }
  }

  struct FoundColumn {
    std::size_t source;
    const Column* column;
  };

  std::size_t SourceNamed(std::string_view alias) const {
    for (std::size_t i = 0; i < plan_.sources.size(); ++i) {
      if (EqualsIgnoringCase(plan_.sources[i].alias, alias)) {
        return i;
      }
    }
    RaiseBadText("no table goes by the name " + std::string(alias));
  }

  FoundColumn ReadColumn() {
    const std::string_view name = Name();
    if (Accept(".")) {
      const std::size_t source = SourceNamed(name);
      return {source, ColumnOf(source, Name())};
    }
    std::optional<FoundColumn> found;
    for (std::size_t i = 0; i < plan_.sources.size(); ++i) {
      if (const Column* column = FindColumn(*plan_.sources[i].table, name)) {
        if (found) {
          RaiseBadText("more than one table has a column " + std::string(name));
        }
        found = FoundColumn{i, column};
      }
    }
    if (!found) {
      RaiseBadText("no column " + std::string(name));
    }
    return *found;
  }

  [[nodiscard]] const Column* ColumnOf(std::size_t source, std::string_view name) const {
    const Column* const column = FindColumn(*plan_.sources[source].table, name);
    if (column == nullptr) {
      RaiseBadText("no column " + std::string(name));
    }
    return column;
  }

  [[nodiscard]] std::string SqlOf(const FoundColumn& found) const {
    return Quoted(plan_.sources[found.source].alias) + "." + Quoted(found.column->name);
  }

  void AddColumn(const FoundColumn& found) {
    plan_.columns.push_back({std::string(found.column->name), SqlOf(found), found.column->type,
                             found.source, found.column});
  }

  void AddAllOf(std::size_t source) {
    for (const Column& column : plan_.sources[source].table->columns) {
      AddColumn({source, &column});
    }
  }

  void AddSum() {
    Expect("(");
    const FoundColumn found = ReadColumn();
    Expect(")");
    Expect("AS");
    const std::string name(Name());
    plan_.columns.push_back(
        {name, "sum(" + SqlOf(found) + ")", found.column->type, found.source, nullptr});
    plan_.sums = true;
  }

  void ReadWhere() {
    if (!Accept("WHERE")) {
      return;
    }
    const std::size_t start = at_;
    while (at_ < tokens_.size() && !Is("ORDER")) {
      plan_.where += ' ' + ReadWhereToken();
    }
    const std::size_t end = at_;
    if (start == end) {
      RaiseBadText("without a condition where one is needed");
    }
    ReadConditions(start, end);
    at_ = end;
  }

  // Reads once more what stands between, for the conditions that are joined with AND alone.
  void ReadConditions(std::size_t start, std::size_t end) {
    int depth = 0;
    std::size_t part = start;
    std::size_t values = 0;
    std::size_t values_before_part = 0;
    for (std::size_t i = start; i <= end; ++i) {
      at_ = i;
      const bool outside = depth == 0;
      if (outside && Is("OR") && i < end) {
        plan_.conditions.clear();
        return;
      }
      if (i == end || (outside && Is("AND"))) {
        at_ = part;
        ReadCondition(i, values_before_part);
        part = i + 1;
        values_before_part = values;
        continue;
      }
      depth += Is("(") ? 1 : 0;
      depth -= Is(")") ? 1 : 0;
      values += Is("?") ? std::size_t{1} : 0;
    }
  }

  // "column op ?"
  struct Comparison {
    FoundColumn column;
    std::string_view op;
  };

  // None for anything else.
  std::optional<Comparison> ReadComparison() {
    static constexpr std::array<std::string_view, 5> kOperators = {"=", "<", "<=", ">", ">="};
    if (at_ == tokens_.size() || !IsNameStart(tokens_[at_][0]) || Is("NOT") || Is("ISNULL")) {
      return std::nullopt;
    }
    Comparison read{ReadColumn(), {}};
    for (const std::string_view op : kOperators) {
      read.op = Is(op) ? op : read.op;
    }
    const bool whole = !read.op.empty() && Accept(read.op) && Accept("?");
    return whole ? std::optional(read) : std::nullopt;
  }

  // Keeps the condition that ends there where it is a plain one: a comparison, or in brackets some
  // that ask whether one column equals one of several values, the first of which is that.
  void ReadCondition(std::size_t end, std::size_t value) {
    const bool in_brackets = Accept("(");
    Condition condition;
    do {
      const auto read = ReadComparison();
      if (!read) {
        return;
      }
      const auto& [column, op] = *read;
      const bool first = condition.values.empty();
      const bool alike = column.source == condition.source && column.column == condition.column;
      if (!first && (!alike || op != "=" || condition.op != "=")) {
        return;
      }
      condition.source = column.source;
      condition.column = column.column;
      condition.op = op;
      condition.values.push_back(value++);
    } while (in_brackets && Accept("OR"));
    if ((!in_brackets || Accept(")")) && at_ == end) {
      plan_.conditions.push_back(std::move(condition));
    }
  }

  std::string ReadWhereToken() {
    static constexpr std::array<std::string_view, 12> kAsTheyStand = {
        "AND", "OR", "NOT", "(", ")", "=", "<>", "<", ">", "<=", ">=", "?"};
    if (Is("NOT") && at_ + 1 < tokens_.size() && EqualsIgnoringCase(tokens_[at_ + 1], "ISNULL")) {
      ++at_;
      return NullTest(" IS NOT NULL)");  // a form that lets a partial index serve
    }
    if (Is("ISNULL")) {
      return NullTest(" IS NULL)");
    }
    for (const std::string_view token : kAsTheyStand) {
      if (Accept(token)) {
        return std::string(token);
      }
    }
    return SqlOf(ReadColumn());
  }

  std::string NullTest(const std::string& test) {
    Expect("ISNULL");
    Expect("(");
    const std::string column = SqlOf(ReadColumn());
    Expect(")");
    return "(" + column + test;
  }

  void ReadOrder() {
    if (!Accept("ORDER")) {
      return;
    }
    Expect("BY");
    do {
      AddOrder(ReadColumn(), false);
      plan_.order.back().descending = Accept("DESC");
    } while (Accept(","));
  }

  void AddOrder(const FoundColumn& found, bool descending) {
    const bool text = found.column->type == ColumnType::kText;
    plan_.order.push_back(
        {SqlOf(found) + (text ? " COLLATE NOCASE" : ""), descending, found.column});
  }

  // Without an order of its own a text shows the first table's key order, ties fall in the order
  // of entry. A walk over the transactions that asks for no order does not care for one.
  void FinishOrder() {
    if (plan_.sums || (plan_.order.empty() && !plan_.where.empty() &&
                       plan_.sources[0].table->name == "TransactionRecord")) {
      return;
    }
    if (plan_.order.empty()) {
      const Table& first = *plan_.sources[0].table;
      for (std::int32_t i = 0; i < first.key_columns && !plan_.distinct; ++i) {
        AddOrder({0, &first.columns[static_cast<std::size_t>(i)]}, false);
      }
    }
    for (const SelectSource& source : plan_.sources) {
      const std::string rowid = Quoted(source.alias) + ".rowid";
      plan_.order.push_back({plan_.distinct ? "min(" + rowid + ")" : rowid, false, nullptr});
    }
  }

  std::vector<std::string_view> tokens_;
  std::size_t at_ = 0;
  SelectPlan plan_;
};

template <typename Items, typename Write>
std::string Joined(const Items& items, const std::string& link, const Write& write) {
  std::string text;
  for (const auto& item : items) {
    text += (text.empty() ? "" : link) + write(item);
  }
  return text;
}

}  // namespace

ShapedText ShapeOf(std::string_view text) { return Shaper(text).Run(); }

SelectPlan PlanOf(std::string_view shape) { return Parser(shape).Run(); }

ColumnSet AllColumns(const SelectPlan& plan) {
  return plan.columns.size() == kMostColumns ? ~ColumnSet{0}
                                             : (ColumnSet{1} << plan.columns.size()) - 1;
}

namespace {

// Found rows go by a name that no text can give to a table.
constexpr const char* kFound = "\"found rows\"";

std::string ItemsSql(const SelectPlan& plan, ColumnSet columns) {
  std::vector<std::string> items;
  if (plan.IsPlain()) {
    for (const SelectSource& source : plan.sources) {
      items.push_back(Quoted(source.alias) + ".rowid");
    }
  }
  for (std::size_t i = 0; i < plan.columns.size(); ++i) {
    if (!plan.IsPlain() || ((columns >> i) & 1U) != 0) {
      items.push_back(plan.columns[i].sql);
    }
  }
  return Joined(items, ", ", [](const std::string& item) { return item; });
}

// The tables and the conditions. Where the first table's rows have been found, the walk is to go
// over those, whatever else the engine could think of.
std::string FromSql(const SelectPlan& plan, RowsFrom from) {
  const bool found = from != RowsFrom::kTable;
  std::string sql =
      " FROM " +
      (found ? std::string(kFoundRowsFunction) + "(?) AS " + kFound + " CROSS JOIN " : "");
  sql += Joined(plan.sources, found ? " CROSS JOIN " : ", ", [](const SelectSource& source) {
    return Quoted(source.table->name) + " AS " + Quoted(source.alias);
  });
  if (found) {
    sql += " WHERE " + Quoted(plan.sources[0].alias) + ".rowid = " + kFound + ".number";
    return plan.where.empty() ? sql : sql + " AND (" + plan.where + ")";
  }
  return plan.where.empty() ? sql : sql + " WHERE" + plan.where;
}

std::string OrderSql(const SelectPlan& plan, Direction direction, RowsFrom from) {
  const bool last_first = direction == Direction::kLastRowFirst;
  const auto write = [&](const OrderTerm& term) {
    return term.sql + (term.descending != last_first ? " DESC" : "");
  };
  if (from == RowsFrom::kFoundRowsInOrder) {
    return " ORDER BY " + write({std::string(kFound) + ".place"});
  }
  return plan.order.empty() ? "" : " ORDER BY " + Joined(plan.order, ", ", write);
}

}  // namespace

std::string SelectSql(const SelectPlan& plan, ColumnSet columns, Direction direction,
                      RowsFrom from) {
  std::string sql = "SELECT " + ItemsSql(plan, columns) + FromSql(plan, from);
  if (plan.distinct) {
    sql += " GROUP BY " +
           Joined(plan.columns, ", ", [](const SelectColumn& item) { return item.sql; });
  }
  return sql + OrderSql(plan, direction, from) +
         (direction == Direction::kLastRowFirst ? " LIMIT 1" : "");
}

}  // namespace vetlo
