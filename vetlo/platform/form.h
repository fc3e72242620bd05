#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/platform/screen.h"

namespace vetlo {

// Forms as they are apart from their pixels: controls with their properties and events, and what a
// user can do to them. A toolkit shows the properties and passes on what the user does; it adds no
// rule of its own. Texts are UTF-8, positions and lengths in them count characters, entries of a
// list count from 0.
//
// The program sets properties with Set..., which raises no event. The user's deeds (Type, Pick,
// Choose, Toggle, Click) take the focus first; before it moves, the Validate step of the box that
// is to be left runs. Where that step keeps the focus, or where a control is disabled or hidden,
// nothing more happens. What fails in an event ends the dialog and comes out of Form::ShowModal.

class Container;
class Control;

// Told what changes while a form shows. A toolkit's window is one.
class FormView {
 public:
  virtual ~FormView() = default;
  virtual void ControlChanged(Control& control) = 0;
  virtual void FocusMoved() = 0;
  virtual void FormHidden() = 0;
};

class Form {
 public:
  explicit Form(std::string caption) : caption_(std::move(caption)) {}
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  [[nodiscard]] const std::string& Caption() const { return caption_; }
  [[nodiscard]] bool Visible() const { return visible_; }

  // In the order in which the Tab key goes through them.
  [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }
  // Null where no control is called so.
  [[nodiscard]] Control* Find(std::string_view name) const;
  // Null, too, where it is of another kind.
  template <typename Kind>
  [[nodiscard]] Kind* Find(std::string_view name) const {
    return dynamic_cast<Kind*>(Find(name));
  }
  // The control that has the focus, or null.
  [[nodiscard]] Control* ActiveControl() const { return active_; }

  // Sets the form up the first time, shows it on the screen and returns when it is hidden. A form
  // that hides itself while it is set up does not show at all.
  void ShowModal(Screen& screen);
  void Hide();

  // The user goes to a control, by mouse, key or Tab. False where it can't be reached, or where
  // the box that is left keeps the focus.
  bool MoveFocus(Control& to);
  // The user goes to the next control that can be reached, from the last one to the first.
  void Tab();
  // The user closes the window instead of pressing a button.
  void Close() { Hide(); }

  // May be null; must outlive its being set.
  void SetView(FormView* view) { view_ = view; }

 protected:
  // Runs once, before the form shows.
  virtual void Activate() = 0;

 private:
  friend class Control;

  // Runs what an event sets off, if anything. Where it fails the form is hidden.
  void Run(const std::function<void()>& event);
  // Asks the box that has the focus, and looks whether the way is still free after its answer.
  bool MayGoTo(Control& to);
  void PutFocus(Control& control);
  void FocusFirst();

  std::string caption_;
  std::vector<Control*> controls_;
  Control* active_ = nullptr;
  FormView* view_ = nullptr;
  bool visible_ = false;
  bool activated_ = false;
  std::exception_ptr failure_;
};

// A part of a form; it belongs to the form and lives no longer than it.
class Control {
 public:
  Control(Form& form, Container* container, std::string name, std::string caption);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }
  // "&" stands before the letter of the access key.
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  [[nodiscard]] bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  // Enabled and visible, and so is all that holds it.
  [[nodiscard]] bool InUse() const;
  // What holds it, or null where the form itself does.
  [[nodiscard]] Container* GetContainer() const { return container_; }

  [[nodiscard]] virtual bool TakesFocus() const { return true; }
  [[nodiscard]] bool HasFocus() const { return form_.ActiveControl() == this; }
  // The program puts the focus here: no box is asked whether it can be left. Where it is already
  // here nothing happens. Fails with kInvalidCall where the control takes none, or is not in use.
  void SetFocus();

  // The focus has come here.
  std::function<void()> on_got_focus;
  // The user is about to leave for another control; the focus is still here. False keeps it.
  std::function<bool(const Control& taking_focus)> on_validate;

 protected:
  // The user does something to this control: true where he can.
  bool Reach() { return form_.MoveFocus(*this); }
  void Raise(const std::function<void()>& event) { form_.Run(event); }
  // Something of it looks different now.
  void Changed();
  [[nodiscard]] const Form& GetForm() const { return form_; }

 private:
  friend class Form;

  Form& form_;
  Container* container_;
  std::string name_;
  std::string caption_;
  bool enabled_ = true;
  bool visible_ = true;
};

class Label : public Control {
 public:
  Label(Form& form, Container* container, std::string name, std::string caption)
      : Control(form, container, std::move(name), std::move(caption)) {}
  [[nodiscard]] bool TakesFocus() const override { return false; }
};

// A frame around controls that belong together, or a plain surface under them.
class Container : public Control {
 public:
  Container(Form& form, Container* container, std::string name, std::string caption = {})
      : Control(form, container, std::move(name), std::move(caption)) {}
  [[nodiscard]] bool TakesFocus() const override { return false; }
};

class TextBox : public Control {
 public:
  TextBox(Form& form, Container* container, std::string name)
      : Control(form, container, std::move(name), {}) {}

  [[nodiscard]] const std::string& Text() const { return text_; }
  // The caret goes to the start and nothing is selected.
  void SetText(std::string text);
  // How many characters a user can type, 0 for any number.
  [[nodiscard]] std::size_t MaxLength() const { return max_length_; }
  void SetMaxLength(std::size_t count) { max_length_ = count; }
  [[nodiscard]] std::size_t SelStart() const { return sel_start_; }
  [[nodiscard]] std::size_t SelLength() const { return sel_length_; }
  void Select(std::size_t start, std::size_t length);
  void SelectAll();

  // The user edits the text until it reads so, as far as the box takes it.
  void Type(std::string_view text);

  std::function<void()> on_change;

 private:
  std::string text_;
  std::size_t max_length_ = 0;
  std::size_t sel_start_ = 0;
  std::size_t sel_length_ = 0;
};

inline constexpr std::int32_t kNoEntry = -1;

// A list of texts, each with a number that belongs to it.
class ListControl : public Control {
 public:
  struct Entry {
    std::string text;
    std::int32_t item_data = 0;
  };

  [[nodiscard]] const std::vector<Entry>& Entries() const { return entries_; }
  void AddItem(std::string text, std::int32_t item_data);
  // The entry that is selected, or kNoEntry.
  [[nodiscard]] std::int32_t ListIndex() const { return list_index_; }
  virtual void SetListIndex(std::int32_t index);
  // The number of the selected entry. Fails with kSubscriptOutOfRange where none is.
  [[nodiscard]] std::int32_t SelectedItemData() const;
  // The first entry with this text to the letter, or with this number; kNoEntry where there is
  // none.
  [[nodiscard]] std::int32_t IndexOfText(std::string_view text) const;
  [[nodiscard]] std::int32_t IndexOfItemData(std::int32_t item_data) const;

  // The user picks an entry. One that there is not can't be picked.
  void Pick(std::int32_t index);

  std::function<void()> on_click;

 protected:
  using Control::Control;
  void Unselect() { list_index_ = kNoEntry; }

 private:
  std::vector<Entry> entries_;
  std::int32_t list_index_ = kNoEntry;
};

// A closed list that drops down.
class DropDownList : public ListControl {
 public:
  DropDownList(Form& form, Container* container, std::string name)
      : ListControl(form, container, std::move(name), {}) {}
};

// A box to type into, with a list to pick from.
class ComboBox : public ListControl {
 public:
  ComboBox(Form& form, Container* container, std::string name)
      : ListControl(form, container, std::move(name), {}) {}

  [[nodiscard]] const std::string& Text() const { return text_; }
  // No entry is selected then, also where one reads the same.
  void SetText(std::string text);
  // The box then holds the entry's text.
  void SetListIndex(std::int32_t index) override;

  // The user edits the text until it reads so.
  void Type(std::string_view text);

  std::function<void()> on_change;

 private:
  std::string text_;
};

// One of those in a container of which at most one is chosen.
class OptionButton : public Control {
 public:
  OptionButton(Form& form, Container* container, std::string name, std::string caption)
      : Control(form, container, std::move(name), std::move(caption)) {}

  [[nodiscard]] bool Value() const { return value_; }
  // Choosing one takes the choice from its neighbours.
  void SetValue(bool value);

  // The user chooses it.
  void Choose();

 private:
  bool value_ = false;
};

class CheckBox : public Control {
 public:
  CheckBox(Form& form, Container* container, std::string name, std::string caption)
      : Control(form, container, std::move(name), std::move(caption)) {}

  [[nodiscard]] bool Checked() const { return checked_; }
  void SetChecked(bool checked);

  // The user checks or unchecks it.
  void Toggle();

 private:
  bool checked_ = false;
};

class Button : public Control {
 public:
  Button(Form& form, Container* container, std::string name, std::string caption)
      : Control(form, container, std::move(name), std::move(caption)) {}

  // The user presses it.
  void Click();

  std::function<void()> on_click;
};

}  // namespace vetlo
