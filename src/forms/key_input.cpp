#include "forms/key_input.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <span>

#include "forms/layer.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "shell/trace_log.h"
#include "terminal/signals.h"

namespace {

constexpr int kEscape = 27;

// The last key of an escape sequence and the code of the key it stands for.
struct KeyCode {
  char last;
  int code;
};

// Control Sequence Introducer: Escape [.
constexpr KeyCode kCsiKeys[] = {{'A', KEY_UP}, {'B', KEY_DOWN}, {'C', KEY_RIGHT}, {'D', KEY_LEFT}};

// Single Shift Three: Escape O.
constexpr KeyCode kSs3Keys[] = {{'P', KEY_F(1)},  {'Q', KEY_F(2)}, {'R', KEY_F(3)},
                                {'S', KEY_F(4)},  {'A', KEY_UP},   {'B', KEY_DOWN},
                                {'C', KEY_RIGHT}, {'D', KEY_LEFT}};

// Escape alone.
constexpr KeyCode kEscapeKeys[] = {{'1', KEY_F(1)},  {'2', KEY_F(2)}, {'3', KEY_F(3)},
                                   {'4', KEY_F(4)},  {'x', KEY_DC},   {'h', KEY_LEFT},
                                   {'l', KEY_RIGHT}, {'k', KEY_UP},   {'j', KEY_DOWN}};

// Returns the code of a sequence that ends in `last`, 0 for none.
int CodeOf(std::span<const KeyCode> codes, int last) {
  const auto found = std::ranges::find(codes, last, &KeyCode::last);
  return found != codes.end() ? found->code : 0;
}

// Whether nothing will ever be read again, judged by the events that poll reported and by the errno
// of the read after it, which found no key.
bool TerminalGone(short events, int read_error) {
  if ((events & (POLLHUP | POLLERR | POLLNVAL)) != 0) return true;
  if ((events & POLLIN) == 0) return false;
  // Input that poll has reported may vanish from a terminal, flushed by another process; anywhere
  // else it was the end of the file.
  const bool transient = read_error == 0 || read_error == EINTR || read_error == EAGAIN;
  return !transient || isatty(STDIN_FILENO) == 0;
}

// A non-blocking read of a key. Returns ERR, with the errno of the read or 0, when there is none.
// Pending signals are delivered first: a stream of keys would delay them, and where there is input
// the wait for it delivers none.
int ReadAvailableKey(WINDOW* window) {
  DeliverPendingSignals();
  FollowTerminal();
  errno = 0;
  return wgetch(window);
}

int WaitForKey(WINDOW* window) {
  wtimeout(window, 0);
  int key = ReadAvailableKey(window);
  while (key == ERR) {
    const short events = AwaitInput();
    key = ReadAvailableKey(window);
    if (key == ERR && TerminalGone(events, errno)) {
      Shutdown(0);
    }
  }
  return key;
}

int TraceKey(int key) {
  TraceFormat("Key: %c, 0X%x received at position(%d,%d)", key, static_cast<unsigned>(key),
              MenuCursorRow, MenuCursorCol);
  return key;
}

// Reads a key of a sequence. A resize does not break the sequence: its KEY_RESIZE is put back after
// the last key.
int NextInSequence(WINDOW* window, bool& resized) {
  int key = WaitForKey(window);
  while (key == KEY_RESIZE) {
    resized = true;
    key = WaitForKey(window);
  }
  return TraceKey(key);
}

// Reads the rest of a sequence after its Escape. Returns its code, 0 for an unknown one.
int ReadSequence(WINDOW* window, bool& resized) {
  const int key = NextInSequence(window, resized);
  if (key == 'O') return CodeOf(kSs3Keys, NextInSequence(window, resized));
  if (key == '[') return CodeOf(kCsiKeys, NextInSequence(window, resized));
  return CodeOf(kEscapeKeys, key);
}

}  // namespace

int ReadKey(WINDOW* window) {
  for (;;) {
    const int key = TraceKey(WaitForKey(window));
    if (key != kEscape) return key == KEY_BACKSPACE ? KEY_DC : key;
    TraceLog("escape key hit");
    bool resized = false;
    const int code = ReadSequence(window, resized);
    if (resized) {
      (void)ungetch(KEY_RESIZE);
    }
    if (code != 0) return code;
    TraceLog("ignoring key");
  }
}
