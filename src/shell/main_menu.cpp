#include "shell/main_menu.h"

#include "forms/forms.h"
#include "forms/text.h"
#include "screens/screens.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"

constinit const MenuEntry MainMenu[] = {
    {5, 5, "Add Node Security Entry", AddCfg},
    {7, 5, "Show / Change Node Security Entry", SelectCfg},
    {9, 5, "Remove Node Security Entry", DelCfg},
    {11, 5, "Quit", QuitCfg},
    {kTableEnd, kTableEnd, "", nullptr},
};

constinit const MenuEntry* LastMenuEntry = nullptr;

namespace {

constexpr int kKeyLineColumn = 2;

void DrawEntry(WINDOW* window, const MenuEntry& entry) {
  DrawText(window, entry.row, entry.col, entry.text);
}

const MenuEntry* Below(const MenuEntry* entry) {
  return entry->row < LastMenuEntry->row ? entry + 1 : MainMenu;
}

const MenuEntry* Above(const MenuEntry* entry) {
  return entry->row > MainMenu->row ? entry - 1 : LastMenuEntry;
}

// Moves the highlight and the cursor, unless `to` lies outside the screen; returns the entry that
// then has them.
const MenuEntry* MoveHighlight(const MenuEntry* from, const MenuEntry* to) {
  if (wmove(stdscr, to->row, to->col) == ERR) {
    return from;
  }
  UnhighlightEntry(from);
  HighlightEntry(to);
  return to;
}

// Acts on a key with the cursor on `current`; returns the entry that is highlighted then.
const MenuEntry* HandleMenuKey(const MenuEntry* current, int key) {
  if (IsEnterKey(key)) {
    RunEntryAction(stdscr, current);
  } else if (key == KEY_DOWN) {
    return MoveHighlight(current, Below(current));
  } else if (key == KEY_UP) {
    return MoveHighlight(current, Above(current));
  }
  return current;
}

}  // namespace

int PaintMenu(WINDOW* window, const MenuEntry* menu, const char* title) {
  DrawTitle(window, title);
  const MenuEntry* entry = menu;
  for (; entry->col != kTableEnd; ++entry) {
    DrawEntry(window, *entry);
  }
  HighlightEntry(menu);
  DrawText(window, LINES - 2, kKeyLineColumn, "ENTER=Select  F3=Quit");
  LastMenuEntry = entry - 1;
  wmove(window, menu->row, menu->col);
  return wrefresh(window);
}

void HighlightEntry(const MenuEntry* entry) {
  wstandout(stdscr);
  DrawEntry(stdscr, *entry);
  wstandend(stdscr);
}

void UnhighlightEntry(const MenuEntry* entry) { DrawEntry(stdscr, *entry); }

int RunEntryAction(WINDOW* window, const MenuEntry* entry) { return entry->action(window); }

const MenuEntry* FindMenuEntry(const MenuEntry* menu, int row, int col) {
  for (const MenuEntry* entry = menu; entry->row != kTableEnd; ++entry) {
    if (entry->row == row && entry->col == col) {
      return entry;
    }
  }
  return nullptr;
}

int QuitCfg(WINDOW* /*window*/) { Shutdown(0); }

void RunMainMenu() {
  const MenuEntry* highlighted = MainMenu;
  for (;;) {
    getyx(stdscr, MenuCursorRow, MenuCursorCol);
    const MenuEntry* current = FindMenuEntry(MainMenu, MenuCursorRow, MenuCursorCol);
    const int key = ReadKey(stdscr);
    if (key == KEY_F(3)) {
      Shutdown(0);
    }
    if (current != nullptr) {
      highlighted = HandleMenuKey(current, key);
    }
    // Also when there was none: a terminal that shrank has moved the cursor off its entry.
    wmove(stdscr, highlighted->row, highlighted->col);
    wrefresh(stdscr);
  }
}
