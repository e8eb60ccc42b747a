#include "shell/terminal.h"

#include <curses.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <exception>

namespace {

// How long curses waits for the rest of a key's sequence after its Escape. Interrupts wait as long.
constexpr int kEscapeDelay = 100;  // milliseconds

constexpr int kLeastColumns = 2;

constinit std::terminate_handler report_and_abort = nullptr;

// Input that poll has reported can vanish, flushed by Ctrl-Z and its like; curses would then wait
// for the next key with all signals blocked.
void MakeReadsNonBlocking() {
  termios mode{};
  if (tcgetattr(STDIN_FILENO, &mode) == 0) {
    mode.c_cc[VMIN] = 0;
    mode.c_cc[VTIME] = 0;
    tcsetattr(STDIN_FILENO, TCSANOW, &mode);
    def_prog_mode();  // or curses would set its own mode again after Ctrl-Z
  }
}

// Whether the environment fixes the dimension.
bool IsFixed(const char* name) {
  const char* value = std::getenv(name);
  char* end = nullptr;
  return value != nullptr && std::strtol(value, &end, 0) > 0 && *end == '\0';
}

}  // namespace

void StartTerminal() {
  // Only for the characters of the window corners: everything else stays ASCII.
  (void)std::setlocale(LC_CTYPE, "");
  initscr();
  resize_term(LINES, std::max(COLS, kLeastColumns));
  report_and_abort = std::set_terminate([] {
    EndTerminal();
    report_and_abort();
  });
  if (std::getenv("ESCDELAY") == nullptr) {
    set_escdelay(kEscapeDelay);
  }
  keypad(stdscr, TRUE);
  cbreak();
  noecho();
  MakeReadsNonBlocking();
}

void EndTerminal() {
  if (!isendwin() && IsInForeground()) {
    endwin();
  }
}

bool IsInForeground() {
  const pid_t foreground = tcgetpgrp(STDOUT_FILENO);
  return foreground == -1 || foreground == getpgrp();
}

void ResumeTerminal() {
  if (isendwin()) {
    def_shell_mode();
    doupdate();
  }
  reset_prog_mode();  // which a stop that could not be caught has left to others
}

void UpdateTerminalSize() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) return;
  const int rows = IsFixed("LINES") ? LINES : size.ws_row;
  const int columns = IsFixed("COLUMNS") ? COLS : std::max<int>(size.ws_col, kLeastColumns);
  if (is_term_resized(rows, columns)) {
    resizeterm(rows, columns);
  }
}
