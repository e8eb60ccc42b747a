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
constexpr ScreenField Field(int row, int column, int width, const char* name) noexcept {
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

// What keys send: ^ is Escape, # Ctrl-H and $ Enter.
inline std::string Keys(std::string names) {
  for (char& c : names) c = c == '^' ? '\x1b' : c == '#' ? '\b' : c == '$' ? '\r' : c;
  return names;
}

// Plays stories: the start of `body`, then Keys, "%rows,columns" for a new size of the terminal and
// "text@row,column" for what must show (_ is a blank, ! stands before the cursor, behind it all a *
// for every bell so far); behind "=" the result. Returns the last result and its trace.
inline std::string Play(const std::string& stories, std::string (*body)(const std::string&),
                        const TerminalOptions& options = {}) {
  std::istringstream words(stories);
  std::string result;
  for (std::string start, word; words >> start;) {
    const auto terminal = TerminalSession::Call(
        [&] { return body(start).append("\n").append(ReadFile(LogFileName)); }, options);
    for (std::string story = start; words >> word && word != "="; story += ' ' + word) {
      EXPECT_TRUE(terminal->Settle()) << story << "\n" << terminal->Screen();
      const std::size_t at = std::min(word.find_first_of("%@"), word.size());
      Position place{};
      char comma = 0;
      std::istringstream(word.substr(at)) >> comma >> place.row >> comma >> place.col;
      if (at == word.size()) terminal->Send(Keys(word));
      if (at == 0) terminal->Resize(place.row, place.col);
      if (at == word.size() || at == 0) continue;
      const Position cursor = terminal->Cursor();
      const auto before = static_cast<unsigned>(cursor.col - place.col);
      const std::size_t length = word.find('!') < at ? at - 1 : at;
      std::string seen = terminal->Row(place.row).substr(static_cast<unsigned>(place.col), length);
      if (length < at && cursor.row == place.row && before <= length) seen.insert(before, 1, '!');
      std::replace(seen.begin(), seen.end(), ' ', '_');
      EXPECT_EQ(seen, word.substr(0, at)) << story;
      EXPECT_EQ(terminal->Bells(), std::ranges::count(word.substr(at), '*')) << story;
    }
    words >> word;
    result = terminal->Result();
    EXPECT_EQ(result.substr(0, result.find('\n')), word) << start;
  }
  return result;
}
