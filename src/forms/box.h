#pragma once

// The boxes in the middle of the screen: what list box and message box have in common.

#include <optional>

#include "forms/layer.h"

// A box of fixed size over the window `parent`, which is shown again at its end. It owns its
// window. One that does not fit on the screen is not shown; one that no longer fits after a resize
// is not shown again either when the terminal grows.
class Box : public Layer {
 public:
  bool LayOut() final;

 protected:
  Box(WINDOW* parent, int rows, int columns);
  ~Box() override;

  [[nodiscard]] bool fits() const { return fits_; }

  // Refreshes the box and returns the next key, or nothing when the box does not fit: a key that
  // was read then is left to what lies below.
  [[nodiscard]] std::optional<int> NextKey();

  // Draws all that stands within the border and puts the cursor where it belongs.
  virtual void Draw() = 0;

 private:
  bool Centre();  // false when the box does not fit on the screen

  WINDOW* parent_;
  int rows_, columns_;
  bool fits_;
};
