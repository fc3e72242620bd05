#include "bench/lean_loop.h"

#include <regex>
#include <stdexcept>
#include <string_view>

#include "vetlo/platform/date.h"

namespace quillmarsh::bench {
namespace {

// The dialect's texts as SQLite takes them: `#date#` and numbers as parameters, ISNULL(x) as a
// test.
std::string SqlOf(const std::string& text, std::vector<double>& values) {
  static const std::regex is_null(R"(ISNULL\(([A-Za-z0-9_.]+)\))");
  static const std::regex constant(R"(#([0-9-]{10})( [0-9:]{8})?#|([=<>] *)(-?[0-9]+))");
  const std::string tests = std::regex_replace(text, is_null, "($1 IS NULL)");
  std::string sql;
  std::size_t at = 0;
  for (std::sregex_iterator match(tests.begin(), tests.end(), constant), end; match != end;
       ++match) {
    sql += tests.substr(at, static_cast<std::size_t>(match->position()) - at);
    at = static_cast<std::size_t>(match->position() + match->length());
    if ((*match)[4].matched) {
      sql += (*match)[3].str() + "?";
      values.push_back(std::stod((*match)[4].str()));
    } else {
      sql += "?";
      const bool end_of_day = (*match)[2].matched;
      values.push_back(vetlo::ParseIsoDate((*match)[1].str()).days + (end_of_day ? 0.99999 : 0));
    }
  }
  return sql + tests.substr(at);
}

int SummedColumn(sqlite3_stmt* statement) {
  for (int i = 0; i < sqlite3_column_count(statement); ++i) {
    const std::string_view name = sqlite3_column_name(statement, i);
    if (name == "Total" || name == "Balance" || name == "Price") {
      return i;
    }
  }
  return 0;
}

}  // namespace

LeanLoop::LeanLoop(const std::string& path) {
  if (sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open " + path);
  }
  sqlite3_exec(handle_, "PRAGMA cache_size = -65536", nullptr, nullptr, nullptr);
}

LeanLoop::~LeanLoop() {
  for (const auto& [sql, prepared] : prepared_) {
    sqlite3_finalize(prepared.statement);
  }
  sqlite3_close(handle_);
}

std::int64_t LeanLoop::Ask(const std::vector<Question>& questions) {
  if (asked_ != &questions) {
    asked_ = &questions;
    bound_.clear();
    for (const Question& question : questions) {
      bound_.push_back(Bind(question));
    }
  }
  sqlite3_exec(handle_, "BEGIN", nullptr, nullptr, nullptr);
  std::int64_t sum = 0;
  for (const BoundQuestion& question : bound_) {
    sum += Step(question);
  }
  sqlite3_exec(handle_, "COMMIT", nullptr, nullptr, nullptr);
  return sum;
}

LeanLoop::Prepared& LeanLoop::PreparedFor(const std::string& sql) {
  Prepared& prepared = prepared_[sql];
  if (prepared.statement == nullptr) {
    if (sqlite3_prepare_v3(handle_, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &prepared.statement,
                           nullptr) != SQLITE_OK) {
      throw std::runtime_error(sql + ": " + sqlite3_errmsg(handle_));
    }
    prepared.summed_column = SummedColumn(prepared.statement);
  }
  return prepared;
}

LeanLoop::BoundQuestion LeanLoop::Bind(const Question& question) {
  BoundQuestion bound;
  const std::string sql = SqlOf(question.text, bound.values);
  if (!vetlo::IsEmpty(question.key)) {
    bound.values.push_back(vetlo::ToDouble(question.key));
  }
  bound.prepared = &PreparedFor(sql);
  return bound;
}

std::int64_t LeanLoop::Step(const BoundQuestion& question) {
  sqlite3_stmt* const statement = question.prepared->statement;
  for (std::size_t i = 0; i < question.values.size(); ++i) {
    sqlite3_bind_double(statement, static_cast<int>(i) + 1, question.values[i]);
  }
  std::int64_t sum = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    sum += sqlite3_column_int64(statement, question.prepared->summed_column);
  }
  sqlite3_reset(statement);
  return sum;
}

}  // namespace quillmarsh::bench
