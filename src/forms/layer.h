#pragma once

// What is open on the screen, from the menu up to the topmost box. When the terminal changes its
// size, all of it is laid out anew.

#include <curses.h>

// Something that shows on a window for as long as it lives. Layers are destroyed in the
// reverse order of their construction and leave their windows to their owners.
class Layer {
 public:
  Layer(const Layer&) = delete;
  Layer& operator=(const Layer&) = delete;

  [[nodiscard]] WINDOW* window() const { return window_; }

  // Fits the window to LINES and COLS and draws it from the layer's own state, as if it had been
  // opened at this size; returns whether it shows. Neither refreshes, nor traces, nor reads a key.
  virtual bool LayOut() = 0;

  // The lowest layer, and the one over this one; null when there is none.
  static Layer* Bottom() { return bottom; }
  [[nodiscard]] Layer* above() const { return above_; }

 protected:
  explicit Layer(WINDOW* window) : window_(window) { *LinkTo(nullptr) = this; }
  virtual ~Layer() { *LinkTo(this) = above_; }

 private:
  // Returns the pointer to `layer` in the list; for null, the null pointer at its end.
  static Layer** LinkTo(const Layer* layer);

  static Layer* bottom;
  WINDOW* window_;
  Layer* above_ = nullptr;
};

// Handles a pending resize or continue (SIGWINCH, SIGCONT): lays all layers out for the size that
// the terminal has now and paints the whole screen. The lowest layer must clear its window
// (wclear), which clears the terminal. A new size leaves a KEY_RESIZE to be read. To be called
// right after signals were delivered.
void FollowTerminal();
