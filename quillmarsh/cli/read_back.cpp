#include "quillmarsh/cli/read_back.h"

#include "quillmarsh/cli/user_error.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {

void ReadBackDatabase::CommitTrans() {
  failure_.reset();
  try {
    rows_ = ReadSettingsRows(Store());
  } catch (const vetlo::Failure& failure) {
    failure_ = failure.what();
  }
  ForwardingDatabase::CommitTrans();
}

const std::vector<SettingsRowFacts>& ReadBackDatabase::Rows() const {
  if (failure_) {
    throw UserError("the change was saved, but it could not be read back: " + *failure_);
  }
  return rows_;
}

}  // namespace quillmarsh
