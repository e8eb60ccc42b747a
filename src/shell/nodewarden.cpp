// nodewarden: maintains the node security configuration of the local node at a terminal.

#include <curses.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <exception>

#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/window.h"
#include "platform/shell_command.h"
#include "shell/command_line.h"
#include "shell/main_menu.h"
#include "shell/shell_state.h"
#include "shell/signals.h"
#include "shell/trace_log.h"

namespace {

// How long curses waits for the rest of a key's sequence after its Escape. Interrupts wait as long.
constexpr int kEscapeDelay = 100;  // milliseconds

void StartCurses() {
  // Only for the characters of the window corners: everything else stays ASCII.
  (void)std::setlocale(LC_CTYPE, "");
  initscr();
  // An allocation that fails, too, is to leave a usable terminal.
  std::set_terminate([] {
    endwin();
    std::abort();
  });
  if (std::getenv("ESCDELAY") == nullptr) {
    set_escdelay(kEscapeDelay);
  }
}

}  // namespace

int main(int argc, char** argv) {
  HoldSignals();
  RunShellCommand("clear");
  ParseArgs(argc, argv);
  CatchSignals();
  StartCurses();
  const auto user = static_cast<int>(geteuid());
  if (user != 0) {
    RootAuthority = 0;
  }
  TraceFormat("geteuid: %d", user);
  keypad(stdscr, TRUE);
  cbreak();
  noecho();
  NeverBlockReads();
  box(stdscr, kVerticalBorder, kHorizontalBorder);
  PaintMenu(stdscr, MainMenu, kMenuTitle);
  MenuLayer menu;
  if (RootAuthority == 0) {
    MessageBox(stdscr, "Read Only authority granted to non-root users.", MBOX_OK);
  }
  menu.Run();
}
