#include <fcntl.h>

#include "shell/shell_state.h"
#include "support/toolkit.h"

// Returns the codes of the next `count` keys, each with a blank behind it.
static std::string ReadKeys(int count) {
  keypad(stdscr, TRUE);
  MenuCursorRow = 7;
  MenuCursorCol = 5;
  std::string codes;
  while (count-- > 0) codes += std::to_string(ReadKey(stdscr)) + " ";
  return codes;
}

TEST(ReadKey, KeysAndSequencesComeBackAsOneCode) {
  using KeyCodes = std::vector<std::pair<std::string, int>>;  // what a terminal sends, and the code
  const KeyCodes after_letter_o = {
      {"\033OP", KEY_F(1)},  {"\033OQ", KEY_F(2)}, {"\033OR", KEY_F(3)},
      {"\033OS", KEY_F(4)},  {"\033OA", KEY_UP},   {"\033OB", KEY_DOWN},
      {"\033OC", KEY_RIGHT}, {"\033OD", KEY_LEFT}, {"\033Oxq", 'q'}};
  const KeyCodes after_escape = {{"\0331", KEY_F(1)},  {"\0332", KEY_F(2)},  {"\0333", KEY_F(3)},
                                 {"\0334", KEY_F(4)},  {"\033x", KEY_DC},    {"\033h", KEY_LEFT},
                                 {"\033l", KEY_RIGHT}, {"\033k", KEY_UP},    {"\033j", KEY_DOWN},
                                 {"\033[A", KEY_UP},   {"\033[B", KEY_DOWN}, {"\033[C", KEY_RIGHT},
                                 {"\033[D", KEY_LEFT}, {"\033[Pq", 'q'},     {"\033Xq", 'q'},
                                 {"\0335q", 'q'},      {"\033\033q", 'q'}};
  const std::pair<const char*, KeyCodes> terminals[] = {
      {"tmux", {{"\b", 8}, {"\177", KEY_DC}, {"\r", KEY_NEWLINE}}},
      {"vt100", {{"\b", KEY_DC}, {"\177", 127}, {"\033OM", KEY_ENTER}}},
      {"linux", after_letter_o},
      {"tmux", after_escape}};
  for (const auto& [type, key_codes] : terminals) {
    for (const auto& [keys, code] : key_codes) {
      const auto terminal = Start([] { return ReadKeys(1); }, {.term = type});
      terminal->Send(keys);
      EXPECT_EQ(terminal->Result(), std::to_string(code) + " ") << testing::PrintToString(keys);
    }
  }
}

TEST(ReadKey, EveryKeyIsTracedAndANewSizeTearsNoSequence) {
  const auto terminal = Start([] { return ReadKeys(5).append("\n" + ReadFile(LogFileName)); });
  const std::pair<std::string, int> steps[] = {{kUp + "\033[Pq", 20}, {"\033", 30}, {"", 40}};
  for (const auto& [keys, rows] : steps) {
    terminal->Send(keys);
    EXPECT_TRUE(terminal->Settle());
    terminal->Resize(rows, 80);
    EXPECT_TRUE(terminal->Settle());
  }
  terminal->Send("[B");
  EXPECT_EQ(terminal->Result(), ReadFile(NODEWARDEN_TRACES "/key_input.txt"));
}

TEST(ReadKey, TheProgramEndsWithItsTerminalOrWhenInterrupted) {
  const struct {
    const char* name;
    void (*before)();  // in the program
    const char* keys;  // typed then
    int status;
  } cases[] = {{"interrupt", [] { (void)raise(SIGINT); }, "", 0},
               {"interrupt before a key", [] { ReadKeys(1), (void)raise(SIGINT); }, "ab", 0},
               {"terminate", [] { (void)raise(SIGTERM); }, "", -SIGTERM},
               {"quit key", [] {}, "\034", -SIGQUIT},
               {"hang-up", [] {}, "", -SIGHUP},
               {"hang-up, ignored", [] { (void)std::signal(SIGHUP, SIG_IGN); }, "", 0},
               {"end of file", [] { dup2(open("/dev/null", O_RDONLY), 0); }, "", 0},
               {"unreadable input", [] { dup2(open("/", O_RDONLY), 0); }, "", 0},
               {"closed input", [] { close(0); }, "", 0}};
  for (const auto& [name, before, keys, status] : cases) {
    const auto wait_for_ever = [&before = before]() -> std::string {
      before();
      ReadKeys(1);
      std::_Exit(EXIT_FAILURE);
    };
    const auto terminal = Start(wait_for_ever);
    terminal->Send(keys);
    const bool hang_up = std::string_view(name).starts_with("hang-up");
    if (hang_up) terminal->HangUp();
    EXPECT_EQ(terminal->ExitStatus(), status) << name;
    EXPECT_TRUE(hang_up || terminal->Cooked()) << name;
  }
}
