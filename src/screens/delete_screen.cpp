#include "config/evseccfg.h"
#include "screens/form_screen.h"
#include "screens/screens.h"
#include "shell/shell_state.h"
#include "shell/trace_log.h"

namespace {

int OnEnter(WINDOW* win);
int OnCancel(WINDOW* win);

constexpr FormScreen kDeleteForm{.operation = "DelCfg",
                                 .table = SelectScreen,
                                 .title = "Halvorn Event Node Security Maintenance - Delete",
                                 .prepare = nullptr,
                                 .handler = DelCfgKeys,
                                 .on_enter = OnEnter,
                                 .on_cancel = OnCancel,
                                 .provider = SelCfgItem};

// Removes the named record once the operator has confirmed it, and closes the screen.
int ConfirmAndDelete(WINDOW* win, const WLNSRec& key) {
  if (!Confirm(win, "Delete node <%s> userid <%s> ?", key.nodemask, key.usermask)) {
    return kStay;
  }
  if (WLNSDeleteRec(&key) != 0) {
    TraceLog("WLNSDeleteRec failed");
  }
  return kClose;
}

int Refuse(WINDOW* win, const char* message, int result) {
  MessageBox(win, message, MBOX_OK);
  return result;
}

int OnEnter(WINDOW* win) {
  if (RootAuthority == 0) {
    return Refuse(win, "Configuration is Read Only to non-root users", kClose);
  }
  const RecordPtr key =
      NewRecord(Value(FindField(SelectScreen, "node")), Value(FindField(SelectScreen, "userid")));
  if (!key) {
    ShowNoStorage(win);
    return kClose;
  }
  if (*key->nodemask == '\0') {
    return Refuse(win, "Node name mask is missing", kStay);
  }
  if (*key->usermask == '\0') {
    return Refuse(win, "Userid mask is missing", kStay);
  }
  if (WLNSGetRec(key.get()) != 0) {
    ShowNotFound(win, *key);
    return kStay;
  }
  return ConfirmAndDelete(win, *key);
}

int OnCancel(WINDOW* /*win*/) { return kClose; }

}  // namespace

int DelCfg(WINDOW* parent) { return RunFormScreen(kDeleteForm, parent); }

int DelCfgKeys(WINDOW* win, int code, ScreenField* field) {
  TraceLog("Enter DelCfgKeys");
  const int result = HandleFormKey(kDeleteForm, win, code, field);
  TraceLog("Exit DelCfgKeys");
  return result;
}
