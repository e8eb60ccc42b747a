#pragma once

// The form toolkit at work on a terminal, with curses, signals and trace as the program sets them.

#include <gtest/gtest.h>
#include <sys/mman.h>

#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/table_access.h"
#include "forms/window.h"
#include "shell/signals.h"
#include "shell/terminal.h"
#include "shell/trace_log.h"
#include "support/keys.h"
#include "support/terminal_session.h"
#include "support/test_files.h"

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
  auto terminal = TerminalSession::Call(
      [&body] {
        BlockSignals();
        StartTrace();
        InstallHandlers();
        StartTerminal();
        return body();
      },
      options);
  [[maybe_unused]] const bool waiting = terminal->Settle();
  return terminal;
}

// What F2 does in a form. Its result is noted, as are the codes of other function keys with the
// field under the cursor, and an Enter without a field.
using Action = std::function<int(WINDOW* window, ScreenField* field)>;
inline Action on_f2;
inline std::string noted;

inline ScreenField* form_table = nullptr;  // of the form that runs
inline std::string left_value;             // what its first field held at Enter

inline int Handle(WINDOW* window, int code, ScreenField* field) {
  if (code == CODE_ENTER) left_value = Value(form_table);
  if (code == 3 && on_f2) {
    const int result = on_f2(window, field);
    noted += std::to_string(result) + " ";
  } else if (code != CODE_ENTER || field == nullptr) {
    noted += std::to_string(code) + (field != nullptr ? field->name : "-") + " ";
  }
  return code == CODE_ENTER ? -1 : 0;
}

// Runs a form with `value` in its first field until Enter. Returns what was noted and the value,
// with a star if the operator has changed any.
inline Body RunForm(ScreenField* table, const std::string& value, const Action& action = {}) {
  return [=] {
    on_f2 = action;
    ScreenField* const below = std::exchange(form_table, table);
    RunScreen({"Form", table, nullptr}, stdscr, Handle,
              [&] { return SetValue(FirstField(table), value.c_str()), true; });
    form_table = below;
    return noted + left_value + (FieldsModified != 0 ? "*" : "");
  };
}

struct Story {
  const char* picture;  // in tests/screens: what shows after the keys and the new sizes
  Body body;
  std::string keys, last_keys, result;  // the result after the last keys and Enter
  std::vector<Position> sizes{};
  int bells = 0;
};

inline void Play(const std::vector<Story>& stories, const TerminalOptions& options) {
  for (const auto& [picture, body, keys, last_keys, result, sizes, bells] : stories) {
    const auto terminal = Start(body, options);
    terminal->Send(keys);
    EXPECT_TRUE(terminal->Settle()) << picture;
    for (const auto& [rows, cols] : sizes) {
      terminal->Resize(rows, cols, OldContent::kRubbish);
      EXPECT_TRUE(terminal->Settle()) << picture;
    }
    ExpectPicture(*terminal, picture);
    EXPECT_EQ(terminal->Bells(), bells) << picture;
    terminal->Send(last_keys + kEnter);
    EXPECT_EQ(terminal->Result(), result) << picture;
  }
}
