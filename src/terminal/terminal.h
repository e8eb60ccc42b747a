#pragma once

// The terminal: curses is started, ended and given its size here and nowhere else.

// Starts curses on standard input and output, in cbreak mode without echo and with keypad
// translation on the standard screen. Signal keys do not flush the input. Curses gets two columns
// at least: on one it reads and writes outside its lines. The terminal is restored before an
// uncaught exception is reported.
void StartTerminal();

// Discards what has been typed and not been read, which a shell would take for commands. Does
// nothing in the background.
void DiscardInput();

// Ends curses and restores the terminal. Does nothing before StartTerminal, a second time, or in
// the background.
void EndTerminal();

// Whether the process group is in the foreground: in the background a job must neither set the
// terminal's mode nor draw. Also true where standard input is not the controlling terminal.
[[nodiscard]] bool IsInForeground();

// Sets curses' mode again after a stop, and paints what has been refreshed with wnoutrefresh, at
// the size that curses has. If EndTerminal was called before it, the mode found now is saved as the
// shell's, since the operator may have changed it. For the foreground only.
void ResumeTerminal();

// Gives curses the present size of the terminal. A dimension that LINES or COLUMNS fixed at the
// start stays; while curses runs, both hold its size. A new size leaves a KEY_RESIZE to be read.
void UpdateTerminalSize();
