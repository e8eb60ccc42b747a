#include "support/program.h"

using Size = TerminalOptions;

class Resize : public SuperuserTest {
 protected:
  Resize() {
    std::string records = "-n=alpha,ops,E\n";
    for (int node = 0; node < 25; ++node) records += "-n=node" + std::to_string(node) + ",u,E\n";
    WriteFile(file_, records);
  }

  // Without keys the program is to act all the same.
  static std::string Resized(TerminalSession& terminal, const Size& size,
                             const std::string& keys = "") {
    terminal.Resize(size);
    terminal.Type(keys);
    return terminal.Picture();
  }
};

const std::string kAlpha = "alpha" + kDown + "ops" + kEnter;
const std::string kLetters = "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz0123456789AB";

// What an operator has opened, the least size that shows it, and whether it outlives a smaller one.
const struct {
  const char* name;
  std::string keys;
  Size least;
  bool outlives;
  std::string by{};
} kScenes[] = {
    {"menu", "", {7, 30}, true},
    {"last menu entry", kUp, {13, 30}, true},
    {"notice over the menu", "", {10, 50}, false, kByOrdinaryUser},
    {"menu of a fixed width", "", {24, 75}, false, "env -u ESCDELAY COLUMNS=70"},
    {"menu of a fixed height", "", {20, 30}, false, "env LINES=20"},
    {"menu, LINES beyond an int", "", {7, 30}, true, "env LINES=9999999999"},
    {"add form with values", kAdd + "abc" + kDown + "u" + kLeft, {8, 30}, true},
    {"add form with a long value", kAdd + kLetters, {8, 30}, true},
    {"long value at its start", kAdd + kLetters + Times(64, kLeft), {8, 30}, true},
    {"long value half way", kAdd + kLetters + Times(60, kLeft) + Times(10, kRight), {8, 30}, true},
    {"scrolled list", kShow + kF4 + Times(15, kDown) + kUp, {19, 70}, false},
    {"opened record", kShow + kAlpha + kRight, {8, 30}, true},
    {"list over opened record", kShow + kAlpha + kF4 + kDown, {19, 70}, false},
    {"question over opened record", kShow + kAlpha + "w" + kF3 + kRight, {10, 50}, false},
};

TEST_F(Resize, EverythingStandsAsIfOpenedAtTheNewSize) {
  for (const auto& [name, keys, least, outlives, by] : kScenes) {
    SCOPED_TRACE(name);
    Start("", by);
    Type(keys);
    const std::string before = terminal_->Picture();
    std::unique_ptr<TerminalSession> resized;
    resized.swap(terminal_);
    for (const Size& size : {{30, 100}, {20, 60}, {24, 75}, least, {24, 50}, Size{50, 132}}) {
      if (size.rows < least.rows || size.cols < least.cols) continue;
      Start("", by, size);
      Type(keys);
      EXPECT_EQ(Resized(*resized, size), terminal_->Picture());
      for (const Size& no_field_shows :
           {{1, 1}, {24, 1}, {40, 1}, {1, 80}, {4, 80}, Size{24, 25}}) {
        if (outlives) Resized(*resized, no_field_shows, "X" + kDelete + "\b" + kUp + kDown);
      }
      EXPECT_EQ(Resized(*resized, {}), before);
    }
    EXPECT_EQ(resized->Bells(), 0);
  }
}
