#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "vetlo/store/forwarding.h"

namespace vetlo {

// A failure that a call went on after.
struct KeptFailure {
  std::int32_t number = 0;
  std::string text;

  // One line for a user: what is wrong, and what he can do. Never empty.
  [[nodiscard]] const char* Text() const { return text.empty() ? MeaningOf(number) : text.c_str(); }
};

// A store that remembers what went wrong. The component's calls go on after many a failure: a
// report whose figures cannot be computed stands under its title without them, a balance that
// cannot be had is left out of a total. A host that hands a call this store in place of its own
// learns of each such failure, and so whether what was drawn is whole.
//
//   vetlo::KeptStore kept(*store);
//   tamo.ShowChartReport(kept, *rows, 1, &chart, &report);
//   for (const vetlo::KeptFailure& failure : kept.Failures()) ...
//
// That there is nothing to show is no failure. One that ended the call has reached the caller and
// is not kept. The store must outlive it.
class KeptStore : public ForwardingDatabase {
 public:
  explicit KeptStore(Database& store);

  // Hears of a failure. Where there is no memory left for its text it is kept as one of memory.
  void OnFailure(std::int32_t number, const char* text) noexcept override;

  // Each distinct failure once, in the order in which they came, at most kMostKept of them.
  [[nodiscard]] const std::vector<KeptFailure>& Failures() const { return failures_; }
  // Whether there were more than are kept.
  [[nodiscard]] bool HasMore() const { return has_more_; }

  static constexpr std::size_t kMostKept = 20;

 private:
  std::vector<KeptFailure> failures_;
  bool has_more_ = false;
};

}  // namespace vetlo
