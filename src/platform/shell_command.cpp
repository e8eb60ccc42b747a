#include "platform/shell_command.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

void RunShellCommand(const char* command) {
  // The interface takes pointers to char that it does not write through.
  const std::array<char*, 5> arguments{const_cast<char*>("sh"), const_cast<char*>("-c"),
                                       const_cast<char*>("trap '' TSTP; eval \"$0\""),
                                       const_cast<char*>(command), nullptr};
  pid_t shell = 0;
  if (posix_spawn(&shell, "/bin/sh", nullptr, nullptr, arguments.data(), environ) != 0) return;
  while (waitpid(shell, nullptr, 0) < 0 && errno == EINTR) {
  }
}
