#pragma once

// Signals. Those that the program handles are blocked except while it waits for a key or for the
// foreground, so that none interrupts the rewriting of a file, a trace line or a call of curses,
// and their handlers may call any function.

#include <csignal>

// Blocks the signals that the program handles. Called once, first thing at start-up.
void BlockSignals();

// Installs the handlers. SIGINT shuts the program down. SIGTERM, SIGHUP, SIGQUIT and SIGTSTP,
// unless they are ignored, end curses and then take their default action. SIGCONT and SIGWINCH are
// noted for TakeTerminalChange. SIGXFSZ is ignored: a write beyond the limit on file sizes is to
// fail. Called once, before curses is started, which then installs no handlers of its own: those
// would resize at any time and discard a pending SIGTSTP.
void InstallHandlers();

// Unblocks the signals for a moment, so that pending ones are delivered.
void DeliverPendingSignals();

// While the program is a background job, stops it by SIGTTOU, with signals unblocked. Returns at
// once in the foreground, and where SIGTTOU is ignored, the process group is orphaned or there is
// no terminal.
void AwaitForeground();

// The signal mask while waiting for a key, for ppoll: the present one with these signals unblocked.
[[nodiscard]] sigset_t KeyWaitMask();

// Returns whether the terminal was resized, or the program was stopped and continued, since the
// last call. If so, the program is in the foreground again.
[[nodiscard]] bool TakeTerminalChange();
