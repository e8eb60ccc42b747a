#include "config/evseccfg.h"

#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "config/config_file.h"

namespace {

bool SamePair(const WLNSRec& left, const WLNSRec& right) {
  return std::strcmp(left.nodemask, right.nodemask) == 0 &&
         std::strcmp(left.usermask, right.usermask) == 0;
}

bool NamesPair(const WLNSRec* rec) {
  return rec != nullptr && *rec->nodemask != '\0' && *rec->usermask != '\0';
}

bool IsMode(char mode) { return mode == 'D' || mode == 'E' || mode == 'W'; }

// The link that leads to the first record with the masks of `wanted`, or the null link at the end.
WLNSRec** FindLink(RecordList& list, const WLNSRec& wanted) {
  WLNSRec** link = &list.head;
  while (*link != nullptr && !SamePair(**link, wanted)) {
    link = &(*link)->next;
  }
  return link;
}

// What one of the two mask lists is about: which mask of a record, and whether a list has it.
struct MaskKind {
  std::string_view (*mask)(const WLNSRec& rec);
  int (*list_has)(const WLNSRec* list, const WLNSRec* rec);
};

constexpr MaskKind kNodeMasks{[](const WLNSRec& rec) { return std::string_view(rec.nodemask); },
                              WLNSHasNodeMask};
constexpr MaskKind kUserMasks{[](const WLNSRec& rec) { return std::string_view(rec.usermask); },
                              WLNSHasUserMask};

// The masks that a growing list holds. They are looked up in a set, so that long lists stay quick;
// once there is no memory for the set, the list itself is walked.
class ListedMasks {
 public:
  explicit ListedMasks(const MaskKind& kind) : kind_(kind) {}

  // Whether the mask of `rec` is new to `list`. It then counts as listed; `rec` must join the list
  // and live as long as this object.
  bool Add(const WLNSRec* list, const WLNSRec& rec) {
    if (!walk_) {
      try {
        return masks_.insert(kind_.mask(rec)).second;
      } catch (const std::bad_alloc&) {
        walk_ = true;
      }
    }
    return kind_.list_has(list, &rec) == 0;
  }

 private:
  const MaskKind& kind_;
  std::unordered_set<std::string_view> masks_;
  bool walk_ = false;
};

WLNSRec* ListMasks(const char* nodeMask, const char* useridMask, const MaskKind& kind) {
  WLNSEndRead();
  RecordList result;
  WLNSRec** end = &result.head;
  ListedMasks listed(kind);
  while (RecordPtr rec{WLNSReadRec(nodeMask, useridMask)}) {
    if (listed.Add(result.head, *rec)) {
      *end = rec.release();
      end = &(*end)->next;
    }
  }
  return result.Release();
}

}  // namespace

int WLNSGetRec(WLNSRec* rec) {
  WLNSEndRead();
  const RecordPtr found(WLNSReadRec(rec->nodemask, rec->usermask));
  WLNSEndRead();
  if (!found) {
    return kRecordNotFound;
  }
  rec->mode = found->mode;
  return 0;
}

int WLNSUpdateRec(const WLNSRec* rec) {
  if (!NamesPair(rec) || !IsMode(rec->mode)) {
    return kRefused;
  }
  RecordList list(WLNSGetAllRecs());
  if (const int error = WLNSReadError(); error != 0) {
    return error;
  }
  WLNSRec** link = FindLink(list, *rec);
  if (*link == nullptr) {
    *link = new (std::nothrow) WLNSRec{};
    if (*link == nullptr) {
      return ENOMEM;
    }
    CopyText((*link)->nodemask, rec->nodemask);
    CopyText((*link)->usermask, rec->usermask);
  }
  (*link)->mode = rec->mode;
  return WLNSWriteRecs(list.Release());
}

int WLNSDeleteRec(const WLNSRec* rec) {
  if (!NamesPair(rec)) {
    return kRefused;
  }
  RecordList list(WLNSGetAllRecs());
  if (const int error = WLNSReadError(); error != 0) {
    return error;
  }
  WLNSRec** link = FindLink(list, *rec);
  if (*link == nullptr) {
    return 0;
  }
  const RecordPtr removed(*link);
  *link = removed->next;
  return WLNSWriteRecs(list.Release());
}

WLNSRec* WLNSListNodeMasks(const char* useridMask) { return ListMasks("", useridMask, kNodeMasks); }

WLNSRec* WLNSListUserMasks(const char* nodeMask) { return ListMasks(nodeMask, "", kUserMasks); }

WLNSRec* WLNSGetAllRecs() {
  WLNSEndRead();
  RecordList all;
  WLNSRec** end = &all.head;
  while (WLNSRec* rec = WLNSReadRec("", "")) {
    *end = rec;
    end = &rec->next;
  }
  return all.Release();
}

int WLNSHasNodeMask(const WLNSRec* list, const WLNSRec* rec) {
  for (; list != nullptr; list = list->next) {
    if (std::strcmp(list->nodemask, rec->nodemask) == 0) {
      return 1;
    }
  }
  return 0;
}

int WLNSHasUserMask(const WLNSRec* list, const WLNSRec* rec) {
  for (; list != nullptr; list = list->next) {
    if (std::strcmp(list->usermask, rec->usermask) == 0) {
      return 1;
    }
  }
  return 0;
}
