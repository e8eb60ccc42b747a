#include "support/toolkit.h"

static constinit ScreenField form[] = {Field(3, 4, 9, "field"), kSentinel};

// A form in which F2 asks a question. Returns the answer and the value.
static Body Ask(int type, const std::string& question = "Sure?") {
  return RunForm(form, "value", [=](WINDOW* window, ScreenField* /*field*/) {
    return MessageBox(window, question.c_str(), type);
  });
}

TEST(MessageBox, ShowsTextAndButtonsUntilOneIsChosen) {
  const std::string text = Times(13, "abcdefghijklmnopqrstuvwxyz");
  const std::vector<Story> stories = {
      {"message_box_yes_no", Ask(MBOX_YESNO), kF2, "y", "1 value"},
      {"message_box_no", Ask(MBOX_YESNO), kF2 + kRight + "cozCO" + kDown + kF3, kEnter, "2 value"},
      {"message_box_yes_no", Ask(MBOX_YESNO), kF2 + kRight + kRight, "N", "2 value"},
      {"message_box_yes_no_cancel", Ask(MBOX_YESNOCANCEL), kF2 + "oO", "n", "2 value"},
      {"message_box_cancel", Ask(MBOX_YESNOCANCEL), kF2 + kLeft, "Y", "1 value"},
      {"message_box_cancel", Ask(MBOX_YESNOCANCEL), kF2 + kRight + kRight, kEnter, "4 value"},
      {"message_box_ok", Ask(MBOX_OK), kF2 + kLeft + kRight + "ynYNcC", "o", "3 value"},
      {"message_box_ok_cancel", Ask(MBOX_OKCANCEL), kF2 + kLeft + kLeft + "ynYN", "C", "4 value"},
      {"message_box_ok_cancel", Ask(MBOX_OKCANCEL), kF2, "O", "3 value"},
      {"message_box_49_characters", Ask(MBOX_OK, text.substr(0, 49)), kF2, "O", "3 value"},
      {"message_box_50_characters", Ask(MBOX_OK, text.substr(0, 50)), kF2, "o", "3 value"},
      {"message_box_full", Ask(MBOX_OKCANCEL, text), kF2, "c", "4 value"},
      {"message_box_closed", Ask(MBOX_YESNO), kF2 + "n", "", "2 value"},
      {"message_box_closed", Ask(0), kF2, "", "-1 value"},
      {"message_box_closed", Ask(5), kF2, "", "-1 value"},
      {"message_box_just_fits", Ask(MBOX_YESNO), kF2 + kRight, kEnter, "2 value", {{10, 50}}},
      {"message_box_closed", Ask(MBOX_YESNO), kF2, "y", "-1 yalue*", {{9, 55}, {15, 55}}},
      {"message_box_closed", Ask(MBOX_YESNO), kF2 + "\033", "x", "-1 alue*", {{9, 55}, {15, 55}}},
      {"message_box_too_narrow", Ask(MBOX_YESNO), kF2, "y", "-1 yalue*", {{15, 49}}}};
  Play(stories, {.rows = 15, .cols = 55});
  Play({{"message_box_too_narrow", Ask(MBOX_YESNO), kF2, "", "-1 value"}},
       {.rows = 15, .cols = 49});
  Play({{"message_box_never_fits", Ask(MBOX_YESNO), kF2, "", "-1 value"}}, {.rows = 9, .cols = 55});
}
