#include "screens/mask_check.h"
#include "support/program.h"

namespace {

// The entries of the main menu, from the first one.
const std::string kAdd = kEnter;
const std::string kShow = kDown + kEnter;
const std::string kRemove = kDown + kDown + kEnter;
const std::string kDeleteKey = "\x1b[3~";

std::string Times(int count, const std::string& keys) {
  std::string all;
  for (; count > 0; --count) all += keys;
  return all;
}

TEST(MaskCheck, TheLeftmostFaultDecides) {
  using enum MaskFault;
  for (const auto& [mask, fault] :
       std::vector<std::pair<const char*, MaskFault>>{{"*", kNone},
                                                      {"abc*", kNone},
                                                      {" a b ", kNone},
                                                      {"", kMissing},
                                                      {"a?*", kQuestionMark},
                                                      {"a*?", kEmbeddedStar},
                                                      {"*abc", kEmbeddedStar},
                                                      {"a**", kEmbeddedStar},
                                                      {"a,?", kComma},
                                                      {"?,", kQuestionMark}}) {
    EXPECT_EQ(CheckMask(mask), fault) << mask;
  }
}

TEST_F(SuperuserTest, RefusesWrongFieldsOneMessageAtATime) {
  Start();
  Type(kAdd);
  const struct {
    std::string keys;
    const char* message;
    Position field;  // where the cursor is put
  } kSteps[] = {{kDown + "?", "Node name is missing", {4, 25}},
                {"a*b", "Imbedded \"*\" not allowed in node name mask", {4, 25}},
                {"a?*", "\"?\" not allowed in node name mask", {4, 25}},
                {"a,?", "\",\" not allowed in node name mask", {4, 25}},
                {"abc", "\"?\" not allowed in userid mask", {5, 25}},
                {"*x", "Imbedded \"*\" not allowed in userid mask", {5, 25}},
                {",x", "\",\" not allowed in userid mask", {5, 25}},
                {kDeleteKey + kDeleteKey, "userid mask is missing", {5, 25}},
                {"u*" + kDown + "x", "Security Mode is invalid", {6, 25}},
                {Times(7, kDeleteKey), "Security Mode is missing", {6, 25}},
                {" E", "Security Mode is invalid", {6, 25}}};
  for (const auto& [keys, message, field] : kSteps) {
    TypeAndExpect(keys + kEnter, message);
    EXPECT_EQ(terminal_->Cursor(), field) << message;
    EXPECT_FALSE(std::filesystem::exists(file_));
  }
  TypeAndExpect("warn" + kEnter, "Configuration for node <abc> user <u*> success", "");
  EXPECT_EQ(terminal_->Row(6).substr(24, 8), "[WARN]  ");
  Type(kEnter);
  EXPECT_EQ(Config(), ConfigText("abc,u*,W"));
  Leave();
}

TEST_F(SuperuserTest, AddsChangesAndRemovesTwiceInOneRun) {
  Start();
  for (const char* round : {"first", "second"}) {
    SCOPED_TRACE(round);
    for (const std::string& masks : {"alpha*" + kDown + "root", "beta" + kDown + "ops",
                                     "alpha*" + kDown + "ops" + kDown + "d"}) {
      TypeAndExpect(kAdd + masks + kEnter, "Configuration for node <");
    }
    EXPECT_EQ(Config(), ConfigText("alpha*,root,E;beta,ops,E;alpha*,ops,D"));

    TypeAndExpect(kShow + kEnter, "Both Node and User masks are required");
    TypeAndExpect("alpha" + kDown + "ops" + kEnter,
                  "Entry for Node <alpha> & User <ops> not found");
    Type(kF4 + kDown + kF3);  // cancelled: the field stays
    EXPECT_EQ(terminal_->Row(5).substr(24, 8), "[alpha] ");
    Type(kF4);  // the nodes of "ops"
    EXPECT_NE(terminal_->Find("| beta   "), (Position{-1, -1}));
    EXPECT_EQ(terminal_->Find("[BOTTOM]").row, 9) << terminal_->Screen();
    Type(kDown + kEnter + kEnter + kF4);  // the modes of alpha*,ops
    TypeAndExpect(kDown + kDown + kEnter + kF3, "Cancel Update?", "n");
    EXPECT_EQ(terminal_->Row(6).substr(5, 30), "Security mode      [WARNING]  ");
    TypeAndExpect(kEnter, "Configuration for node <alpha*> user <ops> suc");
    Type(kEnter);  // the same record once more
    EXPECT_EQ(terminal_->Row(6).substr(24, 9), "[WARNING]");
    Type(kF3 + kF3 + kUp);
    EXPECT_EQ(Config(), ConfigText("alpha*,root,E;beta,ops,E;alpha*,ops,W"));

    TypeAndExpect(kRemove + kEnter, "Node name mask is missing");
    TypeAndExpect("alpha" + kEnter, "Userid mask is missing");
    TypeAndExpect(kDown + "root" + kEnter, "Entry for Node <alpha> & User <root> not found");
    TypeAndExpect(kUp + kF4 + kEnter + kEnter, "Delete node <alpha*> userid <root> ?", "n");
    EXPECT_EQ(Config(), ConfigText("alpha*,root,E;beta,ops,E;alpha*,ops,W"));
    TypeAndExpect(kEnter, "Delete node <alpha*> userid <root> ?", "y");
    EXPECT_EQ(terminal_->Cursor(), (Position{9, 5}));
    EXPECT_EQ(Config(), ConfigText("beta,ops,E;alpha*,ops,W"));
    Type(kUp + kUp);
    WriteRecords("");
  }
  Leave();
}

TEST_F(SuperuserTest, AUserWithoutRightsSeesEverythingAndChangesNothing) {
  WriteRecords("alpha,root,W;beta,ops,D");
  StartAsUser();
  TypeAndExpect("", "Read Only authority granted to non-root users.");
  Type(kAdd + "abc" + kF4);
  EXPECT_EQ(terminal_->Row(4).substr(24, 4), "[]  ");
  EXPECT_EQ(terminal_->Cursor(), (Position{0, 0}));
  Type(kEnter + kShow + kF4 + kDown + kEnter + kDown + kF4 + kEnter + kEnter);
  EXPECT_EQ(terminal_->Find("[DISABLED]"), (Position{6, 24})) << terminal_->Screen();
  Type("w" + kEnter + kF3 + kUp + kRemove + kF4 + kEnter + kDown + kF4 + kEnter);
  EXPECT_EQ(terminal_->Find("[alpha]"), (Position{5, 24})) << terminal_->Screen();
  TypeAndExpect(kEnter, "Configuration is Read Only to non-root users");
  EXPECT_EQ(terminal_->Cursor(), (Position{9, 5}));
  EXPECT_EQ(Config(), ConfigText("alpha,root,W;beta,ops,D"));
  Leave();
}

TEST_F(SuperuserTest, TheSelectionIsAsItWasBehindTheRecord) {
  const std::string node(64, 'n');
  WriteRecords(node + ",root,E");
  Start();
  Type(kShow + kDown + "root" + kUp + kF4 + kEnter + Times(60, "\x1bOC"));
  const std::string before = terminal_->Screen();
  const Position cursor = terminal_->Cursor();
  EXPECT_EQ(terminal_->Row(5).substr(24, 2), "<n");
  Type(kEnter);
  EXPECT_NE(terminal_->Screen(), before);
  Type(kF3);
  EXPECT_EQ(terminal_->Screen(), before);
  EXPECT_EQ(terminal_->Cursor(), cursor);
  Type("\bX");  // at the character under the cursor, not at the one drawn there unscrolled
  Type(Times(60, "\x1bOD") + Times(10, "\x1bOD"));
  EXPECT_EQ(terminal_->Row(5).substr(24, 4), "[nnn");
  TypeAndExpect(kEnter, "Xnnn> & User <roo");
  Type(kF3);
  Leave();
}

TEST_F(SuperuserTest, ShowsOddBytesAsQuestionMarksAndKeepsThem) {
  WriteRecords(
      "a\x1b[2Jb\xc3\xa9,\x7f"
      "u\t,E;c,u,x");
  Start();
  TypeAndExpect(kShow + kF4, "| a?[2Jb??    ");
  Type(kDown + kF4 + kEnter);
  EXPECT_EQ(terminal_->Row(6).substr(24, 6), "[?u?] ");
  TypeAndExpect(kEnter + "d" + kEnter,
                "Configuration for node <a?[2Jb?"
                "?> user <?u?>");
  EXPECT_EQ(Config(), ConfigText("a\x1b[2Jb\xc3\xa9,\x7f"
                                 "u\t,D;c,u,x"));
}

TEST_F(SuperuserTest, ListsTheFirstOfTwentyThousandNodes) {
  std::string records;
  for (int node = 10000; node < 30000; ++node) records += "node" + std::to_string(node) + ",u,E;";
  WriteRecords(records);
  Start();
  TypeAndExpect(kShow + kF4, "[MORE...1014]", Times(1100, kDown));
  EXPECT_NE(terminal_->Find("node11023"), (Position{-1, -1})) << terminal_->Screen();
  EXPECT_NE(terminal_->Find("[BOTTOM]"), (Position{-1, -1}));
}

}  // namespace
