#include "vetlo/platform/form.h"

#include <algorithm>
#include <utility>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"

namespace vetlo {
namespace {

bool CanTakeFocus(const Control* control) { return control->InUse() && control->TakesFocus(); }

template <typename Value, typename Member>
std::int32_t IndexOf(const std::vector<ListControl::Entry>& entries, const Value& value,
                     Member member) {
  const auto found = std::ranges::find(entries, value, member);
  return found == entries.end() ? kNoEntry : static_cast<std::int32_t>(found - entries.begin());
}

}  // namespace

// ---- Form

Control* Form::Find(std::string_view name) const {
  const auto found = std::ranges::find(controls_, name, &Control::Name);
  return found == controls_.end() ? nullptr : *found;
}

void Form::ShowModal(Screen& screen) {
  visible_ = true;
  if (!std::exchange(activated_, true)) {
    Run([this] { Activate(); });
  }
  if (visible_) {
    FocusFirst();
  }
  if (visible_) {
    Run([&] { screen.ShowModal(*this); });
  }
  visible_ = false;
  if (failure_) {
    std::rethrow_exception(std::exchange(failure_, nullptr));
  }
}

void Form::Hide() {
  if (std::exchange(visible_, false) && view_ != nullptr) {
    view_->FormHidden();
  }
}

bool Form::MoveFocus(Control& to) {
  if (!visible_ || !CanTakeFocus(&to)) {
    return false;
  }
  if (active_ == &to) {
    return true;
  }
  if (!MayGoTo(to)) {
    return false;
  }
  PutFocus(to);
  Run(to.on_got_focus);
  return visible_;
}

bool Form::MayGoTo(Control& to) {
  Control* const left = active_;
  if (left == nullptr || !left->on_validate) {
    return true;
  }
  bool leaves = false;
  Run([&] { leaves = left->on_validate(to); });
  return leaves && visible_ && active_ == left && CanTakeFocus(&to);
}

void Form::Tab() {
  const auto at = std::ranges::find(controls_, active_);
  std::vector<Control*> order(at == controls_.end() ? at : at + 1, controls_.end());
  order.insert(order.end(), controls_.begin(), at);
  const auto next = std::ranges::find_if(order, CanTakeFocus);
  if (next != order.end()) {
    MoveFocus(**next);
  }
}

void Form::FocusFirst() {
  if (active_ == nullptr) {
    Tab();
  }
}

void Form::Run(const std::function<void()>& event) {
  if (!event) {
    return;
  }
  try {
    event();
  } catch (const std::exception&) {
    failure_ = std::current_exception();
    Hide();
  }
}

void Form::PutFocus(Control& control) {
  active_ = &control;
  if (view_ != nullptr) {
    view_->FocusMoved();
  }
}

// ---- what all controls have

Control::Control(Form& form, Container* container, std::string name, std::string caption)
    : form_(form), container_(container), name_(std::move(name)), caption_(std::move(caption)) {
  form_.controls_.push_back(this);
}

bool Control::InUse() const {
  return enabled_ && visible_ && (container_ == nullptr || container_->InUse());
}

void Control::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  Changed();
}

void Control::SetEnabled(bool enabled) {
  enabled_ = enabled;
  Changed();
}

void Control::SetVisible(bool visible) {
  visible_ = visible;
  Changed();
}

void Control::SetFocus() {
  if (!CanTakeFocus(this)) {
    throw Failure(FailureNumber::kInvalidCall, name_ + " can't take the focus");
  }
  if (HasFocus()) {
    return;
  }
  form_.PutFocus(*this);
  form_.Run(on_got_focus);
}

void Control::Changed() {
  if (form_.view_ != nullptr) {
    form_.view_->ControlChanged(*this);
  }
}

// ---- TextBox

void TextBox::SetText(std::string text) {
  text_ = std::move(text);
  sel_start_ = 0;
  sel_length_ = 0;
  Changed();
}

void TextBox::Select(std::size_t start, std::size_t length) {
  const std::size_t count = CharacterCount(text_);
  sel_start_ = std::min(start, count);
  sel_length_ = std::min(length, count - sel_start_);
  Changed();
}

void TextBox::SelectAll() { Select(0, CharacterCount(text_)); }

void TextBox::Type(std::string_view text) {
  if (!Reach()) {
    return;
  }
  text_ = max_length_ == 0 ? text : FirstCharacters(text, max_length_);
  Select(CharacterCount(text_), 0);
  Raise(on_change);
}

// ---- lists

void ListControl::AddItem(std::string text, std::int32_t item_data) {
  entries_.push_back({std::move(text), item_data});
  Changed();
}

void ListControl::SetListIndex(std::int32_t index) {
  if (index < kNoEntry || index >= std::ssize(entries_)) {
    throw Failure(FailureNumber::kSubscriptOutOfRange);
  }
  list_index_ = index;
  Changed();
}

std::int32_t ListControl::SelectedItemData() const {
  if (list_index_ == kNoEntry) {
    throw Failure(FailureNumber::kSubscriptOutOfRange);
  }
  return entries_[static_cast<std::size_t>(list_index_)].item_data;
}

std::int32_t ListControl::IndexOfText(std::string_view text) const {
  return IndexOf(entries_, text, &Entry::text);
}

std::int32_t ListControl::IndexOfItemData(std::int32_t item_data) const {
  return IndexOf(entries_, item_data, &Entry::item_data);
}

void ListControl::Pick(std::int32_t index) {
  if (index >= 0 && index < std::ssize(entries_) && Reach()) {
    SetListIndex(index);
    Raise(on_click);
  }
}

void ComboBox::SetText(std::string text) {
  text_ = std::move(text);
  Unselect();
  Changed();
}

void ComboBox::SetListIndex(std::int32_t index) {
  ListControl::SetListIndex(index);
  text_ = index == kNoEntry ? "" : Entries()[static_cast<std::size_t>(index)].text;
  Changed();
}

void ComboBox::Type(std::string_view text) {
  if (Reach()) {
    SetText(std::string(text));
    Raise(on_change);
  }
}

// ---- buttons

void OptionButton::SetValue(bool value) {
  if (value) {
    for (Control* const control : GetForm().Controls()) {
      auto* const neighbour = dynamic_cast<OptionButton*>(control);
      if (neighbour != nullptr && neighbour != this &&
          neighbour->GetContainer() == GetContainer() && neighbour->value_) {
        neighbour->SetValue(false);
      }
    }
  }
  value_ = value;
  Changed();
}

void OptionButton::Choose() {
  if (Reach()) {
    SetValue(true);
  }
}

void CheckBox::SetChecked(bool checked) {
  checked_ = checked;
  Changed();
}

void CheckBox::Toggle() {
  if (Reach()) {
    SetChecked(!checked_);
  }
}

void Button::Click() {
  if (Reach()) {
    Raise(on_click);
  }
}

}  // namespace vetlo
