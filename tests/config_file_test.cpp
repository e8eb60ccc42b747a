#include "config/config_file.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>

#include "config/evseccfg.h"
#include "support/test_files.h"
#include "support/test_nodename.h"

namespace {

using namespace std::string_literals;

std::string Dir(const char* root, const char* node) {
  SetEnvironment("HLVHOME0000", root);
  test_node_name = node;
  char dir[kPathSize] = "-";
  return std::to_string(WLNSGetCfgDir(dir)) + dir;
}

TEST(ConfigFile, Directory) {
  const std::string root(237, 'r');
  const std::string node(63, 'n');
  EXPECT_EQ(Dir("/hlv", "alpha"), "0/hlv/opr/config/alpha/");
  EXPECT_EQ(Dir("/hlv/", "alpha"), "0/hlv/opr/config/alpha/");
  EXPECT_EQ(Dir("", node.c_str()), "0opr/config/" + node + "/");
  EXPECT_EQ(Dir("r", (node + "n").c_str()) + Dir("r", "") + Dir("r", nullptr), "16-16-16-");
  EXPECT_EQ(Dir(root.c_str(), "alpha2") + Dir(nullptr, "alpha"), "16-16-");
  EXPECT_EQ(Dir(root.c_str(), "alpha"), "0" + root + "/opr/config/alpha/");  // 255 bytes
}

TEST_F(StoreTest, Lines) {
  const std::string node(64, 'n');
  const std::string user(32, 'u');
  const std::string line = "-n=a,b,E" + std::string(246, ' ');  // 254 bytes
  const std::string cases[][2] = {
      {"   -n=alpha,root,Enabled\r\n-n=b,c,x", "alpha,root,E;b,c,x;"},
      {"#\n\n\t-n=a,b,E\n-N=a,b,E\n# -n=a,b,E\n-n\n \r\nn=a,b,E\n", ""},
      {"-n=al pha, u ,! \t\x01\n-n=a,b, E\n-n=a,b, \n", "al pha, u ,!;a,b, ;a,b,;"},
      {"-n=\x80,\xff\x7f,\xfe\n-n=a,b\xff\n", "\x80,\xff\x7f,\xfe;a,b\xff,;"},
      {"-n=\n-n=a\n-n=a,b\n-n=a,b,\n-n=a,,E\n-n=,,E\n", ",,;a,,;a,b,;a,b,;a,,E;,,E;"},
      {"-n=" + node + "6789," + user + "5678,W\n-n=" + node + "," + user + ",W\n",
       node + "," + user + ",W;" + node + "," + user + ",W;"},
      {line + " -n=c,d,W\n" + line + "-n=c,d,W\n", "a,b,E;c,d,W;a,b,E;"},
      {"-n=a,b,E\0-n=x,y,W\n-n=c\0,d,W\n\0-n=x,y,W\n"s, "a,b,E;c,,;"}};
  for (const auto& [text, records] : cases) {
    WriteFile(kFile, text);
    EXPECT_EQ(TakeText(WLNSGetAllRecs()), records) << text;
  }
}

TEST_F(StoreTest, ReadCursor) {
  WriteFile(kFile, "-n=a,u,1\n-n=b,u,2\n#\n-n=a,v,3\n-n=a,u,4\n");
  std::string modes;
  for (const char* masks :
       {"a,u", "a,u", "A,u", "a,", "a,", "a,", "a,", ",u", ",u", ",u", ",u", ",", "a,u", ","}) {
    WLNSRec wanted{};
    WLNSParseLine(&wanted, masks);
    const RecordPtr found(WLNSReadRec(wanted.nodemask, wanted.usermask));
    modes += found ? found->mode : '-';
  }
  EXPECT_EQ(modes, "11-134-124-141");
  WLNSEndRead();
}

TEST_F(StoreTestAsRoot, RewritesByteForByteAndTheSameTwice) {
  WriteFile(kFile, "#mine\n\n-n=b,c,D\n  -n=a,\xff,Wx\n-n=a\n-n=,,!\n-n=a,b, E\n");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(WLNSWriteRecs(WLNSGetAllRecs()), 0);
    EXPECT_EQ(ReadFile(kFile), kComments + "-n=b,c,D\n-n=a,\xff,W\n-n=a,,\n-n=,,!\n-n=a,b,\n"s);
  }
}

TEST_F(StoreTestAsRoot, MakesTheNodeDirectoryWhateverTheRoot) {
  for (const auto& root : {"a b"s, "it's"s, R"("$(touch hit)`touch hit`;*\)"s, "-p"s,
                           std::string(226, 'r')}) {  // the longest path, 255 bytes
    std::filesystem::create_directories(root + "/opr/config");
    SetEnvironment("HLVHOME0000", root.c_str());
    EXPECT_EQ(WLNSWriteRecs(nullptr), 0) << root;
    EXPECT_EQ(ReadFile(root + "/" + kFile), kComments) << root;
  }
  EXPECT_FALSE(std::filesystem::exists("hit"));
}

TEST_F(StoreTestAsRoot, WriterFailures) {
  std::filesystem::create_directory(kFile);
  EXPECT_EQ(TakeText(WLNSGetAllRecs()), "");
  EXPECT_EQ(WLNSReadError(), 0);
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), EISDIR);
  std::filesystem::remove_all("opr/config");
  testing::internal::CaptureStderr();
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), ENOENT);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  SetEnvironment("HLVHOME0000", std::string(227, 'r').c_str());
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), -2);
  SetEnvironment("HLVHOME0000", nullptr);
  EXPECT_EQ(WLNSWriteRecs(new WLNSRec{}), -2);
  EXPECT_EQ(TakeText(WLNSGetAllRecs()), "");
}

// A pipe in place of the file holds the writer up in the middle until its text is read.
TEST_F(StoreTestAsRoot, SignalsWaitForTheEndOfTheRewrite) {
  std::string text;
  for (int i = 0; i < 9999; ++i) text += "-n=node,user,E\n";
  WriteFile(kFile, text);
  const RecordList list(WLNSGetAllRecs());
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}) {
    std::filesystem::remove(kFile);
    ASSERT_EQ(mkfifo(kFile, 0600), 0);
    const pid_t child = fork();
    if (child == 0) {
      static_cast<void>(signal(number, _exit));
      _exit(WLNSWriteRecs(list.head));
    }
    std::ifstream pipe(kFile);
    kill(child, number);
    EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(pipe), {}) == kComments + text);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), number) << "lost";
  }
}

}  // namespace
