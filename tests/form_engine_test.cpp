#include "support/toolkit.h"

// Six characters of "a" show on ten columns.
static constinit ScreenField form[] = {Field(2, 2, 8, "a"), Field(4, 2, 3, "b"),
                                       Field(6, 2, 3, "c"), kEnd};
static std::string codes;  // what the handler was told, but for Enter

static int Handle(WINDOW* window, int code, ScreenField* field) {
  if (code == CODE_ENTER) return 1;
  codes += std::to_string(code) + (field != nullptr ? field->name : "-");
  if (code == 3) return PaintScreen(window, form, nullptr);
  if (code == 4) return MoveToField(window, form);
  if (code == 5) return wmove(window, 2, 6);
  if (code == 6) return wmove(window, 4, 2);
  if (code == 7) SetValue(field, "ABCDEFGH");
  if (code == 7) RedrawField(window, field);
  if (code != 8) return 0;
  const WindowPtr over = OpenWindow(LINES, COLS, 0, 0);
  PaintScreen(over.get(), form + 1, nullptr);
  ProcessWindowData(over.get(), form + 1, Handle);
  return Restore(window);
}

// Runs the form; returns the value it leaves, "*" if it was changed, and the codes.
static std::string RunForm(const std::string& value) {
  if (value == "secret") form[0].flags = FLD_HIDDEN;
  for (ScreenField& row : Rows(form)) row.flags |= value == "locked" ? FLD_PROTECTED : 0;
  ProcessWindowData(OpenForm(form, value == "-" ? "" : value), form, Handle);
  return Value(form) + std::string(FieldsModified ? "*" : "") + codes;
}

TEST(FormEngine, KeysEditTheFieldUnderTheCursor) {
  Play(R"(- abcdef [abcdef!]|@2,1 g <bcdefg!]|@2,1 hX <cdefgh!]|@2,1* ^h^h^h^h^h^h
      <!cdefgh]|@2,1* # <!cdefgh]|@2,1** ^h <!bcdefg>|@2,1** ^h^h [!abcdef>|@2,1** $ = abcdefgh*
    abcdefgh ^l^l^l^l^l^lX <bcdefX!>|@2,1 ^x <bcdefX!>|@2,1* Y <cdefXY!]|@2,1* $ = abcdefXY*
    - abcdefgh^[18~xy [xy!]____|@4,1 $# <cdefg!]_|@2,1 ^3Y [Y!bcdef>|@2,1 $ = Ybcdefg*8a4a
    abcdefgh ^l^l^l^l^l [abcde!f>|@2,1 ^l <bcdef!g>|@2,1 ^l^l <cdefg!h]|@2,1 $ = abcdefgh
    - ~^[6~c [~Rc!]___|@2,1 ^l^xd [~Rcd!]__|@2,1** ^h^x^x [~Rc!]___|@2,1*** ^h^hb$ = ~bc*
    secret [******]|@2,1 ^lX^l# [**!***]_|@2,1 ^l^l^lyz <******!]|@2,1 $ = sXretyz*
    - abcdefgh^jxyzz [xyz!]___|@4,1* ^k [!abcdef>|@2,1* X^k !@6,2* $ = Xbcdefgh*
    - abcdef !@2,8 %8,8 [!abcd>f@2,1 ^2zzzzzzzz <zzzz!]|@2,1 $ = zzzzzzzz*3a
    - abcdefgh^4X <cdefX!h]|@2,1 ^3Y [Y!bcdef>|@2,1 $ = YbcdefXh*5a4a
    - abcdefgh^1# <cdefg!]_|@2,1 ^2X [X!bcdef>|@2,1 $ = Xbcdefg*2a3a
    - abcdefgh^h^h^h# <cd!fgh]_|@2,1 ^x [abcd!gh]|@2,1 $ = abcdgh*
    abcdefgh ^x [!bcdefg>|@2,1 ^l^l^x# [b!efgh]_|@2,1 $ = befgh*
    abc ^1^[20~^[21~^[23~^[24~^[1;2P !@2,2 $ = abc2a10a11a12a13a
    ABCDEF ^h^l^lXY [ABXY!EF]|@2,1 ## [AB!EF]__|@2,1 $ = ABEF* locked x#^x^j^1 !@0,0 $ = locked2-
    - abcdefgh^[15~#X [X!]_____|@4,1* $ = abcdefgh*6a abcdefgh %8,14 [!abcdefgh]@2,1 $ = abcdefgh
    - abcdefgh^[17~X <CDEFGH!]|@2,1* $ = ABCDEFGH*7a abc ^4X#^x^l^h [abc!]___|@2,1**** $ = abc5a)",
       RunForm, {.rows = 8, .cols = 10});
  Play("abc \x7f$ = bc*", RunForm, {.rows = 8, .cols = 10, .term = "vt100"});
}

TEST(FormEngine, EveryEditIsTraced) {
  const std::string field = "Input field:  <a> \"-\" \n";
  const std::string trace = Play("abcdefg X^l^l^l^l^l#$ = Xbcdeg*", RunForm, {.cols = 10});
  EXPECT_EQ(trace.find("\nEnter ProcessWindowData\n" + field + "Key: X"), 7U) << trace;
  EXPECT_LT(trace.find("Old String:  <abcdefg>; Len=7\nNew String:  <Xbcdefg>; Len=7\n" + field),
            trace.size());
  EXPECT_EQ(
      trace.substr(trace.rfind("Old ")),
      "Old String:  <Xbcdefg>; Len=7\nExtract char:  <b>\nExtract char:  <c>\n"
      "Extract char:  <d>\nExtract char:  <e>\nExtract char:  <g>\nNew String:  <Xbcdeg>; Len=6\n" +
          field + "Key: \n, 0Xa received at position(0,0)\nExit ProcessWindowData\n");
}
