#include "support/terminal_session.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <vterm.h>

#include <chrono>
#include <csignal>

#include "support/test_files.h"

constexpr std::chrono::seconds kPatience{5};
// Every cell becomes an E that stands out, and the cursor moves; text comes out as before.
constexpr std::string_view kRubbish = "\0337\033[7m\033#8\0338\033[2;3H";

// Any answer but a clear "nothing to read" counts as input.
static bool NothingToRead(int fd, int timeout_milliseconds) {
  pollfd entry{fd, POLLIN, 0};
  return poll(&entry, 1, timeout_milliseconds) == 0;
}

// The state does not tell a wait for a key from one for a child; the system call does, if shown.
static bool AsleepForKey(pid_t pid) {
  const std::string directory = "/proc/" + std::to_string(pid);
  const bool asleep = ReadFile(directory + "/stat").find(") S") != std::string::npos;
  const std::string call = ReadFile(directory + "/syscall");
  return asleep && (call.empty() || call.starts_with(std::to_string(SYS_ppoll) + " ") ||
                    call.starts_with(std::to_string(SYS_read) + " 0x0 "));
}

// The same environment and signals for the body wherever the tests run. It ends like any program,
// so that leaks are found in it.
[[noreturn]] static void RunChild(const std::function<std::string()>& body, int result,
                                  const TerminalOptions& options) noexcept {
  for (const char* name : {"LINES", "COLUMNS", "TERMINFO"}) unsetenv(name);
  setenv("TERM", options.term, 1);
  setenv("LC_ALL", "C", 1);
  setenv("ESCDELAY", "25", 1);
  for (int number = 1; number < SIGRTMIN; ++number) (void)std::signal(number, SIG_DFL);
  const sigset_t none{};
  sigprocmask(SIG_SETMASK, &none, nullptr);
  const std::string text = body();
  std::exit(write(result, text.data(), text.size()) < 0 ? EXIT_FAILURE : EXIT_SUCCESS);
}

static VTermScreenCell Cell(const VTermScreen* screen, int row, int col) {
  VTermScreenCell cell{};
  vterm_screen_get_cell(screen, {row, col}, &cell);
  return cell;
}

TerminalSession::TerminalSession(const std::function<std::string()>& body,
                                 const TerminalOptions& options)
    : size_{options.rows, options.cols, 0, 0},
      terminal_(vterm_new(options.rows, options.cols), vterm_free),
      screen_(vterm_obtain_screen(terminal_.get())),
      result_(memfd_create("result", MFD_CLOEXEC)) {
  static VTermScreenCallbacks callbacks{};
  callbacks.bell = [](void* count) { return ++*static_cast<int*>(count); };
  vterm_screen_set_callbacks(screen_, &callbacks, &bells_);
  vterm_set_utf8(terminal_.get(), 1);
  vterm_screen_enable_altscreen(screen_, 1);
  vterm_screen_reset(screen_, 1);
  (void)std::fflush(nullptr);
  pid_ = forkpty(&master_, nullptr, nullptr, &size_);
  if (pid_ < 0) throw std::system_error(errno, std::generic_category(), "forkpty");
  if (pid_ == 0) RunChild(body, result_, options);
  slave_ = open(ptsname(master_), O_RDWR | O_NOCTTY | O_CLOEXEC);
  fcntl(master_, F_SETFD, FD_CLOEXEC);
  fcntl(master_, F_SETFL, O_RDWR | O_NONBLOCK);
}

TerminalSession::~TerminalSession() {
  if (!Ended()) Kill();
  HangUp();
  close(result_);
}

std::unique_ptr<TerminalSession> TerminalSession::Run(const std::string& command,
                                                      const TerminalOptions& options) {
  const auto run = [&] { return execl("/bin/sh", "sh", "-c", command.c_str(), nullptr); };
  return Call([&] { return std::to_string(run()); }, options);
}

// Takes over what the child has written; returns whether that was anything.
bool TerminalSession::Drain() {
  char buffer[4096];
  bool any = false;
  for (ssize_t count = 0; (count = read(master_, buffer, sizeof buffer)) > 0; any = true) {
    vterm_input_write(terminal_.get(), buffer, static_cast<std::size_t>(count));
  }
  return any;
}

bool TerminalSession::Ended() {
  if (!ended_) ended_ = waitpid(pid_, &wait_status_, WNOHANG) == pid_;
  return ended_;
}

void TerminalSession::Kill() {
  for (const pid_t target : {pid_, -pid_}) kill(target, SIGKILL);  // with a command it runs
  ended_ = waitpid(pid_, &wait_status_, 0) == pid_;
}

bool TerminalSession::Await(const std::function<bool()>& done) {
  using std::chrono::steady_clock;
  for (const auto end = steady_clock::now() + kPatience; steady_clock::now() < end;) {
    const bool ended = Ended();
    Drain();
    if (done()) return true;
    if (ended) return false;
    NothingToRead(master_, 1);
  }
  Kill();
  return false;
}

void TerminalSession::Send(std::string_view keys) const {
  EXPECT_EQ(write(master_, keys.data(), keys.size()), std::ssize(keys)) << "too many at once";
}

void TerminalSession::Type(std::string_view keys) {
  Send(keys);
  if (!Settle()) throw std::runtime_error("ended or hangs:\n" + Picture());
}

void TerminalSession::HangUp() {
  Drain();
  for (int* end : {&master_, &slave_}) close(std::exchange(*end, -1));
}

void TerminalSession::Resize(const TerminalOptions& size) {
  Drain();
  size_ = {size.rows, size.cols, 0, 0};
  vterm_set_size(terminal_.get(), size.rows, size.cols);
  vterm_input_write(terminal_.get(), kRubbish.data(), kRubbish.size());
  ioctl(master_, TIOCSWINSZ, &size_);
}

// In this order: all keys are read, the foreground process sleeps, all its output is read.
bool TerminalSession::WaitFor(std::string_view text) {
  return slave_ >= 0 && Await([this, text] {
           return !Unread() && AsleepForKey(tcgetpgrp(master_)) && !Drain() &&
                  Screen().find(text) != std::string::npos;
         });
}

int TerminalSession::ExitStatus() {
  EXPECT_TRUE(Await([this] { return ended_; })) << "the child does not end\n" << Picture();
  return WIFSIGNALED(wait_status_) ? -WTERMSIG(wait_status_) : WEXITSTATUS(wait_status_);
}

std::string TerminalSession::Result() {
  EXPECT_EQ(ExitStatus(), 0) << "no result\n" << Picture();
  return ReadFile("/proc/self/fd/" + std::to_string(result_));
}

std::string TerminalSession::Row(int row) const {
  std::string text;
  for (int col = 0; col < size_.ws_col; ++col) {
    const uint32_t code = Cell(screen_, row, col).chars[0];
    text += code == 0 ? ' ' : code < 0x7f ? static_cast<char>(code) : '+';
  }
  return text;
}

std::string TerminalSession::Screen() const {
  std::string text;
  for (int row = 0; row < size_.ws_row; ++row) {
    const std::string line = Row(row);
    text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
  }
  return text.substr(0, text.find_last_not_of('\n') + 1) + '\n';
}

std::string TerminalSession::Marks() const {
  std::ostringstream text;
  VTermPos at{};
  vterm_state_get_cursorpos(vterm_obtain_state(terminal_.get()), &at);
  text << "cursor " << at.row << ',' << at.col << '\n';
  const auto marked = [this](int row, int col) { return Cell(screen_, row, col).attrs.reverse; };
  for (int row = 0; row < size_.ws_row; ++row) {
    for (int col = 0; col < size_.ws_col; ++col) {
      if (!marked(row, col)) continue;
      if (!marked(row, col - 1)) text << "standout " << row << ',' << col << " \"";
      text << Row(row).at(static_cast<std::size_t>(col));
      if (!marked(row, col + 1)) text << "\"\n";
    }
  }
  return text.str();
}

bool TerminalSession::Cooked() const {
  termios mode{};
  return tcgetattr(slave_, &mode) == 0 && (mode.c_lflag & (ICANON | ECHO)) == (ICANON | ECHO);
}

bool TerminalSession::Unread() const { return !NothingToRead(slave_, 0); }

void ExpectText(const std::string& seen, const std::string& name) {
  const std::string file = NODEWARDEN_TESTS "/" + name;
  if (seen == ReadFile(file)) return;
  const std::filesystem::path kept = NODEWARDEN_SEEN "/" + name;
  std::filesystem::create_directories(kept.parent_path());
  WriteFile(kept, seen);
  ADD_FAILURE() << "seen instead of " << name << ":\n"
                << seen << "To compare:  diff " << file << ' ' << kept.string()
                << "\nTo accept:   cp " << kept.string() << ' ' << file;
}
