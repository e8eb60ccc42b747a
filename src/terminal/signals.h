#pragma once

// Signals. Those that the program handles are blocked except while it waits for a key or for the
// foreground, so that none interrupts the rewriting of a file, a trace line or a call of curses,
// and their handlers may call any function.

using SignalHandler = void (*)(int number);

// Blocks the signals that the program handles. Called once, first thing at start-up.
void BlockSignals();

// Installs the handlers. SIGINT calls `on_interrupt`, which ends the program. SIGTERM, SIGHUP,
// SIGQUIT and SIGTSTP, unless they are ignored, end curses and then take their default action. All
// of these first discard what has been typed. SIGCONT and SIGWINCH are noted for TerminalChanged.
// SIGXFSZ is ignored: a write beyond the limit on file sizes is to fail. Called once, before curses
// is started, which then installs no handlers of its own: those would resize at any time and
// discard a pending SIGTSTP.
void InstallHandlers(SignalHandler on_interrupt);

// Unblocks the signals for a moment, so that pending ones are delivered.
void DeliverPendingSignals();

// Sleeps, with the signals unblocked, until there is input or a signal is delivered. Returns the
// events that poll reports of the input, 0 after a signal.
[[nodiscard]] short AwaitInput();

// Returns whether the terminal was resized, or the program was stopped and continued, since the
// last call of AwaitForeground.
[[nodiscard]] bool TerminalChanged();

// While the program is a background job, stops it by SIGTTOU, with signals unblocked. Returns at
// once in the foreground, and in the background where nothing can stop it: SIGTTOU is ignored, the
// process group is orphaned or there is no terminal.
void AwaitForeground();
