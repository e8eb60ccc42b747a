#pragma once

// A program, or a function of the test binary, on a pseudo-terminal of its own. Its screen is kept
// here, updated only by the non-const functions. terminal.py, which keeps none, is for programs
// below strace, valgrind and shells; both see by the same means that a key is awaited.

#include <sys/ioctl.h>
#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct VTerm;
struct VTermScreen;

struct TerminalOptions {
  unsigned short rows = 24, cols = 80;
  const char* term = "tmux";
};

class TerminalSession {
 public:
  // Runs a command of the shell; with "exec" in front, the child is the program itself.
  static std::unique_ptr<TerminalSession> Run(const std::string& command,
                                              const TerminalOptions& options = {});
  // Runs `body` in a forked child, which ends with status 0 when it returns. GoogleTest failures
  // inside it are lost: return text and compare Result().
  static std::unique_ptr<TerminalSession> Call(const std::function<std::string()>& body,
                                               const TerminalOptions& options = {}) {
    return std::unique_ptr<TerminalSession>(new TerminalSession(body, options));
  }
  ~TerminalSession();  // kills and reaps a child that is still there

  void Send(std::string_view keys) const;    // the bytes a terminal would send
  void HangUp();                             // the line drops: SIGHUP, and end of input for ever
  void Resize(const TerminalOptions& size);  // SIGWINCH, and rubbish in every cell

  void Type(std::string_view keys);  // sends keys; throws unless it settles then

  // Waiting gives up and kills the child after five seconds: a failing test waits but once.
  // Returns false then, or as soon as the child has ended or the line is gone.
  [[nodiscard]] bool Settle() { return WaitFor(""); }  // all keys acted on, and the next awaited
  [[nodiscard]] bool WaitFor(std::string_view text);   // settled, with `text` within one row
  int ExitStatus();      // waits for the end; minus the signal number when ended by a signal
  std::string Result();  // waits for what `body` returned; fails the test if it did not

  [[nodiscard]] std::string Row(int row) const;  // exactly `cols` bytes, non-ASCII as '+'
  [[nodiscard]] std::string Screen() const;      // the rows without blanks at their ends and below
  [[nodiscard]] std::string Marks() const;       // cursor 11,5 \n standout 11,5 "Quit" \n
  [[nodiscard]] std::string Picture() const { return Screen() + Marks(); }
  [[nodiscard]] bool Cooked() const;  // whether the line edits and echoes as it does for a shell
  [[nodiscard]] bool Unread() const;  // whether there are keys that nobody has read
  [[nodiscard]] int Bells() const { return bells_; }

 private:
  TerminalSession(const std::function<std::string()>& body, const TerminalOptions& options);
  bool Await(const std::function<bool()>& done);
  bool Drain();
  bool Ended();
  void Kill();

  winsize size_;
  std::unique_ptr<VTerm, void (*)(VTerm*)> terminal_;
  VTermScreen* screen_;  // part of the terminal
  int bells_ = 0;
  int result_, master_ = -1;
  int slave_ = -1;  // never read: shows which keys the child has not taken
  pid_t pid_ = -1;
  bool ended_ = false;
  int wait_status_ = 0;
};

// Fails the test unless the text is that of the file NAME in tests, and keeps it beside the build.
void ExpectText(const std::string& seen, const std::string& name);

inline void ExpectPicture(const TerminalSession& terminal, const std::string& name) {
  ExpectText(terminal.Picture(), "screens/" + name + ".txt");
}
