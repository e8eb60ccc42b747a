#pragma once

// The debug trace: one line of text per event, written only when the program was started with -d.
// The first line of a run, and the first after an open that failed, empties the file; other lines
// are appended. Between two lines the file is closed, so the trace is complete whenever the program
// ends. A line that cannot be written is dropped.

#include <cstdio>

inline constexpr int kTraceLineLength = 79;  // most bytes of a line, its newline not counted

// Not 0 when tracing is on.
extern int DebugTrace;

// The path of the trace file, on the heap and owned here; null until -f or the first line sets it.
// SetLogFileName replaces it, nothing else frees it.
extern char* LogFileName;

// The result of the last open. The stream is closed again and must not be used: not null only says
// that the trace file has been opened in this run, so that the next line is appended.
extern std::FILE* LogFile;

// Makes a copy of `name` the path of the trace file.
void SetLogFileName(const char* name);

// Writes `text`, cut to kTraceLineLength bytes, as one line.
void TraceLog(const char* text);

// Formats a line as printf does and hands it to TraceLog. Does nothing while tracing is off.
[[gnu::format(printf, 1, 2)]] void TraceFormat(const char* format, ...);
