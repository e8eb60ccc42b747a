#include "forms/screen_drawing.h"

#include <algorithm>
#include <string>

#include "forms/field_view.h"
#include "forms/table_access.h"
#include "forms/text.h"
#include "forms/window.h"

namespace {

// The character at (row, column), `otherwise` when that lies outside the window.
chtype CharacterAt(WINDOW* window, int row, int column, chtype otherwise) {
  return wmove(window, row, column) == OK ? winch(window) : otherwise;
}

}  // namespace

void ClearToBorder(WINDOW* window) {
  // Read at the bottom, as a long title covers the place at the top.
  const chtype horizontal = CharacterAt(window, getmaxy(window) - 1, 1, kHorizontalBorder);
  const chtype vertical = CharacterAt(window, 1, 0, kVerticalBorder);
  wclear(window);
  box(window, vertical, horizontal);
}

void DrawScreen(WINDOW* window, ScreenField* table, const char* title) {
  if (title != nullptr) {
    DrawTitle(window, title);
  }
  for (const ScreenField& row : Rows(table)) {
    DrawText(window, row.label_row, row.label_column, row.label);
    if (HasField(row)) {
      DrawField(window, row, 0);
    }
  }
}

void DrawField(WINDOW* window, const ScreenField& field, int offset) {
  const int columns = getmaxx(window);
  const int mark_column = field.field_column - 1;
  const int space = columns - 1 - mark_column;
  if (space > 0) {
    std::string line = FieldLine(field, offset, columns);
    line.resize(std::min(line.size(), static_cast<std::size_t>(space)));
    DrawText(window, field.field_row, mark_column, line);
  }
}
