#include "support/program.h"

TEST_F(ProgramTest, ClearsTheTerminalAndRefusesABadCommandLine) {
  for (const char* arguments : {"-f", "abc", "-x", "-h", "-d -f", "-d -fx abc", "''"}) {
    SCOPED_TRACE(arguments);
    Start(arguments);
    EXPECT_EQ(terminal_->ExitStatus(), 1);
    ExpectPicture(*terminal_, "usage");
  }
}

TEST_F(ProgramTest, TracesWhereTheCommandLineSays) {
  const std::vector<std::string> names{"nodewarden.log", "unused", "x", "y", "-d"};
  const std::pair<std::string, std::string> cases[] = {{"", "none"},
                                                       {"-f unused", "none"},
                                                       {"-d -f no/folder", "none"},
                                                       {"-d -d", "nodewarden.log"},
                                                       {"-dfoo -fx -fy", "y"},
                                                       {"-f -d -debug", "-d"}};
  const std::string start = "geteuid: " + std::to_string(geteuid()) + "\n";
  for (const auto& [arguments, file] : cases) {
    for (const std::string& name : names) WriteFile(name, "old\n");
    Start(arguments);
    Leave();
    for (const std::string& name : names) {
      const std::string trace = ReadFile(name);
      const bool whole = trace.starts_with(start) && trace.ends_with("position(5,5)\n");
      EXPECT_EQ(whole ? "whole" : trace, file == name ? "whole" : "old\n") << arguments;
    }
  }
}

TEST_F(ProgramTest, PaintsTheMenuAndWrapsTheHighlightAround) {
  const std::string other_keys = "ax" + kRight + kLeft + "\x1bOP" + kF4 + "\x1b[15~";
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
  EXPECT_EQ(terminal_->Bells(), 0);
}

TEST_F(ProgramTest, EveryWayOutLeavesAClearTerminal) {
  const std::string interrupt = "\x03";
  for (const std::string& keys : {kF3, kUp + kEnter, interrupt, kEnter + interrupt}) {
    Start();
    Leave(keys);
  }
}

TEST_F(ProgramTest, StopsWhereItWaitsForAKeyAndGoesOn) {
  const std::string at_start = "stopped at the start";
  const std::string by_key = "stopped by Ctrl-Z";
  // The first command that the program runs stops it: the leader of the process group.
  WriteFile("clear",
            "#!/bin/sh\nrm clear\nread -r _ _ _ _ leader _ <\"/proc/$$/stat\"\n"
            "kill -s TSTP \"$leader\"\nexec clear\n");
  std::filesystem::permissions("clear", std::filesystem::perms{0755});
  terminal_ = TerminalSession::Run("set -m; PATH=.:$PATH ./program; echo " + at_start +
                                   "; read key; fg; echo " + by_key + "; read key; fg");
  for (const std::string& stopped : {at_start, by_key}) {
    EXPECT_TRUE(terminal_->WaitFor(stopped) && terminal_->Cooked()) << terminal_->Picture();
    Type(kEnter);
    ExpectPicture(*terminal_, geteuid() == 0 ? "main_menu" : "read_only_notice");
    if (stopped == at_start) terminal_->Send("\x1a");
  }
  Leave(geteuid() == 0 ? kF3 : "o" + kF3);
}

TEST_F(SuperuserTest, TracesAWholeRun) {
  Start("-d -f trace");
  Type(kEnter + "h" + kDown + "u" + kF4 + kEnter + kEnter + kEnter);                   // add h,u
  Type(kDown + kEnter + kF4 + kEnter + kDown + "u" + kEnter + "w" + kF3 + "n" + kF3);  // look at it
  Type("y\x1b\x33" + kDown + kEnter + kF4 + kF3 + "h" + kDown + kF4 + kDown + kEnter);
  Type(kEnter + "n" + kEnter + "y\x1b[A\x1bX");  // delete it
  Leave();
  ExpectText(ReadFile("trace"), "traces/whole_run.txt");
}
