#include "forms/window.h"

#include <algorithm>

WindowPtr OpenWindow(int rows, int columns, int row, int column) {
  // curses itself would make a window that hangs over the edge.
  if (rows > LINES || columns > COLS) {
    return nullptr;
  }
  WindowPtr window(newwin(rows, columns, row, column));
  if (window) {
    keypad(window.get(), TRUE);
    wclear(window.get());
    box(window.get(), kVerticalBorder, kHorizontalBorder);
  }
  return window;
}

WindowPtr OpenCentredWindow(int rows, int columns) {
  return OpenWindow(rows, columns, (LINES - rows) / 2, (COLS - columns) / 2);
}

void KeepOnScreen(WINDOW* window) {
  const int rows = std::min(getmaxy(window), LINES);
  const int columns = std::min(getmaxx(window), COLS);
  const int row = std::min(getbegy(window), LINES - rows);
  const int column = std::min(getbegx(window), COLS - columns);
  if (row != getbegy(window) || column != getbegx(window)) {
    wresize(window, rows, columns);
    mvwin(window, row, column);
  }
}

int Refresh(WINDOW* window) {
  KeepOnScreen(window);
  return wrefresh(window);
}

int Restore(WINDOW* window) {
  touchwin(window);
  return Refresh(window);
}
