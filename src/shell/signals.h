#pragma once

// The signals that the program lives with. All but SIGXFSZ, which it ignores, are blocked except
// where it waits for a key, so that none cuts the rewriting of a file, a trace line or a call of
// curses in half, and their handlers may do whatever they like.

#include <csignal>

// Blocks them until further notice. Called once, first thing at start-up.
void HoldSignals();

// Installs their handlers: SIGINT shuts the program down; SIGTERM, SIGHUP, SIGQUIT and SIGTSTP,
// unless they are ignored, restore the terminal and then have their ordinary effect; SIGCONT and
// SIGWINCH are noted, SIGXFSZ is ignored. Called once, before curses is started, which then leaves
// them alone: its own handlers take over sizes unasked, and throw a held SIGTSTP away.
void CatchSignals();

// Lets in those that wait, now.
void AdmitSignals();

// The signal mask of the wait for a key, to be handed to ppoll: the present one without them.
[[nodiscard]] sigset_t KeyWaitMask();

// Whether the terminal may have another size, content or mode than at the last call: it was
// resized, or the program was stopped for a while.
[[nodiscard]] bool TakeTerminalChange();
