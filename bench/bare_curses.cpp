// The floor under the program's costs: its menu, drawn and moved through by curses alone.

#include <curses.h>

#include <array>
#include <clocale>

static constexpr std::array<const char*, 4> kEntries{"Add Node Security Entry",
                                                     "Show / Change Node Security Entry",
                                                     "Remove Node Security Entry", "Quit"};

static void Draw(int entry) {
  mvaddstr(5 + 2 * entry, 5, kEntries.at(static_cast<std::size_t>(entry)));
}

static void Highlight(int entry) {
  standout();
  Draw(entry);
  standend();
  move(5 + 2 * entry, 5);
}

int main() {
  (void)std::setlocale(LC_CTYPE, "");
  initscr();
  keypad(stdscr, TRUE);
  cbreak();
  noecho();
  box(stdscr, '|', '-');
  for (int entry = 0; entry < 4; ++entry) Draw(entry);
  Highlight(0);
  int entry = 0;
  for (int key = getch(); key != KEY_F(3); key = getch()) {
    Draw(entry);
    entry = (entry + (key == KEY_DOWN ? 1 : 3)) % 4;
    Highlight(entry);
    refresh();
  }
  endwin();
}
