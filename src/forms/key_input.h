#pragma once

// The one key reader of the program.

#include <curses.h>

inline constexpr int KEY_NEWLINE = 10;  // Enter, as curses delivers the carriage return

inline bool IsEnterKey(int key) { return key == KEY_NEWLINE || key == KEY_ENTER; }

// Has the terminal, in cbreak mode already, answer a read that finds no key at once: a key that was
// announced can vanish, flushed by Ctrl-Z and its like, and curses would wait for the next one with
// all signals held. Called once at start-up.
void NeverBlockReads();

// Waits for a key with `window` refreshed and having the input focus, and returns its curses code.
// Escape sequences of the arrow and function keys, and Escape followed by 1 to 4, h, j, k, l or x,
// come back as the key they stand for, Backspace as KEY_DC; Escape itself is never returned.
// Signals are let in and a resized terminal is followed meanwhile. When the terminal is gone the
// program is shut down from here.
int ReadKey(WINDOW* window);
