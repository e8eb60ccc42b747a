#include "forms/screen_painter.h"

#include <algorithm>
#include <string>

#include "forms/field_view.h"
#include "forms/form_run.h"
#include "forms/table_access.h"
#include "forms/text.h"
#include "forms/window.h"

namespace {

// The character at (row, column), `otherwise` when that lies outside the window.
chtype CharacterAt(WINDOW* window, int row, int column, chtype otherwise) {
  return wmove(window, row, column) == OK ? winch(window) : otherwise;
}

}  // namespace

void DrawScreen(WINDOW* window, ScreenField* table, const char* title) {
  if (title != nullptr) {
    DrawTitle(window, title);
  }
  for (const ScreenField& row : Rows(table)) {
    if (row.label != nullptr) {
      DrawText(window, row.label_row, row.label_column, row.label);
    }
    if (HasField(row)) {
      DrawField(window, row, 0);
    }
  }
}

void DrawField(WINDOW* window, const ScreenField& field, int offset) {
  const int columns = getmaxx(window);
  const int mark_column = field.field_column - 1;
  const int room = columns - 1 - mark_column;
  if (room > 0) {
    std::string line = FieldLine(field, offset, columns);
    line.resize(std::min(line.size(), static_cast<std::size_t>(room)));
    DrawText(window, field.field_row, mark_column, line);
  }
}

int PaintScreen(WINDOW* window, ScreenField* table, const char* title) {
  // Read at the bottom, as a long title covers the place at the top.
  const chtype horizontal = CharacterAt(window, getmaxy(window) - 1, 1, kHorizontalBorder);
  const chtype vertical = CharacterAt(window, 1, 0, kVerticalBorder);
  wclear(window);
  box(window, vertical, horizontal);
  DrawScreen(window, table, title);
  ScreenField* first = FirstField(table);
  if (FormRun* form = FormRun::On(window); form != nullptr) {
    form->Enter(first);
  } else if (first == nullptr || wmove(window, first->field_row, first->field_column) == ERR) {
    wmove(window, 0, 0);
  }
  return wrefresh(window);
}

int MoveToField(WINDOW* window, ScreenField* field) {
  const int result = wmove(window, field->field_row, field->field_column);
  if (FormRun* form = FormRun::On(window); form != nullptr && result == OK) {
    form->Enter(field);
  }
  return result;
}

void RedrawField(WINDOW* window, const ScreenField* field) {
  const FormRun* form = FormRun::On(window);
  int row = 0;
  int column = 0;
  getyx(window, row, column);
  DrawField(window, *field, form != nullptr ? form->OffsetOf(*field) : 0);
  wmove(window, row, column);
  wrefresh(window);
}
