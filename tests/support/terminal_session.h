#pragma once

// A program, or a function of the test binary, on a pseudo-terminal of its own. The session plays
// the terminal: it sends keys and keeps the screen an operator would see. The screen moves on only
// inside the functions that are not const. Several sessions may be open at once: no child holds a
// descriptor of another's.

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct VTerm;
struct VTermScreen;

struct Position {
  int row, col;
  bool operator==(const Position&) const = default;
};

struct TerminalOptions {
  int rows = 24, cols = 80;
  const char* term = "tmux";
  std::vector<std::string> env{};  // "NAME=value", on top of LC_ALL=C and ESCDELAY=25
};

// What a terminal makes of its content when its size changes: rubbish fills every cell.
enum class OldContent { kKept, kRubbish };

class TerminalSession {
 public:
  // Runs a command of the shell; with "exec" in front, the child is the program itself. Throws
  // std::system_error when there is no pseudo-terminal.
  static std::unique_ptr<TerminalSession> Run(const std::string& command,
                                              const TerminalOptions& options = {});
  // Runs `body` in a forked child, which ends with status 0 when it returns. GoogleTest failures
  // inside it are lost: return text and compare Result().
  static std::unique_ptr<TerminalSession> Call(const std::function<std::string()>& body,
                                               const TerminalOptions& options = {});
  ~TerminalSession();  // kills and reaps a child that is still there

  void Send(std::string_view keys);  // the bytes a terminal would send
  void Signal(int number);           // to the child alone
  void HangUp();                     // the line drops: SIGHUP, and end of input for ever
  void Resize(int rows, int cols, OldContent content = OldContent::kKept);  // SIGWINCH

  // What waits gives up after five seconds, kills the child and returns false, as it does at once
  // when the child has ended or the line is gone: a failing test waits but once.
  [[nodiscard]] bool Settle() { return WaitFor(""); }  // all keys acted on, and the next awaited
  [[nodiscard]] bool WaitFor(std::string_view text);   // settled, with `text` within one row
  int ExitStatus();      // waits for the end; minus the signal number when ended by a signal
  std::string Result();  // waits for what `body` returned; fails the test if it did not

  [[nodiscard]] std::string Row(int row) const;  // exactly `cols` bytes, non-ASCII as '+'
  [[nodiscard]] std::string Screen() const;      // the rows without blanks at their ends and below
  // The cursor, and every run of cells that stand out: cursor 11,5 \n standout 11,5 "Quit" \n
  [[nodiscard]] std::string Marks() const;
  [[nodiscard]] std::string Picture() const { return Screen() + Marks(); }
  [[nodiscard]] Position Find(std::string_view text) const;  // {-1, -1} when absent
  [[nodiscard]] Position Cursor() const;
  [[nodiscard]] bool Reverse(int row, int col) const;
  [[nodiscard]] bool Cooked() const;  // whether the line edits and echoes as it does for a shell
  [[nodiscard]] int Bells() const { return bells_; }

 private:
  TerminalSession(const std::function<std::string()>& body, const TerminalOptions& options);
  bool Await(const std::function<bool()>& done);
  std::size_t Drain();
  bool Quiet();
  bool Ended();
  void Kill();

  int rows_, cols_;
  std::unique_ptr<VTerm, void (*)(VTerm*)> terminal_;
  VTermScreen* screen_;  // part of the terminal
  int bells_ = 0;
  int result_, master_ = -1;
  int slave_ = -1;  // never read: shows which keys the child has not taken
  pid_t pid_ = -1;
  bool ended_ = false;
  int wait_status_ = 0;
};

// Fails the test unless the terminal's picture is the one in tests/screens/NAME.txt.
void ExpectPicture(const TerminalSession& terminal, const std::string& name);
