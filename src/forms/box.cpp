#include "forms/box.h"

#include <utility>

Box::Box(int rows, int columns)
    : Box(rows, columns, OpenWindow(rows, columns, (LINES - rows) / 2, (COLS - columns) / 2)) {}

Box::Box(int rows, int columns, WindowPtr window)
    : Layer(window.get()),
      rows_(rows),
      columns_(columns),
      owned_(std::move(window)),
      open_(owned_ != nullptr) {}

bool Box::LayOut() {
  open_ = open_ && rows_ <= LINES && columns_ <= COLS &&
          Place(window(), rows_, columns_, (LINES - rows_) / 2, (COLS - columns_) / 2);
  if (open_) {
    Frame(window());
    Draw();
  } else {
    // Keys are still read through it until its loop ends, which must not show it again.
    Place(window(), 1, 1, 0, 0);
    untouchwin(window());
  }
  return open_;
}

void Box::Close(WINDOW* parent) {
  owned_.reset();
  Restore(parent);
}
