#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/drawing.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/forwarding.h"

namespace vetlo::testing {

// Where a member of an object is put, by its name in the trace, it fails with this number.
struct FailingPut {
  std::string member;
  FailureNumber number = FailureNumber::kInvalidCall;

  void At(std::string_view put) const {
    if (put == member) {
      throw Failure(number);
    }
  }
};

class FailingReport : public RecordingReport {
 public:
  FailingReport(EventLog& log, DisplayObject* container, FailingPut failing)
      : RecordingReport(log, container), failing_(std::move(failing)) {}

  void SetMousePointer(std::int32_t pointer) override {
    failing_.At("MousePointer");
    RecordingReport::SetMousePointer(pointer);
  }
  void SetLocked(bool locked) override {
    failing_.At(locked ? "Locked true" : "Locked false");
    RecordingReport::SetLocked(locked);
  }
  void SetText(std::string_view text) override {
    failing_.At("Text");
    RecordingReport::SetText(text);
  }
  void SetRightMargin(float margin) override {
    failing_.At("RightMargin");
    RecordingReport::SetRightMargin(margin);
  }
  void SetSelText(std::string_view text) override {
    failing_.At("SelText");
    RecordingReport::SetSelText(text);
  }
  void SetVisible(bool visible) override {
    failing_.At("Visible");
    RecordingReport::SetVisible(visible);
  }

 private:
  FailingPut failing_;
};

class FailingChart : public RecordingChart {
 public:
  FailingChart(EventLog& log, DisplayObject* container, FailingPut failing)
      : RecordingChart(log, 12000, container), failing_(std::move(failing)) {}

  void SetRepaint(bool repaint) override {
    failing_.At(repaint ? "Repaint true" : "Repaint false");
    RecordingChart::SetRepaint(repaint);
  }
  void SetLegendFont(const Font& font) override {
    failing_.At("Legend.Font");
    RecordingChart::SetLegendFont(font);
  }
  void SetTitleText(std::string_view text) override {
    failing_.At("TitleText");
    RecordingChart::SetTitleText(text);
  }
  void SetVisible(bool visible) override {
    failing_.At("Visible");
    RecordingChart::SetVisible(visible);
  }

 private:
  FailingPut failing_;
};

// A window whose pointer cannot be had.
class FailingWindow : public PlainContainer {
 public:
  [[nodiscard]] std::int32_t MousePointer() const override {
    throw Failure(FailureNumber::kInvalidCall);
  }
  void SetMousePointer(std::int32_t) override { throw Failure(FailureNumber::kInvalidCall); }
};

// Settings rows that are watched, and of which single fields can be changed in passing.
class WatchedRows : public ForwardingRecordset {
 public:
  explicit WatchedRows(Database& store)
      : ForwardingRecordset(store.OpenRecordset("ChartReportSubType")) {}

  void SetIndex(std::string_view index) override {
    calls.push_back("Index " + std::string(index));
    ForwardingRecordset::SetIndex(index);
  }
  void SeekKey(std::string_view comparison, std::span<const Variant> keys) override {
    calls.push_back("Seek " + std::string(comparison));
    ForwardingRecordset::SeekKey(comparison, keys);
  }
  Variant Fields(std::string_view name) override {
    calls.emplace_back(name);
    const auto other = instead.find(name);
    return other == instead.end() ? ForwardingRecordset::Fields(name) : other->second;
  }

  std::vector<std::string> calls;
  std::map<std::string, Variant, std::less<>> instead;
};

}  // namespace vetlo::testing
