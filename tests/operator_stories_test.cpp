#include <new>

#include "config/record.h"
#include "screens/screens.h"
#include "support/program.h"
#include "support/toolkit.h"

static std::size_t refused_size = 0;  // of an allocation that fails

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return size == refused_size ? nullptr : operator new(size);
}
// NOLINTNEXTLINE(misc-new-delete-overloads): what it gives is released as usual.
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return size == refused_size ? nullptr : operator new[](size);
}

using OperatorStories = SuperuserTest;
using OperatorStoriesOfAnyUser = ProgramTest;

// As long as the fields are wide.
const std::string kLongNode = Times(6, "0123456789") + "node";
const std::string kLongUserid = Times(3, "0123456789") + "id";

static std::string Stored(const std::string& node, const std::string& userid) {
  return "Configuration for node <" + node + "> user <" + userid + "> successfully updated";
}

static std::string NotFound(const std::string& node, const std::string& userid) {
  return "Entry for Node <" + node + "> & User <" + userid + "> not found";
}

static void ExpectInTrace(const std::string& lines) {
  const std::string trace = ReadFile("trace");
  EXPECT_NE(trace.find(lines), std::string::npos) << lines << "is not in:\n" << trace;
}

TEST_F(OperatorStories, RefusesWrongFieldsOneMessageAtATime) {
  const struct {
    std::string keys, message;
    int row;  // of the field that is wrong
  } kSteps[] = {{kDown + "?", "Node name is missing", 4},
                {Times(60, "n") + "?", "\"?\" not allowed in node name mask", 4},
                {Times(61, kDelete) + "a*b", "Imbedded \"*\" not allowed in node name mask", 4},
                {"a?*", "\"?\" not allowed in node name mask", 4},
                {"a,?", "\",\" not allowed in node name mask", 4},
                {"abc", "\"?\" not allowed in userid mask", 5},
                {"*x", "Imbedded \"*\" not allowed in userid mask", 5},
                {kDelete + kDelete, "userid mask is missing", 5},
                {"u*" + kDown + "x", "Security Mode is invalid", 6},
                {Times(7, kDelete), "Security Mode is missing", 6},
                {" e", "Security Mode is invalid", 6}};
  Start();
  Type(kAdd);
  for (const auto& [keys, message, row] : kSteps) {
    TypeAndRead(keys + kEnter, message);
    EXPECT_EQ(terminal_->Marks(), "cursor " + std::to_string(row) + ",25\n") << message;
    EXPECT_EQ(terminal_->Row(row).at(24), '[') << "scrolled: " << message;
    EXPECT_FALSE(std::filesystem::exists(file_));
  }
  Type("warn" + kUp + kEnter);
  EXPECT_EQ(terminal_->Row(6).substr(24, 7), "[WARN] ");  // in upper case already
  TypeAndRead("", Stored("abc", "u*"));
  EXPECT_EQ(Config(), ConfigText({"abc,u*,W"}));
  Leave();
}

TEST_F(OperatorStories, AddsChangesAndRemovesTwiceInOneRun) {
  Start();
  for (const char* round : {"first", "second"}) {
    SCOPED_TRACE(round);
    std::filesystem::remove_all(node_directory_);
    Type(kAdd + kOtherFunctionKeys);
    ExpectPicture(*terminal_, "add_form");
    Type("alpha*" + kDown + "root" + kDown + kF4);
    ExpectPicture(*terminal_, "list_of_modes");
    TypeAndRead(kEnter + kEnter, Stored("alpha*", "root"));
    TypeAndRead(kAdd + "beta" + kDown + "ops" + kEnter, Stored("beta", "ops"));
    TypeAndRead(kAdd + "alpha*" + kDown + "ops" + kDown + "w" + kEnter, Stored("alpha*", "ops"));
    EXPECT_EQ(Config(), ConfigText({"alpha*,root,D", "beta,ops,E", "alpha*,ops,W"}));

    WriteFile(file_, ConfigText({"alpha*,root,D", "beta,ops,E", "alpha*,ops,x"}));  // x counts as W
    TypeAndRead(kShow + "x" + kEnter, "Both Node and User masks are required");
    TypeAndRead("\b" + kDown + "ops" + kEnter, "Both Node and User masks are required");
    TypeAndRead(kUp + "alpha" + kEnter, NotFound("alpha", "ops"));
    Type(kOtherFunctionKeys + kF4);
    ExpectPicture(*terminal_, "list_of_nodes");
    Type(kDown + kEnter + kEnter);
    ExpectPicture(*terminal_, "opened_record");
    TypeAndRead(kF4 + kDown + kEnter + kF3, "Cancel Update?", "n");
    TypeAndRead(kEnter, Stored("alpha*", "ops"));

    TypeAndRead(kF3 + kDown + kEnter + kEnter, "Node name mask is missing");
    TypeAndRead("alpha" + kEnter, "Userid mask is missing");
    TypeAndRead(kDown + "root" + kEnter, NotFound("alpha", "root"));
    Type(kUp + kF4 + kEnter + kOtherFunctionKeys + kEnter);
    ExpectPicture(*terminal_, "question_before_removal");
    Type("n");
    EXPECT_EQ(Config(), ConfigText({"alpha*,root,D", "beta,ops,E", "alpha*,ops,E"}));
    TypeAndRead(kEnter, "Delete node <alpha*> userid <root> ?", "y");
    EXPECT_TRUE(terminal_->Marks().starts_with("cursor 9,5\n"));
    EXPECT_EQ(Config(), ConfigText({"beta,ops,E", "alpha*,ops,E"}));
    Type(kUp + kUp);
  }
  Leave();
}

TEST_F(OperatorStoriesOfAnyUser, AnOrdinaryUserSeesEverythingAndChangesNothing) {
  const std::string refusal = "Configuration is Read Only to non-root users";
  const std::string records = ConfigText({"alpha,adm,W", "beta,root,E", "beta,ops,D"});
  WriteFile(file_, records);
  WriteFile("trace", "");
  chmod("trace", 0666);
  Start("-d -f trace", kByOrdinaryUser);
  ExpectPicture(*terminal_, "read_only_notice");
  Type("o" + kShow + kF4 + kDown + kEnter + kDown + kF4 + kDown + kEnter + kEnter);
  ExpectPicture(*terminal_, "read_only_record");
  Type("w" + kDelete + kDown + kF4);
  ExpectPicture(*terminal_, "read_only_record");
  Type(kEnter + kF3 + kUp + kAdd + "abc" + kF4);
  EXPECT_EQ(terminal_->Row(4).substr(24, 4), "[]  ");
  EXPECT_EQ(terminal_->Marks(), "cursor 0,0\n");
  TypeAndRead(kEnter + kRemove + kEnter, refusal);
  EXPECT_TRUE(terminal_->Marks().starts_with("cursor 9,5\n"));
  Type(kEnter + kF4 + kEnter + kDown + kF4 + kEnter);
  EXPECT_EQ(terminal_->Row(6).substr(24, 6), "[adm] ");
  TypeAndRead(kEnter, refusal);
  Leave();
  EXPECT_EQ(Config(), records);
  ExpectInTrace("PF4 key\nInput field not found\nExit UpdCfgKeys\nInput field not found\n");
}

TEST_F(OperatorStories, AddsAndFindsTheWidestRecordAndNoWider) {
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
  TypeAndRead(kF4 + kEnter + kDown + kF4 + kEnter + kEnter + "d" + kEnter,
              Stored(kLongNode, kLongUserid));
  ExpectInTrace("Looking for Node: <" + kLongNode.substr(0, 60) + "\n");  // 79 bytes
}

TEST_F(OperatorStories, SaysWhenARecordCannotBeStoredButNotWhenItCannotBeRemoved) {
  const std::string failed = "Update of external node security configuration failed";
  WriteFile(file_, ConfigText({"a,b,E"}));
  Start("-d -f trace", "setpriv --bounding-set=-all --inh-caps=-all");  // bound by permissions
  std::filesystem::rename("opr", "elsewhere");
  TypeAndRead(kAdd + "a" + kDown + "b" + kDown + "d" + kEnter, failed);
  std::filesystem::rename("elsewhere", "opr");
  chmod(file_.c_str(), S_IRUSR);
  TypeAndRead(kEnter, failed);
  chmod(file_.c_str(), S_IRUSR | S_IWUSR);
  TypeAndRead(kEnter, Stored("a", "b"));
  chmod(file_.c_str(), S_IRUSR);
  TypeAndRead(kRemove + "a" + kDown + "b" + kEnter, "Delete node <a> userid <b> ?", "y");
  EXPECT_TRUE(terminal_->Marks().starts_with("cursor 9,5\n"));
  EXPECT_EQ(Config(), ConfigText({"a,b,D"}));
  Leave();
  ExpectInTrace("Enter UpdCfgData\nWLNSUpdateRec failed; rc=2\nEnter MessageBox\n");
  ExpectInTrace("Enter UpdCfgData\nWLNSUpdateRec failed; rc=13\nEnter MessageBox\n");
  ExpectInTrace("Button option 1 selected\nWLNSDeleteRec failed\nExit DelCfgKeys\n");

  Start("-d -f trace", "prlimit --fsize=0");  // no file may grow, the trace included
  TypeAndRead(kAdd + "a" + kDown + "b" + kEnter, failed);
}

TEST_F(OperatorStoriesOfAnyUser, SaysWhenThereIsNoMemory) {
  const auto show_record = [](WINDOW* parent) { return UpdCfg(parent, "a", "b"); };
  const std::string no_record = "malloc failed for 104 bytes\n";
  const struct {
    int (*screen)(WINDOW*);
    std::size_t refused;
    std::string last_keys, result, trace;
  } cases[] = {{AddCfg, sizeof(WLNSRec), kF3 + "y", "0 ^J", no_record + "Enter MessageBox\n"},
               {DelCfg, sizeof(WLNSRec), "", "0 ^J", no_record + "Enter MessageBox\n"},
               {show_record, sizeof(WLNSRec), "", "", "Enter UpdCfg\n" + no_record},  // shut down
               {AddCfg, 33, "", "-1 ^J", "malloc for 33 bytes failed on field <userid>\n"}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.trace);
    terminal_ = ::Start([&row] {
      SetLogFileName("trace");
      refused_size = row.refused;
      const std::string result = std::to_string(row.screen(stdscr));
      return result + " " + keyname(ReadKey(stdscr));
    });
    const bool says = row.trace.ends_with("Enter MessageBox\n");
    if (says) TypeAndRead("a" + kDown + "b" + kEnter, "Storage allocation failed;");
    terminal_->Send(row.last_keys + kEnter);
    EXPECT_EQ(terminal_->Result(), row.result);
    ExpectInTrace(row.trace);
  }
}

TEST_F(OperatorStories, TracesAWholeRun) {
  Start("-d -f trace");
  Type(kEnter + "h" + kDown + "u" + kF4 + kEnter + kEnter + kEnter);                   // add h,u
  Type(kDown + kEnter + kF4 + kEnter + kDown + "u" + kEnter + "w" + kF3 + "n" + kF3);  // look at it
  Type("y\x1b\x33" + kDown + kEnter + kF4 + kF3 + "h" + kDown + kF4 + kDown + kEnter);
  Type(kEnter + "n" + kEnter + "y\x1b[A\x1bX");  // delete it
  Leave();
  ExpectText(ReadFile("trace"), "traces/whole_run.txt");
}
