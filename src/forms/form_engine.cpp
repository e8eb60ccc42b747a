#include <optional>

#include "forms/form_run.h"
#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/screen_drawing.h"
#include "forms/table_access.h"
#include "shell/trace_log.h"

namespace {

// Returns the code of the key for a KeyHandler, or nothing when the engine handles the key itself.
std::optional<int> CodeForHandler(int key) {
  constexpr int kHandledFunctionKeys = 12;
  if (IsEnterKey(key)) return CODE_ENTER;
  const int function_key = key - KEY_F0;
  if (function_key >= 1 && function_key <= kHandledFunctionKeys) return function_key + 1;
  return std::nullopt;
}

void TraceInputField(const ScreenField* field) {
  if (field == nullptr) {
    TraceLog("Input field not found");
    return;
  }
  TraceFormat("Input field:  <%s> \"%s\" ", field->name, field->label);
}

}  // namespace

int PaintScreen(WINDOW* window, ScreenField* table, const char* title) {
  ClearToBorder(window);
  DrawScreen(window, table, title);
  ScreenField* first = FirstField(table);
  if (FormRun* form = FormRun::On(window); form != nullptr) {
    form->MoveTo(first);
  } else if (first == nullptr || wmove(window, first->field_row, first->field_column) == ERR) {
    wmove(window, 0, 0);
  }
  return wrefresh(window);
}

int MoveToField(WINDOW* window, ScreenField* field) {
  const int result = wmove(window, field->field_row, field->field_column);
  if (FormRun* form = FormRun::On(window); form != nullptr && result == OK) {
    form->MoveTo(field);
  }
  return result;
}

void RedrawField(WINDOW* window, const ScreenField* field) {
  const FormRun* form = FormRun::On(window);
  const int row = getcury(window);
  const int column = getcurx(window);
  DrawField(window, *field, form != nullptr ? form->ScrollOffsetOf(*field) : 0);
  wmove(window, row, column);
  wrefresh(window);
}

void ProcessWindowData(WINDOW* window, ScreenField* table, KeyHandler handler) {
  TraceLog("Enter ProcessWindowData");
  FormRun form(window, table);
  int done = 0;
  while (done == 0) {
    form.FollowCursor();
    TraceInputField(form.Current());
    const int key = ReadKey(window);
    if (const std::optional<int> code = CodeForHandler(key)) {
      done = handler(window, *code, form.Current());
    } else {
      form.EditKey(key);
      wrefresh(window);
    }
  }
  TraceLog("Exit ProcessWindowData");
}
