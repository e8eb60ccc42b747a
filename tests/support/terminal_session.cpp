#include "support/terminal_session.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vterm.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>

// Writes the counters of a coverage build, which _exit would lose; absent from any other build.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the given name.
extern "C" void __gcov_exit() __attribute__((weak));

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::seconds kExitPatience{30};
constexpr int kPauseMilliseconds = 1;
constexpr std::size_t kMostPerDrain = 1 << 16;  // a flood must not hide time

const VTermScreenCallbacks* Callbacks() {
  static VTermScreenCallbacks callbacks{};
  callbacks.bell = [](void* count) { return ++*static_cast<int*>(count); };
  return &callbacks;
}

VTermScreenCell Cell(const VTermScreen* screen, int row, int col) {
  VTermScreenCell cell{};
  if (!vterm_screen_get_cell(screen, VTermPos{row, col}, &cell)) {
    ADD_FAILURE() << "no cell " << row << ", " << col << " on the screen";
  }
  return cell;
}

winsize WindowSize(int rows, int cols) {
  return {static_cast<unsigned short>(rows), static_cast<unsigned short>(cols), 0, 0};
}

int Checked(int result, const char* what) {
  if (result >= 0) return result;
  throw std::system_error(errno, std::generic_category(), what);
}

// Any answer but a clear "nothing to read" counts as input.
bool NothingToRead(int fd, int timeout_milliseconds) {
  pollfd entry{fd, POLLIN, 0};
  return poll(&entry, 1, timeout_milliseconds) == 0;
}

std::string ProcLine(pid_t pid, const char* name) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/" + name);
  std::string line;
  std::getline(file, line);
  return line;
}

// The state alone cannot tell a wait for a key from one for a child, but may be all there is.
bool AsleepForKey(pid_t pid) {
  const std::string stat = ProcLine(pid, "stat");
  const std::string call = ProcLine(pid, "syscall");
  if (stat.find(") S") == std::string::npos) return false;
  return call.empty() || call.starts_with(std::to_string(SYS_ppoll) + " ") ||
         call.starts_with(std::to_string(SYS_read) + " 0x0 ");
}

void PinEnvironment(const TerminalOptions& options) {
  std::vector<std::string> pinned{std::string("TERM=") + options.term, "LC_ALL=C", "ESCDELAY=25"};
  for (const char* name :
       {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "GCOV_PREFIX"}) {
    if (const char* value = std::getenv(name)) pinned.push_back(std::string(name) + "=" + value);
  }
  pinned.insert(pinned.end(), options.env.begin(), options.env.end());
  clearenv();
  for (const std::string& entry : pinned) {
    const std::size_t equals = entry.find('=');
    setenv(entry.substr(0, equals).c_str(), entry.c_str() + equals + 1, 1);
  }
}

// A test runner may have been started with some of these ignored or blocked.
void PinSignals() {
  for (int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGTSTP}) {
    (void)std::signal(number, SIG_DFL);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void RunChild(const std::function<int(int)>& body, int result,
                           const TerminalOptions& options) noexcept {
  PinEnvironment(options);
  PinSignals();
  const int status = body(result);
  (void)std::fflush(nullptr);
  if (__gcov_exit) __gcov_exit();
  _exit(status);
}

int StartProgram(std::vector<std::string> argv) {
  std::vector<char*> words;
  words.reserve(argv.size() + 1);
  for (std::string& word : argv) words.push_back(word.data());
  words.push_back(nullptr);
  execvp(words[0], words.data());
  std::perror(words[0]);
  return 127;
}

int ReportResult(const std::function<std::string()>& body, int fd) {
  const std::string text = body();
  return write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0 : 1;
}

}  // namespace

void TerminalSession::Descriptor::Reset(int fd) {
  if (fd_ >= 0) close(fd_);
  fd_ = fd;
}

TerminalSession::TerminalSession(const ChildBody& body, const TerminalOptions& options)
    : rows_(options.rows),
      cols_(options.cols),
      terminal_(vterm_new(rows_, cols_), vterm_free),
      screen_(vterm_obtain_screen(terminal_.get())) {
  vterm_screen_set_callbacks(screen_, Callbacks(), &bells_);
  vterm_set_utf8(terminal_.get(), 1);
  vterm_screen_enable_altscreen(screen_, 1);
  vterm_screen_reset(screen_, 1);
  Fork(body, options);
}

TerminalSession::~TerminalSession() {
  if (Ended()) return;
  kill(-pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

void TerminalSession::Fork(const ChildBody& body, const TerminalOptions& options) {
  int master = -1;
  result_.Reset(Checked(memfd_create("result", MFD_CLOEXEC), "result"));
  const winsize size = WindowSize(rows_, cols_);
  (void)std::fflush(nullptr);
  pid_ = Checked(forkpty(&master, nullptr, nullptr, &size), "forkpty");
  if (pid_ == 0) RunChild(body, result_.get(), options);
  master_.Reset(master);
  slave_.Reset(open(ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC));
  EXPECT_GE(slave_.get(), 0) << "cannot watch the keys not yet taken";
  fcntl(master, F_SETFD, FD_CLOEXEC);
  fcntl(master, F_SETFL, O_RDWR | O_NONBLOCK);
}

std::unique_ptr<TerminalSession> TerminalSession::Run(std::vector<std::string> argv,
                                                      const TerminalOptions& options) {
  const ChildBody child = [&argv](int) { return StartProgram(argv); };
  return std::unique_ptr<TerminalSession>(new TerminalSession(child, options));
}

std::unique_ptr<TerminalSession> TerminalSession::Call(std::function<std::string()> body,
                                                       const TerminalOptions& options) {
  const ChildBody child = [&body](int fd) { return ReportResult(body, fd); };
  return std::unique_ptr<TerminalSession>(new TerminalSession(child, options));
}

// Takes over what the child has written; returns how much that was.
std::size_t TerminalSession::Drain() {
  char buffer[4096];
  std::size_t total = 0;
  ssize_t count;
  while (total < kMostPerDrain && (count = read(master_.get(), buffer, sizeof buffer)) > 0) {
    const auto size = static_cast<std::size_t>(count);
    total += size;
    vterm_input_write(terminal_.get(), buffer, size);
  }
  return total;
}

void TerminalSession::Pause() const { NothingToRead(master_.get(), kPauseMilliseconds); }

// The keys must be gone before the child is seen asleep, and what it wrote before that be read.
bool TerminalSession::Quiet() {
  return NothingToRead(slave_.get(), 0) && AsleepForKey(pid_) && Drain() == 0 &&
         NothingToRead(slave_.get(), 0) && AsleepForKey(pid_);
}

bool TerminalSession::Ended() {
  if (!ended_) ended_ = waitpid(pid_, &wait_status_, WNOHANG) == pid_;
  return ended_;
}

void TerminalSession::Send(std::string_view keys) {
  const auto deadline = Clock::now() + kPatience;
  while (!keys.empty()) {
    const ssize_t count = write(master_.get(), keys.data(), keys.size());
    const bool later = count < 0 && (errno == EAGAIN || errno == EINTR);
    if ((count < 0 && !later) || Clock::now() > deadline) {
      ADD_FAILURE() << keys.size() << " bytes could not be sent";
      return;
    }
    if (count > 0) keys.remove_prefix(static_cast<std::size_t>(count));
    if (Drain() == 0 && later) Pause();
  }
}

bool TerminalSession::WaitFor(std::string_view text) {
  const auto deadline = Clock::now() + kPatience;
  while (Clock::now() < deadline) {
    const bool over = Ended() || master_.get() < 0;
    Drain();
    if (over) return false;
    if (Quiet() && Find(text).row >= 0) return true;
    Pause();
  }
  return false;
}

bool TerminalSession::Settle() { return WaitFor(""); }

void TerminalSession::Resize(int rows, int cols) {
  Drain();
  rows_ = rows;
  cols_ = cols;
  vterm_set_size(terminal_.get(), rows, cols);
  const winsize size = WindowSize(rows, cols);
  EXPECT_EQ(ioctl(master_.get(), TIOCSWINSZ, &size), 0) << "no terminal";
}

void TerminalSession::Signal(int number) {
  const bool sent = !Ended() && kill(pid_, number) == 0;
  EXPECT_TRUE(sent) << "signal " << number << " could not be sent";
}

void TerminalSession::HangUp() {
  Drain();
  master_.Reset();
  slave_.Reset();
}

std::string TerminalSession::Row(int row) const {
  std::string text;
  for (int col = 0; col < cols_; ++col) {
    const uint32_t code = Cell(screen_, row, col).chars[0];
    text += code == 0 ? ' ' : code < 0x7f ? static_cast<char>(code) : '+';
  }
  return text;
}

std::string TerminalSession::Screen() const {
  std::string text;
  for (int row = 0; row < rows_; ++row) text += Row(row) + '\n';
  return text;
}

Position TerminalSession::Find(std::string_view text) const {
  const std::size_t at = Screen().find(text);
  if (at == std::string::npos) return {-1, -1};
  const int offset = static_cast<int>(at);
  const int width = cols_ + 1;
  return {offset / width, offset % width};
}

Position TerminalSession::Cursor() const {
  VTermPos at{};
  vterm_state_get_cursorpos(vterm_obtain_state(terminal_.get()), &at);
  return {at.row, at.col};
}

bool TerminalSession::Reverse(int row, int col) const {
  return Cell(screen_, row, col).attrs.reverse;
}

int TerminalSession::ExitStatus() {
  for (const auto deadline = Clock::now() + kExitPatience; !Ended();) {
    if (Drain() == 0) Pause();
    if (Clock::now() > deadline) {
      ADD_FAILURE() << "the child did not end\n" << Screen();
      kill(-pid_, SIGKILL);  // the group, as it may be waiting for a command
    }
  }
  while (Drain() > 0) {
  }
  return WIFSIGNALED(wait_status_) ? -WTERMSIG(wait_status_) : WEXITSTATUS(wait_status_);
}

std::string TerminalSession::Result() {
  EXPECT_EQ(ExitStatus(), 0) << "no result\n" << Screen();
  std::string text(static_cast<std::size_t>(lseek(result_.get(), 0, SEEK_END)), '\0');
  EXPECT_EQ(pread(result_.get(), text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
  return text;
}
