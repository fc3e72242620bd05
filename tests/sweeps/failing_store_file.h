#pragma once

#include "tests/support/failing_database.h"

namespace sweeps {

// The one store that the commands of this process get, whatever file they name, and when its
// operations fail. This stands in the place of quillmarsh/cli/store_file.cpp.
struct FailingStoreFile {
  vetlo::Database* store = nullptr;
  vetlo::testing::FailurePlan plan;
};
FailingStoreFile& TheStoreFile();

}  // namespace sweeps
