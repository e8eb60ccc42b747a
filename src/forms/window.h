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

// Clears the window and draws its border.
void Frame(WINDOW* window);

// Opens a framed window with keypad translation at the top left; it may be larger than the
// screen. Null when it cannot be created.
[[nodiscard]] WindowPtr OpenWindow(int rows, int columns);

// Shows `window` again whole after a window over it is gone. Returns the result of the refresh.
int ShowAgain(WINDOW* window);
