#include "shell/signals.h"

#include <curses.h>

#include <array>
#include <utility>

#include "shell/shutdown.h"

namespace {

constexpr std::array kHeld{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGCONT, SIGWINCH};

volatile std::sig_atomic_t terminal_changed = 0;

sigset_t HeldSignals() {
  sigset_t held;
  sigemptyset(&held);
  for (const int number : kHeld) {
    sigaddset(&held, number);
  }
  return held;
}

using Handler = void (*)(int);

Handler HandlerOf(int number) {
  struct sigaction action {};
  sigaction(number, nullptr, &action);
  return action.sa_handler;
}

// The handler runs with all held signals blocked.
void Catch(int number, Handler handler) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_mask = HeldSignals();
  sigaction(number, &action, nullptr);
}

void NoteChange(int /*number*/) { terminal_changed = 1; }

// Restores the terminal and does what the signal does by default: ends the program, or stops it
// until it is continued.
void ActByDefault(int number) {
  if (!isendwin()) {  // else it is another's by now
    endwin();
  }
  (void)std::signal(number, SIG_DFL);
  (void)std::raise(number);
  sigset_t raised;
  sigemptyset(&raised);
  sigaddset(&raised, number);
  sigprocmask(SIG_UNBLOCK, &raised, nullptr);
  // Here again after a stop.
  def_shell_mode();  // the operator may have changed it
  Catch(number, ActByDefault);
  terminal_changed = 1;
}

}  // namespace

void HoldSignals() {
  const sigset_t held = HeldSignals();
  sigprocmask(SIG_BLOCK, &held, nullptr);
}

void CatchSignals() {
  Catch(SIGINT, Shutdown);
  for (const int number : {SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}) {
    if (HandlerOf(number) != SIG_IGN) {
      Catch(number, ActByDefault);
    }
  }
  (void)std::signal(SIGXFSZ, SIG_IGN);  // writing beyond a limit is to fail, and no more
  Catch(SIGWINCH, NoteChange);
  Catch(SIGCONT, NoteChange);  // SIGWINCH goes to the foreground job only
}

void AdmitSignals() {
  const sigset_t held = HeldSignals();
  sigprocmask(SIG_UNBLOCK, &held, nullptr);
  sigprocmask(SIG_BLOCK, &held, nullptr);
}

sigset_t KeyWaitMask() {
  sigset_t mask;
  sigprocmask(SIG_SETMASK, nullptr, &mask);
  for (const int number : kHeld) {
    sigdelset(&mask, number);
  }
  return mask;
}

bool TakeTerminalChange() { return std::exchange(terminal_changed, 0) != 0; }
