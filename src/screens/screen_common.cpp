#include "screens/screen_common.h"

#include <new>
#include <string>

#include "shell/trace_log.h"

namespace {

constexpr int kTracedRecordSize = 104;  // bytes, whatever sizeof(WLNSRec) is

void ListValues(const FormScreen& screen, ItemProvider provider, WINDOW* win, ScreenField* field) {
  if (field == nullptr) {
    TraceLog("Input field not found");
    return;
  }
  TraceFormat("Input field:  %s", field->label);
  ListBox(win, field, provider);
  TraceFormat("ListBox returned:  %s", Value(field));
  PaintScreen(win, screen.table, screen.title);
}

}  // namespace

int HandleScreenKey(const FormScreen& screen, const ScreenKeys& keys, WINDOW* win, int code,
                    ScreenField* field) {
  switch (code) {
    case CODE_ENTER:
      TraceLog("ENTER key");
      return keys.on_enter(win);
    case CODE_F3:
      TraceLog("PF3 key");
      return keys.on_cancel(win);
    case CODE_F4:
      TraceLog("PF4 key");
      ListValues(screen, keys.provider, win, field);
      return kStay;
    default:
      return kStay;
  }
}

int CloseScreen(WINDOW* /*win*/) { return kClose; }

bool Confirm(WINDOW* parent, const char* question) {
  const int answer = MessageBox(parent, question, MBOX_YESNO);
  TraceFormat("Button option %d selected", answer);
  return answer == MBOX_ANS_YES;
}

RecordPtr NewRecord(const char* nodeMask, const char* useridMask) {
  RecordPtr key(new (std::nothrow) WLNSRec{});
  if (!key) {
    TraceFormat("malloc failed for %d bytes", kTracedRecordSize);
    return nullptr;
  }
  CopyText(key->nodemask, nodeMask);
  CopyText(key->usermask, useridMask);
  return key;
}

void ShowNoStorage(WINDOW* parent) { MessageBox(parent, "Storage allocation failed;", MBOX_OK); }

void ShowNotFound(WINDOW* parent, const WLNSRec& key) {
  const std::string message =
      std::string("Entry for Node <") + key.nodemask + "> & User <" + key.usermask + "> not found";
  MessageBox(parent, message.c_str(), MBOX_OK);
}
