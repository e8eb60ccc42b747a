#include "shell/trace_log.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

constinit int DebugTrace = 0;
constinit char* LogFileName = nullptr;
constinit std::FILE* LogFile = nullptr;

namespace {

constexpr const char* kDefaultLogFileName = "nodewarden.log";

std::FILE* OpenTrace() {
  if (LogFile != nullptr) {
    return std::fopen(LogFileName, "a+t");
  }
  if (LogFileName == nullptr) {
    SetLogFileName(kDefaultLogFileName);
  }
  return LogFileName != nullptr ? std::fopen(LogFileName, "w+t") : nullptr;
}

[[gnu::format(printf, 1, 0)]] void TraceArguments(const char* format, std::va_list arguments) {
  char line[kTraceLineLength + 1];
  (void)std::vsnprintf(line, sizeof line, format, arguments);
  TraceLog(line);
}

}  // namespace

void SetLogFileName(const char* name) {
  std::free(LogFileName);
  LogFileName = strdup(name);
}

void TraceLog(const char* text) {
  if (DebugTrace == 0) {
    return;
  }
  char line[kTraceLineLength + 2] = {};
  const std::size_t length = strnlen(text, kTraceLineLength);
  std::memcpy(line, text, length);
  line[length] = '\n';

  LogFile = OpenTrace();
  if (LogFile == nullptr) {
    return;
  }
  (void)std::fwrite(line, 1, length + 1, LogFile);
  (void)std::fclose(LogFile);
}

void TraceFormat(const char* format, ...) {
  if (DebugTrace == 0) {
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  TraceArguments(format, arguments);
  va_end(arguments);
}
