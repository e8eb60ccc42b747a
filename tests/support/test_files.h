#pragma once

// Directories, whole files and limits for tests.

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

inline constexpr const char* kComments =
    "#Event external security configuration\n#Format: -n=nodemask,usermask,mode(D|E|W)\n";
