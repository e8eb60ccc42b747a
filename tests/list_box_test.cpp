#include "support/toolkit.h"

static constinit ScreenField form[] = {Field(3, 4, 9, "item"), kSentinel};
static int items = 0;
static int calls = 0;

// Of twelve items, the first is too long for the box and has odd bytes.
static const char* NextItem(ScreenField* field) {
  static std::string text;
  text = field->name + std::to_string(calls);
  if (items == 12 && calls == 0) text = "a\x01\x80" + std::string(70, 'z');
  return calls++ < items ? text.c_str() : nullptr;
}

// A form in which F2 lists items. Returns the calls of NextItem, the result, and the value.
static Body List(int count) {
  return RunForm(form, "old", [=](WINDOW* window, ScreenField* field) {
    items = count;
    const int result = ListBox(window, field, NextItem);
    noted += std::to_string(calls) + " ";
    return result;
  });
}

TEST(ListBox, KeysMoveThroughTheItemsAndChooseOne) {
  const std::vector<Story> stories = {
      {"list_box_three_items", List(3), kF2 + kUp + kLeft + kRight + "o", kEnter, "4 0 item0*"},
      {"list_box_last_of_three", List(3), kF2 + Times(3, kDown), kEnter, "4 0 item2*"},
      {"list_box_no_items", List(0), kF2 + kDown + kUp, kEnter, "1 0 old"},
      {"list_box_last_row", List(25), kF2 + Times(9, kDown), kEnter, "26 0 item9*"},
      {"list_box_at_the_end", List(25), kF2 + Times(30, kDown), kEnter, "26 0 item24*"},
      {"list_box_back", List(25), kF2 + Times(24, kDown) + Times(30, kUp), kEnter, "26 0 item0*"},
      {"list_box_too_many_items", List(1030), kF2, kEnter, "1031 0 item0*"},
      {"list_box_long_item", List(12), kF2, kEnter, "13 0 a\x01\x80zzzzzz*"},
      {"list_box_just_fits", List(25), kF2 + Times(10, kDown), kEnter, "26 0 item10*", {{19, 70}}},
      {"list_box_too_low", List(25), kF2, "X", "26 -1 Xld*", {{18, 73}, {22, 73}}},
      {"list_box_too_narrow", List(25), kF2, "X", "26 -1 Xld*", {{22, 69}}}};
  Play(stories, {.rows = 22, .cols = 73});
  Play({{"list_box_too_narrow", List(25), kF2, "", "0 -1 old"}}, {.rows = 22, .cols = 69});
  Play({{"list_box_never_fits", List(25), kF2, "", "0 -1 old"}}, {.rows = 18, .cols = 73});
}
