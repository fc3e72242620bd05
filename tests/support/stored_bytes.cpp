#include "tests/support/stored_bytes.h"

#include <grp.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>

#include "vetlo/store/model.h"

namespace vetlo::testing {
namespace {

struct CloseHandle {
  void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

void Require(sqlite3* handle, bool success) {
  if (!success) {
    throw std::runtime_error(sqlite3_errmsg(handle));
  }
}

Handle Open(const std::string& path, int flags) {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
  Handle opened(handle);
  Require(handle, result == SQLITE_OK);
  return opened;
}

void Execute(sqlite3* handle, const std::string& sql) {
  Require(handle, sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
}

// The values of the current row, each with its kind and its bytes.
std::string RowBytes(sqlite3_stmt* row) {
  std::string bytes;
  for (int i = 0; i < sqlite3_column_count(row); ++i) {
    const int kind = sqlite3_column_type(row, i);
    bytes += std::to_string(kind) + ":";
    if (kind == SQLITE_FLOAT) {
      const double value = sqlite3_column_double(row, i);
      bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    } else if (kind != SQLITE_NULL) {
      bytes.append(static_cast<const char*>(sqlite3_column_blob(row, i)),
                   static_cast<std::size_t>(sqlite3_column_bytes(row, i)));
    }
    bytes += "|";
  }
  return bytes + "\n";
}

// Forks a process that runs statements and then waits; returns once they have run.
int StartChange(const std::string& path, const std::string& sql) {
  int ready[2] = {};
  if (pipe(ready) != 0) {
    throw std::runtime_error("no pipe");
  }
  const pid_t child = fork();
  if (child == 0) {
    try {
      const Handle handle = Open(path, SQLITE_OPEN_READWRITE);
      Execute(handle.get(), sql);
      static_cast<void>(!write(ready[1], "x", 1));
      pause();
    } catch (const std::exception&) {
    }
    _exit(1);
  }
  close(ready[1]);
  char word = 0;
  const bool done = read(ready[0], &word, 1) == 1;
  close(ready[0]);
  if (!done) {
    waitpid(child, nullptr, 0);
    throw std::runtime_error("the other process could not change the store");
  }
  return child;
}

void Kill(pid_t process) {
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

}  // namespace

StoredBytes ReadStoredBytes(const std::string& path, std::int32_t settings_row) {
  const Handle handle = Open(path, SQLITE_OPEN_READONLY);
  StoredBytes bytes;
  for (const Table& table : StoreTables()) {
    const std::string name(table.name);
    const bool is_settings = name == "ChartReportSubType";
    sqlite3_stmt* raw = nullptr;
    const std::string sql = "SELECT rowid, * FROM " + name + " ORDER BY rowid";
    const int prepared = sqlite3_prepare_v2(handle.get(), sql.c_str(), -1, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, FinalizeStatement> rows(raw);
    Require(handle.get(), prepared == SQLITE_OK);
    bytes.rest += name + "\n";
    int step = sqlite3_step(raw);
    for (; step == SQLITE_ROW; step = sqlite3_step(raw)) {
      const bool wanted = is_settings && sqlite3_column_int(raw, 1) == settings_row;
      (wanted ? bytes.row : bytes.rest) += RowBytes(raw);
    }
    Require(handle.get(), step == SQLITE_DONE);
  }
  return bytes;
}

void RunSql(const std::string& path, const std::string& sql) {
  Execute(Open(path, SQLITE_OPEN_READWRITE).get(), sql);
}

void BreakOffAChange(const std::string& path, const std::string& sql) {
  // Without room in memory the change goes to the file before it is committed.
  Kill(StartChange(path, "PRAGMA cache_size = 1; BEGIN IMMEDIATE; " + sql));
}

OtherProcess::OtherProcess(const std::string& path, const std::string& sql)
    : process_(StartChange(path, sql)) {}

void OtherProcess::End() {
  if (process_ != 0) {
    Kill(process_);
    process_ = 0;
  }
}

void BecomeNobody() {
  constexpr unsigned kNobody = 65534;
  if (geteuid() == 0 &&
      (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
    _exit(125);
  }
}

}  // namespace vetlo::testing
