#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/platform.h"

namespace vetlo {

// A font of characters that differ in width: what is longer isn't always wider.
class ProportionalBox : public PictureBox {
 public:
  [[nodiscard]] const Font& GetFont() const override { return font_; }
  void SetFont(const Font& font) override { font_ = font; }
  [[nodiscard]] float TextWidth(std::string_view text) const override {
    float width = 0;
    for (const char c : text) {
      width += WidthOf(c);
    }
    return width;
  }

 private:
  static float WidthOf(char c) {
    switch (c) {
      case ' ':
        return 50;
      case 'i':
      case 'l':
      case '.':
      case ',':
        return 45;
      case '_':
        return 90;
      case 'W':
        return 170;
      default:
        return 110;
    }
  }

  Font font_{"Serif", 9, false};
};

// A font whose texts are as wide as a test says.
class TableBox : public PictureBox {
 public:
  explicit TableBox(std::map<std::string, float, std::less<>> widths)
      : widths_(std::move(widths)) {}

  [[nodiscard]] const Font& GetFont() const override { return font_; }
  void SetFont(const Font& font) override { font_ = font; }
  [[nodiscard]] float TextWidth(std::string_view text) const override {
    return widths_.find(text)->second;
  }

 private:
  Font font_;
  std::map<std::string, float, std::less<>> widths_;
};

// Surroundings that measure proportionally.
class MeasuredPlatform : public Platform {
 public:
  Date Now() override { return {}; }
  void DoEvents() override {}
  float PrinterPageWidth() override {
    if (!page_width) {
      throw Failure(FailureNumber::kNoPrinter);
    }
    return *page_width;
  }
  std::unique_ptr<PictureBox> NewPictureBox() override {
    return std::make_unique<ProportionalBox>();
  }
  const NumberLocale& Locale() override { return locale; }

  std::optional<float> page_width;  // none: there is no printer
  NumberLocale locale;
};

}  // namespace vetlo
