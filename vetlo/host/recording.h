#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/host/chart_model.h"
#include "vetlo/host/document.h"
#include "vetlo/platform/one_of.h"

namespace vetlo {

// What somebody did to an object: put a value into a member, or called it.
struct Event {
  // Lengths and sizes are floats, everything that is counted a whole number.
  using Value = OneOf<std::monostate, bool, std::int32_t, float, std::string, AmountMatrix, Font>;

  std::string_view on;      // "report", "chart", "window", "host"
  std::string_view action;  // "put" or "call"
  std::string_view member;
  std::optional<std::int32_t> at;  // the index of a member that has several values
  Value value;
};

// The events of a call in their order.
class EventLog {
 public:
  void Put(std::string_view on, std::string_view member, Event::Value value,
           std::optional<std::int32_t> at = std::nullopt) {
    events_.push_back({on, "put", member, at, std::move(value)});
  }
  void Call(std::string_view on, std::string_view member) {
    events_.push_back({on, "call", member, std::nullopt, std::monostate{}});
  }
  void Add(Event event) { events_.push_back(std::move(event)); }

  [[nodiscard]] const std::vector<Event>& events() const { return events_; }

 private:
  std::vector<Event> events_;
};

// A window that records its pointer.
class RecordingWindow : public PlainContainer {
 public:
  explicit RecordingWindow(EventLog& log) : log_(log) {}
  void SetMousePointer(std::int32_t pointer) override;

 private:
  EventLog& log_;
};

// A document and a chart that record all that is put into them. The log and the container must
// outlive them.
class RecordingReport : public Document {
 public:
  RecordingReport(EventLog& log, DisplayObject* container) : Document(container), log_(log) {}

  void SetMousePointer(std::int32_t pointer) override;
  void SetVisible(bool visible) override;
  void SetLocked(bool locked) override;
  void SetText(std::string_view text) override;
  void SetSelIndent(float indent) override;
  void SetSelRightIndent(float indent) override;
  void SetRightMargin(float margin) override;
  void SetSelTabCount(std::int32_t count) override;
  void SetSelTabs(std::int32_t stop, float position) override;
  void SetSelAlignment(Alignment alignment) override;
  void SetSelFontName(std::string_view name) override;
  void SetSelFontSize(float size) override;
  void SetSelText(std::string_view text) override;
  void SetSelStart(std::int32_t position) override;

 private:
  void Put(std::string_view member, Event::Value value,
           std::optional<std::int32_t> at = std::nullopt) {
    log_.Put("report", member, std::move(value), at);
  }

  EventLog& log_;
};

class RecordingChart : public ChartModel {
 public:
  RecordingChart(EventLog& log, float width, DisplayObject* container)
      : ChartModel(width, container), log_(log) {}

  void SetMousePointer(std::int32_t pointer) override;
  void SetVisible(bool visible) override;
  void SetRepaint(bool repaint) override;
  void SetRowCount(std::int32_t count) override;
  void SetColumnCount(std::int32_t count) override;
  void SetShowLegend(bool show) override;
  void SetChartType(ChartKind kind) override;
  void SetLegendFont(const Font& font) override;
  void SetChartData(const AmountMatrix& data) override;
  void SetRow(std::int32_t row) override;
  void SetColumn(std::int32_t column) override;
  void SetRowLabel(std::string_view label) override;
  void SetColumnLabel(std::string_view label) override;
  void SetAxisTitleText(std::string_view text) override;
  void SetTitleText(std::string_view text) override;
  void SetFootnoteText(std::string_view text) override;

 private:
  void Put(std::string_view member, Event::Value value) {
    log_.Put("chart", member, std::move(value));
  }

  EventLog& log_;
};

}  // namespace vetlo
