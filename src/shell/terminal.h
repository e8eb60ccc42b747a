#pragma once

// The terminal: curses is started, ended and given its size here and nowhere else.

// Starts curses on standard input and output, in cbreak mode without echo and with keypad
// translation on the standard screen. Reads are non-blocking, which key_input relies on. Curses
// gets two columns at least: on one it reads and writes outside its lines. The terminal is restored
// before an uncaught exception is reported.
void StartTerminal();

// Ends curses and restores the terminal, unless that has been done or the terminal is not ours.
void EndTerminal();

// Whether the terminal is this job's: a job in the background must neither set its mode nor draw.
// True, too, where there is no job control.
[[nodiscard]] bool IsInForeground();

// Sets the terminal's mode again after a stop. The mode found after an EndTerminal is noted as the
// shell's, which the operator may have changed.
void ResumeTerminal();

// Gives curses the present size of the terminal. LINES and COLUMNS in the environment fix theirs,
// as they do at the start. A new size leaves a KEY_RESIZE to be read.
void UpdateTerminalSize();
