#include "forms/box.h"

#include <utility>

#include "forms/key_input.h"

Box::Box(int rows, int columns) : Box(rows, columns, OpenWindow(rows, columns)) {}

Box::Box(int rows, int columns, WindowPtr window)
    : Layer(window.get()),
      rows_(rows),
      columns_(columns),
      owned_(std::move(window)),
      open_(owned_ != nullptr && Centre()) {}

bool Box::Centre() {
  return rows_ <= LINES && columns_ <= COLS &&
         Place(window(), rows_, columns_, (LINES - rows_) / 2, (COLS - columns_) / 2);
}

bool Box::LayOut() {
  open_ = open_ && Centre();
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

int Box::ReadBoxKey() {
  const int key = ReadKey(window());
  if (!open_ && key != KEY_RESIZE) {
    ungetch(key);
  }
  return key;
}

void Box::Close(WINDOW* parent) {
  owned_.reset();
  Restore(parent);
}
