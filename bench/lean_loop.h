#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "bench/asked_store.h"

namespace quillmarsh::bench {

// The lean way of asking the same questions: SQLite's C interface, every statement prepared once,
// numbers and dates bound, whole rows stepped through and one column of each summed, all within
// one read transaction.
class LeanLoop {
 public:
  explicit LeanLoop(const std::string& path);
  ~LeanLoop();
  LeanLoop(const LeanLoop&) = delete;
  LeanLoop& operator=(const LeanLoop&) = delete;

  // Asks all of them; the sum is only there to be used.
  std::int64_t Ask(const std::vector<Question>& questions);

 private:
  struct Prepared {
    sqlite3_stmt* statement = nullptr;
    int summed_column = 0;
  };
  struct BoundQuestion {
    Prepared* prepared = nullptr;
    std::vector<double> values;
  };

  Prepared& PreparedFor(const std::string& sql);
  BoundQuestion Bind(const Question& question);
  std::int64_t Step(const BoundQuestion& question);

  sqlite3* handle_ = nullptr;
  std::map<std::string, Prepared> prepared_;
  // The questions of the last call, taken apart once: a lean program has them as statements.
  const std::vector<Question>* asked_ = nullptr;
  std::vector<BoundQuestion> bound_;
};

}  // namespace quillmarsh::bench
