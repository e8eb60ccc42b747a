#include <new>

#include "config/record.h"
#include "forms/key_input.h"
#include "screens/screens.h"
#include "shell/trace_log.h"
#include "support/program.h"

// Whether every record that is asked for cannot be had.
static bool out_of_records = false;

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return out_of_records && size == sizeof(WLNSRec) ? nullptr : ::operator new(size);
}

namespace {

// As long as the fields are wide.
const std::string kLongNode = Times(6, "0123456789") + "node";
const std::string kLongUserid = Times(3, "0123456789") + "id";

// F1, F2 and F5 to F12, which no screen heeds.
const std::string kOtherKeys =
    "\x1bOP\x1bOQ\x1b[15~\x1b[17~\x1b[18~\x1b[19~\x1b[20~\x1b[21~\x1b[23~\x1b[24~";

std::string Stored(const std::string& node, const std::string& userid) {
  return "Configuration for node <" + node + "> user <" + userid + "> successfully updated";
}

std::string NotFound(const std::string& node, const std::string& userid) {
  return "Entry for Node <" + node + "> & User <" + userid + "> not found";
}

void ExpectInTrace(const std::string& lines) {
  const std::string trace = ReadFile("trace");
  EXPECT_NE(trace.find(lines), std::string::npos) << lines << "is not in:\n" << trace;
}

TEST_F(SuperuserTest, RefusesWrongFieldsOneMessageAtATime) {
  const struct {
    std::string keys, message;
    Position cursor;  // on the field that is wrong
  } kSteps[] = {{kDown + "?", "Node name is missing", {4, 25}},
                {"a*b", "Imbedded \"*\" not allowed in node name mask", {4, 25}},
                {"a?*", "\"?\" not allowed in node name mask", {4, 25}},
                {"a,?", "\",\" not allowed in node name mask", {4, 25}},
                {"abc", "\"?\" not allowed in userid mask", {5, 25}},
                {"*x", "Imbedded \"*\" not allowed in userid mask", {5, 25}},
                {",x", "\",\" not allowed in userid mask", {5, 25}},
                {kDelete + kDelete, "userid mask is missing", {5, 25}},
                {"u*" + kDown + "x", "Security Mode is invalid", {6, 25}},
                {Times(7, kDelete), "Security Mode is missing", {6, 25}},
                {" e", "Security Mode is invalid", {6, 25}}};
  Start();
  Type(kAdd);
  for (const auto& [keys, message, cursor] : kSteps) {
    TypeAndRead(keys + kEnter, message);
    EXPECT_EQ(terminal_->Cursor(), cursor) << message;
    EXPECT_FALSE(std::filesystem::exists(file_));
  }
  Type("warn" + kUp + kEnter);
  EXPECT_EQ(terminal_->Row(6).substr(24, 7), "[WARN] ");  // in upper case already
  TypeAndRead("", Stored("abc", "u*"));
  EXPECT_EQ(Config(), ConfigText({"abc,u*,W"}));
  Leave();
}

TEST_F(SuperuserTest, AddsChangesAndRemovesTwiceInOneRun) {
  Start();
  for (const char* round : {"first", "second"}) {
    SCOPED_TRACE(round);
    std::filesystem::remove_all(node_directory_);
    Type(kAdd + kOtherKeys);
    ExpectPicture(*terminal_, "add_form");
    Type("alpha*" + kDown + "root" + kDown + kF4);
    ExpectPicture(*terminal_, "list_of_modes");
    TypeAndRead(kEnter + kEnter, Stored("alpha*", "root"));
    TypeAndRead(kAdd + "beta" + kDown + "ops" + kEnter, Stored("beta", "ops"));
    TypeAndRead(kAdd + "alpha*" + kDown + "ops" + kDown + "w" + kEnter, Stored("alpha*", "ops"));
    EXPECT_EQ(Config(), ConfigText({"alpha*,root,D", "beta,ops,E", "alpha*,ops,W"}));

    TypeAndRead(kShow + "x" + kEnter, "Both Node and User masks are required");
    TypeAndRead("\b" + kDown + "ops" + kEnter, "Both Node and User masks are required");
    TypeAndRead(kUp + "alpha" + kEnter, NotFound("alpha", "ops"));
    Type(kOtherKeys + kF4);
    ExpectPicture(*terminal_, "list_of_nodes");
    Type(kDown + kEnter + kEnter);
    ExpectPicture(*terminal_, "opened_record");
    TypeAndRead(kF4 + kDown + kEnter + kF3, "Cancel Update?", "n");
    TypeAndRead(kEnter, Stored("alpha*", "ops"));

    TypeAndRead(kF3 + kDown + kEnter + kEnter, "Node name mask is missing");
    TypeAndRead("alpha" + kEnter, "Userid mask is missing");
    TypeAndRead(kDown + "root" + kEnter, NotFound("alpha", "root"));
    Type(kUp + kF4 + kEnter + kOtherKeys + kEnter);
    ExpectPicture(*terminal_, "question_before_removal");
    Type("n");
    EXPECT_EQ(Config(), ConfigText({"alpha*,root,D", "beta,ops,E", "alpha*,ops,E"}));
    TypeAndRead(kEnter, "Delete node <alpha*> userid <root> ?", "y");
    EXPECT_EQ(terminal_->Cursor(), (Position{9, 5}));
    EXPECT_EQ(Config(), ConfigText({"beta,ops,E", "alpha*,ops,E"}));
    Type(kUp + kUp);
  }
  Leave();
}

TEST_F(ProgramTest, AnOrdinaryUserSeesEverythingAndChangesNothing) {
  const std::string user =
      geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "env";
  const std::string refusal = "Configuration is Read Only to non-root users";
  const std::string no_list = "PF4 key\nInput field not found\nExit UpdCfgKeys\n";
  const std::string records = ConfigText({"alpha,adm,W", "beta,root,E", "beta,ops,D"});
  WriteFile(file_, records);
  WriteFile("trace", "");
  std::filesystem::permissions("trace", std::filesystem::perms{0666});
  Start("-d -f trace", user);
  ExpectPicture(*terminal_, "read_only_notice");
  Type("o" + kShow + kF4 + kDown + kEnter + kDown + kF4 + kDown + kEnter + kEnter);
  ExpectPicture(*terminal_, "read_only_record");
  Type("w" + kDelete + kDown + kF4);
  ExpectPicture(*terminal_, "read_only_record");
  Type(kEnter + kF3 + kUp + kAdd + "abc" + kF4);
  EXPECT_EQ(terminal_->Row(4).substr(24, 4), "[]  ");
  EXPECT_EQ(terminal_->Marks(), "cursor 0,0\n");
  TypeAndRead(kEnter + kRemove + kEnter, refusal);
  EXPECT_EQ(terminal_->Cursor(), (Position{9, 5}));
  Type(kEnter + kF4 + kEnter + kDown + kF4 + kEnter);
  EXPECT_EQ(terminal_->Row(6).substr(24, 6), "[adm] ");
  TypeAndRead(kEnter, refusal);
  Leave();
  EXPECT_EQ(Config(), records);
  ExpectInTrace(no_list);
}

TEST_F(SuperuserTest, AddsAndFindsTheWidestRecordAndNoWider) {
  Start("-d -f trace");
  Type(kAdd + kLongNode + "X" + kDown + kLongUserid + "X" + kDown + "WARNING99X");
  EXPECT_EQ(terminal_->Bells(), 3);
  Type(kEnter);
  ExpectPicture(*terminal_, "long_message");
  EXPECT_EQ(Config(), ConfigText({kLongNode + "," + kLongUserid + ",W"}));
  Type("o" + kShow + kLongNode + "X" + kDown + kLongUserid + "X" + kDown + Times(60, kRight) +
       kEnter);
  EXPECT_EQ(terminal_->Bells(), 5);
  EXPECT_EQ(terminal_->Row(6).substr(24, 9), "[WARNING]");
  Type(kF3);
  ExpectPicture(*terminal_, "selection");
  ExpectInTrace("Looking for Node: <" + kLongNode.substr(0, 60) + "\n");  // 79 bytes
}

TEST_F(SuperuserTest, SaysWhenARecordCannotBeStoredButNotWhenItCannotBeRemoved) {
  using std::filesystem::perms;
  const std::string failed = "Update of external node security configuration failed";
  WriteFile(file_, ConfigText({"a,b,E"}));
  Start("-d -f trace", "setpriv --bounding-set=-all --inh-caps=-all");  // bound by permissions
  std::filesystem::rename("opr", "elsewhere");
  TypeAndRead(kAdd + "a" + kDown + "b" + kDown + "d" + kEnter, failed);
  std::filesystem::rename("elsewhere", "opr");
  std::filesystem::permissions(file_, perms::owner_read);
  TypeAndRead(kEnter, failed);
  std::filesystem::permissions(file_, perms::owner_write, std::filesystem::perm_options::add);
  TypeAndRead(kEnter, Stored("a", "b"));
  std::filesystem::permissions(file_, perms::owner_read);
  TypeAndRead(kRemove + "a" + kDown + "b" + kEnter, "Delete node <a> userid <b> ?", "y");
  EXPECT_EQ(terminal_->Cursor(), (Position{9, 5}));
  EXPECT_EQ(Config(), ConfigText({"a,b,D"}));
  Leave();
  ExpectInTrace("Enter UpdCfgData\nWLNSUpdateRec failed; rc=2\nEnter MessageBox\n");
  ExpectInTrace("Enter UpdCfgData\nWLNSUpdateRec failed; rc=13\nEnter MessageBox\n");
  ExpectInTrace("Button option 1 selected\nWLNSDeleteRec failed\nExit DelCfgKeys\n");

  Start("-d -f trace", "prlimit --fsize=0");  // no file may grow, the trace included
  TypeAndRead(kAdd + "a" + kDown + "b" + kEnter, failed);
  Leave(kF3 + "y" + kF3);
}

// Runs a screen without memory for records; returns its result and one more key.
std::string RunWithoutRecords(int (*screen)(WINDOW*)) {
  out_of_records = true;
  SetLogFileName("trace");
  DebugTrace = 1;
  initscr();
  cbreak();
  noecho();
  const std::string result = std::to_string(screen(stdscr));
  return result + " " + std::to_string(ReadKey(stdscr));
}

TEST_F(ProgramTest, SaysWhenThereIsNoMemoryForARecord) {
  const std::string trace = "malloc failed for 104 bytes\n";
  for (auto* screen : {AddCfg, DelCfg}) {
    terminal_ = TerminalSession::Call([screen] { return RunWithoutRecords(screen); });
    TypeAndRead("a" + kDown + "b" + kEnter, "Storage allocation failed;");
    terminal_->Send(screen == AddCfg ? kF3 + "y" + kEnter : kEnter);  // the form stays open
    EXPECT_EQ(terminal_->Result(), "0 10");
    ExpectInTrace(trace + "Enter MessageBox\n");
  }
  const auto show_record = [](WINDOW* parent) { return UpdCfg(parent, "a", "b"); };
  terminal_ = TerminalSession::Call([&] { return RunWithoutRecords(show_record); });
  EXPECT_EQ(terminal_->Result(), "") << "not shut down";
  EXPECT_EQ(ReadFile("trace"), "Enter UpdCfg\n" + trace);
}

}  // namespace
