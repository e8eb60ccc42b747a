// The program on a terminal that changes its size.

#include <csignal>

#include "support/program.h"

using Size = TerminalOptions;

class Resize : public SuperuserTest {
 protected:
  void StartAt(Size size, const std::string& keys, const std::string& arguments = "",
               const std::string& by = "") {
    std::vector<std::string> records{"alpha,ops,E"};
    for (int node = 0; node < 25; ++node) records.push_back("node" + std::to_string(node) + ",u,E");
    WriteFile(file_, ConfigText(records));
    Start(arguments, by, size);
    Type(keys);
  }

  // The program is to act without a key, and on the keys then.
  static void ResizeTo(const Size& size, TerminalSession& terminal, const std::string& keys = "") {
    terminal.Resize(size.rows, size.cols);
    EXPECT_TRUE(terminal.Settle()) << terminal.Picture();
    terminal.Send(keys);
    EXPECT_TRUE(terminal.Settle()) << terminal.Picture();
  }
};

const Size kUsual{24, 80};
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
    {"add form with values", kAdd + "abc" + kDown + "u" + kLeft, {8, 30}, true},
    {"add form with a long value", kAdd + kLetters, {8, 30}, true},
    {"long value at its start", kAdd + kLetters + Times(64, kLeft), {8, 30}, true},
    {"scrolled list", kShow + kF4 + Times(15, kDown) + kUp, {19, 70}, false},
    {"opened record", kShow + kAlpha + kRight, {8, 30}, true},
    {"list over opened record", kShow + kAlpha + kF4 + kDown, {19, 70}, false},
    {"question over opened record", kShow + kAlpha + "w" + kF3 + kRight, {10, 50}, false},
    {"question before removal", kRemove + kAlpha + kLeft, {10, 50}, false},
};

// Sizes at which no field shows, or no more than one menu entry without the ones beside it.
const Size kTooSmall[] = {{1, 1}, {24, 1}, {40, 1}, {1, 80}, {4, 80}, {6, 20}, {24, 25}};

TEST_F(Resize, EverythingStandsAsIfOpenedAtTheNewSize) {
  for (const auto& [name, keys, least, outlives, by] : kScenes) {
    SCOPED_TRACE(name);
    StartAt(kUsual, keys, "", by);
    std::unique_ptr<TerminalSession> resized;
    resized.swap(terminal_);
    for (const Size& size : {Size{30, 100},
                             {20, 60},
                             {24, 75},
                             kUsual,
                             least,
                             kUsual,
                             {24, 50},
                             kUsual,
                             {50, 132},
                             kUsual}) {
      if (size.rows < least.rows || size.cols < least.cols) continue;
      for (const Size& too_small : kTooSmall) {
        if (outlives) ResizeTo(too_small, *resized, "X" + kDelete + "\b" + kUp + kDown);
      }
      ResizeTo(size, *resized);
      StartAt(size, keys, "", by);
      EXPECT_EQ(resized->Picture(), terminal_->Picture()) << size.rows << "x" << size.cols;
    }
    EXPECT_EQ(resized->Bells(), 0);
  }
}

TEST_F(Resize, RepaintsAfterAStopAndTracesNothing) {
  StartAt(kUsual, kAdd, "-d -f trace");
  const std::string picture = terminal_->Picture();
  const std::string trace = ReadFile("trace");
  terminal_->Signal(SIGSTOP);
  terminal_->Resize(kUsual.rows, kUsual.cols);
  terminal_->Signal(SIGCONT);
  Type("");
  EXPECT_EQ(terminal_->Picture(), picture);
  EXPECT_EQ(ReadFile("trace"), trace);
}

TEST_F(Resize, ADimensionFixedByTheEnvironmentStays) {
  Start("", "env COLUMNS=70");
  ResizeTo({30, 100}, *terminal_);
  EXPECT_EQ(terminal_->Row(29), "+" + std::string(68, '-') + "+" + std::string(30, ' '));
  Start("", "env LINES=20");
  ResizeTo({30, 100}, *terminal_);
  EXPECT_EQ(terminal_->Row(19), "+" + std::string(98, '-') + "+");
}
