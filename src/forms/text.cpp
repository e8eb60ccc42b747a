#include "forms/text.h"

#include <cstring>

void DrawText(WINDOW* window, int row, int column, std::string_view text) {
  if (wmove(window, row, column) == ERR) return;
  for (const char byte : text.substr(0, static_cast<std::size_t>(getmaxx(window) - column))) {
    waddch(window, IsPrintable(byte) ? static_cast<chtype>(byte) : '?');
  }
}

void BlankRow(WINDOW* window, int row, int column) {
  mvwhline(window, row, column, ' ', getmaxx(window) - 1 - column);
}

void DrawTitle(WINDOW* window, const char* title) {
  const int length = static_cast<int>(std::strlen(title));
  if (length <= COLS) {
    wmove(window, 0, (COLS - length) / 2 - 1);
  }
  DrawText(window, getcury(window), getcurx(window), title);
}
