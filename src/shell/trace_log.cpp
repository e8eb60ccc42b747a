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
  if (LogFile != nullptr) return std::fopen(LogFileName, "a+t");
  if (LogFileName == nullptr) {
    SetLogFileName(kDefaultLogFileName);
  }
  return LogFileName != nullptr ? std::fopen(LogFileName, "w+t") : nullptr;
}

}  // namespace

void SetLogFileName(const char* name) {
  std::free(LogFileName);
  LogFileName = strdup(name);
}

void TraceLog(const char* text) {
  if (DebugTrace == 0) return;
  char line[kTraceLineLength + 2] = {};
  const std::size_t length = strnlen(text, kTraceLineLength);
  std::memcpy(line, text, length);
  line[length] = '\n';

  LogFile = OpenTrace();
  if (LogFile == nullptr) return;
  (void)std::fwrite(line, 1, length + 1, LogFile);
  (void)std::fclose(LogFile);
}

void TraceFormat(const char* format, ...) {
  if (DebugTrace == 0) return;
  char line[kTraceLineLength + 1];
  std::va_list arguments;
  va_start(arguments, format);
  (void)std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  TraceLog(line);
}
