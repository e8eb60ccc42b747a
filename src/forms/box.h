#pragma once

// The boxes in the middle of the screen: what list box and message box have in common.

#include "forms/layer.h"
#include "forms/window.h"

// A box of fixed size. It is not open when it does not fit on the screen, and is closed for good
// once a terminal that shrinks leaves no room for it.
class Box : public Layer {
 public:
  [[nodiscard]] bool open() const { return open_; }

  bool LayOut() final;

  // Takes the box off the screen and shows `parent` again. No key may be read after it.
  void Close(WINDOW* parent);

 protected:
  Box(int rows, int columns);

  // Reads a key. One that finds the box closed is left to what lies below.
  int ReadBoxKey();

  // Draws all that stands within the border and puts the cursor where it belongs.
  virtual void Draw() = 0;

 private:
  Box(int rows, int columns, WindowPtr window);
  bool Centre();

  int rows_, columns_;
  WindowPtr owned_;
  bool open_;
};
