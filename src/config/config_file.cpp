#include "config/config_file.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "platform/hlv_nodename.h"
#include "platform/shell_command.h"

namespace {

constexpr const char* kFileName = "actnode.prf";
constexpr std::string_view kRecordPrefix = "-n=";
constexpr std::size_t kNodeNameLength = 63;  // most bytes of a node name
constexpr int kLineSize = 256;               // a read takes at most 255 bytes of a line
constexpr unsigned char kBlank = ' ';

struct FileCloser {
  void operator()(std::FILE* file) const noexcept { (void)std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The read cursor: the stream of the walk under way, null between walks.
constinit std::FILE* read_cursor = nullptr;

// What cut the last walk short, 0 when nothing did.
constinit int read_error = 0;

// Holds back every signal that can be held, so that none leaves a half-written file.
class SignalHold {
 public:
  SignalHold() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before_);
  }
  ~SignalHold() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  SignalHold(const SignalHold&) = delete;
  SignalHold& operator=(const SignalHold&) = delete;

 private:
  sigset_t before_{};
};

// Builds the directory and the path of the file; false when one of them cannot be built.
bool GetPaths(char (&dir)[kPathSize], char (&path)[kPathSize]) {
  return WLNSGetCfgDir(dir) == 0 &&
         std::snprintf(path, sizeof path, "%s%s", dir, kFileName) < kPathSize;
}

// A byte that trimming takes from the end of a line.
bool IsTrimmedAtEnd(char byte) { return static_cast<unsigned char>(byte) <= kBlank; }

// Opens the read cursor at the top of the file; false when there is nothing to read.
bool OpenReadCursor() {
  read_error = 0;
  char dir[kPathSize];
  char path[kPathSize];
  if (GetPaths(dir, path)) {
    read_cursor = std::fopen(path, "r");  // a file that does not open reads as an empty one
  }
  return read_cursor != nullptr;
}

bool Matches(const char* wanted, const char* mask) {
  return *wanted == '\0' || std::strcmp(wanted, mask) == 0;
}

// The text of the whole file, made before the file is opened for writing.
std::string FileText(const WLNSRec* list) {
  std::string text =
      "#Event external security configuration\n"
      "#Format: -n=nodemask,usermask,mode(D|E|W)\n";
  for (const WLNSRec* rec = list; rec != nullptr; rec = rec->next) {
    text.append(kRecordPrefix).append(rec->nodemask).append(",").append(rec->usermask).append(",");
    // A mode that reading would trim away is no mode; written out, it would only be lost the
    // next time.
    if (!IsTrimmedAtEnd(rec->mode)) {
      text += rec->mode;
    }
    text += '\n';
  }
  return text;
}

// Replaces the content of the file in one burst. Returns 0 or the error number of the open.
int ReplaceFile(const char* path, std::string_view text) {
  const SignalHold hold;
  const FilePtr file(std::fopen(path, "w"));
  if (!file) {
    return errno;
  }
  (void)std::fwrite(text.data(), 1, text.size(), file.get());
  return 0;
}

// Quotes `path` for the shell: whatever it holds stays one argument, and never an option.
std::string ShellQuoted(std::string_view path) {
  std::string quoted = path.starts_with('-') ? "'./" : "'";
  for (const char byte : path) {
    if (byte == '\'') {
      quoted += R"('\'')";
    } else {
      quoted += byte;
    }
  }
  return quoted + "'";
}

// Creates the last level of the directory. Whether that worked shows when the file is opened.
void MakeDirectory(const char* dir) {
  RunShellCommand(("mkdir " + ShellQuoted(dir) + " 2>/dev/null").c_str());
}

int RewriteFile(const WLNSRec* list) {
  char dir[kPathSize];
  char path[kPathSize];
  if (!GetPaths(dir, path)) {
    return kNoConfigPath;
  }
  const std::string text = FileText(list);
  int result = ReplaceFile(path, text);
  if (result == ENOENT) {
    MakeDirectory(dir);
    result = ReplaceFile(path, text);
  }
  return result;
}

// Copies the field at the front of `text` into `field` and takes it, with the comma behind it,
// off the text.
template <std::size_t Size>
void TakeField(std::string_view& text, char (&field)[Size]) {
  const std::size_t comma = text.find(',');
  CopyText(field, text.substr(0, comma));
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
}

}  // namespace

int WLNSGetCfgDir(char* dir) {
  const char* root = std::getenv("HLVHOME0000");
  const char* node = hlv_nodename();
  if (root == nullptr || node == nullptr || *node == '\0' || std::strlen(node) > kNodeNameLength) {
    return kNoCfgDir;
  }
  const char* separator = *root == '\0' || std::string_view(root).ends_with('/') ? "" : "/";
  char path[kPathSize] = {};
  if (std::snprintf(path, sizeof path, "%s%sopr/config/%s/", root, separator, node) >= kPathSize) {
    return kNoCfgDir;
  }
  std::memcpy(dir, path, sizeof path);
  return 0;
}

WLNSRec* WLNSReadRec(const char* nodeMask, const char* useridMask) {
  if (read_cursor == nullptr && !OpenReadCursor()) {
    return nullptr;
  }
  RecordPtr rec(new (std::nothrow) WLNSRec{});
  if (!rec) {
    read_error = ENOMEM;
    WLNSEndRead();
    return nullptr;
  }
  std::array<char, kLineSize> line{};
  while (std::fgets(line.data(), kLineSize, read_cursor) != nullptr) {
    WLNSTrimLine(line.data());
    if (line[0] == '\0') {
      continue;
    }
    *rec = {};
    WLNSParseLine(rec.get(), line.data() + kRecordPrefix.size());
    if (Matches(nodeMask, rec->nodemask) && Matches(useridMask, rec->usermask)) {
      if (*nodeMask != '\0' && *useridMask != '\0') {
        WLNSEndRead();
      }
      return rec.release();
    }
  }
  // A directory opens like a file but has nothing to read: it counts as a file that does not open.
  if (std::ferror(read_cursor) != 0 && errno != EISDIR) {
    read_error = errno;
  }
  WLNSEndRead();
  return nullptr;
}

int WLNSReadError() { return read_error; }

void WLNSEndRead() {
  if (read_cursor != nullptr) {
    (void)std::fclose(std::exchange(read_cursor, nullptr));
  }
}

int WLNSWriteRecs(WLNSRec* list) {
  const RecordList owner(list);
  if (geteuid() != 0) {
    return kRefused;
  }
  try {
    return RewriteFile(list);
  } catch (const std::bad_alloc&) {
    return ENOMEM;
  }
}

void WLNSTrimLine(char* line) {
  std::string_view rest = line;
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  while (!rest.empty() && IsTrimmedAtEnd(rest.back())) {
    rest.remove_suffix(1);
  }
  if (!rest.starts_with(kRecordPrefix)) {
    rest.remove_suffix(rest.size());
  }
  std::memmove(line, rest.data(), rest.size());
  line[rest.size()] = '\0';
}

void WLNSParseLine(WLNSRec* rec, const char* text) {
  std::string_view rest = text;
  TakeField(rest, rec->nodemask);
  TakeField(rest, rec->usermask);
  rec->mode = rest.empty() ? '\0' : rest.front();
}
