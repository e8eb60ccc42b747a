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

bool HasBothMasks(const WLNSRec* rec) {
  return rec != nullptr && *rec->nodemask != '\0' && *rec->usermask != '\0';
}

// Appends the record at the null link `end` of a list. Returns the new end.
WLNSRec** Append(WLNSRec** end, RecordPtr rec) {
  *end = rec.release();
  return &(*end)->next;
}

// Loads every record into `list`. Returns the link that leads to the first one with the masks of
// `wanted`, the null link at the end when there is none; null after an error, which WLNSReadError
// returns.
WLNSRec** LoadAndFind(RecordList& list, const WLNSRec& wanted) {
  list.head = WLNSGetAllRecs();
  if (WLNSReadError() != 0) return nullptr;
  WLNSRec** link = &list.head;
  while (*link != nullptr && !SamePair(**link, wanted)) {
    link = &(*link)->next;
  }
  return link;
}

// One of the two masks of a record.
using MaskOf = const char* (*)(const WLNSRec& rec);

const char* NodeMask(const WLNSRec& rec) { return rec.nodemask; }
const char* UserMask(const WLNSRec& rec) { return rec.usermask; }

int HasMask(const WLNSRec* list, const WLNSRec& rec, MaskOf mask) {
  while (list != nullptr && std::strcmp(mask(*list), mask(rec)) != 0) {
    list = list->next;
  }
  return list != nullptr ? 1 : 0;
}

WLNSRec* ListMasks(const char* nodeMask, const char* useridMask, MaskOf mask) {
  RecordList result;
  WLNSRec** end = &result.head;
  std::unordered_set<std::string_view> listed;  // views into `result`
  try {
    while (RecordPtr rec{WLNSReadRec(nodeMask, useridMask)}) {
      if (listed.insert(mask(*rec)).second) {
        end = Append(end, std::move(rec));
      }
    }
  } catch (const std::bad_alloc&) {
    WLNSEndRead();  // the list ends early, as when there is no memory for a record
  }
  return result.Release();
}

}  // namespace

int WLNSGetRec(WLNSRec* rec) {
  const RecordPtr found(WLNSReadRec(rec->nodemask, rec->usermask));
  WLNSEndRead();
  if (!found) return kRecordNotFound;
  rec->mode = found->mode;
  return 0;
}

int WLNSUpdateRec(const WLNSRec* rec) {
  if (!HasBothMasks(rec) || kModes.find(rec->mode) == std::string_view::npos) return kRefused;
  RecordList list;
  WLNSRec** link = LoadAndFind(list, *rec);
  if (link == nullptr) return WLNSReadError();
  WLNSRec* const next = *link != nullptr ? (*link)->next : nullptr;  // all else comes from `rec`
  if (*link == nullptr) {
    *link = new (std::nothrow) WLNSRec{};
    if (*link == nullptr) return ENOMEM;
  }
  **link = *rec;
  (*link)->next = next;
  return WLNSWriteRecs(list.Release());
}

int WLNSDeleteRec(const WLNSRec* rec) {
  if (!HasBothMasks(rec)) return kRefused;
  RecordList list;
  WLNSRec** link = LoadAndFind(list, *rec);
  if (link == nullptr) return WLNSReadError();
  if (*link == nullptr) return 0;
  const RecordPtr removed(*link);
  *link = removed->next;
  return WLNSWriteRecs(list.Release());
}

WLNSRec* WLNSListNodeMasks(const char* useridMask) { return ListMasks("", useridMask, NodeMask); }

WLNSRec* WLNSListUserMasks(const char* nodeMask) { return ListMasks(nodeMask, "", UserMask); }

WLNSRec* WLNSGetAllRecs() {
  RecordList all;
  WLNSRec** end = &all.head;
  while (RecordPtr rec{WLNSReadRec("", "")}) {
    end = Append(end, std::move(rec));
  }
  return all.Release();
}

int WLNSHasNodeMask(const WLNSRec* list, const WLNSRec* rec) {
  return HasMask(list, *rec, NodeMask);
}

int WLNSHasUserMask(const WLNSRec* list, const WLNSRec* rec) {
  return HasMask(list, *rec, UserMask);
}
