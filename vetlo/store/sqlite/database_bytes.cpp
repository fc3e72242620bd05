#include "vetlo/store/sqlite/database_bytes.h"

#include "vetlo/store/sqlite/connection.h"

namespace vetlo {

DatabaseBytes::DatabaseBytes(const std::string& path) {
  constexpr int kMode =
      SQLITE_OPEN_READONLY | SQLITE_OPEN_NOFOLLOW | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  sqlite3* handle = nullptr;
  int result = sqlite3_open_v2(path.c_str(), &handle, kMode, nullptr);
  handle_.reset(handle);
  if (result == SQLITE_OK) {
    result = sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
  }
  if (result != SQLITE_OK) {
    RaiseStoreFailure(handle, result);
  }
}

bool DatabaseBytes::Read(void* bytes, std::size_t size, std::int64_t place) const {
  const int result = file_->pMethods->xRead(file_, bytes, static_cast<int>(size), place);
  if (result != SQLITE_OK && result != SQLITE_IOERR_SHORT_READ) {
    RaiseStoreFailure(nullptr, result);
  }
  return result == SQLITE_OK;
}

}  // namespace vetlo
