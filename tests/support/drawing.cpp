#include "tests/support/drawing.h"

#include "quillmarsh/cli/event_text.h"
#include "vetlo/platform/failure.h"

namespace vetlo::testing {
namespace {

constexpr float kChartWidth = 12000;

}  // namespace

float Drawing::TestPlatform::PrinterPageWidth() {
  return page_width ? *page_width : TerminalPlatform::PrinterPageWidth();
}

std::unique_ptr<PictureBox> Drawing::TestPlatform::NewPictureBox() {
  if (!has_fonts) {
    throw Failure(FailureNumber::kInvalidCall, "there are no fonts");
  }
  return TerminalPlatform::NewPictureBox();
}

Drawing::Drawing(Date today)
    : platform(today, log),
      window(log),
      frame(&window),
      chart(log, kChartWidth, &frame),
      report(log, &frame),
      component(platform) {}

void Drawing::Show(Database& store, std::int32_t row, const Variant& parameter1,
                   const Variant& parameter2) {
  const auto rows = store.Unobserved().OpenRecordset("ChartReportSubType");
  component.ShowChartReport(store, *rows, row, &chart, &report, parameter1, parameter2);
}

std::int32_t Drawing::TryToShow(Database& store, std::int32_t row, const Variant& parameter1,
                                const Variant& parameter2) {
  try {
    Show(store, row, parameter1, parameter2);
    return 0;
  } catch (const Failure& failure) {
    return failure.number();
  }
}

std::vector<std::string> Drawing::Puts(std::string_view on, std::string_view member) const {
  std::vector<std::string> values;
  for (const Event& event : log.events()) {
    if (event.on == on && event.member == member) {
      const std::string text = quillmarsh::EventText(event);
      const std::size_t at = text.find("\"value\":");
      values.push_back(at == std::string::npos ? "" : text.substr(at + 8, text.size() - at - 9));
    }
  }
  return values;
}

std::vector<std::string> Drawing::Events() const {
  std::vector<std::string> lines;
  for (const Event& event : log.events()) {
    lines.push_back(quillmarsh::EventText(event));
  }
  return lines;
}

std::string Drawing::ReportText() const {
  std::string text;
  for (const Paragraph& paragraph : report.Paragraphs()) {
    text += paragraph.Text() + "\n";
  }
  return text;
}

}  // namespace vetlo::testing
