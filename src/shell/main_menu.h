#pragma once

// The main menu on the standard screen: its table, how it is painted, and the loop that runs the
// chosen entries.

#include <curses.h>

#include "forms/layer.h"

// One line of a menu. A menu ends with a row whose position is (255, 255) and that has no action.
struct MenuEntry {
  int row;  // screen position of the text
  int col;
  const char* text;
  int (*action)(WINDOW* parent);  // runs the entry over `parent`; the menu ignores the result
};

extern const MenuEntry MainMenu[];

// The last entry of the menu painted most recently, null before.
extern const MenuEntry* LastMenuEntry;

// Paints title, entries and key line of `menu`, which has at least one entry, on `window`, with the
// cursor on the first entry and that entry highlighted. What does not fit is left out. Returns the
// result of the refresh.
int PaintMenu(WINDOW* window, const MenuEntry* menu, const char* title);

// Redraws the entry's text on the standard screen in standout video.
void HighlightEntry(const MenuEntry* entry);

// Redraws the entry's text on the standard screen in normal video.
void UnhighlightEntry(const MenuEntry* entry);

// Runs the entry's action with `window` and returns its result.
int RunEntryAction(WINDOW* window, const MenuEntry* entry);

// Returns the entry of `menu` that starts at (row, col), or null.
[[nodiscard]] const MenuEntry* FindMenuEntry(const MenuEntry* menu, int row, int col);

// The entry "Quit": shuts the program down and never returns.
int QuitCfg(WINDOW* window);

inline constexpr const char* kMenuTitle = "Halvorn Event Node Security";

// The main menu on the standard screen, on which PaintMenu has painted it.
class MenuLayer final : public Layer {
 public:
  MenuLayer() : Layer(stdscr) {}

  bool LayOut() override;

  // Runs the menu until the program is shut down.
  [[noreturn]] void Run();

 private:
  // The entry under the cursor; none while the highlighted one is outside the screen.
  [[nodiscard]] const MenuEntry* Current() const;
  void HandleKey(const MenuEntry* current, int key);
  void MoveTo(const MenuEntry* entry);

  const MenuEntry* entry_ = MainMenu;  // the highlighted one
};
