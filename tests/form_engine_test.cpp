#include "support/toolkit.h"

// On ten columns six characters of "a" show. A label stands to the right of "b".
static constinit ScreenField form[] = {Field(2, 2, 8, "a"),
                                       Field(4, 2, 3, "b"),
                                       {4, 7, "!", 6, 2, nullptr, 3, FLD_HIDDEN, "hidden"},
                                       kSentinel};

static Body Form(const std::string& value, const Action& action = {}) {
  return RunForm(form, value, action);
}

static int Repaint(WINDOW* window, ScreenField* /*field*/) {
  return PaintScreen(window, form, nullptr);
}
static Action MoveTo(int row, int column) {
  return [=](WINDOW* window, ScreenField* /*field*/) { return wmove(window, row, column); };
}
static int ChangeA(WINDOW* window, ScreenField* field) {
  SetValue(field, "ABCDEFGH");
  return RedrawField(window, field), 0;
}
static int RunAnother(WINDOW* window, ScreenField* /*field*/) {
  RunForm(form + 1, "", on_f2)();
  return ShowAgain(window);
}

TEST(FormEngine, KeysHandlersAndNewSizesActOnTheFieldUnderTheCursor) {
  const std::string full = "abcdefgh";
  const std::string f1_to_f13 =
      "\033OP\033OQ\033OR\033OS\033[15~\033[17~\033[18~"
      "\033[19~\033[20~\033[21~\033[23~\033[24~\033[1;2P";
  const std::vector<Story> stories = {
      {"form_typed", Form("abc"), " ~", "", " ~c*"},
      {"form_full", Form(""), full + "X", "", "abcdefgh*", {}, 1},
      {"form_hidden", Form("abc"), kUp + "xy", "", "abc*"},
      {"form_page_down", Form("abc"), "\033[6~", "", "Rbc*"},
      {"form_untouched", Form("abc"), "\x1f\x80", "", "abc"},
      {"form_untouched", Form("abc"), f1_to_f13, "", "2a 3a 4a 5a 6a 7a 8a 9a 10a 11a 12a 13a abc"},
      {"form_to_the_last", Form(full), Times(9, kRight), "", "abcdefgh"},
      {"form_left_scrolls", Form(""), full + Times(7, kLeft), "", "abcdefgh*"},
      {"form_erased", Form("abc"), Times(2, kRight) + kCtrlH, "", "ac*"},
      {"form_down", Form(""), full + kDown, "", "abcdefgh*"},
      {"form_down_and_up", Form(""), full + kDown + kUp, "", "abcdefgh*"},
      {"form_first_replaced", Form("", Repaint), full + kF2 + "X", "", "0 Xbcdefgh*"},
      {"form_first_replaced", Form("", MoveTo(2, 9)), full + kF2 + "X", "", "0 Xbcdefgh*"},
      {"form_shown_one_replaced", Form("", MoveTo(2, 6)), full + kF2 + "X", "", "0 abcdefXh*"},
      {"form_next_one_replaced", Form(full, MoveTo(2, 8)), kF2 + "X", "", "0 abcdefXh*"},
      {"form_moved_to_b", Form("", MoveTo(4, 2)), full + kF2 + "X", "", "0 abcdefgh*"},
      {"form_moved_behind_b", Form("abc", MoveTo(4, 5)), kF2 + "X", "", "0 abc", {}, 1},
      {"form_moved_beyond_b", Form("abc", MoveTo(4, 6)), kF2 + "X", "", "0 1- abc"},
      {"form_moved_away", Form("abc", MoveTo(4, 1)), kF2 + "X" + kDown, "", "0 1- abc"},
      {"form_after_form", Form("", RunAnother), full + kF2 + "xy\r", "", "0 abcdefgh*"},
      {"form_changed_by_handler", Form("", ChangeA), full + kF2, kCtrlH, "0 ABCDEFG*"},
      {"form_narrower", Form(""), "abcdef" + Times(5, kLeft), "", "abcdef*", {{8, 8}}},
      {"form_scrolled_along", Form(""), "abcdef" + kLeft, "", "abcdef*", {{8, 8}}},
      {"form_cut_off", Form("abc"), "", kDown + kDown + kUp + "X", "Xbc*", {{6, 10}}},
      {"form_too_low", Form(""), "abc", kCtrlH + kDown + "X", "1- abc*", {{2, 10}}}};
  Play(stories, {.rows = 8, .cols = 10});
  const std::string f0_and_delete = "\033Oy\177";
  const std::string keypad_enter = "\033OM";
  Play({{"form_deleted", Form("abc"), f0_and_delete, keypad_enter, "bc*"}},
       {.rows = 8, .cols = 10, .term = "vt100"});
}

TEST(FormEngine, EditsAreTraced) {
  const auto trace = [](WINDOW* /*window*/, ScreenField* /*field*/) { return StartTrace(), 0; };
  const auto traced = [&] { return Form("abcdefgh", trace)(), ReadFile(LogFileName); };
  const auto terminal = Start(traced, {.rows = 8, .cols = 10});
  terminal->Send(Times(6, kRight) + kF2 + kCtrlH + "X" + kEnter);
  EXPECT_EQ(terminal->Result(), ReadFile(NODEWARDEN_TRACES "/form_engine.txt"));
}
