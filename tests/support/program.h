#pragma once

// The program on a terminal and an installation of its own, driven by an operator's keys.

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/hlv_nodename.h"
#include "support/terminal_session.h"
#include "support/test_files.h"

inline const std::string kUp = "\x1bOA";
inline const std::string kDown = "\x1bOB";
inline const std::string kF3 = "\x1bOR";
inline const std::string kF4 = "\x1bOS";
inline const std::string kEnter = "\r";

// The text of a configuration file with the given records, as in "alpha,ops,E;beta,root,D".
inline std::string ConfigText(const std::string& records) {
  std::string text = kComments;
  std::istringstream rest(records);
  for (std::string record; std::getline(rest, record, ';');) text += "-n=" + record + "\n";
  return text;
}

class ProgramTest : public ::testing::Test {
 protected:
  // Starts the program and waits for its menu, or for its end.
  void Start(std::vector<std::string> arguments = {}, TerminalOptions options = {}) {
    arguments.insert(arguments.begin(), NODEWARDEN_PROGRAM);
    StartCommand(arguments, std::move(options));
  }

  // Starts it as a user without rights, who may not be able to reach the build folder.
  void StartAsUser(std::vector<std::string> arguments = {}) {
    std::filesystem::copy_file(NODEWARDEN_PROGRAM, "./program");
    arguments.insert(arguments.begin(),
                     {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "./program"});
    StartCommand(arguments, {});
  }

  // Sends the keys and waits until the program has acted on all of them.
  void Type(const std::string& keys) {
    terminal_->Send(keys);
    ASSERT_TRUE(terminal_->Settle()) << terminal_->Screen();
  }

  // Sends the keys, sees `text` come up and answers it.
  void TypeAndExpect(const std::string& keys, const std::string& text,
                     const std::string& answer = kEnter) {
    Type(keys);
    EXPECT_NE(terminal_->Find(text), (Position{-1, -1})) << text << "\n" << terminal_->Screen();
    Type(answer);
  }

  // Leaves the main menu; the terminal must be clear and the status 0.
  void Leave(const std::string& keys = kF3) {
    terminal_->Send(keys);
    EXPECT_EQ(terminal_->ExitStatus(), 0);
    EXPECT_EQ(terminal_->Screen().find_first_not_of(" \n"), std::string::npos);
  }

  void SetUp() override { std::filesystem::create_directories(node_directory_); }

  void WriteRecords(const std::string& records) { WriteFile(file_, ConfigText(records)); }
  std::string Config() { return ReadFile(file_); }

  TemporaryDirectory directory_;
  const std::string node_directory_ = std::string("opr/config/") + hlv_nodename();
  const std::string file_ = node_directory_ + "/actnode.prf";
  std::unique_ptr<TerminalSession> terminal_;

 private:
  void StartCommand(const std::vector<std::string>& command, TerminalOptions options) {
    options.env.emplace_back("HLVHOME0000=.");
    terminal_ = TerminalSession::Run(command, options);
    [[maybe_unused]] const bool waiting = terminal_->Settle();
  }
};

// Tests of what only the superuser can do say so where there is none.
class SuperuserTest : public ProgramTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "needs to run as root";
    ProgramTest::SetUp();
  }
};
