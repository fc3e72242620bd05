#include "vetlo/store/sqlite/sqlite_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <map>

#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/connection.h"
#include "vetlo/store/sqlite/files_beside.h"
#include "vetlo/store/sqlite/schema.h"
#include "vetlo/store/sqlite/sqlite_database.h"

namespace vetlo {
namespace {

[[noreturn]] void RaiseUnusable(const std::string& why) {
  throw Failure(FailureNumber::kStoreUnusable, why);
}

std::string ReasonOf(int error) {
  return error == ENOENT ? "there is no such file" : std::strerror(error);
}

// The path without links and dots, absolute, of a regular file.
std::string ResolvedFile(const std::string& path) {
  char resolved[PATH_MAX];
  if (path.find('\0') != std::string::npos) {
    RaiseUnusable(ReasonOf(ENOENT));
  }
  if (realpath(path.c_str(), resolved) == nullptr) {
    RaiseUnusable(ReasonOf(errno));
  }
  struct stat facts = {};
  if (stat(resolved, &facts) != 0) {
    RaiseUnusable(ReasonOf(errno));
  }
  if (!S_ISREG(facts.st_mode)) {
    RaiseUnusable("it is no regular file");
  }
  return resolved;
}

// Makes an empty file, and nothing where there is anything of that name or left of another store.
void MakeFile(const std::string& path) {
  if (const auto left = FilesBeside(path); !left.empty()) {
    RaiseUnusable("'" + left.front() + "' is left of another store; remove it");
  }
  const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
  if (file < 0) {
    RaiseUnusable(errno == EEXIST ? "there is such a file already" : ReasonOf(errno));
  }
  close(file);
}

Connection OpenChecked(const std::string& path, StoreAccess access) {
  const std::string file = ResolvedFile(path);
  RequireSaneFilesBeside(file);
  Connection connection = Connection::OpenFile(file, access);
  CheckSchema(connection);
  return connection;
}

}  // namespace

std::unique_ptr<Database> OpenStore(const std::string& path, StoreAccess access) {
  Connection connection = OpenChecked(path, access);
  std::unique_ptr<RowFinder> finder;
  if (const auto columns = ColumnsOfMissingIndexes(connection); !columns.empty()) {
    finder = std::make_unique<RowFinder>(connection.handle(), columns);
  }
  connection.RestrictToModel(access);
  return std::make_unique<SqliteDatabase>(std::move(connection), std::move(finder));
}

std::size_t MakeMissingIndexes(const std::string& path) {
  Connection connection = OpenChecked(path, StoreAccess::kReadWrite);
  if (CountMissingIndexes(connection) == 0) {
    return 0;
  }
  connection.Execute("BEGIN IMMEDIATE");
  // Somebody else may have made them meanwhile.
  const std::size_t missing = CountMissingIndexes(connection);
  CreateIndexes(connection);
  connection.Execute("COMMIT");
  return missing;
}

class StoreBuilder::Impl {
 public:
  explicit Impl(Connection new_connection) : connection(std::move(new_connection)) {
    // Nothing of a file that is not finished is ever used again.
    connection.Execute("PRAGMA journal_mode = OFF");
    connection.Execute("PRAGMA synchronous = OFF");
    connection.Execute("BEGIN");
    CreateSchema(connection);
  }

  Statement& InsertFor(const Table& table, const Values& values) {
    std::string names;
    std::string marks;
    for (const auto& [name, value] : values) {
      names.append(names.empty() ? "" : ", ").append(name);
      marks.append(marks.empty() ? "?" : ", ?");
    }
    const std::string sql =
        "INSERT INTO " + std::string(table.name) + " (" + names + ") VALUES (" + marks + ")";
    const auto found = inserts.find(sql);
    return found != inserts.end()
               ? found->second
               : inserts.emplace(sql, Statement(connection.handle(), sql)).first->second;
  }

  Connection connection;
  std::map<std::string, Statement> inserts;
};

StoreBuilder::StoreBuilder() : impl_(std::make_unique<Impl>(Connection::CreateInMemory())) {}

StoreBuilder::StoreBuilder(const std::string& path) {
  MakeFile(path);
  impl_ = std::make_unique<Impl>(Connection::CreateFile(path));
}

StoreBuilder::~StoreBuilder() = default;
StoreBuilder::StoreBuilder(StoreBuilder&&) noexcept = default;
StoreBuilder& StoreBuilder::operator=(StoreBuilder&&) noexcept = default;

void StoreBuilder::Insert(std::string_view table_name, const Values& values) {
  const Table* const table = FindTable(table_name);
  if (table == nullptr) {
    throw Failure(FailureNumber::kTableNotFound, "no table " + std::string(table_name));
  }
  std::vector<StoredValue> stored;
  for (const auto& [name, value] : values) {
    const Column* const column = FindColumn(*table, name);
    if (column == nullptr) {
      throw Failure(FailureNumber::kNoSuchColumn, "no column " + std::string(name));
    }
    stored.push_back(StoredForm(value, column->type));
  }
  Statement& statement = impl_->InsertFor(*table, values);
  statement.Reset();  // a row that was refused before leaves it in the middle
  int parameter = 0;
  for (const StoredValue& value : stored) {
    statement.Bind(++parameter, value);
  }
  statement.Step();
  statement.Reset();
}

void StoreBuilder::Execute(const std::string& sql) { impl_->connection.Execute(sql); }

void StoreBuilder::Finish() {
  CreateIndexes(impl_->connection);
  impl_->connection.Execute("COMMIT");
  impl_->inserts.clear();
}

std::unique_ptr<Database> StoreBuilder::Open() {
  Finish();
  Connection connection = std::move(impl_->connection);
  impl_.reset();
  connection.Execute("PRAGMA journal_mode = MEMORY");  // without one nothing is rolled back
  connection.RestrictToModel(StoreAccess::kReadWrite);
  return std::make_unique<SqliteDatabase>(std::move(connection));
}

}  // namespace vetlo
