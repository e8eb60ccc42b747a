#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include "config/evseccfg.h"
#include "screens/screen_common.h"
#include "screens/screens.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "shell/trace_log.h"

constinit const char* const ModeNames[] = {"DISABLED", "ENABLED", "WARNING", ""};

namespace {

ScreenField* Field(const char* name) { return FindField(UpdateScreen, name); }

// --- Modes ---

// Returns the word for a record's mode; the last one, WARNING, for a letter that is none of them.
const char* ModeWord(char letter) {
  const auto* last = std::end(ModeNames) - 2;
  return *std::find_if(ModeNames, last, [letter](const char* word) { return *word == letter; });
}

// --- Opening ---

void Protect(const char* name, bool is_protected) {
  if (ScreenField* field = Field(name); field != nullptr) {
    field->flags = is_protected ? field->flags | FLD_PROTECTED : field->flags & ~FLD_PROTECTED;
  }
}

bool PrepareToAdd() {
  const bool read_only = RootAuthority == 0;
  Protect("node", read_only);
  Protect("userid", read_only);
  SetValue(Field("mode"), "ENABLED");
  Protect("mode", read_only);
  return true;
}

// Looks the record up and shows it in the fields; false when it is not there.
bool PrepareToChange(WINDOW* parent, const char* nodeMask, const char* useridMask) {
  const RecordPtr key = NewRecord(nodeMask, useridMask);
  if (!key) {
    Shutdown(0);
  }
  TraceFormat("Looking for Node: <%s>, User: <%s>", key->nodemask, key->usermask);
  if (WLNSGetRec(key.get()) != 0) {
    ShowNotFound(parent, *key);
    return false;
  }
  TraceLog("Populating screen structure");
  SetValue(Field("node"), key->nodemask);
  Protect("node", true);
  SetValue(Field("userid"), key->usermask);
  Protect("userid", true);
  SetValue(Field("mode"), ModeWord(key->mode));
  if (RootAuthority == 0) {
    Protect("mode", true);
  }
  return true;
}

// --- Checking and storing ---

// Returns what is wrong with a mask, "" when nothing is. Of several characters that the mask may
// not hold the leftmost counts. A comma would end it when the file is read again.
std::string MaskMessage(std::string_view mask, const char* missing, const char* name) {
  if (mask.empty()) return missing;
  const std::size_t at = mask.find_first_of("?,*");
  if (at == std::string_view::npos || (mask[at] == '*' && at + 1 == mask.size())) return "";
  return std::string(mask[at] == '*' ? "Imbedded \"" : "\"") + mask[at] + "\" not allowed in " +
         name;
}

// Unlike toupper, it leaves bytes beyond ASCII alone in every locale.
char ToUpper(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// Turns the mode in the field to upper case.
void ModeToUpperCase(WINDOW* win, ScreenField* field) {
  if (*Value(field) != '\0') {
    std::transform(field->value, field->value + field->width, field->value, ToUpper);
    RedrawField(win, field);
  }
}

std::string ModeMessage(const char* mode) {
  if (*mode == '\0') return "Security Mode is missing";
  return kModes.find(*mode) != std::string_view::npos ? "" : "Security Mode is invalid";
}

// Reports a message that is not empty and puts the cursor on the field. Returns whether it did.
bool ReportIfWrong(WINDOW* win, ScreenField* field, const std::string& message) {
  if (message.empty()) return false;
  MessageBox(win, message.c_str(), MBOX_OK);
  if (field != nullptr) {
    MoveToField(win, field);
  }
  return true;
}

bool CheckFields(WINDOW* win) {
  ScreenField* node = Field("node");
  ScreenField* userid = Field("userid");
  ScreenField* mode = Field("mode");
  if (ReportIfWrong(win, node,
                    MaskMessage(Value(node), "Node name is missing", "node name mask")) ||
      ReportIfWrong(win, userid,
                    MaskMessage(Value(userid), "userid mask is missing", "userid mask"))) {
    return false;
  }
  ModeToUpperCase(win, mode);
  return !ReportIfWrong(win, mode, ModeMessage(Value(mode)));
}

// --- Keys ---

int StoreRecord(WINDOW* win) {
  if (RootAuthority == 0) return kClose;
  if (UpdCfgData(win) != 0) return kStay;
  const std::string message = std::string("Configuration for node <") + Value(Field("node")) +
                              "> user <" + Value(Field("userid")) + "> successfully updated";
  MessageBox(win, message.c_str(), MBOX_OK);
  return kClose;
}

int CancelUpdate(WINDOW* win) {
  return FieldsModified == 0 || Confirm(win, "Cancel Update?") ? kClose : kStay;
}

constexpr FormScreen kUpdateForm{.operation = "UpdCfg",
                                 .table = UpdateScreen,
                                 .title = "Halvorn Event Node Security Maintenance"};

constexpr ScreenKeys kUpdateKeys{
    .on_enter = StoreRecord, .on_cancel = CancelUpdate, .provider = AddCfgItem};

}  // namespace

int AddCfg(WINDOW* parent) {
  TraceLog("Enter AddCfg");
  return UpdCfg(parent, "", "");
}

int UpdCfg(WINDOW* parent, const char* nodeMask, const char* useridMask) {
  FieldsModified = 0;
  return RunScreen(kUpdateForm, parent, UpdCfgKeys, [=] {
    return *nodeMask != '\0' ? PrepareToChange(parent, nodeMask, useridMask) : PrepareToAdd();
  });
}

int UpdCfgKeys(WINDOW* win, int code, ScreenField* field) {
  TraceLog("Enter UpdCfgKeys");
  TraceFormat("Key received: %d", code);
  const int result = HandleScreenKey(kUpdateForm, kUpdateKeys, win, code, field);
  TraceLog("Exit UpdCfgKeys");
  return result;
}

int UpdCfgData(WINDOW* win) {
  TraceLog("Enter UpdCfgData");
  if (!CheckFields(win)) return -1;
  const RecordPtr record = NewRecord(Value(Field("node")), Value(Field("userid")));
  if (!record) {
    ShowNoStorage(win);
    return -1;
  }
  record->mode = *Value(Field("mode"));
  const int result = WLNSUpdateRec(record.get());
  if (result != 0) {
    TraceFormat("WLNSUpdateRec failed; rc=%d", result);
    MessageBox(win, "Update of external node security configuration failed", MBOX_OK);
  }
  TraceLog("Exit UpdCfgData");
  return result;
}

const char* AddCfgItem(ScreenField* field) {
  static constinit int position = 0;
  static constinit char item[10] = {};

  TraceLog("Enter AddCfgItem");
  if (std::strcmp(field->name, "mode") != 0) return nullptr;
  CopyText(item, ModeNames[position++]);
  if (*item == '\0') {
    position = 0;
    return nullptr;
  }
  return item;
}
