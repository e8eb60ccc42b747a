#include "shell/shutdown.h"

#include <curses.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/shell_command.h"
#include "terminal/terminal.h"

void Shutdown(int /*signal_number*/) {
  (void)signal(SIGINT, SIG_IGN);
  if (IsInForeground()) {
    mvcur(0, COLS - 1, LINES - 1, 0);
    (void)std::fflush(stdout);  // or the move would reach the terminal only after it was cleared
    EndTerminal();
    RunShellCommand("clear");
  }
  std::exit(EXIT_SUCCESS);
}
