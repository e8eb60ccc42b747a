#include <algorithm>
#include <cstring>

#include "config/evseccfg.h"
#include "screens/screen_common.h"
#include "screens/screens.h"
#include "shell/trace_log.h"

namespace {

const char* MaskIn(const char* name) { return Value(FindField(SelectScreen, name)); }

// Opens the named record over the selection, which stays.
int OpenRecord(WINDOW* win) {
  const char* node = MaskIn("node");
  const char* userid = MaskIn("userid");
  if (*node == '\0' || *userid == '\0') {
    MessageBox(win, "Both Node and User masks are required", MBOX_OK);
  } else {
    UpdCfg(win, node, userid);
  }
  return kStay;
}

static_assert(kMaxItemLength >= std::max(kNodeMaskLength, kUserMaskLength),
              "a list would cut masks");

// The listing under way: how many items it has handed out, and the records that are left.
constinit int listed_items = 0;
constinit WLNSRec* listing_rest = nullptr;

constexpr FormScreen kSelectionForm{.operation = "SelectCfg",
                                    .table = SelectScreen,
                                    .title = "Halvorn Event Node Security Maintenance - Selection"};

constexpr ScreenKeys kSelectionKeys{
    .on_enter = OpenRecord, .on_cancel = CloseScreen, .provider = SelCfgItem};

}  // namespace

int SelectCfg(WINDOW* parent) { return RunScreen(kSelectionForm, parent, SelCfgKeys); }

int SelCfgKeys(WINDOW* win, int code, ScreenField* field) {
  TraceLog("Enter SelCfgKeys");
  const int result = HandleScreenKey(kSelectionForm, kSelectionKeys, win, code, field);
  TraceLog("Exit SelCfgKeys");
  return result;
}

const char* SelCfgItem(ScreenField* field) {
  static constinit char item[kNodeMaskLength + 1] = {};

  TraceLog("Enter SelCfgItem");
  const bool lists_nodes = std::strcmp(field->name, "node") == 0;
  if (listed_items == 0) {
    listing_rest =
        lists_nodes ? WLNSListNodeMasks(MaskIn("userid")) : WLNSListUserMasks(MaskIn("node"));
  }
  if (listing_rest == nullptr) {
    listed_items = 0;
    return nullptr;
  }
  const RecordPtr first(listing_rest);
  listing_rest = first->next;
  CopyText(item, lists_nodes ? first->nodemask : first->usermask);
  ++listed_items;
  return item;
}
