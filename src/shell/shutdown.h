#pragma once

// The one orderly way out of the running program, and the times at which an interrupt may take it.
// SIGINT stays blocked except while the program waits for a key, so that an interrupt never cuts
// the rewriting of a file, a trace line or a curses call in half.

#include <csignal>

// Ends the program with status 0: puts the cursor into the bottom-left corner, ends curses and
// clears the terminal. Also the handler of SIGINT; `signal_number` is not used.
[[noreturn]] void Shutdown(int signal_number);

// Blocks SIGINT until further notice. Called once, first thing at start-up.
void HoldInterrupts();

// The signal mask under which the program waits for a key: the caller's own, with SIGINT let
// through. To be handed to ppoll.
[[nodiscard]] sigset_t KeyWaitMask();
