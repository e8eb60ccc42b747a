#include "screens/form_screen.h"

#include <cstdarg>
#include <cstdio>
#include <new>

#include "forms/window.h"
#include "shell/trace_log.h"

namespace {

constexpr int kMessageSize = 256;
constexpr int kRecordAllocation = 104;  // bytes, as traces name it on every platform

// A full-screen window with the field store of its table; both go when it is closed.
class ScreenWindow {
 public:
  explicit ScreenWindow(ScreenField* table)
      : table_(table),
        window_(OpenWindow(LINES, COLS, 0, 0)),
        complete_(window_ && AllocScreenFields(table) == 0) {}
  ~ScreenWindow() {
    if (window_) {
      window_.reset();
      FreeScreenFields(table_);
    }
  }
  ScreenWindow(const ScreenWindow&) = delete;
  ScreenWindow& operator=(const ScreenWindow&) = delete;

  [[nodiscard]] bool complete() const { return complete_; }
  [[nodiscard]] WINDOW* window() const { return window_.get(); }

 private:
  ScreenField* table_;
  WindowPtr window_;
  bool complete_;
};

void ListValues(const FormScreen& screen, WINDOW* win, ScreenField* field) {
  if (field == nullptr) {
    TraceLog("Input field not found");
    return;
  }
  TraceFormat("Input field:  %s", field->label);
  ListBox(win, field, screen.provider);
  TraceFormat("ListBox returned:  %s", Value(field));
  PaintScreen(win, screen.table, screen.title);
}

[[gnu::format(printf, 3, 0)]] int ShowFormatted(WINDOW* parent, int type, const char* format,
                                                std::va_list arguments) {
  char text[kMessageSize];
  (void)std::vsnprintf(text, sizeof text, format, arguments);
  return MessageBox(parent, text, type);
}

}  // namespace

int RunFormScreen(const FormScreen& screen, WINDOW* parent, const char* nodeMask,
                  const char* useridMask) {
  TraceFormat("Enter %s", screen.operation);
  {
    const ScreenWindow opened(screen.table);
    if (!opened.complete()) {
      return -1;
    }
    if (screen.prepare == nullptr || screen.prepare(parent, nodeMask, useridMask)) {
      PaintScreen(opened.window(), screen.table, screen.title);
      ProcessWindowData(opened.window(), screen.table, screen.handler);
    }
  }
  noecho();  // whatever the screen did, keys are not to show on the next one
  Restore(parent);
  TraceFormat("Exit %s", screen.operation);
  return 0;
}

int HandleFormKey(const FormScreen& screen, WINDOW* win, int code, ScreenField* field) {
  switch (code) {
    case CODE_ENTER:
      TraceLog("ENTER key");
      return screen.on_enter(win);
    case CODE_F3:
      TraceLog("PF3 key");
      return screen.on_cancel(win);
    case CODE_F4:
      TraceLog("PF4 key");
      ListValues(screen, win, field);
      return kStay;
    default:
      return kStay;
  }
}

int ShowMessage(WINDOW* parent, int type, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int answer = ShowFormatted(parent, type, format, arguments);
  va_end(arguments);
  return answer;
}

bool Confirm(WINDOW* parent, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int answer = ShowFormatted(parent, MBOX_YESNO, format, arguments);
  va_end(arguments);
  TraceFormat("Button option %d selected", answer);
  return answer == MBOX_ANS_YES;
}

RecordPtr NewRecord(const char* nodeMask, const char* useridMask) {
  RecordPtr key(new (std::nothrow) WLNSRec{});
  if (!key) {
    TraceFormat("malloc failed for %d bytes", kRecordAllocation);
    return nullptr;
  }
  CopyText(key->nodemask, nodeMask);
  CopyText(key->usermask, useridMask);
  return key;
}

void ShowNoStorage(WINDOW* parent) { MessageBox(parent, "Storage allocation failed;", MBOX_OK); }

void ShowNotFound(WINDOW* parent, const WLNSRec& key) {
  ShowMessage(parent, MBOX_OK, "Entry for Node <%s> & User <%s> not found", key.nodemask,
              key.usermask);
}
