#include "forms/window.h"

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

int Restore(WINDOW* window) {
  touchwin(window);
  return wrefresh(window);
}
