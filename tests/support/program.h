#pragma once

// The program on a terminal and an installation of its own, driven by an operator's keys.

#include "platform/hlv_nodename.h"
#include "support/keys.h"
#include "support/terminal_session.h"
#include "support/test_files.h"

// What opens the screens from the first entry of the menu.
inline const std::string kAdd = kEnter;
inline const std::string kShow = kDown + kEnter;
inline const std::string kRemove = kDown + kDown + kEnter;

// The command that runs another one as a user who may change nothing.
inline const std::string kByOrdinaryUser =
    geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "env";

class ProgramTest : public ::testing::Test {
 protected:
  ProgramTest() {
    setenv("HLVHOME0000", directory_.path.c_str(), 1);
    std::filesystem::create_directories(node_directory_);
    std::filesystem::copy_file(NODEWARDEN_PROGRAM, "program");  // where every user can reach it
    chmod("program", 0755);
  }

  // Starts the program on a terminal that shows old text and waits for its menu, or for its end.
  // `by` is a command that runs it, as another user or with other limits: its notice stays open.
  void Start(const std::string& arguments = "", const std::string& by = "",
             const TerminalOptions& options = {}) {
    terminal_ =
        TerminalSession::Run("echo old text; exec " + by + " ./program " + arguments, options);
    if (terminal_->Settle() && geteuid() != 0 && by.empty()) Type("o");
  }

  void Type(const std::string& keys) { terminal_->Type(keys); }

  // Types keys that must bring up a message, or a question to be answered.
  void TypeAndRead(const std::string& keys, const std::string& text,
                   const std::string& answer = "o") {
    Type(keys);
    std::string shown;
    for (int row = 9; row < 14; ++row) shown += terminal_->Row(row).substr(17, 46);
    shown.erase(shown.find_last_not_of(' ') + 1).erase(0, shown.find_first_not_of(' '));
    const char* buttons = answer == "o" ? "|         | OK     |" : "| Yes     | No     |";
    EXPECT_EQ(shown + terminal_->Row(15).substr(45, 20), text + buttons) << terminal_->Picture();
    Type(answer);
  }

  // Leaves the program in the way that the keys stand for; nothing may remain on the terminal.
  void Leave(const std::string& keys = kF3) {
    terminal_->Send(keys);
    EXPECT_EQ(terminal_->ExitStatus(), 0);
    EXPECT_EQ(terminal_->Picture(), "\ncursor 0,0\n");
    EXPECT_TRUE(terminal_->Cooked());
  }

  // The text of a configuration file with records like "alpha,ops,E".
  static std::string ConfigText(const std::vector<std::string>& records) {
    std::string text = kComments;
    for (const std::string& record : records) text += "-n=" + record + "\n";
    return text;
  }
  std::string Config() { return ReadFile(file_); }

  TemporaryDirectory directory_;
  const std::string node_directory_ = std::string("opr/config/") + hlv_nodename();
  const std::string file_ = node_directory_ + "/actnode.prf";
  std::unique_ptr<TerminalSession> terminal_;
};

// Tests of what only the superuser can do say so where there is none.
class SuperuserTest : public ProgramTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "needs to run as root";
  }
};
