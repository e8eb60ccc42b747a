// nodewarden: maintains the node security configuration of the local node at a terminal.

#include <curses.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>

#include "forms/forms.h"
#include "forms/window.h"
#include "platform/shell_command.h"
#include "shell/command_line.h"
#include "shell/main_menu.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "shell/trace_log.h"

namespace {

// How long curses waits for the rest of a key's sequence after its Escape. Interrupts wait as long.
constexpr int kEscapeDelay = 100;  // milliseconds

void StartCurses() {
  // Only for the characters of the window corners: everything else stays ASCII.
  (void)std::setlocale(LC_CTYPE, "");
  initscr();
  if (std::getenv("ESCDELAY") == nullptr) {
    set_escdelay(kEscapeDelay);
  }
  // curses ends and repaints the screen in its handler of Ctrl-Z: an interrupt waits for that, too.
  struct sigaction stop {};
  sigaction(SIGTSTP, nullptr, &stop);
  sigaddset(&stop.sa_mask, SIGINT);
  sigaction(SIGTSTP, &stop, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  HoldInterrupts();
  RunShellCommand("clear");
  ParseArgs(argc, argv);
  StartCurses();
  (void)signal(SIGINT, Shutdown);
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
  PaintMenu(stdscr, MainMenu, "Halvorn Event Node Security");
  if (RootAuthority == 0) {
    MessageBox(stdscr, "Read Only authority granted to non-root users.", MBOX_OK);
  }
  RunMainMenu();
}
