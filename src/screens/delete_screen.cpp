#include <string>

#include "config/evseccfg.h"
#include "screens/screen_common.h"
#include "screens/screens.h"
#include "shell/shell_state.h"
#include "shell/trace_log.h"

namespace {

// Removes the named record once the operator has confirmed it, and closes the screen.
int ConfirmAndDelete(WINDOW* win, const WLNSRec& key) {
  const std::string question =
      std::string("Delete node <") + key.nodemask + "> userid <" + key.usermask + "> ?";
  if (!Confirm(win, question.c_str())) return kStay;
  if (WLNSDeleteRec(&key) != 0) {
    TraceLog("WLNSDeleteRec failed");
  }
  return kClose;
}

int Refuse(WINDOW* win, const char* message, int result) {
  MessageBox(win, message, MBOX_OK);
  return result;
}

int RemoveRecord(WINDOW* win) {
  if (RootAuthority == 0) {
    return Refuse(win, "Configuration is Read Only to non-root users", kClose);
  }
  const RecordPtr key =
      NewRecord(Value(FindField(SelectScreen, "node")), Value(FindField(SelectScreen, "userid")));
  if (!key) {
    ShowNoStorage(win);
    return kClose;
  }
  if (*key->nodemask == '\0') return Refuse(win, "Node name mask is missing", kStay);
  if (*key->usermask == '\0') return Refuse(win, "Userid mask is missing", kStay);
  if (WLNSGetRec(key.get()) != 0) {
    ShowNotFound(win, *key);
    return kStay;
  }
  return ConfirmAndDelete(win, *key);
}

constexpr FormScreen kDeleteForm{.operation = "DelCfg",
                                 .table = SelectScreen,
                                 .title = "Halvorn Event Node Security Maintenance - Delete"};

constexpr ScreenKeys kDeleteKeys{
    .on_enter = RemoveRecord, .on_cancel = CloseScreen, .provider = SelCfgItem};

}  // namespace

int DelCfg(WINDOW* parent) { return RunScreen(kDeleteForm, parent, DelCfgKeys); }

int DelCfgKeys(WINDOW* win, int code, ScreenField* field) {
  TraceLog("Enter DelCfgKeys");
  const int result = HandleScreenKey(kDeleteForm, kDeleteKeys, win, code, field);
  TraceLog("Exit DelCfgKeys");
  return result;
}
