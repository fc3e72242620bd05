#pragma once

#include <ctime>
#include <memory>
#include <optional>

#include "vetlo/platform/platform.h"

namespace quillmarsh {

// The date and time of a broken-down time. Fails as DateSerial does.
vetlo::Date DateOf(const std::tm& time);

// A terminal as the surroundings of the component: its own clock and its own way of measuring, a
// number of cells, but no printer and no windows.
class TerminalPlatform : public vetlo::Platform {
 public:
  // Without a date of its own the platform follows the local clock.
  explicit TerminalPlatform(vetlo::NumberLocale locale,
                            std::optional<vetlo::Date> today = std::nullopt);

  vetlo::Date Now() override;
  // There is nothing to repaint.
  void DoEvents() override {}
  // Always fails with kNoPrinter.
  float PrinterPageWidth() override;
  std::unique_ptr<vetlo::PictureBox> NewPictureBox() override;
  const vetlo::NumberLocale& Locale() override { return locale_; }

 private:
  vetlo::NumberLocale locale_;
  std::optional<vetlo::Date> today_;
};

}  // namespace quillmarsh
