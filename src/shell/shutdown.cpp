#include "shell/shutdown.h"

#include <curses.h>

#include <cstdio>
#include <cstdlib>

#include "platform/shell_command.h"

namespace {

sigset_t Interrupts() {
  sigset_t interrupts;
  sigemptyset(&interrupts);
  sigaddset(&interrupts, SIGINT);
  sigaddset(&interrupts, SIGTSTP);
  sigaddset(&interrupts, SIGWINCH);
  return interrupts;
}

}  // namespace

void Shutdown(int /*signal_number*/) {
  (void)signal(SIGINT, SIG_IGN);
  (void)signal(SIGTSTP, SIG_IGN);  // curses would repaint the screen when the program goes on
  mvcur(0, COLS - 1, LINES - 1, 0);
  (void)std::fflush(stdout);  // or the move would reach the terminal only after it was cleared
  endwin();
  RunShellCommand("clear");
  std::exit(EXIT_SUCCESS);
}

void HoldInterrupts() {
  const sigset_t interrupts = Interrupts();
  sigprocmask(SIG_BLOCK, &interrupts, nullptr);
}

void AdmitInterrupts() {
  const sigset_t interrupts = Interrupts();
  sigprocmask(SIG_UNBLOCK, &interrupts, nullptr);
  sigprocmask(SIG_BLOCK, &interrupts, nullptr);
}

sigset_t KeyWaitMask() {
  sigset_t mask;
  sigprocmask(SIG_SETMASK, nullptr, &mask);
  sigdelset(&mask, SIGINT);
  sigdelset(&mask, SIGTSTP);
  sigdelset(&mask, SIGWINCH);
  return mask;
}
