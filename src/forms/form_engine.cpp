#include <optional>

#include "forms/form_run.h"
#include "forms/forms.h"
#include "forms/key_input.h"
#include "shell/trace_log.h"

constinit int FieldsModified = 0;

namespace {

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
  FormRun form(window, table);
  int done = 0;
  while (done == 0) {
    form.Adopt();
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
