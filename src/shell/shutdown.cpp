#include "shell/shutdown.h"

#include <curses.h>

#include <cstdlib>

#include "platform/shell_command.h"

void Shutdown(int /*signal_number*/) {
  (void)std::signal(SIGINT, SIG_IGN);
  mvcur(0, COLS - 1, LINES - 1, 0);
  endwin();
  RunShellCommand("clear");
  std::exit(EXIT_SUCCESS);
}

void HoldInterrupts() {
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, nullptr);
}

sigset_t KeyWaitMask() {
  sigset_t mask;
  sigprocmask(SIG_SETMASK, nullptr, &mask);
  sigdelset(&mask, SIGINT);
  return mask;
}
