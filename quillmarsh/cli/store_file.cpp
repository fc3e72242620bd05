#include "quillmarsh/cli/store_file.h"

#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {

std::unique_ptr<vetlo::Database> OpenStoreFile(const std::string& path, vetlo::StoreAccess access) {
  try {
    return vetlo::OpenStore(path, access);
  } catch (const vetlo::Failure& failure) {
    throw UserError("cannot open the store '" + SafeText(path) + "': " + failure.what());
  }
}

}  // namespace quillmarsh
