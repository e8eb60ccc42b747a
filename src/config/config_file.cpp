#include "config/config_file.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "platform/hlv_nodename.h"
#include "platform/shell_command.h"

namespace {

constexpr const char* kFileName = "actnode.prf";
constexpr std::string_view kComments =
    "#Event external security configuration\n"
    "#Format: -n=nodemask,usermask,mode(D|E|W)\n";
constexpr std::string_view kRecordPrefix = "-n=";
constexpr std::size_t kNodeNameLength = 63;  // most bytes of a node name
constexpr int kLineSize = 256;               // a read takes at most 255 bytes of a line
constexpr unsigned char kBlank = ' ';

// Errors of opening that mean there is no file to read: it is missing, may not be read or is of a
// kind that cannot be. After any other error the file may exist and hold records.
constexpr int kNoFile[] = {ENOENT, ENOTDIR, ELOOP, ENAMETOOLONG, EACCES, EPERM, ENXIO, ENODEV};

#ifdef HAVE_FGETS_UNLOCKED
constexpr auto* ReadLine = fgets_unlocked;
#else
constexpr auto* ReadLine = std::fgets;
#endif

// The read cursor: the stream of the scan under way, null between scans.
constinit std::FILE* read_cursor = nullptr;

// The buffer of the stream; a larger one than usual saves most of the system calls.
constinit char read_buffer[16384] = {};

// The error that ended the last scan early, 0 for none.
constinit int read_error = 0;

// Blocks every signal that can be blocked, so that none leaves a half-written file.
class SignalBlocker {
 public:
  SignalBlocker() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before_);
  }
  ~SignalBlocker() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  SignalBlocker(const SignalBlocker&) = delete;
  SignalBlocker& operator=(const SignalBlocker&) = delete;

 private:
  sigset_t before_{};
};

// Builds the directory and the path of the file; false when one of them cannot be built.
bool GetPaths(char (&dir)[kPathSize], char (&path)[kPathSize]) {
  return WLNSGetCfgDir(dir) == 0 &&
         std::snprintf(path, sizeof path, "%s%s", dir, kFileName) < kPathSize;
}

// Opens the read cursor at the top of the file; false when there is nothing to read.
bool OpenReadCursor() {
  read_error = 0;
  char dir[kPathSize];
  char path[kPathSize];
  if (!GetPaths(dir, path)) return false;
  read_cursor = std::fopen(path, "r");
  if (read_cursor == nullptr) {
    read_error = std::ranges::find(kNoFile, errno) == std::end(kNoFile) ? errno : 0;
    return false;
  }
  (void)std::setvbuf(read_cursor, read_buffer, _IOFBF, sizeof read_buffer);
  return true;
}

// Returns the line trimmed; empty when it is not a record line.
std::string_view Trimmed(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  while (!line.empty() && static_cast<unsigned char>(line.back()) <= kBlank) {
    line.remove_suffix(1);
  }
  return line.substr(0, line.starts_with(kRecordPrefix) ? line.size() : 0);
}

// The fields of a record as views of its line, each mask cut to its greatest length.
struct Fields {
  std::string_view node_mask;
  std::string_view user_mask;
  char mode;
};

// Removes the field at the front of `text` and the comma after it from the text. Returns the field,
// cut to `length` bytes.
constexpr std::string_view TakeField(std::string_view& text, std::size_t length) {
  const std::size_t comma = text.find(',');
  const std::string_view field = text.substr(0, std::min(comma, length));
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  return field;
}

constexpr Fields Split(std::string_view text) {
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

// Returns the text of a file that holds the records of `list`. A missing mode is written as
// nothing.
std::string FileText(const WLNSRec* list) {
  std::size_t most = kComments.size();
  for (const WLNSRec* rec = list; rec != nullptr; rec = rec->next) {
    // Besides the masks two commas, the mode and the end of the line.
    most += kRecordPrefix.size() + std::strlen(rec->nodemask) + std::strlen(rec->usermask) + 4;
  }
  std::string text;
  text.reserve(most);
  text = kComments;
  for (; list != nullptr; list = list->next) {
    text.append(kRecordPrefix).append(list->nodemask).append(",");
    text.append(list->usermask).append(",");
    text.append(&list->mode, list->mode != '\0' ? 1 : 0).append("\n");
  }
  return text;
}

// Allocates disk space for `size` bytes of the file, whose content and size stay; ftruncate
// releases what is not used. Returns 0, also where the file system cannot do that, or the error
// number when there is no space.
int AllocateSpace(int file, std::size_t size) {
  rlimit limit{};
  if (getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur < size) {
    return EFBIG;  // some file systems look at the limit only when they write
  }
#ifdef FALLOC_FL_KEEP_SIZE
  if (fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) != 0 &&
      (errno == ENOSPC || errno == EDQUOT || errno == EFBIG)) {
    const int error = errno;
    // Part of the space may have been allocated.
    [[maybe_unused]] const int cut = ftruncate(file, lseek(file, 0, SEEK_END));
    return error;
  }
#endif
  return 0;
}

// Replaces the content of an open file. Returns 0, or the error number when there is no space for
// the text; a write error is ignored: the file ends at the last byte written.
int ReplaceContent(int file, std::string_view text) {
  if (const int error = AllocateSpace(file, text.size()); error != 0) return error;
  // A file that is not a regular one, such as a device, cannot be truncated and need not be.
  if (ftruncate(file, 0) != 0 && errno != EINVAL) return errno;
  ssize_t written = 0;
  while (!text.empty() && (written = write(file, text.data(), text.size())) > 0) {
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

// Replaces the content of the file, or makes a new one. Returns 0 or an error number.
int ReplaceFile(const char* path, std::string_view text) {
  const SignalBlocker blocker;
  const int file = open(path, O_WRONLY | O_CREAT, 0666);
  if (file < 0) return errno;
  const int result = ReplaceContent(file, text);
  (void)close(file);
  return result;
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

// Creates the last level of the directory; if that fails, opening the file fails.
void MakeDirectory(const char* dir) {
  RunShellCommand(("mkdir " + ShellQuoted(dir) + " 2>/dev/null").c_str());
}

int RewriteFile(const WLNSRec* list) {
  char dir[kPathSize];
  char path[kPathSize];
  if (!GetPaths(dir, path)) return kNoConfigPath;
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
  if (read_cursor == nullptr && !OpenReadCursor()) return nullptr;
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
    if (text.empty()) continue;
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
  const RecordList records(list);
  if (geteuid() != 0) return kRefused;
  try {
    return RewriteFile(list);
  } catch (const std::bad_alloc&) {
    return ENOMEM;
  }
}

void WLNSTrimLine(char* line) {
  const std::string_view rest = Trimmed(line);
  std::char_traits<char>::move(line, rest.data(), rest.size())[rest.size()] = '\0';
}

void WLNSParseLine(WLNSRec* rec, const char* text) { Fill(*rec, Split(text)); }
