#include "forms/key_input.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>

#include "forms/layer.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "shell/signals.h"
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

// Whether nothing will ever be read again, judged by what poll reported and by the errno of the
// read after it, which found no key.
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

// Sleeps until there is input or a signal; the only place where the program does. Returns what poll
// reports of the input, 0 after a signal.
short AwaitInput() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  const sigset_t mask = KeyWaitMask();
  return ppoll(&input, 1, nullptr, &mask) > 0 ? input.revents : static_cast<short>(0);
}

// Takes a key that is there, ERR when there is none. Signals come in first, or keys that keep
// coming would keep them out.
int TakeKey(WINDOW* window) {
  AdmitSignals();
  FollowTerminal();
  errno = 0;
  return wgetch(window);
}

int WaitForKey(WINDOW* window) {
  wtimeout(window, 0);
  int key = TakeKey(window);
  while (key == ERR) {
    const short events = AwaitInput();
    key = TakeKey(window);
    if (key == ERR && TerminalGone(events, errno)) {
      Shutdown(0);
    }
  }
  return key;
}

int Traced(int key) {
  TraceFormat("Key: %c, 0X%x received at position(%d,%d)", key, static_cast<unsigned>(key),
              MenuCursorRow, MenuCursorCol);
  return key;
}

// Reads a key of a sequence. A resized terminal does not tear the sequence: the key that tells of
// it is put off until its end.
int NextInSequence(WINDOW* window, bool& resized) {
  int key = WaitForKey(window);
  while (key == KEY_RESIZE) {
    resized = true;
    key = WaitForKey(window);
  }
  return Traced(key);
}

// Reads the rest of a sequence after its Escape. Returns its code, 0 for an unknown one.
int ReadSequence(WINDOW* window, bool& resized) {
  const int key = NextInSequence(window, resized);
  if (key == 'O') {
    return Fold(kAfterLetterO, NextInSequence(window, resized));
  }
  if (key == '[') {
    return Fold(kAfterBracket, NextInSequence(window, resized));
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
    const int key = Traced(WaitForKey(window));
    if (key != kEscape) {
      return key == KEY_BACKSPACE ? KEY_DC : key;
    }
    TraceLog("escape key hit");
    bool resized = false;
    const int code = ReadSequence(window, resized);
    if (resized) {
      ungetch(KEY_RESIZE);
    }
    if (code != 0) {
      return code;
    }
    TraceLog("ignoring key");
  }
}
