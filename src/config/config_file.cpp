#include "config/config_file.h"

#include <unistd.h>

#include <algorithm>
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
constexpr std::size_t kReadBufferSize = 16384;
// Bytes of the longest record line, its line feed included.
constexpr std::size_t kLongestRecord = sizeof "-n=,,m" + kNodeMaskLength + kUserMaskLength;
constexpr unsigned char kBlank = ' ';

struct FileCloser {
  void operator()(std::FILE* file) const noexcept { (void)std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

#ifdef HAVE_FGETS_UNLOCKED
constexpr auto* ReadLine = fgets_unlocked;
#else
constexpr auto* ReadLine = std::fgets;
#endif

// The read cursor: the stream of the walk under way, null between walks.
constinit std::FILE* read_cursor = nullptr;

// The buffer of the stream; a larger one than usual saves most of the system calls.
constinit char read_buffer[kReadBufferSize] = {};

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
  if (read_cursor == nullptr) {
    return false;
  }
  (void)std::setvbuf(read_cursor, read_buffer, _IOFBF, sizeof read_buffer);
  return true;
}

// Returns the record line without what trimming takes off; nothing when it is another line.
std::string_view Trimmed(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  while (!line.empty() && IsTrimmedAtEnd(line.back())) {
    line.remove_suffix(1);
  }
  return line.substr(0, line.starts_with(kRecordPrefix) ? line.size() : 0);
}

// A record as it stands in its line, the masks cut to their longest.
struct Fields {
  std::string_view node_mask;
  std::string_view user_mask;
  char mode;
};

// Takes the field at the front of `text`, with the comma behind it, off the text; returns it, cut
// to `length` bytes.
std::string_view TakeField(std::string_view& text, std::size_t length) {
  const std::size_t comma = text.find(',');
  const std::string_view field = text.substr(0, std::min(comma, length));
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  return field;
}

Fields Split(std::string_view text) {
  const std::string_view node_mask = TakeField(text, kNodeMaskLength);
  const std::string_view user_mask = TakeField(text, kUserMaskLength);
  return {node_mask, user_mask, text.empty() ? '\0' : text.front()};
}

bool Matches(std::string_view wanted, std::string_view mask) {
  return wanted.empty() || wanted == mask;
}

// Fills a zero-filled record.
void Fill(WLNSRec& rec, const Fields& fields) {
  fields.node_mask.copy(rec.nodemask, kNodeMaskLength);
  fields.user_mask.copy(rec.usermask, kUserMaskLength);
  rec.mode = fields.mode;
}

std::size_t CountRecords(const WLNSRec* list) {
  std::size_t count = 0;
  for (const WLNSRec* rec = list; rec != nullptr; rec = rec->next) {
    ++count;
  }
  return count;
}

// The text of the whole file, made before the file is opened for writing.
std::string FileText(const WLNSRec* list) {
  std::string text =
      "#Event external security configuration\n"
      "#Format: -n=nodemask,usermask,mode(D|E|W)\n";
  text.reserve(text.size() + CountRecords(list) * kLongestRecord);
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
  const std::string_view node_mask = nodeMask;
  const std::string_view user_mask = useridMask;
  char line[kLineSize];
  while (ReadLine(line, kLineSize, read_cursor) != nullptr) {
    const std::string_view text = Trimmed(line);
    if (text.empty()) {
      continue;
    }
    const Fields fields = Split(text.substr(kRecordPrefix.size()));
    if (Matches(node_mask, fields.node_mask) && Matches(user_mask, fields.user_mask)) {
      Fill(*rec, fields);
      if (!node_mask.empty() && !user_mask.empty()) {
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
  const std::string_view rest = Trimmed(line);
  std::memmove(line, rest.data(), rest.size());
  line[rest.size()] = '\0';
}

void WLNSParseLine(WLNSRec* rec, const char* text) { Fill(*rec, Split(text)); }
