#include "forms/screen_painter.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "forms/field_view.h"
#include "forms/form_run.h"
#include "forms/forms.h"
#include "forms/text.h"
#include "forms/window.h"

namespace {

// The character at (row, column), `otherwise` when that lies outside the window.
chtype CharacterAt(WINDOW* window, int row, int column, chtype otherwise) {
  return wmove(window, row, column) == OK ? winch(window) : otherwise;
}

// The horizontal border character of the window: beside the top left corner, or at the bottom where
// the title of the last painting covers that place.
chtype HorizontalBorder(WINDOW* window, const char* title) {
  const chtype top = CharacterAt(window, 0, 1, kHorizontalBorder);
  const bool covered =
      title != nullptr && std::strlen(title) > 1 &&
      (top == static_cast<unsigned char>(title[0]) || top == static_cast<unsigned char>(title[1]));
  if (!covered) {
    return top;
  }
  const chtype bottom = CharacterAt(window, getmaxy(window) - 1, 1, kHorizontalBorder);
  // A window that has grown with its terminal has no border at its bottom yet.
  return (bottom & A_CHARTEXT) == ' ' ? kHorizontalBorder : bottom;
}

}  // namespace

int FormColumns(const WINDOW* window) { return std::min(COLS, getmaxx(window)); }

void DrawField(WINDOW* window, const ScreenField& field, int offset) {
  const int columns = FormColumns(window);
  const int mark_column = field.field_column - 1;
  const int room = columns - 1 - mark_column;
  if (room > 0) {
    std::string line = FieldLine(field, offset, columns);
    line.resize(std::min(line.size(), static_cast<std::size_t>(room)));
    DrawText(window, field.field_row, mark_column, line);
  }
}

void DrawTitle(WINDOW* window, const char* title) {
  const int length = static_cast<int>(std::strlen(title));
  const int column = length <= COLS ? (COLS - length) / 2 - 1 : -1;
  if (wmove(window, 0, column) == ERR) {
    int row = 0;
    int standing = 0;
    getyx(window, row, standing);
    DrawText(window, row, standing, title);
    return;
  }
  DrawText(window, 0, column, title);
}

int PaintScreen(WINDOW* window, ScreenField* table, const char* title) {
  const chtype horizontal = HorizontalBorder(window, title);
  const chtype vertical = CharacterAt(window, 1, 0, kVerticalBorder);
  wclear(window);
  box(window, vertical, horizontal);
  if (title != nullptr) {
    DrawTitle(window, title);
  }
  const ScreenField* first = nullptr;
  for (const ScreenField& row : Rows(table)) {
    if (row.label != nullptr) {
      DrawText(window, row.label_row, row.label_column, row.label);
    }
    if (HasField(row)) {
      if (first == nullptr && IsEnterable(row)) {
        first = &row;
      }
      DrawField(window, row, 0);
    }
  }
  ForgetScroll(window);
  if (first == nullptr || wmove(window, first->field_row, first->field_column) == ERR) {
    wmove(window, 0, 0);
  }
  return Refresh(window);
}

int MoveToField(WINDOW* window, const ScreenField* field) {
  if (wmove(window, field->field_row, field->field_column) == ERR) {
    return ERR;
  }
  DrawField(window, *field, 0);
  ForgetScroll(window);
  return wmove(window, field->field_row, field->field_column);
}

void RedrawField(WINDOW* window, const ScreenField* field) {
  const FormRun* form = FindForm(window);
  const int offset = form != nullptr && form->field == field ? form->ScrollOffset : 0;
  int row = 0;
  int column = 0;
  getyx(window, row, column);
  DrawField(window, *field, offset);
  wmove(window, row, column);
  Refresh(window);
}
