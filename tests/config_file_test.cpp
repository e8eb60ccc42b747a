#include "config/config_file.h"

#include <sys/stat.h>
#include <sys/syscall.h>

#include "config/evseccfg.h"
#include "support/store.h"

extern const char* test_node_name;  // what hlv_nodename gives

extern "C" uid_t geteuid() noexcept { return test_user; }

// How the allocation of space ends in a test, after some was allocated.
static int reserve_error = 0;
extern "C" int fallocate(int file, int mode, off_t offset, off_t size) {
  sigset_t blocked;
  sigprocmask(SIG_SETMASK, nullptr, &blocked);
  EXPECT_EQ(sigismember(&blocked, SIGALRM), 1) << "a signal may leave half of the file";
  const long result = syscall(SYS_fallocate, file, mode, offset, size);
  if (reserve_error != 0) errno = reserve_error;
  return reserve_error != 0 ? -1 : static_cast<int>(result);
}

using namespace std::string_literals;
using ConfigFile = StoreTest;

static std::string Dir(const char* root, const char* node) {
  root == nullptr ? unsetenv("HLVHOME0000") : setenv("HLVHOME0000", root, 1);
  test_node_name = node;
  char dir[kPathSize] = "as before";
  return std::to_string(WLNSGetCfgDir(dir)) + " " + dir;
}

TEST_F(ConfigFile, Directory) {
  const std::string root(237, 'r');
  const std::string node(63, 'n');
  EXPECT_EQ(Dir("/hlv", "alpha"), "0 /hlv/opr/config/alpha/");
  EXPECT_EQ(Dir("/hlv/", "alpha"), "0 /hlv/opr/config/alpha/");
  EXPECT_EQ(Dir("", node.c_str()), "0 opr/config/" + node + "/");
  EXPECT_EQ(Dir("r", (node + "n").c_str()), "16 as before");
  EXPECT_EQ(Dir("r", ""), "16 as before");
  EXPECT_EQ(Dir("r", nullptr), "16 as before");
  EXPECT_EQ(Dir(nullptr, "alpha"), "16 as before");
  EXPECT_EQ(Dir(root.c_str(), "alpha2"), "16 as before");
  EXPECT_EQ(Dir(root.c_str(), "alpha"), "0 " + root + "/opr/config/alpha/");  // 255 bytes
}

TEST_F(ConfigFile, LinesAreReadAndWrittenByteForByte) {
  const std::string node(64, 'n');
  const std::string user(32, 'u');
  const std::string line = "-n=a,b,E" + std::string(246, ' ');  // 254 bytes
  const std::string cases[][2] = {
      {line + " -n=c,d,W\n" + line + "-n=c,d,W\n", "-n=a,b,E\n-n=c,d,W\n-n=a,b,E\n"},
      {"#mine\n   -n=alpha,root,Enabled\r\n\n-n=b,c,x", "-n=alpha,root,E\n-n=b,c,x\n"},
      {"#\n\n\t-n=a,b,E\n-N=a,b,E\n# -n=a,b,E\n-n\n \r\nn=a,b,E\n", ""},
      {"-n=al pha, u ,! \t\x01\n-n=a,b, E\n-n=a,b, \n", "-n=al pha, u ,!\n-n=a,b, \n-n=a,b,\n"},
      {"-n=\x80,\xff\x7f,\xfe\n-n=a,b\xff \x1f\n", "-n=\x80,\xff\x7f,\xfe\n-n=a,b\xff,\n"},
      {"-n=a\n-n=a,b\n-n=a,,E\n-n=,,E\n", "-n=a,,\n-n=a,b,\n-n=a,,E\n-n=,,E\n"},
      {"-n=" + node + "6789," + user + "5678,W\n", "-n=" + node + "," + user + ",W\n"},
      {"-n=" + node + "," + user + ",W\n", "-n=" + node + "," + user + ",W\n"},
      {"-n=a,b,E\0-n=x,y,W\n-n=c\0,d,W\n\0-n=x,y,W\n"s, "-n=a,b,E\n-n=c,,\n"}};
  for (const auto& [text, rewritten] : cases) {
    WriteFile(kFile, text);
    EXPECT_EQ(WLNSWriteRecs(WLNSGetAllRecs()), 0);
    EXPECT_EQ(ReadFile(kFile), kComments + rewritten);
  }
  std::string trimmed = "  -n=a b, u ,W \t\x01\r\n";
  WLNSTrimLine(trimmed.data());
  EXPECT_STREQ(trimmed.c_str(), "-n=a b, u ,W");
}

TEST_F(ConfigFile, ReadCursor) {
  WriteFile(kFile, "-n=a,u,1\n-n=b,u,2\n#\n-n=a,v,3\n-n=a,u,4\n");
  std::string modes;
  for (const char* masks : {"a,u", "a,u", "a,", "a,", "a,", "a,", ",u"}) {
    WLNSRec wanted{};
    WLNSParseLine(&wanted, masks);
    const RecordPtr found(WLNSReadRec(wanted.nodemask, wanted.usermask));
    modes += found ? found->mode : '-';
  }
  EXPECT_EQ(modes, "11134-1");
  WLNSEndRead();
}

TEST_F(ConfigFile, AFileThatCannotBeOpenedHasNoRecords) {
  const std::string anew = "rm -rf opr; mkdir -p opr/config/alpha; cd opr/config/alpha; ";
  for (const char* prepare :
       {":", "mkdir actnode.prf", "ln -s actnode.prf actnode.prf", "rmdir ../alpha",
        "echo -n=a,b,E >actnode.prf; chmod 0 *", "rmdir ../alpha; echo -n=a,b,E >../alpha"}) {
    ASSERT_EQ(std::system((anew + prepare).c_str()), 0);
    [[maybe_unused]] const int ignored = seteuid(65534);
    EXPECT_EQ(WLNSGetAllRecs(), nullptr) << prepare;
    EXPECT_EQ(WLNSReadError(), 0) << prepare;
    [[maybe_unused]] const int as_before = seteuid(getuid());
  }
}

TEST_F(ConfigFile, MakesTheNodeDirectoryWhateverTheRoot) {
  for (const auto& root :
       {"a b"s, "it's"s, R"("$(touch hit)`touch hit`;*\)"s, "-p"s, directory_.path + "/absolute",
        std::string(226, 'r')}) {  // the longest path, 255 bytes
    std::filesystem::create_directories(root + "/opr/config");
    setenv("HLVHOME0000", root.c_str(), 1);
    umask(022);
    EXPECT_EQ(WLNSWriteRecs(nullptr), 0) << root;
    EXPECT_EQ(ReadFile(root + "/" + kFile), kComments) << root;
    EXPECT_EQ(std::filesystem::status(root + "/" + kFile).permissions(),
              std::filesystem::perms{0644});
  }
  EXPECT_FALSE(std::filesystem::exists("hit"));
}

TEST_F(ConfigFile, WriterFailures) {
  std::filesystem::create_directory(kFile);
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), EISDIR);
  std::filesystem::remove(kFile);
  std::filesystem::create_symlink("/dev/full", kFile);
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), 0);  // an error of writing is ignored
  std::filesystem::remove_all("opr/config");
  testing::internal::CaptureStderr();
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), ENOENT);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  setenv("HLVHOME0000", std::string(227, 'r').c_str(), 1);
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), kNoConfigPath);
  EXPECT_EQ(WLNSGetAllRecs(), nullptr);
}

TEST_F(ConfigFile, AFileWithoutRoomForItsNewTextStaysAsItIs) {
  std::string text = kComments;
  for (int i = 0; i < 9999; ++i) text += "-n=a,b,E\n";
  const struct {
    rlim_t most_bytes;
    int error, result;  // of setting room aside, and of the writer
  } cases[] = {{RLIM_INFINITY, ENOSPC, ENOSPC}, {RLIM_INFINITY, EDQUOT, EDQUOT},
               {RLIM_INFINITY, EFBIG, EFBIG},   {RLIM_INFINITY, EOPNOTSUPP, 0},
               {text.size() - 1, 0, EFBIG},     {text.size(), 0, 0}};
  for (const auto& [most_bytes, error, result] : cases) {
    WriteFile(kFile, text);
    WLNSRec* const list = WLNSGetAllRecs();
    WriteFile(kFile, "#mine\n");
    reserve_error = error;
    SetLimit(RLIMIT_FSIZE, most_bytes);
    EXPECT_EQ(WLNSWriteRecs(list), result);
    SetLimit(RLIMIT_FSIZE, RLIM_INFINITY);
    EXPECT_EQ(ReadFile(kFile), result == 0 ? text : "#mine\n");
    struct stat file = {};
    EXPECT_EQ(stat(kFile, &file), 0);
    EXPECT_TRUE(result == 0 || file.st_blocks * 512 <= file.st_blksize) << "space stays allocated";
  }
}
