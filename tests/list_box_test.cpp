#include "support/toolkit.h"

static constinit ScreenField form[] = {Field(1, 5, 9, "field"), kEnd};
static int items;  // how many NextItem gives; of twelve the first is long and not printable
static int calls;

static const char* NextItem(ScreenField* /*field*/) {
  static std::string text;
  text = items == 12 && calls == 0 ? "a\x01\x80" + std::string(70, 'z') : std::to_string(calls);
  return calls++ < items ? text.c_str() : nullptr;
}

// Lists items; returns the result, the value, "*" if it was changed, and the calls of NextItem.
static std::string List(const std::string& count) {
  items = std::stoi(count);
  WINDOW* window = OpenForm(form, "old");
  const int result = ListBox(window, form, NextItem);
  ReadKey(window);
  return std::to_string(result) + Value(form) + (FieldsModified ? "*" : "-") +
         std::to_string(calls);
}

TEST(ListBox, OpensWhereItFitsAndKeysMoveThroughTheItems) {
  Play(R"(3 |_Press_ENTER_after_selecting_an_item@4,5 [TOP]___@6,7 !0__@7,7 1__@8,7 2__@9,7
      [BOTTOM]___@10,7 |_ENTER=Select__F3=Cancel___@19,5 ^k^j !1_@8,7 ^j^j !2_@9,7 ^k^1^4^h^l^x
      !1_@8,7 $ [!old]@1,4 ____@4,7 $ = 01*4
    0 [TOP]__@6,7 ![BOTTOM]__@7,7 ^j^k !@7,7 ^3$ = 0old-1 0 $$ = 0old-1 25 ^j^j^3$ = 0old-26
    25 [TOP]__@6,7 !0___@7,7 9__@16,7 [MORE...15]____@17,7 ^j^j^j^j^j^j^j^j^j 0__@7,7 !9__@16,7
      ^j [MORE...1]___@6,7 1__@7,7 !10__@16,7 [MORE...14]_@17,7
      ^j^j^j^j^j [MORE...6]__@6,7 !15_@16,7 [MORE...9]__@17,7
      ^j^j^j^j^j^j^j^j^j^j [MORE...15]__@6,7 15__@7,7 !24__@16,7 [BOTTOM]____@17,7
      ^k^k^k^k^k^k^k^k^k !15__@7,7 ^k^k^k^k^k^k^k^k [MORE...7]___@6,7 !7__@7,7 [MORE...8]_@17,7
      ^k^k^k^k^k^k^k^k [TOP]_______@6,7 !0__@7,7 ^j$$ = 01*26
    25 ^j^j^j^j^j^j^j^j^j^j^j %12,80 !8_@11,7 $$ = 08*26 1030 [MORE...1014]@17,7 ^3$ = 0old-1031
    12 !a??)" +
           std::string(61, 'z') + "___|@7,7 ^j^j^j^j^j^j^j^j^j^j 1" + std::string(66, '_') +
           "|@7,7 ^k^k^k^k^k^k^k^k^k^k$$ = 0a\x01\x80zzzzzz*13",
       List);
  Play("1 $ = -1old-0", List, {.rows = 18});
  Play("1 $ = -1old-0", List, {.cols = 69});
  const std::string trace = Play("1 $$ = 00*2", List, {.rows = 19, .cols = 70});
  EXPECT_EQ(trace.find("Enter ListBox\nListBox Item:  0\nEnter PaintListBox\nExit Paint"), 5U);
  EXPECT_LT(trace.find("\nCursor position:  (5,2)\n"), trace.size());
}
