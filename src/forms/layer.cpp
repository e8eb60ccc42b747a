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
  return value != nullptr && std::strtol(value, nullptr, 10) > 0;
}

void TakeOverSize() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0) {
    resizeterm(IsFixed("LINES") ? LINES : size.ws_row, IsFixed("COLUMNS") ? COLS : size.ws_col);
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
  reset_prog_mode();
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
