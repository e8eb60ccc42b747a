#pragma once

// One record of the node security configuration, the owners that release records, and the results
// of the store's operations.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

inline constexpr int kNodeMaskLength = 64;  // most bytes of a node mask
inline constexpr int kUserMaskLength = 32;  // most bytes of a userid mask

inline constexpr std::string_view kModes = "DEW";  // disabled, enabled, warning

// A node mask and a userid mask, each zero-terminated and compared as plain text, and the security
// mode of the pair, one of kModes. A record read from a hand-edited file may hold any other byte as
// its mode, a zero byte where the file has none. Records are allocated one by one with `new`,
// zero-filled, and form lists in file order.
struct WLNSRec {
  char nodemask[kNodeMaskLength + 1];
  char usermask[kUserMaskLength + 1];
  char mode;
  WLNSRec* next;
};

using RecordPtr = std::unique_ptr<WLNSRec>;

// Owns a list; it is released one record after another, however long it is.
class RecordList {
 public:
  explicit RecordList(WLNSRec* first = nullptr) : head(first) {}
  RecordList(const RecordList&) = delete;
  RecordList& operator=(const RecordList&) = delete;
  ~RecordList() {
    while (head != nullptr) {
      delete std::exchange(head, head->next);
    }
  }

  // Hands the list over to the caller.
  [[nodiscard]] WLNSRec* Release() { return std::exchange(head, nullptr); }

  WLNSRec* head;
};

// Copies `text` into a zero-terminated buffer of `Size` bytes, cut to Size - 1 bytes when longer;
// the bytes after it become zero.
template <std::size_t Size>
void CopyText(char (&buffer)[Size], std::string_view text) {
  text = text.substr(0, Size - 1);
  std::fill(std::copy(text.begin(), text.end(), buffer), buffer + Size, '\0');
}

// The operations return 0, a positive error number of the system, or one of these.
inline constexpr int kRefused = -1;        // invalid argument, or the user is not the superuser
inline constexpr int kNoConfigPath = -2;   // the path of the file cannot be built
inline constexpr int kRecordNotFound = 4;  // WLNSGetRec: no record has these masks
inline constexpr int kNoCfgDir = 16;       // WLNSGetCfgDir: the directory has no usable path
