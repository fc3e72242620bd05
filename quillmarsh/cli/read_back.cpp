#include "quillmarsh/cli/read_back.h"

#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/user_error.h"

namespace quillmarsh {

void ReadBackDatabase::CommitTrans() {
  vetlo::KeptStore kept(Store());
  const bool ended = vetlo::ResumeNext(kept, [&] { rows_ = ReadSettingsRows(kept); }) == 0;
  failure_.reset();
  for (const vetlo::KeptFailure& failure : kept.Failures()) {
    // What somebody damaged in a row is none of this change.
    if (!failure_ && (!ended || IsOfTheStore(failure.number))) {
      failure_ = failure.Text();
    }
  }
  ForwardingDatabase::CommitTrans();
  changed_ = true;
}

const std::vector<SettingsRowFacts>& ReadBackDatabase::Rows() const {
  if (failure_) {
    throw UserError("the change was saved, but it could not be read back: " + *failure_);
  }
  return rows_;
}

}  // namespace quillmarsh
