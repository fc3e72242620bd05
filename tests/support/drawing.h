#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "quillmarsh/terminal/terminal_platform.h"
#include "tests/support/small_store.h"
#include "vetlo/frame/tamo.h"
#include "vetlo/host/recording.h"

namespace vetlo::testing {

// The surroundings of a call in a test: a pinned day, both display objects recording, each in a
// frame in a window. The terminal's way of measuring: 120 twips a character.
class Drawing {
 public:
  explicit Drawing(Date today = Day(2026, 3, 20));

  // ShowChartReport for a row. A failure that reaches the caller passes.
  void Show(Database& store, std::int32_t row, const Variant& parameter1 = Empty{},
            const Variant& parameter2 = Empty{});
  // The same, handing back the failure's number, 0 where there was none.
  std::int32_t TryToShow(Database& store, std::int32_t row, const Variant& parameter1 = Empty{},
                         const Variant& parameter2 = Empty{});

  // What was put into a member of an object, in order, as the trace would show it. "report",
  // "chart", "window" and "host" are the objects.
  [[nodiscard]] std::vector<std::string> Puts(std::string_view on, std::string_view member) const;
  // All events, a line of JSON each.
  [[nodiscard]] std::vector<std::string> Events() const;
  // The text of the report, lines ended by "\n".
  [[nodiscard]] std::string ReportText() const;

  EventLog log;
  class TestPlatform : public quillmarsh::TerminalPlatform {
   public:
    TestPlatform(Date today, EventLog& log) : TerminalPlatform(NumberLocale{}, today), log_(log) {}
    void DoEvents() override { log_.Call("host", "DoEvents"); }
    float PrinterPageWidth() override;
    std::unique_ptr<PictureBox> NewPictureBox() override;
    std::optional<float> page_width;  // none: there is no printer
    bool has_fonts = true;            // false: there is nothing to measure with

   private:
    EventLog& log_;
  } platform;
  RecordingWindow window;
  PlainContainer frame;
  RecordingChart chart;
  RecordingReport report;
  clsTamo component;
};

}  // namespace vetlo::testing
