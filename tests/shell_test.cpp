#include "support/program.h"

using Shell = ProgramTest;

TEST_F(Shell, ClearsTheTerminalAndRefusesABadCommandLine) {
  for (const char* arguments : {"-f", "abc", "-x", "-h", "-d -f", "-d -fx abc", "''"}) {
    SCOPED_TRACE(arguments);
    Start(arguments);
    EXPECT_EQ(terminal_->ExitStatus(), 1);
    ExpectPicture(*terminal_, "usage");
  }
}

TEST_F(Shell, TracesWhereTheCommandLineSays) {
  const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                       {"-f x", ""},
                                                       {"-d -f no/folder", ""},
                                                       {"-d -d", "nodewarden.log"},
                                                       {"-dfoo -fx -fy", "y"},
                                                       {"-f -d -debug", "-d"}};
  for (const auto& [arguments, file] : cases) {
    SCOPED_TRACE(arguments);
    WriteFile(file, "old\n");
    Start(arguments);
    Leave();
    const std::string trace = ReadFile(file);
    EXPECT_EQ(trace.starts_with("geteuid: " + std::to_string(geteuid()) + "\n"), !file.empty());
    EXPECT_EQ(trace.ends_with("position(5,5)\n"), !file.empty());
    std::filesystem::remove(file);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 2) << "another file";
  }
}

TEST_F(Shell, PaintsTheMenuAndWrapsTheHighlightAround) {
  const std::string other_keys = "ax" + kRight + kLeft + kOtherFunctionKeys + kF4;
  const struct {
    std::string keys, at, entry;
  } kSteps[] = {{kUp, "11,5", "Quit"},
                {kUp, "9,5", "Remove Node Security Entry"},
                {kDown + kDown, "5,5", "Add Node Security Entry"},
                {kDown + other_keys, "7,5", "Show / Change Node Security Entry"}};
  Start();
  ExpectPicture(*terminal_, "main_menu");
  for (const auto& [keys, at, entry] : kSteps) {
    Type(keys);
    EXPECT_EQ(terminal_->Marks(), "cursor " + at + "\nstandout " + at + " \"" + entry + "\"\n");
  }
  terminal_->Resize({.rows = 6});
  Type(kUp);  // from an entry out of sight
  EXPECT_EQ(terminal_->Marks(), "cursor 0,0\n");
  EXPECT_EQ(terminal_->Bells(), 0);
}

TEST_F(Shell, QuitAndCtrlCLeaveAClearTerminal) {
  for (const std::string& keys : {kUp + kEnter, std::string("\x03"), kEnter + "\x03"}) {
    Start();
    Leave(keys);
  }
}

TEST_F(Shell, StopsAtCtrlZAndGoesOnAtItsPlace) {
  terminal_ = TerminalSession::Run(
      "set -m; ./program; echo stopped; read key; stty -ixon; fg; stty -a | grep -q -e -ixon");
  Type("");
  Type("o" + kShow + kF4);
  const std::string list = terminal_->Picture();
  terminal_->Send("\x1a");
  EXPECT_TRUE(terminal_->WaitFor("stopped") && terminal_->Cooked()) << terminal_->Picture();
  Type(kEnter);
  EXPECT_EQ(terminal_->Picture(), list);
  Leave(kF3 + kF3 + kF3);  // and the modes that were set meanwhile stay
}

TEST_F(Shell, StopsInTheBackgroundWhereASignalEndsIt) {
  terminal_ = TerminalSession::Run(
      "set -m; ./program & until grep -q ') T' /proc/$!/stat; do :; done; "
      "kill -s INT $!; kill -s CONT $!; while wait $!; kill -0 $!; do :; done; echo it ended; "
      "read key");
  EXPECT_TRUE(terminal_->WaitFor("it ended")) << terminal_->Picture();
}
