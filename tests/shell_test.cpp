#include <csignal>
#include <string_view>

#include "support/program.h"

namespace {

TEST_F(ProgramTest, RefusesABadCommandLine) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"-f"}, {"abc"}, {"-x"}, {"-h"}, {"-d", "-f"}, {"-d", "-fx", "abc"}, {""}}) {
    Start(arguments);
    EXPECT_EQ(terminal_->ExitStatus(), 1) << arguments.front();
    std::string usage = terminal_->Screen();
    for (std::size_t at = 0; (at = usage.find(" \n")) != std::string::npos;) usage.erase(at, 1);
    EXPECT_EQ(usage.substr(0, usage.find_last_not_of('\n') + 1), R"(nodewarden syntax

nodewarden [-d ] [-f log_file]

  Parameters:

    -d    Enable debug tracing
    -f    Name of logfile <default: "nodewarden.log">)");
  }
}

TEST_F(SuperuserTest, TracesWhereTheCommandLineSays) {
  const struct {
    std::vector<std::string> arguments;
    const char* file;  // null: no trace
  } kCases[] = {{{}, nullptr},
                {{"-f", "never"}, nullptr},
                {{"-d", "-d"}, "nodewarden.log"},
                {{"-dfoo", "-fx", "-fy"}, "y"},
                {{"-f", "-d", "-debug"}, "-d"}};
  for (const auto& [arguments, file] : kCases) {
    for (const char* name : {"nodewarden.log", "never", "x", "y", "-d"}) {
      WriteFile(name, "old\n");
    }
    Start(arguments);
    Leave();
    for (const char* name : {"nodewarden.log", "never", "x", "y", "-d"}) {
      const bool traced = file != nullptr && std::string(name) == file;
      EXPECT_EQ(ReadFile(name).substr(0, 13), traced ? "geteuid: 0\nKe" : "old\n") << name;
    }
  }
}

TEST_F(SuperuserTest, PaintsTheMenuAndWrapsTheHighlightAround) {
  Start();
  EXPECT_EQ(terminal_->Row(0), "+" + std::string(24, '-') + "Halvorn Event Node Security" +
                                   std::string(27, '-') + "+");
  EXPECT_EQ(terminal_->Find("Show / Change Node Security Entry"), (Position{7, 5}));
  EXPECT_EQ(terminal_->Find("ENTER=Select  F3=Quit"), (Position{22, 2}));
  const struct {
    std::string keys;
    int row;
  } kSteps[] = {{"", 5},          {kUp, 11},   {"\x1b[A", 9},        {kDown + kDown, 5},
                {"\x1bj", 7},     {"\x1b", 7}, {"\x1b\x1bk", 5},     {kUp + kUp + kUp, 7},
                {"ax\x1b[C4", 7}, {kF4, 7},    {"\x1bOP\x1b[15~", 7}};
  for (const auto& [keys, row] : kSteps) {
    Type(keys);
    EXPECT_EQ(terminal_->Cursor(), (Position{row, 5})) << keys;
    for (const int entry : {5, 7, 9, 11}) {
      EXPECT_EQ(terminal_->Reverse(entry, 5), entry == row) << keys;
    }
  }
  EXPECT_EQ(terminal_->Bells(), 0);
}

TEST_F(ProgramTest, EveryWayOutLeavesAClearTerminal) {
  for (const std::string& keys :
       {kF3, std::string("\x1b\x33"), kUp + kEnter, std::string("\x03")}) {
    Start();
    if (geteuid() != 0) Type(kEnter);
    Leave(keys);
  }
}

// Writes a trace out: events end at a '|' or a line end, and "@code row" is a key's event, with
// the main menu's cursor on that row.
std::string Trace(std::string_view events) {
  std::string trace;
  while (!events.empty()) {
    const std::string event(events.substr(0, events.find_first_of("|\n")));
    events.remove_prefix(event.size() + 1);
    if (event.starts_with('@')) {
      const std::string code = event.substr(1, event.find(' ') - 1);
      trace += "Key: " + std::string(1, static_cast<char>(std::stoi(code, nullptr, 16))) + ", 0X" +
               code + " received at position(" + event.substr(event.find(' ') + 1) + ",5)\n";
    } else {
      trace += event + "\n";
    }
  }
  return trace;
}

TEST_F(SuperuserTest, TracesAWholeRun) {
  Start({"-d", "-f", "trace"});
  Type(kEnter + "h" + kDown + "u" + kF4 + kEnter + kEnter + kEnter);                   // add h,u
  Type(kDown + kEnter + kF4 + kEnter + kDown + "u" + kEnter + "w" + kF3 + "n" + kF3);  // look at it
  Type("y\x1b\x33" + kDown + kEnter + kF4 + kF3 + "h" + kDown + kF4 + kDown + kEnter);
  Type(kEnter + "n" + kEnter + "y\x1b[A\x1bX");  // delete it
  Leave();
  EXPECT_EQ(ReadFile("trace"), Trace(R"(geteuid: 0
@a 5|Enter AddCfg|Enter UpdCfg|Enter ProcessWindowData|Input field:  <node> "Node name mask" 
@68 5|Old String:  <>; Len=0|New String:  <h>; Len=1|Input field:  <node> "Node name mask" 
@102 5|Input field:  <userid> "Userid mask" 
@75 5|Old String:  <>; Len=0|New String:  <u>; Len=1|Input field:  <userid> "Userid mask" 
@10c 5|Enter UpdCfgKeys|Key received: 5|PF4 key|Input field:  Userid mask
Enter ListBox|Enter AddCfgItem|Enter PaintListBox|Exit PaintListBox
@a 5|ListBox returned:  u|Exit UpdCfgKeys|Input field:  <node> "Node name mask" 
@a 5|Enter UpdCfgKeys|Key received: 1|ENTER key|Enter UpdCfgData|Exit UpdCfgData|Enter MessageBox
@a 5|Message box type: 3, Button selected: 0|Exit MessageBox
Exit UpdCfgKeys|Exit ProcessWindowData|Exit UpdCfg
@102 5
@a 7|Enter SelectCfg|Enter ProcessWindowData|Input field:  <node> "Node Name" 
@10c 7|Enter SelCfgKeys|PF4 key|Input field:  Node Name
Enter ListBox|Enter SelCfgItem|ListBox Item:  h|Enter SelCfgItem|Enter PaintListBox|Exit PaintListBox
@a 7|Cursor position:  (5,2)|ListBox returned:  h|Exit SelCfgKeys|Input field:  <node> "Node Name" 
@102 7|Input field:  <userid> "Userid mask" 
@75 7|Old String:  <>; Len=0|New String:  <u>; Len=1|Input field:  <userid> "Userid mask" 
@a 7|Enter SelCfgKeys|ENTER key|Enter UpdCfg|Looking for Node: <h>, User: <u>
Populating screen structure|Enter ProcessWindowData|Input field:  <mode> "Security mode" 
@77 7|Old String:  <ENABLED>; Len=7|New String:  <wNABLED>; Len=7|Input field:  <mode> "Security mode" 
@10b 7|Enter UpdCfgKeys|Key received: 4|PF3 key|Enter MessageBox
@6e 7|Message box type: 1, Button selected: 0|Exit MessageBox|Button option 2 selected
Exit UpdCfgKeys|Input field:  <mode> "Security mode" 
@10b 7|Enter UpdCfgKeys|Key received: 4|PF3 key|Enter MessageBox
@79 7|Message box type: 1, Button selected: 1|Exit MessageBox|Button option 1 selected
Exit UpdCfgKeys|Exit ProcessWindowData|Exit UpdCfg|Exit SelCfgKeys
Input field:  <userid> "Userid mask" 
@1b 7|escape key hit|@33 7|Enter SelCfgKeys|PF3 key|Exit SelCfgKeys
Exit ProcessWindowData|Exit SelectCfg
@102 7
@a 9|Enter DelCfg|Enter ProcessWindowData|Input field:  <node> "Node Name" 
@10c 9|Enter DelCfgKeys|PF4 key|Input field:  Node Name
Enter ListBox|Enter SelCfgItem|ListBox Item:  h|Enter SelCfgItem|Enter PaintListBox|Exit PaintListBox
@10b 9|ListBox returned:  |Exit DelCfgKeys|Input field:  <node> "Node Name" 
@68 9|Old String:  <>; Len=0|New String:  <h>; Len=1|Input field:  <node> "Node Name" 
@102 9|Input field:  <userid> "Userid mask" 
@10c 9|Enter DelCfgKeys|PF4 key|Input field:  Userid mask
Enter ListBox|Enter SelCfgItem|ListBox Item:  u|Enter SelCfgItem|Enter PaintListBox|Exit PaintListBox
@102 9
@a 9|Cursor position:  (5,2)|ListBox returned:  u|Exit DelCfgKeys|Input field:  <node> "Node Name" 
@a 9|Enter DelCfgKeys|ENTER key|Enter MessageBox
@6e 9|Message box type: 1, Button selected: 0|Exit MessageBox|Button option 2 selected
Exit DelCfgKeys|Input field:  <node> "Node Name" 
@a 9|Enter DelCfgKeys|ENTER key|Enter MessageBox
@79 9|Message box type: 1, Button selected: 1|Exit MessageBox|Button option 1 selected
Exit DelCfgKeys|Exit ProcessWindowData|Exit DelCfg
@1b 9|escape key hit|@5b 9|@41 9
@1b 7|escape key hit|@58 7|ignoring key|@10b 7
)"));
}

}  // namespace
