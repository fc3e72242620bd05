#include "quillmarsh/cli/dialog_user.h"

#include "quillmarsh/cli/message_meaning.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/locale.h"

namespace quillmarsh {

void DialogUser::ShowModal(vetlo::Form& form) {
  // Nothing is thrown through the component: it would become a failure of its own.
  try {
    deeds_(form);
  } catch (const std::exception&) {
    failure_ = std::current_exception();
  }
  if (form.Visible()) {
    form.Close();
  }
}

vetlo::MsgBoxAnswer DialogUser::MsgBox(std::string_view text, vetlo::MsgBoxButtons buttons,
                                       vetlo::MsgBoxSymbol) {
  if (buttons == vetlo::MsgBoxButtons::kOkOnly) {
    messages_.push_back(WithMeaning(text));
    return vetlo::MsgBoxAnswer::kOk;
  }
  if (says_yes_) {
    return vetlo::MsgBoxAnswer::kYes;
  }
  messages_.push_back(WithMeaning(text) + " Give " + yes_option_ + " to say yes.");
  return vetlo::MsgBoxAnswer::kNo;
}

void DialogUser::ThrowRefusal() const {
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  if (!messages_.empty()) {
    throw UserError(messages_.front());
  }
}

DialogPlatform::DialogPlatform(vetlo::Screen& screen)
    : TerminalPlatform(EnvironmentLocale()), screen_(screen) {}

}  // namespace quillmarsh
