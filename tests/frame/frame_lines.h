#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/trace_lines.h"

// What all calls of ShowChartReport have in their traces, piece by piece. The texts of a report
// stand whole, as EventsWithWholeTexts gives them.

namespace vetlo::testing {

// ---- around the drawing

inline const std::vector<std::string> kReportPointers = {Put("window", "MousePointer", "11"),
                                                         Put("report", "MousePointer", "11")};
inline const std::vector<std::string> kChartPointers = {
    Put("window", "MousePointer", "11"), Put("chart", "MousePointer", "11"), kDoEvents};
inline const std::vector<std::string> kReportPointersBack = {Put("window", "MousePointer", "0"),
                                                             Put("report", "MousePointer", "0")};
inline const std::vector<std::string> kChartPointersBack = {
    Put("window", "MousePointer", "0"), Put("chart", "MousePointer", "0"),
    Put("chart", "Visible", "false"), Put("chart", "Visible", "true")};

// ---- a report

inline const std::vector<std::string> kReportPrepared = {
    Put("report", "Locked", "false"), PutText("report", "Text", ""),
    Put("report", "SelIndent", "283.5"), Put("report", "SelRightIndent", "283.5")};

inline const std::vector<std::string> kReportShown = {
    Put("report", "Locked", "true"), Put("report", "Visible", "true"),
    Put("report", "SelStart", "0"), Put("chart", "Visible", "false")};

inline std::vector<std::string> HeadingLines(const std::string& title, const std::string& caption) {
  return {Put("report", "SelAlignment", "2"),
          PutText("report", "SelFontName", "Monospace"),
          Put("report", "SelFontSize", "10.0"),
          PutText("report", "SelText", "\r\n"),
          PutText("report", "SelFontName", "MS Sans Serif"),
          Put("report", "SelFontSize", "12.0"),
          PutText("report", "SelText", title + "\r\n"),
          PutText("report", "SelFontName", "Monospace"),
          Put("report", "SelFontSize", "10.0"),
          PutText("report", "SelText", "\r\n" + caption + "\r\n\r\n\r\n"),
          Put("report", "SelAlignment", "0")};
}

// The margin that a table needs, then the page's, and two stops.
inline std::vector<std::string> LayOutLines(std::string_view margin, std::string_view second_stop) {
  return {Put("report", "RightMargin", margin), Put("report", "RightMargin", "12310.0"),
          Put("report", "SelTabCount", "2"), TabStop(0, "283.5"), TabStop(1, second_stop)};
}

// ---- a chart

inline std::vector<std::string> ChartPrepared(std::string_view legend = "false",
                                              std::string_view kind = "1") {
  return {Put("chart", "Repaint", "false"),
          Put("chart", "RowCount", "0"),
          Put("chart", "ColumnCount", "0"),
          Put("chart", "ShowLegend", legend),
          Put("chart", "chartType", kind),
          Put("chart", "Legend.Font", R"({"name":"Monospace","size":10.0})")};
}

inline const std::vector<std::string> kChartShown = {Put("chart", "Repaint", "true"),
                                                     Put("report", "Visible", "false")};

}  // namespace vetlo::testing
