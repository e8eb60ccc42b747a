#pragma once

// The form toolkit in the child of a TerminalSession, and stories of keys typed to it.

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <sstream>

#include "forms/forms.h"
#include "forms/window.h"
#include "shell/trace_log.h"
#include "support/terminal_session.h"
#include "support/test_files.h"

// A field at (row, column), with its label under it.
constexpr ScreenField Field(int row, int column, int width, const char* name) {
  return {row, column, "-", row, column, nullptr, width, 0, name};
}
constexpr ScreenField kEnd = Field(kTableEnd, kTableEnd, 0, nullptr);

// Starts trace and curses as the program does and shows the form with `value` in its first row.
inline WINDOW* OpenForm(ScreenField* table, const std::string& value) {
  SetLogFileName(("/proc/self/fd/" + std::to_string(memfd_create("trace", 0))).c_str());
  DebugTrace = 1;
  initscr();
  cbreak();
  noecho();
  WINDOW* window = OpenWindow(LINES, COLS, 0, 0).release();
  AllocScreenFields(table);
  SetValue(table, value.c_str());
  PaintScreen(window, table, nullptr);
  return window;
}

// Plays stories: the start of `body`; keys (^ is Escape, # Ctrl-H, $ Enter), "%rows,columns" for a
// new size, "text@row,column,bells" for what shows then (_ is a blank, ! stands before the cursor);
// "=" and what `body` returns. Returns that and the trace of the last story.
inline std::string Play(const std::string& stories, std::string (*body)(const std::string&),
                        const TerminalOptions& options = {}) {
  std::istringstream words(stories);
  std::string result;
  for (std::string start, word; words >> start;) {
    const auto terminal = TerminalSession::Call(
        [&] { return body(start).append("\n").append(ReadFile(LogFileName)); }, options);
    for (std::string story = start; words >> word && word != "="; story += " " + word) {
      EXPECT_TRUE(terminal->Settle()) << story << "\n" << terminal->Screen();
      const std::size_t at = word.find_first_of("%@");
      int row = 0, column = 0, bells = 0;
      char comma = 0;
      std::istringstream(word.substr(at + 1)) >> row >> comma >> column >> comma >> bells;
      if (at == 0) terminal->Resize(row, column);
      std::string keys = at == word.npos ? word : "";
      for (char& c : keys) c = c == '^' ? '\x1b' : c == '#' ? '\b' : c == '$' ? '\r' : c;
      terminal->Send(keys);
      if (at == 0 || at == word.npos) continue;
      const std::size_t marks = word.find('!') < at ? 1 : 0, from = static_cast<unsigned>(column);
      std::string seen = terminal->Row(row).substr(from, at - marks);
      const auto [y, x] = terminal->Cursor();
      const auto cursor = static_cast<unsigned>(x) - from;
      if (marks > 0 && y == row && cursor <= seen.size()) seen.insert(cursor, "!");
      std::replace(seen.begin(), seen.end(), ' ', '_');
      EXPECT_EQ(seen, word.substr(0, at)) << story;
      EXPECT_EQ(terminal->Bells(), bells) << story;
    }
    words >> word;
    result = terminal->Result();
    EXPECT_EQ(result.substr(0, result.find('\n')), word) << start;
  }
  return result;
}
