#include "screens/form_screen.h"

#include <new>
#include <string>

#include "forms/layer.h"
#include "forms/screen_painter.h"
#include "shell/trace_log.h"

namespace {

constexpr int kRecordAllocation = 104;  // bytes, as traces name it on every platform

// A screen as it shows below its form.
class ScreenLayer final : public Layer {
 public:
  ScreenLayer(WINDOW* window, const FormScreen& screen) : Layer(window), screen_(screen) {}

  bool LayOut() override {
    const bool placed = Place(window(), LINES, COLS, 0, 0);
    Frame(window());
    DrawScreen(window(), screen_.table, screen_.title);
    return placed;
  }

 private:
  const FormScreen& screen_;
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

}  // namespace

OpenScreen::OpenScreen(const FormScreen& screen, WINDOW* parent)
    : screen_(screen), parent_(parent) {
  TraceFormat("Enter %s", screen_.operation);
  window_ = OpenWindow(LINES, COLS);
  complete_ = window_ && AllocScreenFields(screen_.table) == 0;
}

OpenScreen::~OpenScreen() { Release(); }

void OpenScreen::Release() {
  if (window_) {
    window_.reset();
    FreeScreenFields(screen_.table);
  }
}

void OpenScreen::Run() {
  ScreenLayer layer(window_.get(), screen_);
  PaintScreen(window_.get(), screen_.table, screen_.title);
  ProcessWindowData(window_.get(), screen_.table, screen_.handler);
}

int OpenScreen::Close() {
  Release();
  noecho();  // whatever the screen did, keys are not to show on the next one
  Restore(parent_);
  TraceFormat("Exit %s", screen_.operation);
  return 0;
}

int RunFormScreen(const FormScreen& screen, WINDOW* parent) {
  OpenScreen opened(screen, parent);
  if (!opened.complete()) {
    return -1;
  }
  opened.Run();
  return opened.Close();
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

int CloseScreen(WINDOW* /*win*/) { return kClose; }

bool Confirm(WINDOW* parent, const char* question) {
  const int answer = MessageBox(parent, question, MBOX_YESNO);
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
  const std::string message =
      std::string("Entry for Node <") + key.nodemask + "> & User <" + key.usermask + "> not found";
  MessageBox(parent, message.c_str(), MBOX_OK);
}
