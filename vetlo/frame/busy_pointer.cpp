#include "vetlo/frame/busy_pointer.h"

namespace vetlo {

void BusyPointer::Show() {
  WithWindow([this](DisplayObject& window) { window_pointer_ = window.MousePointer(); });
  WithWindow([](DisplayObject& window) { window.SetMousePointer(kHourglassPointer); });
  ResumeNext(listener_, [this] { target_pointer_ = target_.MousePointer(); });
  ResumeNext(listener_, [this] { target_.SetMousePointer(kHourglassPointer); });
}

void BusyPointer::Restore() {
  WithWindow([this](DisplayObject& window) { window.SetMousePointer(window_pointer_); });
  ResumeNext(listener_, [this] { target_.SetMousePointer(target_pointer_); });
}

template <typename Action>
void BusyPointer::WithWindow(const Action& action) {
  ResumeNext(listener_, [&] {
    DisplayObject* const container = target_.Container();
    DisplayObject* const window = container == nullptr ? nullptr : container->Container();
    if (window != nullptr) {
      action(*window);
    }
  });
}

}  // namespace vetlo
