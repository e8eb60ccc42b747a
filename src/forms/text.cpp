#include "forms/text.h"

#include <algorithm>

void DrawText(WINDOW* window, int row, int column, std::string_view text) {
  if (column < 0) {
    text.remove_prefix(std::min(text.size(), static_cast<std::size_t>(-column)));
    column = 0;
  }
  if (wmove(window, row, column) == ERR) {
    return;
  }
  for (const char byte : text.substr(0, static_cast<std::size_t>(getmaxx(window) - column))) {
    waddch(window, IsPrintable(byte) ? static_cast<chtype>(byte) : '?');
  }
}

void BlankRow(WINDOW* window, int row, int column) {
  mvwhline(window, row, column, ' ', getmaxx(window) - 1 - column);
}
