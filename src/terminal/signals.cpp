#include "terminal/signals.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "terminal/terminal.h"

namespace {

volatile std::sig_atomic_t terminal_changed = 0;

// What SIGINT does.
constinit SignalHandler interrupt_handler = nullptr;

// The signal mask of the start with the handled signals unblocked.
constinit sigset_t wait_mask = {};

void NoteChange(int /*number*/) { terminal_changed = 1; }

void Interrupt(int number) {
  DiscardInput();
  interrupt_handler(number);
}

// Restores the terminal and takes the default action of the signal: ends the program, or stops it
// until it is continued.
void TakeDefaultAction(int number) {
  DiscardInput();
  EndTerminal();
  struct sigaction by_default = {};
  by_default.sa_handler = SIG_DFL;
  struct sigaction handled = {};
  sigaction(number, &by_default, &handled);
  (void)raise(number);
  DeliverPendingSignals();
  // The default action does not end process 1 of a PID namespace. 128 + number is what shells
  // report for a process that a signal has ended.
  if (number != SIGTSTP) _exit(128 + number);
  sigaction(number, &handled, nullptr);
  // Also where the kernel discards the stop: orphaned process group, process 1.
  terminal_changed = 1;
}

struct HandledSignal {
  int number;
  SignalHandler handler;
  bool stays_ignored;  // if it was at the start
};

constexpr HandledSignal kHandled[] = {
    {SIGINT, Interrupt, false},         {SIGTERM, TakeDefaultAction, true},
    {SIGHUP, TakeDefaultAction, true},  {SIGQUIT, TakeDefaultAction, true},
    {SIGTSTP, TakeDefaultAction, true}, {SIGCONT, NoteChange, false},
    {SIGWINCH, NoteChange, false}};

sigset_t HandledSignals() {
  sigset_t handled;
  sigemptyset(&handled);
  for (const HandledSignal& handled_signal : kHandled) {
    sigaddset(&handled, handled_signal.number);
  }
  return handled;
}

void ChangeMask(int how) {
  const sigset_t handled = HandledSignals();
  sigprocmask(how, &handled, nullptr);
}

}  // namespace

void BlockSignals() {
  ChangeMask(SIG_BLOCK);
  sigprocmask(SIG_SETMASK, nullptr, &wait_mask);
  for (const HandledSignal& handled_signal : kHandled) {
    sigdelset(&wait_mask, handled_signal.number);
  }
}

void InstallHandlers(SignalHandler on_interrupt) {
  interrupt_handler = on_interrupt;
  for (const auto& [number, handler, stays_ignored] : kHandled) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (stays_ignored && action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = handler;
    action.sa_mask = HandledSignals();
    sigaction(number, &action, nullptr);
  }
  (void)signal(SIGXFSZ, SIG_IGN);
}

void DeliverPendingSignals() {
  constexpr timespec kNoTime{};
  ppoll(nullptr, 0, &kNoTime, &wait_mask);
}

short AwaitInput() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return ppoll(&input, 1, nullptr, &wait_mask) > 0 ? input.revents : static_cast<short>(0);
}

bool TerminalChanged() { return terminal_changed != 0; }

void AwaitForeground() {
  do {
    terminal_changed = 0;
    ChangeMask(SIG_UNBLOCK);
    // In a background process tcdrain raises SIGTTOU, as tcsetattr does, but changes nothing, and
    // the signals are unblocked: the stopped job can be ended.
    tcdrain(STDIN_FILENO);
    ChangeMask(SIG_BLOCK);
  } while (TerminalChanged());
}
