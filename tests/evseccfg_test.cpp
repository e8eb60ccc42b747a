#include "config/evseccfg.h"

#include "config/config_file.h"
#include "support/store.h"

using Evseccfg = StoreTest;

static bool no_memory = false;
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return no_memory ? nullptr : operator new(size);
}

constexpr const char* kLines = "#mine\n-n=a,u,E\n\n-n=b,u,D\n-n=a,v,W\n-n=a,u,x\n";

// Returns a list of records as "alpha,ops,E;beta,root,D;" and releases it.
static std::string TakeText(WLNSRec* first) {
  const RecordList list(first);
  std::string text;
  for (const WLNSRec* rec = first; rec != nullptr; rec = rec->next) {
    text.append(rec->nodemask).append(",").append(rec->usermask).append({',', rec->mode, ';'});
  }
  return text;
}

// Looks up a record by its masks, like "alpha,ops". Returns result and mode, "-" for none.
static std::string LookUp(const std::string& masks) {
  WLNSRec rec{};
  WLNSParseLine(&rec, (masks + ",-").c_str());
  const int result = WLNSGetRec(&rec);
  return std::to_string(result) + " " + rec.mode;
}

// Applies one change to kLines. Returns its result, and the records if the file was rewritten.
static std::string Change(int (*change)(const WLNSRec*), const WLNSRec& rec) {
  WriteFile(kFile, kLines);
  const std::string result = std::to_string(change(&rec));
  return ReadFile(kFile) == kLines ? result : result + " " + TakeText(WLNSGetAllRecs());
}

TEST_F(Evseccfg, OrdinaryUserReadsAndChangesNothing) {
  WriteFile(kFile, kLines);
  test_user = 1;
  EXPECT_EQ(LookUp("a,v"), "0 W");
  EXPECT_EQ(LookUp("b,v"), "4 -");
  EXPECT_EQ(LookUp(","), "0 E");
  EXPECT_EQ(TakeText(WLNSListNodeMasks("")), "a,u,E;b,u,D;");
  EXPECT_EQ(TakeText(WLNSListNodeMasks("v")), "a,v,W;");
  EXPECT_EQ(TakeText(WLNSListUserMasks("")), "a,u,E;a,v,W;");
  EXPECT_EQ(TakeText(WLNSListUserMasks("b")), "b,u,D;");
  EXPECT_EQ(Change(WLNSUpdateRec, {"a", "u", 'W', nullptr}), "-1");
  EXPECT_EQ(Change(WLNSDeleteRec, {"a", "u", '-', nullptr}), "-1");
  const WLNSRec list{"a", "u", 'E', nullptr};
  const WLNSRec other{"b", "u", 'E', nullptr};
  EXPECT_EQ(WLNSHasNodeMask(&list, &other), 0);
  EXPECT_EQ(WLNSHasUserMask(&list, &other), 1);
}

TEST_F(Evseccfg, AFileThatCannotBeReadNowIsNotChanged) {
  const WLNSRec rec{"a", "u", 'W', nullptr};
  WriteFile(kFile, kLines);
  SetLimit(RLIMIT_NOFILE, 0);
  EXPECT_EQ(WLNSUpdateRec(&rec), EMFILE);
  EXPECT_EQ(WLNSDeleteRec(&rec), EMFILE);
  SetLimit(RLIMIT_NOFILE, RLIM_INFINITY);
  no_memory = true;
  EXPECT_EQ(WLNSUpdateRec(&rec), ENOMEM);
  EXPECT_EQ(WLNSDeleteRec(&rec), ENOMEM);
  no_memory = false;
  EXPECT_EQ(ReadFile(kFile), kLines);
  EXPECT_EQ(WLNSUpdateRec(&rec), 0);
  std::filesystem::remove(kFile);
  std::filesystem::create_symlink("/proc/self/mem", kFile);  // opens, but cannot be read
  EXPECT_EQ(WLNSUpdateRec(&rec), EIO);
  EXPECT_EQ(WLNSDeleteRec(&rec), EIO);
}

TEST_F(Evseccfg, ChangesTheFirstOfAPairInItsPlace) {
  EXPECT_EQ(Change(WLNSUpdateRec, {"a", "u", 'D', nullptr}), "0 a,u,D;b,u,D;a,v,W;a,u,x;");
  EXPECT_EQ(Change(WLNSUpdateRec, {"A", "u", 'E', nullptr}), "0 a,u,E;b,u,D;a,v,W;a,u,x;A,u,E;");
  EXPECT_EQ(Change(WLNSUpdateRec, {"b", "u", 'w', nullptr}), "-1");
  EXPECT_EQ(Change(WLNSUpdateRec, {"", "u", 'E', nullptr}), "-1");
  EXPECT_EQ(Change(WLNSDeleteRec, {"a", "u", '-', nullptr}), "0 b,u,D;a,v,W;a,u,x;");
  EXPECT_EQ(Change(WLNSDeleteRec, {"a", "v", '-', nullptr}), "0 a,u,E;b,u,D;a,u,x;");
  EXPECT_EQ(Change(WLNSDeleteRec, {"b", "v", '-', nullptr}), "0");
  EXPECT_EQ(Change(WLNSDeleteRec, {"b", "", '-', nullptr}), "-1");
  EXPECT_EQ(WLNSUpdateRec(nullptr), -1);
}
