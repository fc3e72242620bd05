#include "quillmarsh/terminal/terminal_platform.h"

#include <cerrno>
#include <new>
#include <string_view>
#include <utility>

#include "quillmarsh/terminal/text_width.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

constexpr double kSecondsPerDay = 86400;
constexpr int kFirstYearOfTm = 1900;

// Every character is as wide as its cells, whatever the font.
class CellBox : public vetlo::PictureBox {
 public:
  [[nodiscard]] const vetlo::Font& GetFont() const override { return font_; }
  void SetFont(const vetlo::Font& font) override { font_ = font; }
  [[nodiscard]] float TextWidth(std::string_view text) const override {
    return static_cast<float>(CellsOf(text) * kTwipsPerCell);
  }

 private:
  vetlo::Font font_{"Monospace", 10, false};
};

}  // namespace

vetlo::Date DateOf(const std::tm& time) {
  const vetlo::Date day =
      vetlo::DateSerial(time.tm_year + kFirstYearOfTm, time.tm_mon + 1, time.tm_mday);
  const int seconds = (time.tm_hour * 60 + time.tm_min) * 60 + time.tm_sec;
  return {day.days + seconds / kSecondsPerDay};
}

TerminalPlatform::TerminalPlatform(vetlo::NumberLocale locale, std::optional<vetlo::Date> today)
    : locale_(std::move(locale)), today_(today) {}

vetlo::Date TerminalPlatform::Now() {
  if (today_) {
    return *today_;
  }
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  errno = 0;
  const bool told = localtime_r(&now, &local) != nullptr;
  if (errno == ENOMEM) {
    throw std::bad_alloc();  // without its file the time zone would pass for UTC
  }
  if (!told) {
    throw vetlo::Failure(vetlo::FailureNumber::kInvalidCall, "the clock shows no date");
  }
  return DateOf(local);
}

float TerminalPlatform::PrinterPageWidth() {
  throw vetlo::NothingThere(vetlo::FailureNumber::kNoPrinter);
}

std::unique_ptr<vetlo::PictureBox> TerminalPlatform::NewPictureBox() {
  return std::make_unique<CellBox>();
}

}  // namespace quillmarsh
