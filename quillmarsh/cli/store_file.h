#pragma once

#include <memory>
#include <string>

#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh {

// Opens a store file named on the command line; fails with a UserError that names the file.
std::unique_ptr<vetlo::Database> OpenStoreFile(const std::string& path, vetlo::StoreAccess access);

}  // namespace quillmarsh
