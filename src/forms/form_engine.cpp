#include <algorithm>
#include <cstring>
#include <optional>

#include "forms/field_view.h"
#include "forms/form_run.h"
#include "forms/forms.h"
#include "forms/screen_painter.h"
#include "forms/text.h"
#include "forms/window.h"
#include "shell/trace_log.h"

constinit int FieldsModified = 0;

namespace {

constexpr int kCtrlH = 8;
constexpr int kDelete = 127;
constexpr int kLowByte = 0xff;

// Makes a form the innermost one for as long as it lives.
class ActiveForm {
 public:
  explicit ActiveForm(FormRun& form) { CurrentForm = &form; }
  ~ActiveForm() { CurrentForm = CurrentForm->outer; }
  ActiveForm(const ActiveForm&) = delete;
  ActiveForm& operator=(const ActiveForm&) = delete;
};

// The field under the cursor as a key finds it.
struct Edit {
  FormRun& form;
  ScreenField& field;
  int column;  // of the cursor
  int end;     // VisibleEnd of the field
  int length;  // of the value
  int index;   // of the character under the cursor

  [[nodiscard]] int Room() const { return end - field.field_column; }
};

Edit StartEdit(FormRun& form, ScreenField& field) {
  const int column = getcurx(form.window);
  return {form,
          field,
          column,
          VisibleEnd(field, FormColumns(form.window)),
          static_cast<int>(std::strlen(field.value)),
          form.ScrollOffset + column - field.field_column};
}

// Draws the edited field as it stands now, with the cursor in `column`.
void Show(const Edit& edit, int column) {
  DrawField(edit.form.window, edit.field, edit.form.ScrollOffset);
  wmove(edit.form.window, edit.field.field_row, column);
}

void TraceValue(const char* which, const ScreenField& field) {
  TraceFormat("%s String:  <%s>; Len=%d", which, field.value,
              static_cast<int>(std::strlen(field.value)));
}

void MoveDown(const Edit& edit) {
  MoveToField(edit.form.window, NextField(edit.form.table, &edit.field));
}

void MoveUp(const Edit& edit) {
  MoveToField(edit.form.window, PrevField(edit.form.table, &edit.field));
}

void MoveLeft(const Edit& edit) {
  if (edit.column > edit.field.field_column) {
    wmove(edit.form.window, edit.field.field_row, edit.column - 1);
  } else if (edit.form.ScrollOffset > 0) {
    --edit.form.ScrollOffset;
    Show(edit, edit.column);
  }
}

void MoveRight(const Edit& edit) {
  if (edit.index >= edit.length) {
    beep();
  } else if (edit.column < FormColumns(edit.form.window) - 3) {
    wmove(edit.form.window, edit.field.field_row, edit.column + 1);
  } else if (edit.index + 1 < edit.length) {
    ++edit.form.ScrollOffset;
    Show(edit, edit.column);
  }
}

void TypeCharacter(const Edit& edit, char character) {
  if (edit.index >= edit.field.width || edit.index > edit.length) {
    beep();
    return;
  }
  FieldsModified = 1;
  TraceValue("Old", edit.field);
  edit.field.value[edit.index] = character;
  TraceValue("New", edit.field);
  if (edit.column == edit.end) {
    ++edit.form.ScrollOffset;
    Show(edit, edit.column);
  } else {
    Show(edit, edit.column + 1);
  }
}

// Traces the characters that show and stay when the one at index `removed` goes.
void TraceRemaining(const Edit& edit, int removed) {
  const int offset = edit.form.ScrollOffset;
  const int end = std::min(edit.length, offset + edit.Room());
  for (int index = offset; index < end; ++index) {
    if (index != removed) {
      TraceFormat("Extract char:  <%c>", edit.field.value[index]);
    }
  }
}

// Takes the character at index `removed` out of the value and leaves the cursor on the character at
// index `cursor` of what remains.
void RemoveCharacter(const Edit& edit, int removed, int cursor) {
  FieldsModified = 1;
  TraceValue("Old", edit.field);
  TraceRemaining(edit, removed);
  char* value = edit.field.value;
  std::memmove(value + removed, value + removed + 1,
               static_cast<std::size_t>(edit.length - removed));
  TraceValue("New", edit.field);
  if (edit.length - 1 <= edit.Room()) {
    edit.form.ScrollOffset = 0;
  }
  Show(edit, edit.field.field_column + cursor - edit.form.ScrollOffset);
}

void EraseLeft(const Edit& edit) {
  if (edit.column > edit.field.field_column && edit.index <= edit.length) {
    RemoveCharacter(edit, edit.index - 1, edit.index - 1);
  } else {
    beep();
  }
}

void EraseUnder(const Edit& edit) {
  if (edit.column < edit.end && edit.index < edit.length) {
    RemoveCharacter(edit, edit.index, edit.index);
  } else {
    beep();
  }
}

void EditField(const Edit& edit, int key) {
  switch (key) {
    case KEY_DOWN:
      return MoveDown(edit);
    case KEY_UP:
      return MoveUp(edit);
    case KEY_LEFT:
      return MoveLeft(edit);
    case KEY_RIGHT:
      return MoveRight(edit);
    case kCtrlH:
    case KEY_BACKSPACE:
      return EraseLeft(edit);
    case kDelete:
    case KEY_DC:
      return EraseUnder(edit);
    default:
      if (const int character = key & kLowByte; IsPrintable(character)) {
        TypeCharacter(edit, static_cast<char>(character));
      }
  }
}

// What a KeyHandler is told of the key, or nothing when the key is not for it.
std::optional<int> CodeForHandler(int key) {
  constexpr int kHandledFunctionKeys = 12;
  if (IsEnterKey(key)) {
    return CODE_ENTER;
  }
  const int function_key = key - KEY_F0;
  if (function_key >= 1 && function_key <= kHandledFunctionKeys) {
    return function_key + 1;
  }
  return std::nullopt;
}

// Makes the field under the cursor, if any, the form's, and returns it. A field that the cursor was
// put on from outside is shown from its first character, and so is one whose cursor a shrunken
// terminal has left beyond its visible part.
ScreenField* SettleOnField(FormRun& form) {
  int row = 0;
  int column = 0;
  getyx(form.window, row, column);
  ScreenField* field = FindFieldAt(form.table, row, column);
  if (field != form.field) {
    form.field = field;
    form.ScrollOffset = 0;
    if (field != nullptr) {
      form.edited = field;
      RedrawField(form.window, field);
    }
  }
  if (field != nullptr && column > VisibleEnd(*field, FormColumns(form.window))) {
    MoveToField(form.window, field);
  }
  return field;
}

// Lays the edited field out for the new width of its line; a cursor that has been left outside
// every field goes back to it once it fits again.
void FollowResize(const FormRun& form) {
  if (form.field != nullptr) {
    RedrawField(form.window, form.field);
  } else if (form.edited != nullptr) {
    MoveToField(form.window, form.edited);
  }
}

void TraceInputField(const ScreenField* field) {
  if (field == nullptr) {
    TraceLog("Input field not found");
    return;
  }
  TraceFormat("Input field:  <%s> \"%s\" ", field->name != nullptr ? field->name : "",
              field->label != nullptr ? field->label : "");
}

}  // namespace

void ProcessWindowData(WINDOW* window, ScreenField* table, KeyHandler handler) {
  TraceLog("Enter ProcessWindowData");
  FormRun form{window, table, CurrentForm};
  const ActiveForm active(form);
  int done = 0;
  while (done == 0) {
    TraceInputField(SettleOnField(form));
    const int key = ReadKey(window);
    // A terminal resized meanwhile may have moved the cursor.
    ScreenField* field = SettleOnField(form);
    if (const std::optional<int> code = CodeForHandler(key)) {
      done = handler(window, *code, field);
      continue;
    }
    if (field != nullptr && field->value != nullptr) {
      EditField(StartEdit(form, *field), key);
    }
    if (key == KEY_RESIZE) {
      FollowResize(form);
    }
    Refresh(window);
  }
  TraceLog("Exit ProcessWindowData");
}
