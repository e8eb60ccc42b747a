#include "support/toolkit.h"

// On ten columns six characters of "a" show. A label stands to the right of "b".
static constinit ScreenField form[] = {Field(2, 2, 8, "a"),
                                       Field(4, 2, 3, "b"),
                                       {4, 6, "!", 6, 2, nullptr, 3, FLD_HIDDEN, "hidden"},
                                       kSentinel};
static constinit ScreenField other_form[] = {Field(4, 2, 3, "c"), kSentinel};

static Body Form(const std::string& value, const Action& action = {}) {
  return RunForm(form, value, action);
}

static std::string Repaint(WINDOW* window, ScreenField* /*field*/) {
  return PaintScreen(window, form, nullptr) == OK ? "" : "not painted, ";
}
static Action MoveTo(int row, int column) {
  return [=](WINDOW* window, ScreenField* /*field*/) { return wmove(window, row, column), ""; };
}
static std::string ChangeA(WINDOW* window, ScreenField* field) {
  SetValue(field, "ABCDEFGH");
  return RedrawField(window, field), "";
}
static std::string RunAnother(WINDOW* window, ScreenField* /*field*/) {
  RunForm(other_form, "", on_f2)();
  return ShowAgain(window), "";
}

TEST(FormEngine, KeysHandlersAndNewSizesActOnTheFieldUnderTheCursor) {
  const std::string full = "abcdefgh";
  const std::string f1_to_f13 = kOtherFunctionKeys + kF3 + kF4 + "\033[1;2P";
  const std::string all_but_f13 = "F1, F2, F5, F6, F7, F8, F9, F10, F11, F12, F3, F4, ";
  const std::string f0_and_delete = "\033Oy\177";
  const std::vector<Story> stories = {
      {"form_typed", Form("abc"), " ~", "", "[ ~c] changed"},
      {"form_full", Form(""), full + "X", "", "[abcdefgh] changed, bell"},
      {"form_hidden", Form("abc"), kUp + "xy", "", "[abc] changed"},
      {"form_page_down", Form("abc"), "\033[6~", "", "[Rbc] changed"},
      {"form_untouched", Form("abc"), "\x1f\x80", "", "[abc]"},
      {"form_untouched", Form("abc"), f1_to_f13, "", all_but_f13 + "[abc]"},
      {"form_to_the_last", Form(full), Times(9, kRight), "", "[abcdefgh]"},
      {"form_left_scrolls", Form(""), full + Times(7, kLeft), "", "[abcdefgh] changed"},
      {"form_erased", Form("abc"), Times(2, kRight) + kCtrlH, "", "[ac] changed"},
      {"form_down_and_up", Form(""), full + kDown + kUp, "", "[abcdefgh] changed"},
      {"form_first_replaced", Form("", Repaint), full + kF2 + "X", "", "[Xbcdefgh] changed"},
      {"form_shown_again", Form("", MoveTo(2, 9)), full + kF2, "X", "[Xbcdefgh] changed"},
      {"form_shown_replaced", Form("", MoveTo(2, 6)), full + kF2 + "X", "", "[abcdefXh] changed"},
      {"form_next_replaced", Form(full, MoveTo(2, 8)), kF2 + "X", "", "[abcdefXh] changed"},
      {"form_moved_to_b", Form("", MoveTo(4, 2)), full + kF2 + "X", "", "[abcdefgh] changed"},
      {"form_moved_after_b", Form("abc", MoveTo(4, 5)), kF2 + "X", "", "[abc], bell"},
      {"form_moved_beyond_b", Form("abc", MoveTo(4, 6)), kF2 + "X", "", "no field, [abc]"},
      {"form_moved_away", Form("abc", MoveTo(4, 1)), kF2 + "X" + kDown, "", "no field, [abc]"},
      {"form_after_form", Form("", RunAnother), full + kF2 + "xy\r", "", "[abcdefgh] changed"},
      {"form_changed_by_handler", Form("", ChangeA), full + kF2, kCtrlH, "[ABCDEFG] changed"},
      {"form_scrolled_along", Form("abcdef"), Times(5, kRight), "", "[abcdef]", Sizes{{8, 8}}},
      {"form_after_the_end", Form("abc", MoveTo(2, 6)), kF2, "X", "[abcX] changed", Sizes{{8, 8}}},
      {"form_cut_off", Form("abc"), "", kDown + kDown + kUp + "X", "[Xbc] changed", Sizes{{6, 10}}},
      {"form_too_low", Form("abc"), "", kDelete + kDown + "X", "no field, [abc]", Sizes{{2, 10}}}};
  Play(stories, {.rows = 8, .cols = 10});
  Play({{"form_untouched", Form("abc"), "", "X", "[Xbc] changed", Sizes{{8, 10}}}},
       {.rows = 2, .cols = 10});  // which shows no field
  Play({{"form_deleted", Form("abc"), f0_and_delete, "\033OM", "[bc] changed"}},
       {.rows = 8, .cols = 10, .term = "vt100"});  // and the keypad's Enter
}

TEST(FormEngine, EditsAreTraced) {
  const auto trace = [](WINDOW* /*window*/, ScreenField* /*field*/) { return StartTrace(), ""; };
  const auto traced = [&] { return Form("abcdefgh", trace)(), ReadFile(LogFileName); };
  const auto terminal = Start(traced, {.rows = 8, .cols = 10});
  terminal->Send(Times(6, kRight) + kF2 + kCtrlH + "X" + kEnter);
  ExpectText(terminal->Result(), "traces/form_engine.txt");
}
