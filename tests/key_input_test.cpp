#include <fcntl.h>

#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "support/toolkit.h"

// Returns the codes of the keys up to Enter, J or an error. I and J raise an interrupt; C closes
// the keyboard, Z and E put the end of a file or a file that cannot be read in its place.
static std::string ReadKeys(const std::string& /*start*/) {
  HoldInterrupts();
  (void)signal(SIGINT, Shutdown);
  (void)signal(SIGHUP, SIG_IGN);
  (void)signal(SIGUSR1, [](int) {});
  WINDOW* window = OpenForm(SelectScreen, "");
  MenuCursorRow = 7;
  std::string codes;
  for (int key = 0; key != '\n' && key != 'J' && key != ERR; codes += std::to_string(key) + ",") {
    key = ReadKey(window);
    if (key == 'I' || key == 'J') (void)raise(SIGINT);
    if (key == 'C') close(STDIN_FILENO);
    if (key == 'Z' || key == 'E') dup2(open(key == 'Z' ? "/dev/null" : "/", O_RDONLY), 0);
  }
  return codes;
}

TEST(ReadKey, KeysAndSequencesComeBackAsCodesAndAreTraced) {
  Play(R"(- ^OA^OB^OC^OD^OP^OS^[15~^[3~$ = 259,258,261,260,265,268,269,330,10,
    - #A~^[A^[B^[C^[D$ = 8,65,126,259,258,261,260,10, - %20,70 $ = 410,10,
    - ^1^2^3^4^x^h^l^k^j$ = 265,266,267,268,330,260,261,259,258,10,
    - ^Xa^5b^Oxc^[Pd^^j^[^AeH$ = 97,98,99,100,106,65,101,72,10,
    - ^ O A ^ O B ^ O C ^ O D $ = 259,258,261,260,10, - J = 74,
    - ^ O P ^ O Q ^ O R ^ O S $ = 265,266,267,268,10,)",
       ReadKeys);
  Play("- ^OP^OM#\x7f^[C$ = 265,343,330,127,261,10, - ^ O x $ = 10,", ReadKeys, {.term = "vt100"});
  const std::string at = " received at position(7,0)\n";
  const std::string bracket = "Key: \x1b, 0X1b" + at + "escape key hit\nKey: [, 0X5b" + at;
  EXPECT_EQ(Play("- ^OA^[B^[P$ = 259,258,10,", ReadKeys),
            "259,258,10,\nKey: \x03, 0X103" + at + bracket + "Key: B, 0X42" + at + bracket +
                "Key: P, 0X50" + at + "ignoring key\nKey: \n, 0Xa" + at);
}

TEST(ReadKey, EndsOnSignalsAndWithTheTerminal) {
  for (const std::string cause : {"I", "Z", "E", "C", "hang-up", "interrupt", "signal"}) {
    const auto terminal = TerminalSession::Call([] { return ReadKeys(""); });
    if (terminal->Settle() && cause.size() == 1) terminal->Send(cause);
    if (cause == "hang-up") terminal->HangUp();
    if (cause == "interrupt") terminal->Signal(SIGINT);
    if (cause == "signal") terminal->Signal(SIGUSR1);
    EXPECT_EQ(terminal->ExitStatus(), 0) << cause;
  }
}
