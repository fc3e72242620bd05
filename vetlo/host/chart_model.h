#pragma once

#include <string>
#include <vector>

#include "vetlo/platform/display.h"

namespace vetlo {

// A chart as a model: what a control would show, for whoever draws it.
class ChartModel : public ChartObject {
 public:
  // The width is in twips.
  explicit ChartModel(float width, DisplayObject* container = nullptr)
      : container_(container), width_(width) {}

  DisplayObject* Container() override { return container_; }
  [[nodiscard]] std::int32_t MousePointer() const override { return pointer_; }
  void SetMousePointer(std::int32_t pointer) override { pointer_ = pointer; }
  void SetVisible(bool visible) override { visible_ = visible; }

  void SetRepaint(bool repaint) override { repaint_ = repaint; }
  // A count of 0 clears data and labels; any other is told by the data.
  void SetRowCount(std::int32_t count) override;
  void SetColumnCount(std::int32_t count) override;
  void SetShowLegend(bool show) override { show_legend_ = show; }
  void SetChartType(ChartKind kind) override { kind_ = kind; }
  void SetLegendFont(const Font& font) override { legend_font_ = font; }
  void SetChartData(const AmountMatrix& data) override;
  void SetRow(std::int32_t row) override { row_ = row; }
  void SetColumn(std::int32_t column) override { column_ = column; }
  // Both fail with kSubscriptOutOfRange where there is no such row or column.
  void SetRowLabel(std::string_view label) override;
  void SetColumnLabel(std::string_view label) override;
  void SetAxisTitleText(std::string_view text) override { axis_title_ = text; }
  void SetTitleText(std::string_view text) override { title_ = text; }
  void SetFootnoteText(std::string_view text) override { footnote_ = text; }
  [[nodiscard]] float Width() const override { return width_; }

  [[nodiscard]] bool Visible() const { return visible_; }
  [[nodiscard]] bool Repaint() const { return repaint_; }
  [[nodiscard]] bool ShowLegend() const { return show_legend_; }
  [[nodiscard]] ChartKind Kind() const { return kind_; }
  // Rows by columns, scaled to the unit that the axis title tells; undimensioned while empty.
  [[nodiscard]] const AmountMatrix& Data() const { return data_; }
  [[nodiscard]] const std::vector<std::string>& RowLabels() const { return row_labels_; }
  [[nodiscard]] const std::vector<std::string>& ColumnLabels() const { return column_labels_; }
  [[nodiscard]] const std::string& AxisTitle() const { return axis_title_; }
  [[nodiscard]] const std::string& Title() const { return title_; }
  [[nodiscard]] const std::string& Footnote() const { return footnote_; }

 private:
  void Clear();

  DisplayObject* container_;
  float width_;
  std::int32_t pointer_ = kDefaultPointer;
  bool visible_ = false;
  bool repaint_ = true;
  bool show_legend_ = false;
  ChartKind kind_ = ChartKind::kBar;
  Font legend_font_;
  AmountMatrix data_;
  std::int32_t row_ = 1;
  std::int32_t column_ = 1;
  std::vector<std::string> row_labels_;
  std::vector<std::string> column_labels_;
  std::string axis_title_;
  std::string title_;
  std::string footnote_;
};

}  // namespace vetlo
