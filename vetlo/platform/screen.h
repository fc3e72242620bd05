#pragma once

#include <cstdint>
#include <string_view>

namespace vetlo {

class Form;

enum class MsgBoxButtons : std::int32_t { kOkOnly = 0, kYesNo = 4 };
enum class MsgBoxSymbol : std::int32_t { kCritical = 16, kQuestion = 32, kWarning = 48 };
enum class MsgBoxAnswer : std::int32_t { kOk = 1, kYes = 6, kNo = 7 };

// Where forms and messages show. The host owns it and keeps it alive as long as the component is.
class Screen {
 public:
  virtual ~Screen() = default;

  // Shows a form over the active one and lets the user work with it. Returns once the form is
  // hidden. Forms nest: a form that shows another waits for it.
  virtual void ShowModal(Form& form) = 0;

  // Shows a text and waits for one of the buttons. A box that is closed without one answers kOk,
  // or kNo where it asked.
  virtual MsgBoxAnswer MsgBox(std::string_view text, MsgBoxButtons buttons,
                              MsgBoxSymbol symbol) = 0;

  // The pointer over everything that shows.
  [[nodiscard]] virtual std::int32_t MousePointer() const = 0;
  virtual void SetMousePointer(std::int32_t pointer) = 0;
};

}  // namespace vetlo
