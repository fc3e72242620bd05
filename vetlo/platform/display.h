#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vetlo/platform/arrays.h"

namespace vetlo {

struct Font {
  std::string name;
  float size = 0;  // points
  bool bold = false;

  friend bool operator==(const Font&, const Font&) = default;
};

// The pointer shapes that the component shows.
inline constexpr std::int32_t kDefaultPointer = 0;
inline constexpr std::int32_t kHourglassPointer = 11;

// What the two display objects, and whatever holds them, have in common. The host owns them all
// and keeps them alive over a call. Any of the operations here and below may fail.
class DisplayObject {
 public:
  virtual ~DisplayObject() = default;

  // What holds this object, or null at the top.
  virtual DisplayObject* Container() = 0;
  [[nodiscard]] virtual std::int32_t MousePointer() const = 0;
  virtual void SetMousePointer(std::int32_t pointer) = 0;
  virtual void SetVisible(bool visible) = 0;
};

enum class Alignment : std::int32_t { kLeft = 0, kCenter = 2 };

// A rich-text document. What is set applies to all that is written afterwards; text is appended at
// the caret with SetSelText, "\r\n" ends a line and a tab goes to the next stop. Lengths are
// twips.
class ReportObject : public DisplayObject {
 public:
  virtual void SetLocked(bool locked) = 0;
  virtual void SetText(std::string_view text) = 0;
  [[nodiscard]] virtual float SelIndent() const = 0;
  virtual void SetSelIndent(float indent) = 0;
  [[nodiscard]] virtual float SelRightIndent() const = 0;
  virtual void SetSelRightIndent(float indent) = 0;
  [[nodiscard]] virtual float RightMargin() const = 0;
  virtual void SetRightMargin(float margin) = 0;
  virtual void SetSelTabCount(std::int32_t count) = 0;
  // Stops count from 0.
  [[nodiscard]] virtual float SelTabs(std::int32_t stop) const = 0;
  virtual void SetSelTabs(std::int32_t stop, float position) = 0;
  virtual void SetSelAlignment(Alignment alignment) = 0;
  virtual void SetSelFontName(std::string_view name) = 0;
  virtual void SetSelFontSize(float size) = 0;
  virtual void SetSelText(std::string_view text) = 0;
  virtual void SetSelStart(std::int32_t position) = 0;
};

// The kinds of chart as they are stored and asked for. Any other number is no kind.
inline constexpr std::int32_t kLineChart = 0;
inline constexpr std::int32_t kBarChart = 1;
inline constexpr std::int32_t kPieChart = 2;

// The chart control's own numbers for the kinds of chart.
enum class ChartKind : std::int32_t { kBar = 1, kLine = 3, kPie = 14 };

// A graph control over a matrix of numbers: rows by columns, labels counted from 1.
class ChartObject : public DisplayObject {
 public:
  virtual void SetRepaint(bool repaint) = 0;
  virtual void SetRowCount(std::int32_t count) = 0;
  virtual void SetColumnCount(std::int32_t count) = 0;
  virtual void SetShowLegend(bool show) = 0;
  virtual void SetChartType(ChartKind kind) = 0;
  virtual void SetLegendFont(const Font& font) = 0;
  // The matrix's first dimension becomes the rows, its second the columns.
  virtual void SetChartData(const AmountMatrix& data) = 0;
  virtual void SetRow(std::int32_t row) = 0;
  virtual void SetColumn(std::int32_t column) = 0;
  virtual void SetRowLabel(std::string_view label) = 0;
  virtual void SetColumnLabel(std::string_view label) = 0;
  // The title of the value axis, axis kind 1 with index 1.
  virtual void SetAxisTitleText(std::string_view text) = 0;
  virtual void SetTitleText(std::string_view text) = 0;
  virtual void SetFootnoteText(std::string_view text) = 0;
  [[nodiscard]] virtual float Width() const = 0;  // twips
};

// A surface that carries a font and measures with it.
class PictureBox {
 public:
  virtual ~PictureBox() = default;
  [[nodiscard]] virtual const Font& GetFont() const = 0;
  virtual void SetFont(const Font& font) = 0;
  // Twips.
  [[nodiscard]] virtual float TextWidth(std::string_view text) const = 0;
};

}  // namespace vetlo
