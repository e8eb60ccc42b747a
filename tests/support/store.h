#pragma once

// The store without the program, in an installation of its own.

#include "support/test_files.h"

inline constexpr const char* kFile = "opr/config/alpha/actnode.prf";

inline uid_t test_user = 0;  // what geteuid tells the store

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
