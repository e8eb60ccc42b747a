#pragma once

// Ownership of curses windows, and what every window of the program has in common.

#include <curses.h>

#include <memory>

struct WindowDeleter {
  void operator()(WINDOW* window) const noexcept { delwin(window); }
};
using WindowPtr = std::unique_ptr<WINDOW, WindowDeleter>;

inline constexpr chtype kVerticalBorder = '|';
inline constexpr chtype kHorizontalBorder = '-';

// Opens a cleared and bordered window with keypad translation at (row, column) of the screen; null
// when it cannot be created or is larger than the screen.
WindowPtr OpenWindow(int rows, int columns, int row, int column);

// Opens such a window in the middle of the screen.
WindowPtr OpenCentredWindow(int rows, int columns);

// Fits a window to a terminal that has shrunk, as must be done before it is refreshed: curses
// leaves windows where they are, be it outside the screen, and then reads beyond it. Any refresh or
// reading of a key may be the moment at which curses takes over the new size.
void KeepOnScreen(WINDOW* window);

// Refreshes the window, kept on the screen. Returns the curses result.
int Refresh(WINDOW* window);

// Shows `window` again whole after a window over it is gone. Returns the result of the refresh.
int Restore(WINDOW* window);
