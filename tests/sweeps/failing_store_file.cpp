#include "tests/sweeps/failing_store_file.h"

#include "quillmarsh/cli/store_file.h"

namespace sweeps {

FailingStoreFile& TheStoreFile() {
  static FailingStoreFile file;
  return file;
}

}  // namespace sweeps

namespace quillmarsh {

std::unique_ptr<vetlo::Database> OpenStoreFile(const std::string& /*path*/,
                                               vetlo::StoreAccess /*access*/) {
  sweeps::FailingStoreFile& file = sweeps::TheStoreFile();
  return std::make_unique<vetlo::testing::FailingDatabase>(*file.store, file.plan);
}

}  // namespace quillmarsh
