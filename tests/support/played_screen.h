#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "quillmarsh/terminal/terminal_platform.h"
#include "tests/support/small_store.h"
#include "vetlo/platform/form.h"

namespace vetlo::testing {

// A screen on which a test plays the user. It remembers what a user would have been told.
class PlayedScreen : public Screen {
 public:
  struct Message {
    std::string text;
    MsgBoxButtons buttons = MsgBoxButtons::kOkOnly;
    MsgBoxSymbol symbol = MsgBoxSymbol::kWarning;

    friend bool operator==(const Message&, const Message&) = default;
    friend void PrintTo(const Message& message, std::ostream* out) { *out << message.text; }
  };

  // What the user does while a form shows. Where he leaves it open he closes its window.
  std::function<void(Form& form)> user;
  // What he answers to the questions to come; where nothing stands here, No.
  std::deque<MsgBoxAnswer> answers;

  // Runs while the user reads a message.
  std::function<void()> on_message;

  std::vector<Message> messages;
  std::vector<std::int32_t> pointers;  // in the order in which they were set
  int forms_shown = 0;

  void ShowModal(Form& form) override {
    ++forms_shown;
    if (user) {
      user(form);
    }
    if (form.Visible()) {
      form.Close();
    }
  }
  MsgBoxAnswer MsgBox(std::string_view text, MsgBoxButtons buttons, MsgBoxSymbol symbol) override {
    messages.push_back({std::string(text), buttons, symbol});
    if (on_message) {
      on_message();
    }
    if (buttons == MsgBoxButtons::kOkOnly) {
      return MsgBoxAnswer::kOk;
    }
    if (answers.empty()) {
      return MsgBoxAnswer::kNo;
    }
    const MsgBoxAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  [[nodiscard]] std::int32_t MousePointer() const override { return pointer_; }
  void SetMousePointer(std::int32_t pointer) override {
    pointer_ = pointer;
    pointers.push_back(pointer);
  }

 private:
  std::int32_t pointer_ = 0;
};

// Surroundings with such a screen, on a pinned day.
class PlayedPlatform : public quillmarsh::TerminalPlatform {
 public:
  explicit PlayedPlatform(Date today = Day(2026, 3, 20))
      : TerminalPlatform(NumberLocale{}, today) {}
  Screen& GetScreen() override { return screen; }

  PlayedScreen screen;
};

}  // namespace vetlo::testing
