#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "vetlo/platform/date.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/failure.h"
#include "vetlo/platform/format.h"
#include "vetlo/platform/screen.h"

namespace vetlo {

// The surroundings of the component, supplied by the host and alive as long as the component is.
class Platform {
 public:
  virtual ~Platform() = default;

  // The present date and time.
  virtual Date Now() = 0;
  // Lets the windowing system repaint and take input once.
  virtual void DoEvents() = 0;
  // The width of the current printer's page in twips; where there is none it fails with a
  // NothingThere of kNoPrinter.
  virtual float PrinterPageWidth() = 0;
  // A measuring surface in the default font.
  virtual std::unique_ptr<PictureBox> NewPictureBox() = 0;
  virtual const NumberLocale& Locale() = 0;
  // Where dialogs show. A host that never asks for one needs none: this fails with kObjectNotSet.
  virtual Screen& GetScreen() { throw Failure(FailureNumber::kObjectNotSet, "there is no screen"); }

  // The text of the failure that an operation is about to give back; the number is its result.
  void SetErrorInfo(std::string_view text) { error_info_ = text; }
  [[nodiscard]] const std::string& ErrorInfo() const { return error_info_; }

 private:
  std::string error_info_;
};

}  // namespace vetlo
