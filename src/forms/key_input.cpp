#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>

#include "forms/forms.h"
#include "forms/window.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "shell/trace_log.h"

namespace {

constexpr int kEscape = 27;

// The last key of an escape sequence and what the sequence stands for.
struct KeyCode {
  char last;
  int code;
};

constexpr std::array<KeyCode, 4> kAfterBracket{
    {{'A', KEY_UP}, {'B', KEY_DOWN}, {'C', KEY_RIGHT}, {'D', KEY_LEFT}}};

constexpr std::array<KeyCode, 8> kAfterLetterO{{{'P', KEY_F(1)},
                                                {'Q', KEY_F(2)},
                                                {'R', KEY_F(3)},
                                                {'S', KEY_F(4)},
                                                {'A', KEY_UP},
                                                {'B', KEY_DOWN},
                                                {'C', KEY_RIGHT},
                                                {'D', KEY_LEFT}}};

constexpr std::array<KeyCode, 9> kAfterEscape{{{'1', KEY_F(1)},
                                               {'2', KEY_F(2)},
                                               {'3', KEY_F(3)},
                                               {'4', KEY_F(4)},
                                               {'x', KEY_DC},
                                               {'h', KEY_LEFT},
                                               {'l', KEY_RIGHT},
                                               {'k', KEY_UP},
                                               {'j', KEY_DOWN}}};

// Returns what a sequence ending in `last` stands for, 0 for nothing.
int Fold(std::span<const KeyCode> codes, int last) {
  const auto found = std::ranges::find(codes, last, &KeyCode::last);
  return found != codes.end() ? found->code : 0;
}

// Whether nothing will ever be read again, judged after a poll that reported `events` and a read
// that found no key and left `read_error` in errno.
bool TerminalGone(short events, int read_error) {
  if ((events & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
    return true;
  }
  if ((events & POLLIN) == 0) {
    return false;
  }
  // Input that was announced may vanish from a terminal, flushed by a signal key; anywhere else it
  // was the end of the file.
  const bool passing = read_error == 0 || read_error == EINTR || read_error == EAGAIN;
  return !passing || isatty(STDIN_FILENO) == 0;
}

// Takes a key that is there, ERR when there is none.
int TakeKey(WINDOW* window) {
  KeepOnScreen(window);  // it is refreshed by the reading
  return wgetch(window);
}

// Waits for one key. Interrupts are let through only here: curses itself never blocks, so that its
// own work is never cut short.
int WaitForKey(WINDOW* window) {
  wtimeout(window, 0);
  pollfd input{STDIN_FILENO, POLLIN, 0};
  for (;;) {
    AdmitInterrupts();
    errno = 0;
    const int key = TakeKey(window);
    if (key != ERR) {
      return key;
    }
    if (TerminalGone(input.revents, errno)) {
      Shutdown(0);
    }
    const sigset_t mask = KeyWaitMask();
    if (ppoll(&input, 1, nullptr, &mask) < 0) {
      return TakeKey(window);  // ERR, or the key that tells of the signal: a resized terminal
    }
  }
}

int ReadTracedKey(WINDOW* window) {
  const int key = WaitForKey(window);
  TraceFormat("Key: %c, 0X%x received at position(%d,%d)", key, static_cast<unsigned>(key),
              MenuCursorRow, MenuCursorCol);
  return key;
}

// Reads the rest of a sequence after its Escape. Returns its code, 0 for an unknown one.
int ReadSequence(WINDOW* window) {
  const int key = ReadTracedKey(window);
  if (key == 'O') {
    return Fold(kAfterLetterO, ReadTracedKey(window));
  }
  if (key == '[') {
    return Fold(kAfterBracket, ReadTracedKey(window));
  }
  return Fold(kAfterEscape, key);
}

}  // namespace

void NeverBlockReads() {
  termios mode{};
  if (tcgetattr(STDIN_FILENO, &mode) == 0) {
    mode.c_cc[VMIN] = 0;
    mode.c_cc[VTIME] = 0;
    tcsetattr(STDIN_FILENO, TCSANOW, &mode);
    def_prog_mode();  // or curses would set its own mode again after Ctrl-Z
  }
}

int ReadKey(WINDOW* window) {
  for (;;) {
    const int key = ReadTracedKey(window);
    if (key != kEscape) {
      return key == KEY_BACKSPACE ? KEY_DC : key;
    }
    TraceLog("escape key hit");
    if (const int code = ReadSequence(window); code != 0) {
      return code;
    }
    TraceLog("ignoring key");
  }
}
