// A whole host of Vetlo: draws a report and a chart of a household's store on standard output.
//
//   small_host STORE REPORT-ROW CHART-ROW

#include <cstdlib>
#include <ctime>
#include <iostream>

#include "vetlo/vetlo.h"

namespace {

constexpr float kTwipsPerCharacter = 120;

class CharacterBox : public vetlo::PictureBox {
 public:
  const vetlo::Font& GetFont() const override { return font_; }
  void SetFont(const vetlo::Font& font) override { font_ = font; }
  float TextWidth(std::string_view text) const override {
    return static_cast<float>(text.size()) * kTwipsPerCharacter;
  }

 private:
  vetlo::Font font_{"Monospace", 10, false};
};

// What the component asks of its surroundings: a clock, a way to measure, and how numbers look.
class ConsolePlatform : public vetlo::Platform {
 public:
  vetlo::Date Now() override {
    const std::time_t now = std::time(nullptr);
    const std::tm day = *std::localtime(&now);
    return vetlo::DateSerial(day.tm_year + 1900, day.tm_mon + 1, day.tm_mday);
  }
  void DoEvents() override {}
  float PrinterPageWidth() override { throw vetlo::Failure(vetlo::FailureNumber::kNoPrinter); }
  std::unique_ptr<vetlo::PictureBox> NewPictureBox() override {
    return std::make_unique<CharacterBox>();
  }
  const vetlo::NumberLocale& Locale() override { return locale_; }

 private:
  vetlo::NumberLocale locale_;
};

void PrintReport(const vetlo::Document& report) {
  for (const vetlo::Paragraph& line : report.Paragraphs()) {
    std::cout << line.Text() << "\n";
  }
}

// A line for each number of the chart.
void PrintChart(const vetlo::ChartModel& chart) {
  std::cout << "\n"
            << chart.Title() << "\n"
            << chart.Footnote() << "\n"
            << chart.AxisTitle() << "\n";
  for (std::size_t row = 1; row <= chart.Data().Series(); ++row) {
    for (std::size_t column = 1; column <= chart.Data().Items(); ++column) {
      std::cout << chart.RowLabels()[row - 1] << "\t" << chart.ColumnLabels()[column - 1] << "\t"
                << chart.Data()(row, column) << "\n";
    }
  }
}

void Draw(const char* file, std::int32_t report_row, std::int32_t chart_row) {
  ConsolePlatform platform;
  const vetlo::Component component(vetlo::FindComponentLibrary().file);
  vetlo::Tamo tamo = component.NewTamo(platform);
  const auto store = vetlo::OpenStore(file, vetlo::StoreAccess::kReadOnly);
  const auto rows = store->OpenRecordset("ChartReportSubType");
  vetlo::ChartModel chart(80 * kTwipsPerCharacter);
  vetlo::Document report;
  tamo.ShowChartReport(*store, *rows, report_row, &chart, &report);
  PrintReport(report);
  tamo.ShowChartReport(*store, *rows, chart_row, &chart, &report);
  PrintChart(chart);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: small_host STORE REPORT-ROW CHART-ROW\n";
    return 2;
  }
  try {
    Draw(argv[1], std::atoi(argv[2]), std::atoi(argv[3]));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "small_host: " << error.what() << "\n";
    return 1;
  }
}
