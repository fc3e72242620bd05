#include "vetlo/platform/form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A screen on which a test plays the user.
class TestScreen : public Screen {
 public:
  void ShowModal(Form& form) override {
    ++forms_shown;
    if (user) {
      user();
    }
    visible_at_end = form.Visible();
  }
  MsgBoxAnswer MsgBox(std::string_view, MsgBoxButtons, MsgBoxSymbol) override {
    return MsgBoxAnswer::kOk;
  }
  [[nodiscard]] std::int32_t MousePointer() const override { return 0; }
  void SetMousePointer(std::int32_t) override {}

  std::function<void()> user;
  int forms_shown = 0;
  bool visible_at_end = false;
};

// A form with one of each control.
class TestForm : public Form {
 public:
  TestForm() : Form("Test") {}

  Label label{*this, nullptr, "label", "&Name:"};
  TextBox first{*this, nullptr, "first"};
  TextBox second{*this, nullptr, "second"};
  Container frame{*this, nullptr, "frame", "Frame"};
  std::array<OptionButton, 2> size{{
      {*this, &frame, "size(0)", "&Small"},
      {*this, &frame, "size(1)", "&Large"},
  }};
  Container other_frame{*this, nullptr, "other_frame"};
  OptionButton color{*this, &other_frame, "color", "&Red"};
  CheckBox check{*this, nullptr, "check", "&Check"};
  DropDownList list{*this, nullptr, "list"};
  ComboBox combo{*this, nullptr, "combo"};
  Button button{*this, nullptr, "button", "OK"};

  std::function<void()> set_up;
  int times_set_up = 0;

 protected:
  void Activate() override {
    ++times_set_up;
    if (set_up) {
      set_up();
    }
  }
};

class Forms : public ::testing::Test {
 protected:
  void Show(const std::function<void()>& user = {}) {
    screen_.user = user;
    form_.ShowModal(screen_);
  }
  // Keeps the focus in a box, whatever is in it, and counts how often it was asked.
  void KeepFocusIn(TextBox& box) {
    box.on_validate = [this](const Control&) {
      ++asked_;
      return false;
    };
  }
  [[nodiscard]] std::string Focus() const {
    return form_.ActiveControl() == nullptr ? "none" : form_.ActiveControl()->Name();
  }
  void FillLists() {
    for (ListControl* const control :
         std::initializer_list<ListControl*>{&form_.list, &form_.combo}) {
      control->AddItem("Ash", 30);
      control->AddItem("Birch", 20);
      control->AddItem("Cedar", 10);
    }
  }

  TestForm form_;
  TestScreen screen_;
  int asked_ = 0;
};

// The number with which a piece fails, 0 where it does not.
std::int32_t FailureOf(const std::function<void()>& piece) { return ResumeNext(piece); }

void FailAsStore() { throw Failure(FailureNumber::kStoreUnusable); }
constexpr auto kStoreUnusable = static_cast<std::int32_t>(FailureNumber::kStoreUnusable);
constexpr auto kInvalidCall = static_cast<std::int32_t>(FailureNumber::kInvalidCall);
constexpr auto kOutside = static_cast<std::int32_t>(FailureNumber::kSubscriptOutOfRange);

// ---- showing and hiding

TEST_F(Forms, AreVisibleWhileTheyShow) {
  EXPECT_FALSE(form_.Visible());
  Show([&] { EXPECT_TRUE(form_.Visible()); });
  EXPECT_FALSE(form_.Visible());
}

TEST_F(Forms, AreHiddenByTheirWindowBeingClosed) {
  Show([&] { form_.Close(); });
  EXPECT_FALSE(screen_.visible_at_end);
}

TEST_F(Forms, AreSetUpOnce) {
  Show();
  Show();
  EXPECT_EQ(form_.times_set_up, 1);
  EXPECT_EQ(screen_.forms_shown, 2);
}

TEST_F(Forms, AreSetUpBeforeTheyShow) {
  form_.set_up = [&] { EXPECT_EQ(screen_.forms_shown, 0); };
  Show([&] { EXPECT_EQ(form_.times_set_up, 1); });
  EXPECT_EQ(screen_.forms_shown, 1);
}

TEST_F(Forms, ThatHideWhileTheyAreSetUpNeverShow) {
  form_.set_up = [&] { form_.Hide(); };
  Show();
  EXPECT_EQ(screen_.forms_shown, 0);
  EXPECT_FALSE(form_.Visible());
}

TEST_F(Forms, ThatHideWhenTheFirstControlTakesTheFocusNeverShow) {
  form_.first.on_got_focus = [&] { form_.Hide(); };
  Show();
  EXPECT_EQ(screen_.forms_shown, 0);
}

TEST_F(Forms, KnowTheirControlsByName) {
  EXPECT_EQ(form_.Find("second"), &form_.second);
  EXPECT_EQ(form_.Find("size(1)"), &form_.size[1]);
  EXPECT_EQ(form_.Find("Second"), nullptr);
  EXPECT_EQ(form_.Find<TextBox>("second"), &form_.second);
  EXPECT_EQ(form_.Find<Button>("second"), nullptr);
}

TEST_F(Forms, ListTheirControlsInTheOrderInWhichTheyAreMade) {
  std::vector<std::string> names;
  for (const Control* control : form_.Controls()) {
    names.push_back(control->Name());
  }
  EXPECT_THAT(names, ElementsAre("label", "first", "second", "frame", "size(0)", "size(1)",
                                 "other_frame", "color", "check", "list", "combo", "button"));
}

// ---- the focus

TEST_F(Forms, PutTheFocusOnTheFirstControlThatTakesIt) {
  Show([&] { EXPECT_EQ(Focus(), "first"); });
}

TEST_F(Forms, PassOverAFirstControlThatIsNotInUse) {
  form_.set_up = [&] {
    form_.first.SetEnabled(false);
    form_.second.SetVisible(false);
  };
  Show([&] { EXPECT_EQ(Focus(), "size(0)"); });
}

TEST_F(Forms, LeaveTheFocusWhereTheSetUpHasPutIt) {
  form_.set_up = [&] { form_.combo.SetFocus(); };
  Show([&] { EXPECT_EQ(Focus(), "combo"); });
}

TEST_F(Forms, ShowWithoutAFocusWhereNothingTakesIt) {
  form_.set_up = [&] {
    for (Control* control : form_.Controls()) {
      control->SetEnabled(false);
    }
  };
  Show([&] {
    form_.Tab();
    EXPECT_EQ(Focus(), "none");
  });
  EXPECT_EQ(screen_.forms_shown, 1);
}

TEST_F(Forms, TabGoesThroughTheControlsThatTakeTheFocusAndBackToTheFirst) {
  Show([&] {
    std::vector<std::string> passed;
    for (int i = 0; i < 9; ++i) {
      form_.Tab();
      passed.push_back(Focus());
    }
    EXPECT_THAT(passed, ElementsAre("second", "size(0)", "size(1)", "color", "check", "list",
                                    "combo", "button", "first"));
  });
}

TEST_F(Forms, TabPassesOverControlsThatAreNotInUse) {
  form_.second.SetEnabled(false);
  form_.size[0].SetVisible(false);
  Show([&] {
    form_.Tab();
    EXPECT_EQ(Focus(), "size(1)");
  });
}

TEST_F(Forms, TabStaysOnTheOnlyControlInUse) {
  for (Control* control : form_.Controls()) {
    control->SetEnabled(control == &form_.list);
  }
  Show([&] {
    form_.Tab();
    EXPECT_EQ(Focus(), "list");
  });
}

TEST_F(Forms, MoveTheFocusWhereTheUserGoes) {
  Show([&] {
    EXPECT_TRUE(form_.MoveFocus(form_.check));
    EXPECT_TRUE(form_.check.HasFocus());
    EXPECT_FALSE(form_.first.HasFocus());
  });
}

TEST_F(Forms, DoNotMoveTheFocusToWhatTakesNone) {
  form_.second.SetEnabled(false);
  form_.check.SetVisible(false);
  Show([&] {
    for (Control* control :
         std::initializer_list<Control*>{&form_.label, &form_.frame, &form_.second, &form_.check}) {
      EXPECT_FALSE(form_.MoveFocus(*control)) << control->Name();
    }
    EXPECT_EQ(Focus(), "first");
  });
}

TEST_F(Forms, DoNotMoveTheFocusOnceTheyAreHidden) {
  Show([&] {
    form_.Hide();
    EXPECT_FALSE(form_.MoveFocus(form_.second));
    EXPECT_EQ(Focus(), "first");
  });
}

TEST_F(Forms, TellAControlThatItGotTheFocus) {
  int told = 0;
  form_.second.on_got_focus = [&] { ++told; };
  Show([&] {
    form_.MoveFocus(form_.second);
    form_.MoveFocus(form_.second);
  });
  EXPECT_EQ(told, 1);
}

TEST_F(Forms, AskABoxThatIsLeftOnceAndTellItWhereTheFocusGoes) {
  std::vector<std::string> towards;
  form_.first.on_validate = [&](const Control& to) {
    towards.push_back(to.Name());
    return true;
  };
  Show([&] {
    form_.MoveFocus(form_.first);
    form_.MoveFocus(form_.check);
    form_.MoveFocus(form_.second);
  });
  EXPECT_THAT(towards, ElementsAre("check"));
}

TEST_F(Forms, LeaveTheFocusInABoxThatKeepsIt) {
  KeepFocusIn(form_.first);
  int told = 0;
  form_.second.on_got_focus = [&] { ++told; };
  Show([&] {
    EXPECT_FALSE(form_.MoveFocus(form_.second));
    EXPECT_EQ(Focus(), "first");
  });
  EXPECT_EQ(asked_, 1);
  EXPECT_EQ(told, 0);
}

TEST_F(Forms, TabIsKeptInABoxToo) {
  KeepFocusIn(form_.first);
  Show([&] {
    form_.Tab();
    EXPECT_EQ(Focus(), "first");
  });
  EXPECT_EQ(asked_, 1);
}

TEST_F(Forms, AskABoxBeforeTheFocusMoves) {
  std::string focus_when_asked;
  form_.first.on_validate = [&](const Control&) {
    focus_when_asked = Focus();
    return true;
  };
  Show([&] { EXPECT_TRUE(form_.MoveFocus(form_.second)); });
  EXPECT_EQ(focus_when_asked, "first");
}

TEST_F(Forms, LeaveTheFocusWhereTheAnswerOfABoxHasPutIt) {
  form_.first.on_validate = [&](const Control&) {
    form_.combo.SetFocus();
    return true;
  };
  Show([&] {
    EXPECT_FALSE(form_.MoveFocus(form_.second));
    EXPECT_EQ(Focus(), "combo");
  });
}

TEST_F(Forms, LeaveTheFocusInABoxWhoseAnswerPutsTheOtherControlOutOfUse) {
  form_.first.on_validate = [&](const Control&) {
    form_.second.SetEnabled(false);
    return true;
  };
  Show([&] {
    EXPECT_FALSE(form_.MoveFocus(form_.second));
    EXPECT_EQ(Focus(), "first");
  });
}

TEST_F(Forms, DoNothingMoreWhereAnEventOnTheWayHidesThem) {
  form_.first.on_validate = [&](const Control&) {
    form_.Hide();
    return true;
  };
  int told = 0;
  form_.button.on_got_focus = [&] { ++told; };
  form_.button.on_click = [&] { ++told; };
  Show([&] { form_.button.Click(); });
  EXPECT_EQ(told, 0);
}

TEST_F(Forms, SetFocusAsksNoBox) {
  KeepFocusIn(form_.first);
  int told = 0;
  form_.second.on_got_focus = [&] { ++told; };
  Show([&] {
    form_.second.SetFocus();
    EXPECT_EQ(Focus(), "second");
  });
  EXPECT_EQ(asked_, 0);
  EXPECT_EQ(told, 1);
}

TEST_F(Forms, SetFocusDoesNothingToAControlThatHasTheFocus) {
  int told = 0;
  form_.first.on_got_focus = [&] { ++told; };
  Show([&] { form_.first.SetFocus(); });
  EXPECT_EQ(told, 1);
}

TEST_F(Forms, SetFocusFailsOnAControlNotInUse) {
  form_.second.SetEnabled(false);
  form_.check.SetVisible(false);
  Show([&] {
    for (Control* control :
         std::initializer_list<Control*>{&form_.label, &form_.frame, &form_.second, &form_.check}) {
      EXPECT_EQ(FailureOf([&] { control->SetFocus(); }), kInvalidCall) << control->Name();
    }
    EXPECT_EQ(Focus(), "first");
  });
}

// ---- what all controls have

TEST_F(Forms, ControlsAreInUseWhileTheyAreEnabledAndVisible) {
  EXPECT_TRUE(form_.check.InUse());
  form_.check.SetEnabled(false);
  EXPECT_FALSE(form_.check.InUse());
  form_.check.SetEnabled(true);
  form_.check.SetVisible(false);
  EXPECT_FALSE(form_.check.InUse());
}

TEST_F(Forms, ControlsAreNotInUseWhereWhatHoldsThemIsNot) {
  form_.frame.SetEnabled(false);
  EXPECT_FALSE(form_.size[0].InUse());
  EXPECT_TRUE(form_.color.InUse());
  Show([this] {
    form_.size[0].Choose();
    EXPECT_FALSE(form_.size[0].Value());
  });
}

TEST_F(Forms, ControlsKnowWhatHoldsThem) {
  EXPECT_EQ(form_.size[0].GetContainer(), &form_.frame);
  EXPECT_EQ(form_.check.GetContainer(), nullptr);
}

struct Deed {
  const char* name;
  const char* control;
  std::function<void(TestForm&)> act;
  std::function<bool(const TestForm&)> done;
};
void PrintTo(const Deed& deed, std::ostream* out) { *out << deed.name; }

// What a user does to a control.
class UserDeed : public Forms, public ::testing::WithParamInterface<Deed> {
 protected:
  UserDeed() {
    FillLists();
    form_.button.on_click = [this] { form_.label.SetCaption("clicked"); };
  }
  Control& Target() { return *form_.Find(GetParam().control); }
  void Act() { GetParam().act(form_); }
  [[nodiscard]] bool Done() const { return GetParam().done(form_); }
};

TEST_P(UserDeed, IsDoneAndTakesTheFocus) {
  Show([&] {
    Act();
    EXPECT_TRUE(Done());
    EXPECT_EQ(Focus(), GetParam().control);
  });
}

TEST_P(UserDeed, DoesNothingToADisabledControl) {
  Target().SetEnabled(false);
  Show([&] {
    Act();
    EXPECT_FALSE(Done());
    EXPECT_EQ(Focus(), "first");
  });
}

TEST_P(UserDeed, DoesNothingToAHiddenControl) {
  Target().SetVisible(false);
  Show([&] {
    Act();
    EXPECT_FALSE(Done());
    EXPECT_EQ(Focus(), "first");
  });
}

TEST_P(UserDeed, DoesNothingWhereTheBoxThatIsLeftKeepsTheFocus) {
  KeepFocusIn(form_.first);
  Show([&] {
    Act();
    EXPECT_FALSE(Done());
    EXPECT_EQ(Focus(), "first");
  });
}

TEST_P(UserDeed, DoesNothingBeforeTheFormShows) {
  Act();
  EXPECT_FALSE(Done());
}

TEST_P(UserDeed, DoesNothingOnceTheFormIsHidden) {
  Show([&] {
    form_.Close();
    Act();
    EXPECT_FALSE(Done());
  });
}

INSTANTIATE_TEST_SUITE_P(
    Every, UserDeed,
    ::testing::Values(Deed{"Type", "second", [](TestForm& form) { form.second.Type("x"); },
                           [](const TestForm& form) { return form.second.Text() == "x"; }},
                      Deed{"TypeInCombo", "combo", [](TestForm& form) { form.combo.Type("x"); },
                           [](const TestForm& form) { return form.combo.Text() == "x"; }},
                      Deed{"Pick", "list", [](TestForm& form) { form.list.Pick(1); },
                           [](const TestForm& form) { return form.list.ListIndex() == 1; }},
                      Deed{"PickInCombo", "combo", [](TestForm& form) { form.combo.Pick(1); },
                           [](const TestForm& form) { return form.combo.ListIndex() == 1; }},
                      Deed{"Choose", "size(1)", [](TestForm& form) { form.size[1].Choose(); },
                           [](const TestForm& form) { return form.size[1].Value(); }},
                      Deed{"Toggle", "check", [](TestForm& form) { form.check.Toggle(); },
                           [](const TestForm& form) { return form.check.Checked(); }},
                      Deed{"Click", "button", [](TestForm& form) { form.button.Click(); },
                           [](const TestForm& form) { return form.label.Caption() == "clicked"; }}),
    [](const auto& test) { return test.param.name; });

// ---- text boxes

TEST_F(Forms, ATextThatIsSetHasItsCaretAtTheStart) {
  form_.first.SetText("abc");
  form_.first.Select(1, 2);
  form_.first.SetText("abcd");
  EXPECT_EQ(form_.first.Text(), "abcd");
  EXPECT_EQ(form_.first.SelStart(), 0U);
  EXPECT_EQ(form_.first.SelLength(), 0U);
}

TEST_F(Forms, SelectAllCountsCharacters) {
  form_.first.SetText("名称ab");
  form_.first.SelectAll();
  EXPECT_EQ(form_.first.SelStart(), 0U);
  EXPECT_EQ(form_.first.SelLength(), 4U);
}

TEST_F(Forms, ASelectionStaysWithinTheText) {
  form_.first.SetText("abcd");
  form_.first.Select(3, 9);
  EXPECT_EQ(form_.first.SelStart(), 3U);
  EXPECT_EQ(form_.first.SelLength(), 1U);
  form_.first.Select(7, 2);
  EXPECT_EQ(form_.first.SelStart(), 4U);
  EXPECT_EQ(form_.first.SelLength(), 0U);
}

TEST_F(Forms, TypingLeavesTheCaretBehindTheText) {
  Show([&] { form_.first.Type("名称"); });
  EXPECT_EQ(form_.first.SelStart(), 2U);
  EXPECT_EQ(form_.first.SelLength(), 0U);
}

TEST_F(Forms, ABoxTakesNoMoreCharactersThanItsMaximum) {
  form_.first.SetMaxLength(3);
  Show([&] {
    form_.first.Type("名称图形");
    EXPECT_EQ(form_.first.Text(), "名称图");
    form_.first.Type("abc");
    EXPECT_EQ(form_.first.Text(), "abc");
  });
}

TEST_F(Forms, ABoxWithoutAMaximumTakesAnyText) {
  EXPECT_EQ(form_.first.MaxLength(), 0U);
  const std::string text(5000, 'x');
  Show([&] { form_.first.Type(text); });
  EXPECT_EQ(form_.first.Text(), text);
}

TEST_F(Forms, TypingRaisesTheChangeAfterTheTextIsThere) {
  std::vector<std::string> texts;
  form_.first.on_change = [&] { texts.push_back(form_.first.Text()); };
  Show([&] {
    form_.first.SetText("set");
    form_.first.Type("typed");
  });
  EXPECT_THAT(texts, ElementsAre("typed"));
}

// ---- lists

TEST_F(Forms, AListHasNothingSelectedAtFirst) {
  FillLists();
  EXPECT_EQ(form_.list.ListIndex(), kNoEntry);
  EXPECT_EQ(FailureOf([&] { static_cast<void>(form_.list.SelectedItemData()); }), kOutside);
}

TEST_F(Forms, AListFindsEntriesByTextToTheLetterAndByNumber) {
  FillLists();
  form_.list.AddItem("Birch", 20);
  EXPECT_EQ(form_.list.IndexOfText("Birch"), 1);
  EXPECT_EQ(form_.list.IndexOfText("birch"), kNoEntry);
  EXPECT_EQ(form_.list.IndexOfItemData(10), 2);
  EXPECT_EQ(form_.list.IndexOfItemData(20), 1);
  EXPECT_EQ(form_.list.IndexOfItemData(1), kNoEntry);
}

TEST_F(Forms, AnEntryThatIsSelectedTellsItsNumber) {
  FillLists();
  form_.list.SetListIndex(2);
  EXPECT_EQ(form_.list.SelectedItemData(), 10);
  form_.list.SetListIndex(kNoEntry);
  EXPECT_EQ(form_.list.ListIndex(), kNoEntry);
}

TEST_F(Forms, AnEntryThatThereIsNotCannotBeSelected) {
  FillLists();
  form_.list.SetListIndex(1);
  for (const std::int32_t index : {-2, 3}) {
    EXPECT_EQ(FailureOf([&] { form_.list.SetListIndex(index); }), kOutside) << index;
  }
  EXPECT_EQ(form_.list.ListIndex(), 1);
}

TEST_F(Forms, AnEntryThatThereIsNotCannotBePicked) {
  FillLists();
  int clicks = 0;
  form_.list.on_click = [&] { ++clicks; };
  Show([&] {
    form_.list.Pick(3);
    form_.list.Pick(kNoEntry);
  });
  EXPECT_EQ(form_.list.ListIndex(), kNoEntry);
  EXPECT_EQ(clicks, 0);
}

TEST_F(Forms, PickingRaisesTheClickAndSelectingDoesNot) {
  FillLists();
  std::vector<std::int32_t> picked;
  form_.list.on_click = [&] { picked.push_back(form_.list.SelectedItemData()); };
  Show([&] {
    form_.list.SetListIndex(1);
    form_.list.Pick(2);
  });
  EXPECT_THAT(picked, ElementsAre(10));
}

TEST_F(Forms, AComboBoxHoldsTheTextOfThePickedEntry) {
  FillLists();
  Show([&] {
    form_.combo.Pick(1);
    EXPECT_EQ(form_.combo.Text(), "Birch");
  });
  form_.combo.SetListIndex(kNoEntry);
  EXPECT_EQ(form_.combo.Text(), "");
}

TEST_F(Forms, TypingIntoAComboBoxUnselectsItsEntry) {
  FillLists();
  Show([&] {
    form_.combo.Pick(1);
    form_.combo.Type("Birch");
    EXPECT_EQ(form_.combo.ListIndex(), kNoEntry);
    EXPECT_EQ(form_.combo.Text(), "Birch");
  });
}

TEST_F(Forms, AComboBoxTellsTypingFromPicking) {
  FillLists();
  std::vector<std::string> events;
  form_.combo.on_change = [&] { events.push_back("change to " + form_.combo.Text()); };
  form_.combo.on_click = [&] { events.push_back("click on " + form_.combo.Text()); };
  Show([&] {
    form_.combo.SetText("set");
    form_.combo.Type("typed");
    form_.combo.Pick(0);
  });
  EXPECT_THAT(events, ElementsAre("change to typed", "click on Ash"));
}

// ---- options, checks, buttons

TEST_F(Forms, ChoosingAnOptionTakesTheChoiceFromItsNeighbour) {
  Show([&] {
    form_.size[0].Choose();
    form_.size[1].Choose();
  });
  EXPECT_FALSE(form_.size[0].Value());
  EXPECT_TRUE(form_.size[1].Value());
}

TEST_F(Forms, OptionsOfAnotherContainerKeepTheirChoice) {
  form_.color.SetValue(true);
  Show([&] { form_.size[0].Choose(); });
  EXPECT_TRUE(form_.color.Value());
}

TEST_F(Forms, AnOptionCanBeUnchosenByTheProgram) {
  form_.size[1].SetValue(true);
  form_.size[1].SetValue(false);
  EXPECT_FALSE(form_.size[0].Value());
  EXPECT_FALSE(form_.size[1].Value());
}

TEST_F(Forms, ADisabledOptionLosesItsChoiceToItsNeighbour) {
  form_.size[0].SetValue(true);
  form_.size[0].SetEnabled(false);
  Show([&] { form_.size[1].Choose(); });
  EXPECT_FALSE(form_.size[0].Value());
}

TEST_F(Forms, TogglingACheckBoxTwiceLeavesItAsItWas) {
  Show([&] {
    form_.check.Toggle();
    EXPECT_TRUE(form_.check.Checked());
    form_.check.Toggle();
    EXPECT_FALSE(form_.check.Checked());
  });
}

TEST_F(Forms, AButtonWithNothingToDoCanBePressed) {
  Show([&] {
    form_.button.Click();
    EXPECT_TRUE(form_.Visible());
  });
}

// ---- failures

struct FailingEvent {
  const char* name;
  std::function<void(TestForm&)> arrange;
  std::function<void(TestForm&)> act;
};
void PrintTo(const FailingEvent& event, std::ostream* out) { *out << event.name; }

class EventThatFails : public Forms, public ::testing::WithParamInterface<FailingEvent> {};

TEST_P(EventThatFails, HidesTheFormAndComesOutOfShowing) {
  FillLists();
  GetParam().arrange(form_);
  bool visible_after = true;
  const std::int32_t failure = FailureOf([&] {
    Show([&] {
      EXPECT_EQ(FailureOf([&] { GetParam().act(form_); }), 0);
      visible_after = form_.Visible();
    });
  });
  EXPECT_EQ(failure, kStoreUnusable);
  EXPECT_FALSE(visible_after);
}

INSTANTIATE_TEST_SUITE_P(
    Every, EventThatFails,
    ::testing::Values(
        FailingEvent{"ClickOfAButton", [](TestForm& form) { form.button.on_click = FailAsStore; },
                     [](TestForm& form) { form.button.Click(); }},
        FailingEvent{"ClickOfAList", [](TestForm& form) { form.list.on_click = FailAsStore; },
                     [](TestForm& form) { form.list.Pick(0); }},
        FailingEvent{"ChangeOfABox", [](TestForm& form) { form.first.on_change = FailAsStore; },
                     [](TestForm& form) { form.first.Type("x"); }},
        FailingEvent{"ChangeOfAComboBox",
                     [](TestForm& form) { form.combo.on_change = FailAsStore; },
                     [](TestForm& form) { form.combo.Type("x"); }},
        FailingEvent{"GotFocus", [](TestForm& form) { form.second.on_got_focus = FailAsStore; },
                     [](TestForm& form) { form.Tab(); }},
        FailingEvent{"GotFocusByTheProgram",
                     [](TestForm& form) { form.second.on_got_focus = FailAsStore; },
                     [](TestForm& form) { form.second.SetFocus(); }},
        FailingEvent{"Validate",
                     [](TestForm& form) {
                       form.first.on_validate = [](const Control&) {
                         FailAsStore();
                         return true;
                       };
                     },
                     [](TestForm& form) { form.Tab(); }}),
    [](const auto& test) { return test.param.name; });

TEST_F(Forms, ASetUpThatFailsComesOutOfShowingAndTheFormNeverShows) {
  form_.set_up = FailAsStore;
  EXPECT_EQ(FailureOf([&] { Show(); }), kStoreUnusable);
  EXPECT_EQ(screen_.forms_shown, 0);
  EXPECT_FALSE(form_.Visible());
}

TEST_F(Forms, AFirstFocusThatFailsComesOutOfShowingAndTheFormNeverShows) {
  form_.first.on_got_focus = FailAsStore;
  EXPECT_EQ(FailureOf([&] { Show(); }), kStoreUnusable);
  EXPECT_EQ(screen_.forms_shown, 0);
}

TEST_F(Forms, AScreenThatFailsLeavesTheFormHidden) {
  EXPECT_EQ(FailureOf([this] { Show(FailAsStore); }), kStoreUnusable);
  EXPECT_FALSE(form_.Visible());
}

TEST_F(Forms, AFailureComesOutOnce) {
  form_.button.on_click = FailAsStore;
  EXPECT_EQ(FailureOf([&] { Show([&] { form_.button.Click(); }); }), kStoreUnusable);
  EXPECT_EQ(FailureOf([&] { Show(); }), 0);
}

// ---- the view

class KeepingView : public FormView {
 public:
  void ControlChanged(Control& control) override { events.push_back(control.Name()); }
  void FocusMoved() override { events.emplace_back("focus"); }
  void FormHidden() override { events.emplace_back("hidden"); }

  std::vector<std::string> events;
};

struct ShownChange {
  const char* name;
  std::function<void(TestForm&)> change;
  std::vector<std::string> told;
};
void PrintTo(const ShownChange& change, std::ostream* out) { *out << change.name; }

class ViewOfAForm : public Forms, public ::testing::WithParamInterface<ShownChange> {
 protected:
  // What the view is told of what happens while the form shows.
  std::vector<std::string> Told(const std::function<void()>& happening) {
    FillLists();
    KeepingView view;
    Show([&] {
      form_.SetView(&view);
      happening();
      form_.SetView(nullptr);
    });
    return view.events;
  }
};

TEST_P(ViewOfAForm, IsToldOfTheChange) {
  EXPECT_EQ(Told([&] { GetParam().change(form_); }), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Every, ViewOfAForm,
    ::testing::Values(
        ShownChange{"Caption", [](TestForm& form) { form.label.SetCaption("x"); }, {"label"}},
        ShownChange{"Enabled", [](TestForm& form) { form.check.SetEnabled(false); }, {"check"}},
        ShownChange{"Visible", [](TestForm& form) { form.check.SetVisible(false); }, {"check"}},
        ShownChange{"Text", [](TestForm& form) { form.second.SetText("x"); }, {"second"}},
        ShownChange{"Selection", [](TestForm& form) { form.second.SelectAll(); }, {"second"}},
        ShownChange{"ComboText", [](TestForm& form) { form.combo.SetText("x"); }, {"combo"}},
        ShownChange{"Entry", [](TestForm& form) { form.list.AddItem("x", 1); }, {"list"}},
        ShownChange{"ListIndex", [](TestForm& form) { form.list.SetListIndex(1); }, {"list"}},
        ShownChange{"Check", [](TestForm& form) { form.check.SetChecked(true); }, {"check"}},
        ShownChange{"Options",
                    [](TestForm& form) {
                      form.size[0].SetValue(true);
                      form.size[1].SetValue(true);
                    },
                    {"size(0)", "size(0)", "size(1)"}},
        ShownChange{"Focus", [](TestForm& form) { form.second.SetFocus(); }, {"focus"}},
        ShownChange{"Typing", [](TestForm& form) { form.second.Type("x"); }, {"focus", "second"}},
        ShownChange{"Hiding", [](TestForm& form) { form.Hide(); }, {"hidden"}},
        ShownChange{"HidingTwice",
                    [](TestForm& form) {
                      form.Hide();
                      form.Close();
                    },
                    {"hidden"}}),
    [](const auto& test) { return test.param.name; });

TEST_F(ViewOfAForm, IsToldOfNoMoveWhereABoxKeepsTheFocus) {
  KeepFocusIn(form_.first);
  EXPECT_THAT(Told([&] {
                form_.Tab();
                form_.button.Click();
              }),
              IsEmpty());
  EXPECT_EQ(asked_, 2);
}

TEST_F(ViewOfAForm, FindsWhatItIsToldOf) {
  class ReadingView : public KeepingView {
   public:
    void ControlChanged(Control& control) override {
      events.push_back(dynamic_cast<ComboBox&>(control).Text());
    }
  };
  FillLists();
  ReadingView view;
  Show([&] {
    form_.SetView(&view);
    form_.combo.SetListIndex(1);
    form_.SetView(nullptr);
  });
  ASSERT_FALSE(view.events.empty());
  EXPECT_EQ(view.events.back(), "Birch");
}

TEST_F(ViewOfAForm, IsToldNothingWhereNothingHappens) {
  EXPECT_THAT(Told([&] {
                form_.MoveFocus(form_.first);
                form_.first.SetFocus();
                form_.MoveFocus(form_.label);
                form_.list.Pick(99);
              }),
              IsEmpty());
}

}  // namespace
}  // namespace vetlo
