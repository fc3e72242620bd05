#include "vetlo/host/recording.h"

namespace vetlo {

void RecordingWindow::SetMousePointer(std::int32_t pointer) {
  log_.Put("window", "MousePointer", pointer);
  PlainContainer::SetMousePointer(pointer);
}

void RecordingReport::SetMousePointer(std::int32_t pointer) {
  Put("MousePointer", pointer);
  Document::SetMousePointer(pointer);
}

void RecordingReport::SetVisible(bool visible) {
  Put("Visible", visible);
  Document::SetVisible(visible);
}

void RecordingReport::SetLocked(bool locked) {
  Put("Locked", locked);
  Document::SetLocked(locked);
}

void RecordingReport::SetText(std::string_view text) {
  Put("Text", std::string(text));
  Document::SetText(text);
}

void RecordingReport::SetSelIndent(float indent) {
  Put("SelIndent", indent);
  Document::SetSelIndent(indent);
}

void RecordingReport::SetSelRightIndent(float indent) {
  Put("SelRightIndent", indent);
  Document::SetSelRightIndent(indent);
}

void RecordingReport::SetRightMargin(float margin) {
  Put("RightMargin", margin);
  Document::SetRightMargin(margin);
}

void RecordingReport::SetSelTabCount(std::int32_t count) {
  Put("SelTabCount", count);
  Document::SetSelTabCount(count);
}

void RecordingReport::SetSelTabs(std::int32_t stop, float position) {
  Put("SelTabs", position, stop);
  Document::SetSelTabs(stop, position);
}

void RecordingReport::SetSelAlignment(Alignment alignment) {
  Put("SelAlignment", static_cast<std::int32_t>(alignment));
  Document::SetSelAlignment(alignment);
}

void RecordingReport::SetSelFontName(std::string_view name) {
  Put("SelFontName", std::string(name));
  Document::SetSelFontName(name);
}

void RecordingReport::SetSelFontSize(float size) {
  Put("SelFontSize", size);
  Document::SetSelFontSize(size);
}

void RecordingReport::SetSelText(std::string_view text) {
  Put("SelText", std::string(text));
  Document::SetSelText(text);
}

void RecordingReport::SetSelStart(std::int32_t position) {
  Put("SelStart", position);
  Document::SetSelStart(position);
}

void RecordingChart::SetMousePointer(std::int32_t pointer) {
  Put("MousePointer", pointer);
  ChartModel::SetMousePointer(pointer);
}

void RecordingChart::SetVisible(bool visible) {
  Put("Visible", visible);
  ChartModel::SetVisible(visible);
}

void RecordingChart::SetRepaint(bool repaint) {
  Put("Repaint", repaint);
  ChartModel::SetRepaint(repaint);
}

void RecordingChart::SetRowCount(std::int32_t count) {
  Put("RowCount", count);
  ChartModel::SetRowCount(count);
}

void RecordingChart::SetColumnCount(std::int32_t count) {
  Put("ColumnCount", count);
  ChartModel::SetColumnCount(count);
}

void RecordingChart::SetShowLegend(bool show) {
  Put("ShowLegend", show);
  ChartModel::SetShowLegend(show);
}

void RecordingChart::SetChartType(ChartKind kind) {
  Put("chartType", static_cast<std::int32_t>(kind));
  ChartModel::SetChartType(kind);
}

void RecordingChart::SetLegendFont(const Font& font) {
  Put("Legend.Font", font);
  ChartModel::SetLegendFont(font);
}

void RecordingChart::SetChartData(const AmountMatrix& data) {
  Put("ChartData", data);
  ChartModel::SetChartData(data);
}

void RecordingChart::SetRow(std::int32_t row) {
  Put("Row", row);
  ChartModel::SetRow(row);
}

void RecordingChart::SetColumn(std::int32_t column) {
  Put("Column", column);
  ChartModel::SetColumn(column);
}

void RecordingChart::SetRowLabel(std::string_view label) {
  Put("RowLabel", std::string(label));
  ChartModel::SetRowLabel(label);
}

void RecordingChart::SetColumnLabel(std::string_view label) {
  Put("ColumnLabel", std::string(label));
  ChartModel::SetColumnLabel(label);
}

void RecordingChart::SetAxisTitleText(std::string_view text) {
  Put("Plot.Axis(1,1).AxisTitle.Text", std::string(text));
  ChartModel::SetAxisTitleText(text);
}

void RecordingChart::SetTitleText(std::string_view text) {
  Put("TitleText", std::string(text));
  ChartModel::SetTitleText(text);
}

void RecordingChart::SetFootnoteText(std::string_view text) {
  Put("FootnoteText", std::string(text));
  ChartModel::SetFootnoteText(text);
}

}  // namespace vetlo
