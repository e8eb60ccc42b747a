#include "terminal/terminal.h"

#include <curses.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

// How long wgetch waits for the rest of an escape sequence; signals stay pending that long.
constexpr int kEscapeDelay = 100;  // milliseconds

constexpr int kLeastColumns = 2;

constinit std::terminate_handler former_handler = nullptr;

// Whether the user has fixed the dimension by the environment.
constinit bool rows_fixed = false;
constinit bool columns_fixed = false;

// Whether the variable says what curses took, and not something that curses ignores.
bool IsFixed(const char* name, int taken) {
  const char* value = std::getenv(name);
  char* end = nullptr;
  return value != nullptr && std::strtol(value, &end, 0) == taken && *end == '\0';
}

void SetVariable(const char* name, int value) { setenv(name, std::to_string(value).c_str(), 1); }

// Puts curses' size into the environment: after endwin, doupdate would otherwise resize curses by
// itself, to fewer columns than it can bear.
void ExportSize() {
  SetVariable("LINES", LINES);
  SetVariable("COLUMNS", COLS);
}

}  // namespace

void StartTerminal() {
  // Only for the characters of the window corners: everything else stays ASCII.
  (void)std::setlocale(LC_CTYPE, "");
  initscr();
  rows_fixed = IsFixed("LINES", LINES);
  columns_fixed = IsFixed("COLUMNS", COLS);
  resize_term(LINES, std::max(COLS, kLeastColumns));
  ExportSize();
  former_handler = std::set_terminate([] {
    EndTerminal();
    former_handler();  // reports the exception and aborts
  });
  if (std::getenv("ESCDELAY") == nullptr) {
    set_escdelay(kEscapeDelay);
  }
  keypad(stdscr, TRUE);
  cbreak();
  noecho();
  // What poll has reported stays, so that no read blocks; DiscardInput does what the kernel did.
  intrflush(stdscr, FALSE);
}

void DiscardInput() {
  if (IsInForeground()) {
    flushinp();
  }
}

void EndTerminal() {
  if (!isendwin() && IsInForeground()) {
    endwin();
  }
}

bool IsInForeground() {
  const pid_t foreground = tcgetpgrp(STDIN_FILENO);
  return foreground == -1 || foreground == getpgrp();
}

void ResumeTerminal() {
  if (isendwin()) {
    def_shell_mode();
  }
  reset_prog_mode();  // SIGSTOP has no handler: others may have set the mode meanwhile
  doupdate();
}

void UpdateTerminalSize() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) return;
  const int rows = rows_fixed ? LINES : size.ws_row;
  const int columns = columns_fixed ? COLS : std::max<int>(size.ws_col, kLeastColumns);
  if (is_term_resized(rows, columns)) {
    resizeterm(rows, columns);
    ExportSize();
  }
}
