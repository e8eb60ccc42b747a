#pragma once

// The one key reader of the program.

#include <curses.h>

inline constexpr int KEY_NEWLINE = 10;  // Enter, as curses delivers the carriage return

inline bool IsEnterKey(int key) { return key == KEY_NEWLINE || key == KEY_ENTER; }

// Refreshes `window`, as wgetch does, waits for a key and returns its curses code.
// Escape sequences of the arrow and function keys, and Escape followed by 1 to 4, h, j, k, l or x,
// come back as the key they stand for, Backspace as KEY_DC; Escape itself is never returned.
// Signals are delivered and a resized terminal is followed meanwhile. Shuts the program down when
// the terminal is gone.
int ReadKey(WINDOW* window);
