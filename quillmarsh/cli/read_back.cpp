#include "quillmarsh/cli/read_back.h"

#include "quillmarsh/cli/user_error.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

std::string WordsOf(const vetlo::Failure& failure) {
  const std::string text = failure.what();
  return text.empty() ? "failure " + std::to_string(failure.number()) : text;
}

}  // namespace

void ReadBackDatabase::CommitTrans() {
  failure_.reset();
  try {
    rows_ = ReadSettingsRows(Store());
  } catch (const vetlo::Failure& failure) {
    failure_ = WordsOf(failure);
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
