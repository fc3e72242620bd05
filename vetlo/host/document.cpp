#include "vetlo/host/document.h"

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::size_t SlotOf(std::int32_t stop, std::size_t count) {
  if (stop < 0 || static_cast<std::size_t>(stop) >= count) {
    throw Failure(FailureNumber::kSubscriptOutOfRange);
  }
  return static_cast<std::size_t>(stop);
}

}  // namespace

std::string Paragraph::Text() const {
  std::string text;
  for (const TextRun& run : runs) {
    text += run.text;
  }
  return text;
}

void Document::SetText(std::string_view text) {
  paragraphs_.clear();
  if (!text.empty()) {
    SetSelText(text);
  }
}

void Document::SetSelTabCount(std::int32_t count) {
  tab_stops_.resize(static_cast<std::size_t>(count < 0 ? 0 : count));
}

float Document::SelTabs(std::int32_t stop) const {
  return tab_stops_[SlotOf(stop, tab_stops_.size())];
}

void Document::SetSelTabs(std::int32_t stop, float position) {
  tab_stops_[SlotOf(stop, tab_stops_.size())] = position;
}

void Document::SetSelText(std::string_view text) {
  if (paragraphs_.empty()) {
    BeginParagraph();
  }
  for (std::size_t end = text.find(kLineEnd); end != std::string_view::npos;
       end = text.find(kLineEnd)) {
    Append(text.substr(0, end));
    BeginParagraph();
    text.remove_prefix(end + kLineEnd.size());
  }
  Append(text);
}

void Document::BeginParagraph() {
  paragraphs_.push_back({{}, alignment_, indent_, right_indent_, tab_stops_});
}

void Document::Append(std::string_view text) {
  Paragraph& paragraph = paragraphs_.back();
  if (paragraph.runs.empty()) {
    // Settings made between a line's beginning and its first text still count for it.
    paragraph = {{}, alignment_, indent_, right_indent_, tab_stops_};
  }
  if (!text.empty()) {
    paragraph.runs.push_back({std::string(text), font_name_, font_size_});
  }
}

std::string Document::Text() const {
  std::string text;
  for (std::size_t i = 0; i < paragraphs_.size(); ++i) {
    text += (i == 0 ? "" : kLineEnd);
    text += paragraphs_[i].Text();
  }
  return text;
}

}  // namespace vetlo
