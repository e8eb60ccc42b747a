#include "support/toolkit.h"

static constinit ScreenField form[] = {Field(3, 4, 9, "item"), kSentinel};
static int items = 0;
static int calls = 0;
static std::string first_item;

static const char* NextItem(ScreenField* field) {
  static std::string text;
  text = calls == 0 ? first_item : field->name + std::to_string(calls);
  return calls++ < items ? text.c_str() : nullptr;
}

// A form in which F2 lists items. How often it asks for one is noted.
static Body List(int count, const std::string& first = "item0") {
  return RunForm(form, "old", [=](WINDOW* window, ScreenField* field) {
    items = count;
    first_item = first;
    const int result = ListBox(window, field, NextItem);
    return std::to_string(calls) + " calls, " + (result == 0 ? "" : "failed, ");
  });
}

TEST(ListBox, KeysMoveThroughTheItemsAndChooseOne) {
  const Body three = List(3);
  const Body many = List(25);
  const Body with_odd_item = List(12, "a\x01\x80" + std::string(70, 'z'));
  const std::string other_keys = kLeft + kRight + "o";
  const std::string to_end = Times(30, kDown);
  const std::vector<Story> stories = {
      {"list_box_three_items", three, kF2 + kUp + other_keys, kEnter, "4 calls, [item0] changed"},
      {"list_box_last_of_three", three, kF2 + to_end, kEnter, "4 calls, [item2] changed"},
      {"list_box_no_items", List(0), kF2 + kDown + kUp, kEnter, "1 calls, [old]"},
      {"list_box_at_the_end", many, kF2 + to_end, kEnter, "26 calls, [item24] changed"},
      {"list_box_back", many, kF2 + to_end + Times(17, kUp), kEnter, "26 calls, [item7] changed"},
      {"list_box_too_many_items", List(1030), kF2, kEnter, "1031 calls, [item0] changed"},
      {"list_box_long_item", with_odd_item, kF2, kEnter, "13 calls, [a\x01\x80zzzzzz] changed"},
      {"list_box_just_fits", many, kF2 + Times(10, kDown), kEnter, "26 calls, [item10] changed",
       Sizes{{19, 70}}},
      {"list_box_too_low", many, kF2, "X", "26 calls, failed, [Xld] changed",
       Sizes{{18, 73}, {22, 73}}}};
  Play(stories, {.rows = 22, .cols = 73});
  Play({{"list_box_never_fits", many, kF2, "", "0 calls, failed, [old]"}},
       {.rows = 18, .cols = 73});
}
