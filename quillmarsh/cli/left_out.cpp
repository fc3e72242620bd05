#include "quillmarsh/cli/left_out.h"

namespace quillmarsh {

std::string FailureLine(std::int32_t number, const char* text) {
  return std::string(text) + " (failure " + std::to_string(number) + ")";
}

std::vector<std::string> LinesOf(const vetlo::KeptStore& store) {
  std::vector<std::string> lines;
  for (const vetlo::KeptFailure& failure : store.Failures()) {
    lines.push_back(FailureLine(failure.number, failure.Text()));
  }
  if (store.HasMore()) {
    lines.emplace_back("there were more failures than these");
  }
  return lines;
}

bool IsOfTheStore(std::int32_t number) {
  const auto known = static_cast<vetlo::FailureNumber>(number);
  return known == vetlo::FailureNumber::kStoreUnusable ||
         known == vetlo::FailureNumber::kOutOfMemory;
}

void RequireWhole(const vetlo::KeptStore& store) {
  if (!store.Failures().empty()) {
    throw LeftOut(LinesOf(store));
  }
}

}  // namespace quillmarsh
