#include "forms/layer.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "shell/signals.h"

constinit Layer* Layer::bottom = nullptr;

namespace {

// Whether the environment fixes the dimension, as curses has taken it over at the start.
bool IsFixed(const char* name) {
  const char* value = std::getenv(name);
  char* end = nullptr;
  return value != nullptr && std::strtol(value, &end, 0) > 0 && *end == '\0';
}

// Has curses take over the size, which leaves the KEY_RESIZE.
void TakeOverSize() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
    return;
  }
  const int rows = IsFixed("LINES") ? LINES : size.ws_row;
  const int columns = IsFixed("COLUMNS") ? COLS : size.ws_col;
  if (is_term_resized(rows, columns)) {
    resizeterm(rows, columns);
  }
}

}  // namespace

Layer** Layer::LinkTo(const Layer* layer) {
  Layer** link = &bottom;
  while (*link != layer) {
    link = &(*link)->above_;
  }
  return link;
}

void FollowTerminal() {
  if (!TakeTerminalChange()) {
    return;
  }
  if (isendwin()) {
    doupdate();  // back from a stop
  }
  reset_prog_mode();  // which a stop that could not be caught has left to others
  TakeOverSize();
  for (Layer* layer = Layer::Bottom(); layer != nullptr; layer = layer->above()) {
    if (layer->LayOut()) {
      touchwin(layer->window());
      wnoutrefresh(layer->window());
    }
  }
  clearok(curscr, TRUE);  // whatever the terminal has made of its old content
  doupdate();
}
