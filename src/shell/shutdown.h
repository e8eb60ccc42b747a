#pragma once

// The one orderly way out of the running program, and the times at which interrupts may come in.
// SIGINT stays blocked except where the program waits for a key, so that it never cuts the
// rewriting of a file, a trace line or a curses call in half. So does SIGTSTP, as the handler that
// curses has for Ctrl-Z repaints the screen and may resize it, and SIGWINCH, so that a resized
// terminal ends the wait however short before it the signal comes.

#include <csignal>

// Ends the program with status 0: puts the cursor into the bottom-left corner, ends curses and
// clears the terminal. Also the handler of SIGINT; `signal_number` is not used.
[[noreturn]] void Shutdown(int signal_number);

// Blocks these signals until further notice. Called once, first thing at start-up.
void HoldInterrupts();

// Lets in those that wait, now. Keys that keep coming must not keep an interrupt out.
void AdmitInterrupts();

// The signal mask under which the program waits for a key: the caller's own, with these signals let
// through. To be handed to ppoll.
[[nodiscard]] sigset_t KeyWaitMask();
