#pragma once

// Directories, whole files, limits and installations for tests.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

// A new working directory, removed at the end. Every user may read it and what is made in it.
struct TemporaryDirectory {
  TemporaryDirectory() {
    umask(umask(0) & (S_IWGRP | S_IWOTH));
    chmod(path.c_str(), 0755);
    std::filesystem::current_path(path);
  }
  TemporaryDirectory(TemporaryDirectory&&) = delete;
  ~TemporaryDirectory() { std::filesystem::remove_all(path); }
  const std::string path =
      mkdtemp((std::filesystem::temp_directory_path() / "nodewarden.XXXXXX").string().data());
};

// Sets a limit of the process, as far as its hard limit allows.
inline void SetLimit(int resource, rlim_t most) {
  rlimit limit{};
  getrlimit(resource, &limit);
  limit.rlim_cur = std::min(most, limit.rlim_max);
  setrlimit(resource, &limit);
}

// Returns the whole text of a file, "" when it cannot be read.
inline std::string ReadFile(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

inline void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
}

inline constexpr const char* kFile = "opr/config/alpha/actnode.prf";
inline constexpr const char* kComments =
    "#Event external security configuration\n#Format: -n=nodemask,usermask,mode(D|E|W)\n";

extern uid_t test_user;  // what geteuid tells the store in a test of it

// A test as the superuser; the working directory is the installation's root and holds kFile.
class StoreTest : public testing::Test {
 protected:
  StoreTest() {
    std::filesystem::create_directories("opr/config/alpha");
    setenv("HLVHOME0000", ".", 1);
    test_user = 0;
  }
  TemporaryDirectory directory_;
};
