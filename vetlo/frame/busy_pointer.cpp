#include "vetlo/frame/busy_pointer.h"

#include "vetlo/platform/failure.h"

namespace vetlo {

void BusyPointer::Show() {
  ResumeNext([this] { window_pointer_ = Window().MousePointer(); });
  ResumeNext([this] { Window().SetMousePointer(kHourglassPointer); });
  ResumeNext([this] { target_pointer_ = target_.MousePointer(); });
  ResumeNext([this] { target_.SetMousePointer(kHourglassPointer); });
}

void BusyPointer::Restore() {
  ResumeNext([this] { Window().SetMousePointer(window_pointer_); });
  ResumeNext([this] { target_.SetMousePointer(target_pointer_); });
}

DisplayObject& BusyPointer::Window() {
  DisplayObject* const container = target_.Container();
  DisplayObject* const window = container == nullptr ? nullptr : container->Container();
  if (window == nullptr) {
    throw Failure(FailureNumber::kObjectNotSet);
  }
  return *window;
}

}  // namespace vetlo
