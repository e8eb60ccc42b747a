#include "forms/text.h"

#include <algorithm>

std::string Printable(std::string_view text) {
  std::string printable(text);
  std::replace_if(
      printable.begin(), printable.end(), [](char byte) { return !IsPrintable(byte); }, '?');
  return printable;
}

void DrawText(WINDOW* window, int row, int column, std::string_view text) {
  if (column < 0) {
    text.remove_prefix(std::min(text.size(), static_cast<std::size_t>(-column)));
    column = 0;
  }
  if (wmove(window, row, column) == OK) {
    waddnstr(window, Printable(text).c_str(), getmaxx(window) - column);
  }
}

void BlankRow(WINDOW* window, int row, int column) {
  const int blanks = getmaxx(window) - 1 - column;
  if (blanks > 0) {
    DrawText(window, row, column, std::string(static_cast<std::size_t>(blanks), ' '));
  }
}
