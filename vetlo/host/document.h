#pragma once

#include <string>
#include <vector>

#include "vetlo/platform/display.h"

namespace vetlo {

// A piece of text in one font.
struct TextRun {
  std::string text;  // without line ends
  std::string font_name;
  float font_size = 0;
};

// One line of a document, with the paragraph settings that held when it was begun.
struct Paragraph {
  std::vector<TextRun> runs;
  Alignment alignment = Alignment::kLeft;
  float indent = 0;              // twips
  float right_indent = 0;        // twips
  std::vector<float> tab_stops;  // twips from the left edge; the first lies on the indent

  [[nodiscard]] std::string Text() const;
};

// A container without looks of its own: a frame or a window that only keeps its pointer.
class PlainContainer : public DisplayObject {
 public:
  explicit PlainContainer(DisplayObject* container = nullptr) : container_(container) {}

  DisplayObject* Container() override { return container_; }
  [[nodiscard]] std::int32_t MousePointer() const override { return pointer_; }
  void SetMousePointer(std::int32_t pointer) override { pointer_ = pointer; }
  void SetVisible(bool) override {}

 private:
  DisplayObject* container_;
  std::int32_t pointer_ = kDefaultPointer;
};

// A report as a model: what a control would show, for whoever draws it.
class Document : public ReportObject {
 public:
  explicit Document(DisplayObject* container = nullptr) : container_(container) {}

  DisplayObject* Container() override { return container_; }
  [[nodiscard]] std::int32_t MousePointer() const override { return pointer_; }
  void SetMousePointer(std::int32_t pointer) override { pointer_ = pointer; }
  void SetVisible(bool visible) override { visible_ = visible; }

  void SetLocked(bool locked) override { locked_ = locked; }
  // Replaces the whole text; the paragraph settings stay.
  void SetText(std::string_view text) override;
  [[nodiscard]] float SelIndent() const override { return indent_; }
  void SetSelIndent(float indent) override { indent_ = indent; }
  [[nodiscard]] float SelRightIndent() const override { return right_indent_; }
  void SetSelRightIndent(float indent) override { right_indent_ = indent; }
  [[nodiscard]] float RightMargin() const override { return right_margin_; }
  void SetRightMargin(float margin) override { right_margin_ = margin; }
  void SetSelTabCount(std::int32_t count) override;
  // Both fail with kSubscriptOutOfRange for a stop that SetSelTabCount has not made.
  [[nodiscard]] float SelTabs(std::int32_t stop) const override;
  void SetSelTabs(std::int32_t stop, float position) override;
  void SetSelAlignment(Alignment alignment) override { alignment_ = alignment; }
  void SetSelFontName(std::string_view name) override { font_name_ = name; }
  void SetSelFontSize(float size) override { font_size_ = size; }
  void SetSelText(std::string_view text) override;
  void SetSelStart(std::int32_t) override {}

  [[nodiscard]] bool Locked() const { return locked_; }
  [[nodiscard]] bool Visible() const { return visible_; }
  // The lines so far; the last one may be empty. A new document has none.
  [[nodiscard]] const std::vector<Paragraph>& Paragraphs() const { return paragraphs_; }
  // The whole text, lines joined by "\r\n".
  [[nodiscard]] std::string Text() const;

 private:
  void BeginParagraph();
  void Append(std::string_view text);

  DisplayObject* container_;
  std::int32_t pointer_ = kDefaultPointer;
  bool visible_ = false;
  bool locked_ = false;
  float indent_ = 0;
  float right_indent_ = 0;
  float right_margin_ = 0;
  std::vector<float> tab_stops_;
  Alignment alignment_ = Alignment::kLeft;
  std::string font_name_;
  float font_size_ = 0;
  std::vector<Paragraph> paragraphs_;
};

}  // namespace vetlo
