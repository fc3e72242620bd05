#pragma once

#include "vetlo/platform/display.h"
#include "vetlo/platform/failure.h"

namespace vetlo {

// The hourglass over a display object and over its window, which is the container of its
// container. Nothing here fails: an object without a window shows the hourglass alone.
class BusyPointer {
 public:
  BusyPointer(DisplayObject& target, FailureListener& listener)
      : target_(target), listener_(listener) {}

  // Saves what shows and shows the hourglass, the window first.
  void Show();
  // Not done by itself: a call that fails leaves the hourglass standing.
  void Restore();

 private:
  // Leaves the window alone where there is none, or where it fails. To have none is common, so it
  // is no failure: throwing one would cost more than all else done here.
  template <typename Action>
  void WithWindow(const Action& action);

  DisplayObject& target_;
  FailureListener& listener_;
  std::int32_t window_pointer_ = kDefaultPointer;
  std::int32_t target_pointer_ = kDefaultPointer;
};

}  // namespace vetlo
