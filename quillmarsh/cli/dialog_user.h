#pragma once

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/platform/form.h"

namespace quillmarsh {

// A screen without pixels: what a user would do in a form is a function, and the messages that he
// would see are kept, with their meaning where they are not in English.
class DialogUser : public vetlo::Screen {
 public:
  using Deeds = std::function<void(const vetlo::Form& form)>;

  // Every question is answered with No, and so refuses what was asked for.
  explicit DialogUser(Deeds deeds) : deeds_(std::move(deeds)) {}

  // Questions are answered with Yes where the user gave this option.
  void AnswerYesFor(std::string option, bool given) {
    yes_option_ = std::move(option);
    says_yes_ = given;
  }

  // Does the deeds. A form that is still there then is closed; what failed waits for ThrowRefusal.
  void ShowModal(vetlo::Form& form) override;
  vetlo::MsgBoxAnswer MsgBox(std::string_view text, vetlo::MsgBoxButtons buttons,
                             vetlo::MsgBoxSymbol symbol) override;
  [[nodiscard]] std::int32_t MousePointer() const override { return pointer_; }
  void SetMousePointer(std::int32_t pointer) override { pointer_ = pointer; }

  // Fails with what a deed failed with, or with a UserError in the words of the first message, if
  // there was one.
  void ThrowRefusal() const;
  [[nodiscard]] const std::vector<std::string>& Messages() const { return messages_; }

 private:
  Deeds deeds_;
  std::string yes_option_;
  bool says_yes_ = false;
  std::vector<std::string> messages_;
  std::exception_ptr failure_;
  std::int32_t pointer_ = 0;
};

// A terminal with such a screen.
class DialogPlatform : public TerminalPlatform {
 public:
  explicit DialogPlatform(vetlo::Screen& screen);
  vetlo::Screen& GetScreen() override { return screen_; }

 private:
  vetlo::Screen& screen_;
};

}  // namespace quillmarsh
