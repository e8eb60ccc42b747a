#pragma once

// The form toolkit at work on a terminal, with curses, signals and trace as the program sets them.

#include <sys/mman.h>

#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/table_access.h"
#include "forms/window.h"
#include "shell/shutdown.h"
#include "shell/trace_log.h"
#include "support/keys.h"
#include "support/terminal_session.h"
#include "support/test_files.h"
#include "terminal/signals.h"
#include "terminal/terminal.h"

using Body = std::function<std::string()>;

// A field whose label stands on another line and in another column.
constexpr ScreenField Field(int row, int column, int width, const char* name) {
  return {row - 1, column + 2, "Label", row, column, nullptr, width, 0, name};
}
constexpr ScreenField kSentinel{255, 255, "", 255, 255, nullptr, 0, 0, nullptr};

inline void StartTrace() {
  SetLogFileName(("/proc/self/fd/" + std::to_string(memfd_create("trace", 0))).c_str());
  DebugTrace = 1;
}

// Starts the body and waits until it awaits a key, or has ended.
inline std::unique_ptr<TerminalSession> Start(const Body& body,
                                              const TerminalOptions& options = {}) {
  const Body run = [&body] {
    BlockSignals();
    StartTrace();
    InstallHandlers(Shutdown);
    StartTerminal();
    return body();
  };
  auto terminal = TerminalSession::Call(run, options);
  [[maybe_unused]] const bool waiting = terminal->Settle();
  return terminal;
}

// What F2 does in a form. It returns what is to be noted of it; the names of other function keys
// are noted, too, and an Enter with no field under the cursor.
using Action = std::function<std::string(WINDOW* window, ScreenField* field)>;
inline Action on_f2;
inline std::string noted;

inline const ScreenField* form_table = nullptr;  // of the form that runs
inline std::string final_value;                  // of its first field, at Enter

inline int Handle(WINDOW* window, int code, ScreenField* field) {
  const int function_key = code - 1;
  if (code == CODE_ENTER) {
    if (field == nullptr) noted += "no field, ";
    final_value = Value(form_table);
    return -1;
  }
  const bool acts = function_key == 2 && on_f2;
  noted += acts ? on_f2(window, field) : "F" + std::to_string(function_key) + ", ";
  return 0;
}

// Runs a form with `value` in its first field until Enter. Returns what was noted, the value as
// "[value]", and whether the operator has changed any.
inline Body RunForm(ScreenField* table, const std::string& value, const Action& action = {}) {
  return [=] {
    on_f2 = action;
    const ScreenField* const below = std::exchange(form_table, table);
    const auto preset = [&] { return SetValue(FirstField(table), value.c_str()), true; };
    RunScreen({"Form", table, nullptr}, stdscr, Handle, preset);
    form_table = below;
    return noted + "[" + final_value + "]" + (FieldsModified != 0 ? " changed" : "");
  };
}

using Sizes = std::vector<TerminalOptions>;

struct Story {
  const char* picture;  // in tests/screens: what shows after the keys and new sizes
  Body body;
  std::string keys, last_keys;  // an Enter follows the last ones
  std::string result;           // of the body, and ", bell" for every bell before the last keys
  Sizes sizes{};                // that the terminal gets after the keys
};

inline void Play(const std::vector<Story>& stories, const TerminalOptions& options) {
  for (const auto& [picture, body, keys, last_keys, result, sizes] : stories) {
    SCOPED_TRACE(picture);
    const auto terminal = Start(body, options);
    terminal->Type(keys);
    for (const TerminalOptions& size : sizes) {
      terminal->Resize(size);
      terminal->Type("");
    }
    ExpectPicture(*terminal, picture);
    const std::string bells = Times(terminal->Bells(), ", bell");
    terminal->Send(last_keys + kEnter);
    EXPECT_EQ(terminal->Result() + bells, result);
  }
}
