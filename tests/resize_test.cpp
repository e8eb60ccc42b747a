// The program on a terminal that changes its size.

#include <csignal>

#include "support/program.h"

using Size = TerminalOptions;

class ResizeTest : public SuperuserTest {
 protected:
  void StartAt(Size size, const std::string& keys, const std::string& arguments = "") {
    std::vector<std::string> records{"alpha,ops,E"};
    for (int node = 0; node < 25; ++node) records.push_back("node" + std::to_string(node) + ",u,E");
    WriteFile(file_, ConfigText(records));
    Start(arguments, "", size);
    Type(keys);
  }

  // The terminal makes rubbish of what it shows, and the program is to act without a key.
  static void ResizeTo(const Size& size, TerminalSession& terminal) {
    terminal.Resize(size.rows, size.cols);
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
} kScenes[] = {
    {"menu", "", {7, 30}, true},
    {"last menu entry", kUp, {13, 30}, true},
    {"add form with values", kAdd + "abc" + kDown + "u" + kLeft, {8, 30}, true},
    {"add form with a long value", kAdd + kLetters, {8, 30}, true},
    {"scrolled list", kShow + kF4 + Times(15, kDown) + kUp, {19, 70}, false},
    {"opened record", kShow + kAlpha + kRight, {8, 30}, true},
    {"list over opened record", kShow + kAlpha + kF4 + kDown, {19, 70}, false},
    {"question over opened record", kShow + kAlpha + "w" + kF3 + kRight, {10, 50}, false},
    {"question before removal", kRemove + kAlpha + kLeft, {10, 50}, false},
};

TEST_F(ResizeTest, EverythingStandsAsIfOpenedAtTheNewSize) {
  for (const auto& [name, keys, least, outlives] : kScenes) {
    const Size sizes[] = {{30, 100}, {20, 60}, least, {50, 132}, kUsual};
    StartAt(kUsual, keys);
    std::unique_ptr<TerminalSession> resized;
    resized.swap(terminal_);
    for (const Size& size : sizes) {
      if (size.rows < least.rows || size.cols < least.cols) continue;
      if (outlives) {
        for (const Size& tiny : {Size{1, 1}, {6, 20}, {2, 300}}) ResizeTo(tiny, *resized);
      }
      ResizeTo(size, *resized);
      StartAt(size, keys);
      EXPECT_EQ(resized->Picture(), terminal_->Picture())
          << name << " at " << size.rows << "x" << size.cols;
    }
  }
}

TEST_F(ResizeTest, AFieldOutsideTheScreenTakesNoKeysAndComesBack) {
  const struct {
    const char* name;
    std::string keys;
    Size size;
  } kCases[] = {{"mode of an opened record on six lines", kShow + kAlpha + kRight, {6, 80}},
                {"second field of the add form", kAdd + "abc" + kDown + "de" + kLeft, {5, 80}},
                {"long value on 25 columns", kAdd + kLetters + Times(9, kLeft), {24, 25}}};
  for (const auto& [name, keys, size] : kCases) {
    StartAt(kUsual, keys);
    const std::string before = terminal_->Picture();
    ResizeTo(size, *terminal_);
    EXPECT_EQ(terminal_->Cursor(), (Position{0, 0})) << name;
    Type("X" + kDelete + "\b" + kUp + kDown);
    EXPECT_EQ(terminal_->Cursor(), (Position{0, 0})) << name;
    ResizeTo(kUsual, *terminal_);
    EXPECT_EQ(terminal_->Picture(), before) << name;
  }
  EXPECT_EQ(terminal_->Bells(), 0);
}

TEST_F(ResizeTest, RepaintsAfterAStopAndTracesNothing) {
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

TEST_F(ResizeTest, ADimensionFixedByTheEnvironmentStays) {
  Start("", "env COLUMNS=70");
  ResizeTo({30, 100}, *terminal_);
  EXPECT_EQ(terminal_->Row(29), "+" + std::string(68, '-') + "+" + std::string(30, ' '));
  Start("", "env LINES=20");
  ResizeTo({30, 100}, *terminal_);
  EXPECT_EQ(terminal_->Row(19), "+" + std::string(98, '-') + "+");
}
