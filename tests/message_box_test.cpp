#include "support/toolkit.h"

static constinit ScreenField form[] = {Field(9, 20, 9, "field"), kEnd};

// Asks a question of a type; behind the type, the number of characters between the braces.
static std::string Ask(const std::string& start) {
  const std::string text = '{' + std::string(std::stoul('0' + start.substr(1)), 'x') + '}';
  WINDOW* window = OpenForm(form, "value");
  const int answer = MessageBox(window, text.c_str(), start[0] - '0');
  ReadKey(window);
  return std::to_string(answer);
}

TEST(MessageBox, ShowsItsTextAndKeysChooseAButton) {
  Play(R"(1 |_________|_Yes_____|_No_____|@15,35 {}@9,39 !@15,47 ^l !@15,57 ^l !@15,47
      ^hcoCO^3^j^k^^x !@15,57 $ !@9,20 [value]@9,19 $ = 2
    2 |_!Yes_____|_No______|_Cancel_|@15,35 ^h !@15,57 ^h !@15,47 oO$$ = 2 2 ^h^lc$ = 4 1 $$ = 1
    4 |_________|_OK______|_Cancel_|@15,35 ynYN !@15,47 ^h !@15,57 $$ = 4 2 ^h^l$$ = 1 1 ^ly$ = 1
    3 |_________|_________|_OK_____|@15,35 ^l^l^hyncYNC !@15,57 $$ = 3 347 {@9,15 x}|@9,62 $$ = 3
    3328 |-----@14,15 |_xxxxxxxx|xxx@15,15 x|xOKxxxx_|@15,54 $$ = 3 346 |{x@9,15 x}|@9,62 $$ = 3
    3228 |_xx@13,15 x}_|@13,61 |------@14,15 $$ = 3 348 {@9,17 x_|@9,62 |_xxx}_@10,15 $$ = 3
    3229 x_|@13,62 |------@14,15 $$ = 3 3275 |_}_______|___@15,15 $$ = 3 4 ^l^lO$ = 3 1 ^lY$ = 1
    344 |_{x@9,15 x}_|@9,61 $$ = 3 4 ^lo$ = 3 1 n$ = 2 1 N$ = 2 2 C$ = 4 2 n$ = 2 3 o$ = 3
    3 O$ = 3 4 c$ = 4 0 $ = -1 5 $ = -1)",
       Ask);
  EXPECT_TRUE(Play("3 $ = -1", Ask, {.rows = 9}).starts_with("-1\nEnter MessageBox\nKey: \n"));
  const std::string trace = Play("2 n$ = 2", Ask, {.rows = 10, .cols = 50});
  EXPECT_LT(trace.find("Message box type: 2, Button selected: 1\nExit MessageBox\n"), trace.size());
  const auto box = TerminalSession::Call([] { return Ask("2"); });
  EXPECT_TRUE(box->WaitFor("{}") && box->Reverse(15, 62) && !box->Reverse(15, 40));
}
