#include "shell/signals.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "shell/shutdown.h"
#include "shell/terminal.h"

namespace {

constexpr std::array kHandled{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGCONT, SIGWINCH};

volatile std::sig_atomic_t terminal_changed = 0;

sigset_t HandledSignals() {
  sigset_t handled;
  sigemptyset(&handled);
  for (const int number : kHandled) {
    sigaddset(&handled, number);
  }
  return handled;
}

void ChangeMask(int how) {
  const sigset_t handled = HandledSignals();
  sigprocmask(how, &handled, nullptr);
}

// The handler runs with all handled signals blocked.
void Install(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_mask = HandledSignals();
  sigaction(number, &action, nullptr);
}

void NoteChange(int /*number*/) { terminal_changed = 1; }

// Restores the terminal and takes the default action of the signal: ends the program, or stops it
// until it is continued.
void TakeDefaultAction(int number) {
  EndTerminal();
  (void)std::signal(number, SIG_DFL);
  (void)std::raise(number);
  DeliverPendingSignals();
  if (number != SIGTSTP) {
    // The first process of a container does not end by default. This status is what shells make of
    // an end by a signal.
    _exit(128 + number);
  }
  Install(number, TakeDefaultAction);
  terminal_changed = 1;
}

}  // namespace

void BlockSignals() { ChangeMask(SIG_BLOCK); }

void InstallHandlers() {
  Install(SIGINT, Shutdown);
  for (const int number : {SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}) {
    struct sigaction inherited {};
    sigaction(number, nullptr, &inherited);
    if (inherited.sa_handler != SIG_IGN) {
      Install(number, TakeDefaultAction);
    }
  }
  (void)std::signal(SIGXFSZ, SIG_IGN);
  Install(SIGWINCH, NoteChange);
  Install(SIGCONT, NoteChange);  // SIGWINCH goes to the foreground job only
}

void DeliverPendingSignals() {
  ChangeMask(SIG_UNBLOCK);
  ChangeMask(SIG_BLOCK);
}

void AwaitForeground() {
  ChangeMask(SIG_UNBLOCK);
  // In the background tcdrain raises SIGTTOU like a change of the terminal's mode, but changes
  // nothing, and signals reach the stopped program.
  while (tcdrain(STDOUT_FILENO) != 0 && errno == EINTR) {
  }
  ChangeMask(SIG_BLOCK);
}

sigset_t KeyWaitMask() {
  sigset_t mask;
  sigprocmask(SIG_SETMASK, nullptr, &mask);
  for (const int number : kHandled) {
    sigdelset(&mask, number);
  }
  return mask;
}

bool TakeTerminalChange() {
  if (terminal_changed == 0) return false;
  AwaitForeground();
  terminal_changed = 0;
  return true;
}
