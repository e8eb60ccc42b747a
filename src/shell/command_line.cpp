#include "shell/command_line.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "shell/trace_log.h"

void ParseArgs(int argc, char** argv) {
  constexpr std::string_view kTraceOption = "-d";
  constexpr std::string_view kFileOption = "-f";
  for (int index = 1; index < argc; ++index) {
    const std::string_view argument = argv[index];
    if (argument.starts_with(kTraceOption)) {
      DebugTrace = 1;
    } else if (argument == kFileOption && index + 1 < argc) {
      SetLogFileName(argv[++index]);
    } else if (argument.starts_with(kFileOption) && argument != kFileOption) {
      SetLogFileName(argv[index] + kFileOption.size());
    } else {
      Usage();
    }
  }
}

void Usage() {
  (void)std::fputs(
      "nodewarden syntax\n"
      "\n"
      "nodewarden [-d ] [-f log_file]\n"
      "\n"
      "  Parameters:\n"
      "\n"
      "    -d    Enable debug tracing\n"
      "    -f    Name of logfile <default: \"nodewarden.log\">\n",
      stdout);
  std::exit(EXIT_FAILURE);
}
