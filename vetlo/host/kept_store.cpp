#include "vetlo/host/kept_store.h"

#include <algorithm>
#include <string_view>

namespace vetlo {

KeptStore::KeptStore(Database& store) : ForwardingDatabase(store) { failures_.reserve(kMostKept); }

void KeptStore::OnFailure(std::int32_t number, const char* text) noexcept {
  const bool known = std::ranges::any_of(failures_, [&](const KeptFailure& failure) {
    return failure.number == number && std::string_view(failure.Text()) == text;
  });
  if (!known && failures_.size() == kMostKept) {
    has_more_ = true;
  } else if (!known) {
    // There is room for it from the start; only its text may find none.
    failures_.emplace_back().number = number;
    if (ResumeNext([&] { failures_.back().text = text; }) != 0) {
      failures_.back().number = static_cast<std::int32_t>(FailureNumber::kOutOfMemory);
    }
  }
  ForwardingDatabase::OnFailure(number, text);
}

}  // namespace vetlo
