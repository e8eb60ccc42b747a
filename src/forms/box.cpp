#include "forms/box.h"

#include "forms/key_input.h"
#include "forms/window.h"

Box::Box(WINDOW* parent, int rows, int columns)
    : Layer(OpenWindow(rows, columns).release()),
      parent_(parent),
      rows_(rows),
      columns_(columns),
      fits_(window() != nullptr && Centre()) {}

Box::~Box() {
  delwin(window());
  ShowAgain(parent_);
}

bool Box::Centre() {
  return wresize(window(), rows_, columns_) == OK &&
         mvwin(window(), (LINES - rows_) / 2, (COLS - columns_) / 2) == OK;
}

bool Box::LayOut() {
  fits_ = fits_ && Centre();
  if (fits_) {
    Frame(window());
    Draw();
  } else {
    untouchwin(window());  // NextKey still reads with it, and wgetch would show it again
  }
  return fits_;
}

std::optional<int> Box::NextKey() {
  if (!fits_) return std::nullopt;
  wrefresh(window());
  const int key = ReadKey(window());
  if (fits_) return key;
  if (key != KEY_RESIZE) {
    (void)ungetch(key);
  }
  return std::nullopt;
}
