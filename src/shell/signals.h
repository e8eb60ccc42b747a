#pragma once

// Signals. Those that the program handles are blocked except while it waits for a key, so that none
// interrupts the rewriting of a file, a trace line or a call of curses, and their handlers may call
// any function.

#include <csignal>

// Blocks the signals that the program handles. Called once, first thing at start-up.
void BlockSignals();

// Installs the handlers. SIGINT shuts the program down. SIGTERM, SIGHUP, SIGQUIT and SIGTSTP,
// unless they are ignored, restore the terminal and then have their default action. SIGCONT and
// SIGWINCH are noted for TakeTerminalChange. SIGXFSZ is ignored: a write beyond the limit on file
// sizes is to fail. Called once, before curses is started, which then installs no handlers of its
// own: those would resize at any time and discard a pending SIGTSTP.
void InstallHandlers();

// Delivers the pending signals.
void DeliverPendingSignals();

// Stops the program for as long as it is a background job, as shells expect of a job that is about
// to use the terminal. Signals are delivered meanwhile.
void AwaitForeground();

// The signal mask while waiting for a key, for ppoll: the present one with these signals unblocked.
[[nodiscard]] sigset_t KeyWaitMask();

// Returns whether the terminal may have another size, content or mode than at the last call: it was
// resized, or the program was stopped and continued. Awaits the foreground before it says so.
[[nodiscard]] bool TakeTerminalChange();
