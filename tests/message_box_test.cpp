#include <array>

#include "support/toolkit.h"

static constinit ScreenField form[] = {Field(3, 4, 9, "field"), kSentinel};

// A form in which F2 asks a question. The answer is noted.
static Body Ask(int type, const std::string& question = "Sure?") {
  return RunForm(form, "value", [=](WINDOW* window, ScreenField* /*field*/) {
    const int answer = MessageBox(window, question.c_str(), type);
    constexpr std::array kWords{"none", "?", "yes", "no", "ok", "cancel"};
    return kWords.at(static_cast<std::size_t>(answer) + 1) + std::string(", ");
  });
}

TEST(MessageBox, ShowsTextAndButtonsUntilOneIsChosen) {
  const std::string text = Times(13, "abcdefghijklmnopqrstuvwxyz");
  const Body yes_no = Ask(MBOX_YESNO);
  const Body yes_no_cancel = Ask(MBOX_YESNOCANCEL);
  const Body ok_cancel = Ask(MBOX_OKCANCEL);
  const std::vector<Story> stories = {
      {"message_box_yes_no", yes_no, kF2 + kRight + kRight, "y", "yes, [value]"},
      {"message_box_no", yes_no, kF2 + kRight + "cozCO" + kDown + kF3, kEnter, "no, [value]"},
      {"message_box_yes_no_cancel", yes_no_cancel, kF2 + "oO", "N", "no, [value]"},
      {"message_box_cancel", yes_no_cancel, kF2 + kLeft, "Y", "yes, [value]"},
      {"message_box_cancel", yes_no_cancel, kF2 + kRight + kRight, kEnter, "cancel, [value]"},
      {"message_box_ok", Ask(MBOX_OK), kF2 + kLeft + kRight + "ynYNcC", "o", "ok, [value]"},
      {"message_box_ok_cancel", ok_cancel, kF2 + kLeft + kLeft + "ynYN", "C", "cancel, [value]"},
      {"message_box_49_characters", Ask(MBOX_OK, text.substr(0, 49)), kF2, "O", "ok, [value]"},
      {"message_box_50_characters", Ask(MBOX_OK, text.substr(0, 50)), kF2, "o", "ok, [value]"},
      {"message_box_full", Ask(MBOX_OKCANCEL, text), kF2, "c", "cancel, [value]"},
      {"message_box_closed", yes_no, kF2 + "n", "", "no, [value]"},
      {"message_box_closed", Ask(0), kF2, "", "none, [value]"},
      {"message_box_closed", Ask(5), kF2, "", "none, [value]"},
      {"message_box_just_fits", yes_no, kF2 + kRight, kEnter, "no, [value]", Sizes{{10, 50}}},
      {"message_box_closed", yes_no, kF2, "y", "none, [yalue] changed", Sizes{{9, 55}, {15, 55}}},
      {"message_box_closed", yes_no, kF2 + "\033", "x", "none, [alue] changed",
       Sizes{{9, 55}, {15, 55}}},
      {"message_box_too_narrow", yes_no, kF2, "y", "none, [yalue] changed", Sizes{{15, 49}}}};
  Play(stories, {.rows = 15, .cols = 55});
  Play({{"message_box_never_fits", yes_no, kF2, "", "none, [value]"}}, {.rows = 9, .cols = 55});
}
