#pragma once

// A program, or a function of the test binary, on a pseudo-terminal of its own. The session plays
// the terminal: it sends keys and keeps the screen an operator would see. The screen moves on only
// inside Send, WaitFor, Settle, Resize, HangUp and the two waits for the end; the const functions
// look at what those have read. Keep one session at a time: a child of a second one would hold the
// line of the first.

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
  // "NAME=value", on top of TERM, PATH, LC_ALL=C and ESCDELAY=25. Nothing else is inherited but the
  // switches of sanitizers and coverage.
  std::vector<std::string> env{};
};

class TerminalSession {
 public:
  // Starts a program, looked up in PATH; its exit status is 127 if it cannot be started. Throws
  // std::system_error when there is no pseudo-terminal.
  static std::unique_ptr<TerminalSession> Run(std::vector<std::string> argv,
                                              const TerminalOptions& options = {});
  // Runs `body` in a forked child, which ends with status 0 when it returns. GoogleTest failures
  // inside it are lost: return text and compare Result().
  static std::unique_ptr<TerminalSession> Call(std::function<std::string()> body,
                                               const TerminalOptions& options = {});
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;
  ~TerminalSession();  // kills and reaps a child that is still there

  void Send(std::string_view keys);  // the bytes a terminal would send
  // Waits for `text` within one row, and for the child to be quiet as in Settle. False after ten
  // seconds, or once the child or the line is gone.
  [[nodiscard]] bool WaitFor(std::string_view text);
  // Waits until all keys are consumed, the child sleeps in its wait for a key (ppoll, or read on
  // descriptor 0) and its output is on the screen.
  [[nodiscard]] bool Settle();
  void Resize(int rows, int cols);  // the child gets SIGWINCH
  void Signal(int number);          // to the child alone
  void HangUp();                    // the line drops: SIGHUP, and end of input for ever

  [[nodiscard]] std::string Row(int row) const;  // exactly `cols` bytes, non-ASCII as '+'
  [[nodiscard]] std::string Screen() const;      // all rows, each ended by a newline
  [[nodiscard]] Position Find(std::string_view text) const;  // {-1, -1} when absent
  [[nodiscard]] Position Cursor() const;
  [[nodiscard]] bool Reverse(int row, int col) const;
  [[nodiscard]] int Bells() const { return bells_; }

  // Both wait for the child to end; one that does not within thirty seconds is killed and fails the
  // test.
  int ExitStatus();      // minus the signal number when ended by a signal
  std::string Result();  // what `body` returned; fails the test if it did not

 private:
  using ChildBody = std::function<int(int result_descriptor)>;
  class Descriptor {
   public:
    Descriptor() = default;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Reset(); }
    void Reset(int fd = -1);  // closes the one held before
    [[nodiscard]] int get() const { return fd_; }

   private:
    int fd_ = -1;
  };

  TerminalSession(const ChildBody& body, const TerminalOptions& options);
  void Fork(const ChildBody& body, const TerminalOptions& options);
  std::size_t Drain();
  void Pause() const;
  bool Quiet();
  bool Ended();

  int rows_, cols_;
  std::unique_ptr<VTerm, void (*)(VTerm*)> terminal_;
  VTermScreen* screen_;  // part of the terminal
  int bells_ = 0;
  pid_t pid_ = -1;
  bool ended_ = false;
  int wait_status_ = 0;
  Descriptor result_, master_;
  Descriptor slave_;  // never read: shows which keys the child has not taken
};
