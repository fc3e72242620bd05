#include "vetlo/store/sqlite/connection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

// What one statement may ask for. A store's own texts are short and its conditions flat; what a
// file brings with it, such as a check of a row that is written, gets no more than that to work
// with.
constexpr std::array<std::pair<int, int>, 7> kLimits = {{
    {SQLITE_LIMIT_ATTACHED, 0},
    {SQLITE_LIMIT_LENGTH, 1 << 20},
    {SQLITE_LIMIT_SQL_LENGTH, 1 << 18},
    {SQLITE_LIMIT_COMPOUND_SELECT, 1},
    {SQLITE_LIMIT_VDBE_OP, 100'000},
    {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 100},
    {SQLITE_LIMIT_TRIGGER_DEPTH, 0},
}};

[[noreturn]] void RaiseMismatch(ColumnType type) {
  static constexpr std::array<const char*, 7> kKinds = {
      "whole number", "amount", "date", "yes or no", "number", "text", "value"};
  throw Failure(FailureNumber::kTypeMismatch, std::string("the store holds something that is no ") +
                                                  kKinds.at(static_cast<std::size_t>(type)));
}

std::int32_t LongOf(std::int64_t value) {
  if (value < std::numeric_limits<std::int32_t>::min() ||
      value > std::numeric_limits<std::int32_t>::max()) {
    throw Failure(FailureNumber::kOverflow, "the store holds a whole number past 32 bits");
  }
  return static_cast<std::int32_t>(value);
}

std::string TextOf(sqlite3_stmt* statement, int column) {
  const unsigned char* const text = sqlite3_column_text(statement, column);
  if (text == nullptr) {
    throw std::bad_alloc();
  }
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

Variant FromInteger(std::int64_t value, ColumnType type) {
  switch (type) {
    case ColumnType::kLong:
      return LongOf(value);
    case ColumnType::kCurrency:
      return Currency::FromUnits(value);
    case ColumnType::kDate:
      return Date{static_cast<double>(value)};
    case ColumnType::kBoolean:
      return value != 0;
    case ColumnType::kDouble:
      return static_cast<double>(value);
    case ColumnType::kVariant:
      // A whole number past a Long was a Double when it was stored.
      if (value != static_cast<std::int32_t>(value)) {
        return static_cast<double>(value);
      }
      return static_cast<std::int32_t>(value);
    case ColumnType::kText:
      break;
  }
  RaiseMismatch(type);
}

Variant FromReal(double value, ColumnType type) {
  switch (type) {
    case ColumnType::kDate:
      return Date{value};
    case ColumnType::kDouble:
    case ColumnType::kVariant:
      return value;
    default:
      RaiseMismatch(type);
  }
}

StoredValue WholeOrReal(double value) {
  constexpr double kExactLimit = 9007199254740992.0;
  if (std::floor(value) == value && std::fabs(value) < kExactLimit) {
    return static_cast<std::int64_t>(value);
  }
  return value;
}

struct VariantToStored {
  StoredValue operator()(Empty) const { return std::monostate{}; }
  StoredValue operator()(Null) const { return std::monostate{}; }
  StoredValue operator()(bool value) const { return std::int64_t{value}; }
  StoredValue operator()(std::int32_t value) const { return std::int64_t{value}; }
  StoredValue operator()(double value) const { return value; }
  StoredValue operator()(Currency value) const { return ToDouble(value); }
  StoredValue operator()(Date value) const { return WholeOrReal(value.days); }
  StoredValue operator()(const std::string& value) const { return value; }
};

// What the engine is asked to do while it prepares a statement: is it reading the tables of the
// model, or writing a settings row where that is allowed?
bool IsAllowed(int action, const char* first, const char* second, bool writable) {
  constexpr std::array<std::string_view, 5> kFunctions = {"sum", "min", "max", "count", "typeof"};
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
      return true;
    case SQLITE_READ:
      return first != nullptr &&
             (FindTable(first) != nullptr || std::string_view(first) == kFoundRowsFunction);
    case SQLITE_PRAGMA:
      return first != nullptr && std::string_view(first) == "data_version" && second == nullptr;
    case SQLITE_FUNCTION:
      return second != nullptr && std::ranges::find(kFunctions, second) != kFunctions.end();
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
      return writable && first != nullptr && EqualsIgnoringCase(first, "ChartReportSubType");
    default:
      return false;
  }
}

// What a user is told who can do something about it himself; empty where he cannot.
std::string_view WayOutOf(int result) {
  switch (result) {
    case SQLITE_READONLY_ROLLBACK:
    case SQLITE_READONLY_RECOVERY:
    case SQLITE_READONLY_CANTLOCK:
      return "a save of the store was broken off and has to be undone first; open it once as a "
             "user who may write the file and its folder";
    case SQLITE_READONLY_DIRECTORY:
      return "the store cannot be changed: its folder may not be written; change the folder's "
             "permissions";
    case SQLITE_IOERR_WRITE:
    case SQLITE_IOERR_FSYNC:
    case SQLITE_IOERR_TRUNCATE:
      return "the store cannot be written; see whether the disk is full, then try again";
    default:
      break;
  }
  switch (result & 0xFF) {
    case SQLITE_READONLY:
      return "the store cannot be changed: the file may not be written; change its permissions";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
      return "the store cannot be opened; see to it that the permissions of the file and its "
             "folder allow it";
    case SQLITE_FULL:
      return "the store cannot be written: the disk is full; make room, then try again";
    default:
      return {};
  }
}

template <bool writable>
int Authorize(void*, int action, const char* first, const char* second, const char*, const char*) {
  return IsAllowed(action, first, second, writable) ? SQLITE_OK : SQLITE_DENY;
}

}  // namespace

StoredValue StoredForm(const Variant& value, ColumnType type) {
  if (IsNull(value) || IsEmpty(value)) {
    return std::monostate{};
  }
  switch (type) {
    case ColumnType::kLong:
      return std::int64_t{ToLong(value)};
    case ColumnType::kCurrency:
      return ToCurrency(value).units();
    case ColumnType::kDate:
      return WholeOrReal(ToDate(value).days);
    case ColumnType::kBoolean:
      return std::int64_t{ToBoolean(value)};
    case ColumnType::kDouble:
      return ToDouble(value);
    case ColumnType::kText:
      return ToText(value);
    case ColumnType::kVariant:
      break;
  }
  return std::visit(VariantToStored{}, value);
}

void RaiseStoreFailure(sqlite3* handle, int result) {
  if (const std::string_view way_out = WayOutOf(result); !way_out.empty()) {
    throw Failure(FailureNumber::kStoreUnusable, std::string(way_out));
  }
  const std::string message = handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(result);
  switch (result & 0xFF) {
    case SQLITE_NOMEM:
      throw std::bad_alloc();
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw Failure(FailureNumber::kStoreUnusable, "another program is using the store; try again");
    case SQLITE_NOTADB:
      throw NoSoundDatabase(FailureNumber::kStoreUnusable,
                            "this is no Quillmarsh store: it is no database at all");
    case SQLITE_CORRUPT:
      throw NoSoundDatabase(FailureNumber::kStoreUnusable,
                            "the store is damaged (" + message + "); restore it from a copy");
    case SQLITE_TOOBIG:
      throw Failure(FailureNumber::kStoreUnusable, "the store holds a value that is too long");
    case SQLITE_ERROR:
      if (message == "integer overflow") {
        throw Failure(FailureNumber::kOverflow, "a sum in the store is past 64 bits");
      }
      break;
    default:
      break;
  }
  throw Failure(FailureNumber::kStoreUnusable,
                "the store cannot be read or written (" + message + ")");
}

Statement::Statement(sqlite3* handle, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  const int result = sqlite3_prepare_v3(handle, sql.c_str(), static_cast<int>(sql.size() + 1),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  statement_.reset(statement);
  if (result == SQLITE_AUTH) {
    throw Failure(FailureNumber::kStoreUnusable, "this part of the store cannot be written");
  }
  if (result == SQLITE_ERROR) {
    throw Failure(FailureNumber::kBadSqlText, sqlite3_errmsg(handle));
  }
  if (result != SQLITE_OK) {
    RaiseStoreFailure(handle, result);
  }
}

void Statement::Bind(int parameter, const StoredValue& value) {
  int result = SQLITE_OK;
  if (const auto* integer = std::get_if<std::int64_t>(&value)) {
    result = sqlite3_bind_int64(statement_.get(), parameter, *integer);
  } else if (const auto* real = std::get_if<double>(&value)) {
    result = sqlite3_bind_double(statement_.get(), parameter, *real);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    result = sqlite3_bind_text(statement_.get(), parameter, text->data(),
                               static_cast<int>(text->size()), SQLITE_TRANSIENT);
  } else {
    result = sqlite3_bind_null(statement_.get(), parameter);
  }
  if (result != SQLITE_OK) {
    RaiseStoreFailure(sqlite3_db_handle(statement_.get()), result);
  }
}

bool Statement::Step() {
  const int result = sqlite3_step(statement_.get());
  if (result != SQLITE_ROW && result != SQLITE_DONE) {
    sqlite3* const handle = sqlite3_db_handle(statement_.get());
    RaiseStoreFailure(handle, result);
  }
  return result == SQLITE_ROW;
}

void Statement::Reset() noexcept { sqlite3_reset(statement_.get()); }

std::int64_t Statement::TakeWork() noexcept {
  return sqlite3_stmt_status(statement_.get(), SQLITE_STMTSTATUS_VM_STEP, 1);
}

Variant Statement::Value(int column, ColumnType type) const {
  switch (sqlite3_column_type(statement_.get(), column)) {
    case SQLITE_NULL:
      return Null{};
    case SQLITE_INTEGER:
      return FromInteger(sqlite3_column_int64(statement_.get(), column), type);
    case SQLITE_FLOAT:
      return FromReal(sqlite3_column_double(statement_.get(), column), type);
    case SQLITE_TEXT:
      if (type == ColumnType::kText || type == ColumnType::kVariant) {
        return TextOf(statement_.get(), column);
      }
      break;
    default:
      break;
  }
  RaiseMismatch(type);
}

std::int64_t Statement::Integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

std::optional<std::int64_t> Statement::StoredInteger(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_INTEGER
             ? std::optional(sqlite3_column_int64(statement_.get(), column))
             : std::nullopt;
}

std::optional<double> Statement::StoredNumber(int column) const {
  const int type = sqlite3_column_type(statement_.get(), column);
  return type == SQLITE_INTEGER || type == SQLITE_FLOAT
             ? std::optional(sqlite3_column_double(statement_.get(), column))
             : std::nullopt;
}

bool Statement::IsNull(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

Connection::Connection(const std::string& path, int flags) {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &handle,
                                     flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  handle_.reset(handle);
  if (result != SQLITE_OK) {
    RaiseStoreFailure(handle, result);
  }
}

Connection Connection::CreateInMemory() {
  return {":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY};
}

Connection Connection::CreateFile(const std::string& path) {
  return {path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE};
}

Connection Connection::OpenGuarded(const std::string& path, StoreAccess access,
                                   const std::shared_ptr<Patience>& patience) {
  const int mode = access == StoreAccess::kReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  Connection connection(path, mode | SQLITE_OPEN_NOFOLLOW);
  connection.Guard();
  connection.patience_ = patience;
  patience->Guide(connection.handle());
  return connection;
}

Connection Connection::OpenImage(DatabaseImage image) {
  Connection connection = CreateInMemory();
  connection.Guard();
  const auto size = static_cast<sqlite3_int64>(image.size);
  const int result =
      sqlite3_deserialize(connection.handle(), "main", image.bytes.release(), size, size,
                          SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY);
  if (result != SQLITE_OK) {
    RaiseStoreFailure(connection.handle(), result);
  }
  return connection;
}

void Connection::Guard() {
  constexpr std::array<std::pair<int, int>, 7> kSettings = {{
      {SQLITE_DBCONFIG_DEFENSIVE, 1},
      {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
      {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
      {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
      {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
      {SQLITE_DBCONFIG_DQS_DML, 0},
      {SQLITE_DBCONFIG_DQS_DDL, 0},
  }};
  for (const auto& [setting, value] : kSettings) {
    if (sqlite3_db_config(handle(), setting, value, nullptr) != SQLITE_OK) {
      throw Failure(FailureNumber::kStoreUnusable, "this SQLite cannot open a store safely");
    }
  }
  for (const auto& [limit, most] : kLimits) {
    sqlite3_limit(handle(), limit, most);
  }
  Execute("PRAGMA cell_size_check = ON");
}

int Connection::LookAtIt() {
  // It reads something of a store, whatever it is a store of.
  return sqlite3_exec(handle(), "PRAGMA schema_version", nullptr, nullptr, nullptr);
}

Connection Connection::OpenToRead(const std::string& path,
                                  const std::shared_ptr<Patience>& patience) {
  if (KeepsLog(path)) {
    return OpenLogged(path, patience);
  }
  Connection connection = OpenGuarded(path, StoreAccess::kReadOnly, patience);
  if (connection.LookAtIt() == SQLITE_READONLY_ROLLBACK) {
    // The first look of a connection that may write undoes the save that was broken off. Where that
    // fails, the reader's own next look says so.
    ResumeNext([&] {
      static_cast<void>(OpenGuarded(path, StoreAccess::kReadWrite, patience).LookAtIt());
    });
    connection = OpenGuarded(path, StoreAccess::kReadOnly, patience);
  }
  return connection;
}

Connection Connection::OpenLogged(const std::string& path,
                                  const std::shared_ptr<Patience>& patience) {
  if (MayTakeLogIn(path)) {
    return OpenGuarded(path, StoreAccess::kReadWrite, patience);
  }
  if (!HasLog(path)) {
    return OpenImage(ReadWithoutLog(path));
  }
  Connection connection = OpenGuarded(path, StoreAccess::kReadOnly, patience);
  const int kind = connection.LookAtIt() & 0xFF;
  if (kind == SQLITE_CANTOPEN || kind == SQLITE_READONLY) {
    throw Failure(FailureNumber::kStoreUnusable,
                  "what was saved last stands in a log beside the store and has to be taken in "
                  "first; open it once as a user who may write the file and its folder");
  }
  return connection;
}

Connection Connection::OpenFile(const std::string& path, StoreAccess access) {
  const auto patience = std::make_shared<Patience>();
  const bool reads = access == StoreAccess::kReadOnly;
  Connection connection = reads ? OpenToRead(path, patience) : OpenGuarded(path, access, patience);
  connection.Execute("PRAGMA cache_size = -65536");
  if (reads) {
    connection.Execute("PRAGMA query_only = ON");
  }
  return connection;
}

void Connection::Execute(const std::string& sql) {
  const int result = sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) {
    RaiseStoreFailure(handle(), result);
  }
}

std::int64_t Connection::QueryInteger(const std::string& sql) {
  Statement statement(handle(), sql);
  return statement.Step() ? statement.Integer(0) : 0;
}

void Connection::RestrictToModel(StoreAccess access) {
  sqlite3_set_authorizer(
      handle(), access == StoreAccess::kReadWrite ? &Authorize<true> : &Authorize<false>, nullptr);
}

}  // namespace vetlo
