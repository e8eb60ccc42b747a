#include "forms/window.h"

void Frame(WINDOW* window) {
  wclear(window);
  box(window, kVerticalBorder, kHorizontalBorder);
}

WindowPtr OpenWindow(int rows, int columns) {
  WindowPtr window(newwin(rows, columns, 0, 0));
  if (window) {
    keypad(window.get(), TRUE);
    Frame(window.get());
  }
  return window;
}

int ShowAgain(WINDOW* window) {
  touchwin(window);
  return wrefresh(window);
}
