#include "shell/main_menu.h"

#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/text.h"
#include "forms/window.h"
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

// Draws the menu with the first entry highlighted and the cursor on it if it lies within the
// screen.
void DrawMenu(WINDOW* window, const MenuEntry* menu, const char* title) {
  DrawTitle(window, title);
  for (const MenuEntry* entry = menu; entry->col != kTableEnd; ++entry) {
    DrawEntry(window, *entry);
  }
  HighlightEntry(menu);
  DrawText(window, LINES - 2, kKeyLineColumn, "ENTER=Select  F3=Quit");
  wmove(window, menu->row, menu->col);
}

}  // namespace

int PaintMenu(WINDOW* window, const MenuEntry* menu, const char* title) {
  DrawMenu(window, menu, title);
  LastMenuEntry = menu;
  while (LastMenuEntry[1].col != kTableEnd) {
    ++LastMenuEntry;
  }
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
    if (entry->row == row && entry->col == col) return entry;
  }
  return nullptr;
}

int QuitCfg(WINDOW* /*window*/) { Shutdown(0); }

bool MenuLayer::LayOut() {
  Frame(window());
  DrawMenu(window(), MainMenu, kMenuTitle);
  if (entry_ != MainMenu) {  // after the key line, which on 13 lines stands in the row of Quit
    UnhighlightEntry(MainMenu);
    HighlightEntry(entry_);
    if (wmove(window(), entry_->row, entry_->col) == ERR) {
      wmove(window(), 0, 0);
    }
  }
  return true;
}

void MenuLayer::Run() {
  for (;;) {
    getyx(window(), MenuCursorRow, MenuCursorCol);
    const int key = ReadKey(window());
    if (key == KEY_F(3)) {
      Shutdown(0);
    }
    if (const MenuEntry* current = Current(); current != nullptr) {
      HandleKey(current, key);
      wmove(window(), entry_->row, entry_->col);
    }
    wrefresh(window());
  }
}

const MenuEntry* MenuLayer::Current() const {
  return FindMenuEntry(MainMenu, getcury(window()), getcurx(window()));
}

void MenuLayer::HandleKey(const MenuEntry* current, int key) {
  if (IsEnterKey(key)) {
    RunEntryAction(window(), current);
  } else if (key == KEY_DOWN) {
    MoveTo(Below(current));
  } else if (key == KEY_UP) {
    MoveTo(Above(current));
  }
}

// Moves highlight and cursor to the entry unless it lies outside the screen.
void MenuLayer::MoveTo(const MenuEntry* entry) {
  if (wmove(window(), entry->row, entry->col) == OK) {
    UnhighlightEntry(entry_);
    HighlightEntry(entry);
    entry_ = entry;
  }
}
