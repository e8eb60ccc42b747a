#include <fcntl.h>
#include <sys/inotify.h>

#include <csignal>

#include "shell/shell_state.h"
#include "support/toolkit.h"

// Returns the names that curses has for the next `count` keys, each with a blank after it.
static std::string ReadKeys(std::ptrdiff_t count) {
  MenuCursorRow = 7;
  MenuCursorCol = 5;
  std::string names;
  while (count-- > 0) names.append(keyname(ReadKey(stdscr))).append(" ");
  return names;
}

TEST(KeyInput, KeysAndSequencesComeBackAsOneKey) {
  const struct {
    const char* type;  // of the terminal
    std::string sent, read;
  } cases[] = {{"tmux", "\b\177\r", "^H KEY_DC ^J "},
               {"vt100", "\b\177\033OM", "KEY_DC ^? KEY_ENTER "},
               {"linux", "\033OP\033OQ\033OR\033OS", "KEY_F(1) KEY_F(2) KEY_F(3) KEY_F(4) "},
               {"linux", "\033OA\033OB\033OC\033OD", "KEY_UP KEY_DOWN KEY_RIGHT KEY_LEFT "},
               {"tmux", "\033[A\033[B\033[C\033[D", "KEY_UP KEY_DOWN KEY_RIGHT KEY_LEFT "},
               {"tmux", "\033k\033j\033l\033h\033x", "KEY_UP KEY_DOWN KEY_RIGHT KEY_LEFT KEY_DC "},
               {"tmux", "\0331\0332\0333\0334", "KEY_F(1) KEY_F(2) KEY_F(3) KEY_F(4) "},
               {"linux", "\033Oxa\033[Pb\033Xc\0335d\033\033e", "a b c d e "},
               {"tmux", "a\003b", "a b "}};  // a signal key flushes nothing
  for (const auto& [type, sent, read] : cases) {
    const std::ptrdiff_t count = std::ranges::count(read, ' ');
    const auto read_keys = [=] { return (void)signal(SIGINT, SIG_IGN), ReadKeys(count); };
    const auto terminal = Start(read_keys, {.term = type});
    terminal->Send(sent);
    EXPECT_EQ(terminal->Result(), read);
  }
  const auto escape_delay = [] { return std::to_string(get_escdelay()); };
  EXPECT_EQ(Start(escape_delay)->Result(), "25") << "ESCDELAY";
  const auto by_default = [&] { return unsetenv("ESCDELAY"), StartTerminal(), escape_delay(); };
  EXPECT_EQ(TerminalSession::Call(by_default)->Result(), "100");
}

TEST(KeyInput, EveryKeyIsTracedAndAResizeBreaksNoSequence) {
  const auto terminal = Start([] { return ReadKeys(5).append("\n" + ReadFile(LogFileName)); });
  const std::pair<std::string, unsigned short> steps[] = {
      {kUp + "\033[Pq", 20}, {"\033", 30}, {"", 40}};
  for (const auto& [keys, rows] : steps) {
    terminal->Type(keys);
    terminal->Resize({.rows = rows});
    terminal->Type("");
  }
  terminal->Send("[B");
  ExpectText(terminal->Result(), "traces/key_input.txt");
}

// As if the program had been started with the signal ignored.
static void RaiseIgnored(int number) {
  (void)std::signal(number, SIG_IGN);
  InstallHandlers(Shutdown);
  (void)raise(number);
}

TEST(KeyInput, TheProgramEndsWithItsTerminalOrWhenInterrupted) {
  const struct {
    const char* name;
    void (*before)();  // in the program
    const char* keys;  // typed then
    int status;
    const char* shown = "";
  } cases[] = {
      {"interrupt before a key", [] { ReadKeys(1), (void)raise(SIGINT); }, "ab", 0},
      {"terminate before a key", [] { ReadKeys(1), (void)raise(SIGTERM); }, "ab", -SIGTERM},
      {"hang-up", [] {}, "", -SIGHUP},
      {"hang-up, ignored", [] { RaiseIgnored(SIGHUP); }, "", 0},
      {"interrupt, ignored", [] { RaiseIgnored(SIGINT); }, "", 0},
      {"terminate, ignored", [] { RaiseIgnored(SIGTERM); }, "x", -SIGABRT, "after x"},
      {"quit key, ignored", [] { RaiseIgnored(SIGQUIT); }, "\034x", -SIGABRT, "after x"},
      {"stop key, ignored", [] { RaiseIgnored(SIGTSTP); }, "\032x", -SIGABRT, "after x"},
      {"end of file", [] { dup2(open("/dev/null", O_RDONLY), 0); }, "", 0},
      {"quit key, silent input", [] { dup2(inotify_init(), 0); }, "\034", -SIGQUIT},
      {"closed input", [] { close(0); }, "", 0},
      {"out of memory", [] { beep(), throw std::bad_alloc(); }, "", -SIGABRT, "bad_alloc"}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    const auto terminal = Start([&row]() -> std::string {
      row.before(), beep();
      throw std::runtime_error("goes on after " + ReadKeys(1));
    });
    terminal->Send(row.keys);
    const bool hang_up = std::string_view(row.name).starts_with("hang-up");
    if (hang_up) terminal->HangUp();
    EXPECT_EQ(terminal->ExitStatus(), row.status);
    EXPECT_EQ(terminal->Bells(), 1) << "acted before a key was awaited";
    EXPECT_TRUE(hang_up || (terminal->Cooked() && !terminal->Unread()));
    EXPECT_NE(terminal->Screen().find(row.shown), std::string::npos) << terminal->Screen();
  }
}
