#pragma once

// The form toolkit as the screens use it: forms described by static tables, the values of their
// input fields, list boxes and message boxes.
//
// Conventions of the whole toolkit:
// 1. Rows and columns are curses window coordinates from 0; widths and lengths count bytes, one
//    byte taking one column. A byte that is not printable ASCII is drawn as '?'.
// 2. Functions return 0 or a curses result (OK, ERR) unless their comment says more; -1 is failure.
//    Pointers are not null unless their comment allows it.
// 3. Windows stay the caller's. Boxes open windows of their own and show the one below them again.
// 4. Nothing is drawn outside a window: what does not fit is cut, what lies outside is left out.
// 5. Texts are zero-terminated, and not kept beyond the call unless they stand in a table.

#include <curses.h>

#include <cstdint>
#include <functional>

// --- Screen tables (screen_tables.cpp) ---

inline constexpr std::uint32_t FLD_DYNLABEL = 0x20;   // the label is a buffer of the field store
inline constexpr std::uint32_t FLD_PROTECTED = 0x40;  // the cursor does not stop at the field
inline constexpr std::uint32_t FLD_HIDDEN = 0x80;     // the value is drawn as asterisks

inline constexpr int kDynamicLabelSize = 80;  // bytes of a FLD_DYNLABEL label
inline constexpr int kTableEnd = 255;         // all four positions of a table's sentinel row

// One row of a screen: a label and, where the field positions are not -1, an input field. Tables
// list their rows from top to bottom and end with a sentinel row.
struct ScreenField {
  std::int32_t label_row;
  std::int32_t label_column;
  const char* label;
  std::int32_t field_row;
  std::int32_t field_column;  // of the first character; the opening mark stands left of it
  char* value;                // width + 1 bytes of the field store; null while the screen is closed
  std::int32_t width;         // most characters of the value
  std::uint32_t flags;
  const char* name;  // by which screens find the field; null on a label-only row, and only there
};

// A ScreenTable is an array of ScreenField closed by the sentinel; the tables are process-wide and
// their values and flags change while screens run.
using ScreenTable = ScreenField[];

extern ScreenTable UpdateScreen;  // the add / update form: fields "node", "userid", "mode"
extern ScreenTable SelectScreen;  // the selection and delete forms: fields "node", "userid"

// Returns the field of `table` called `name`, or null; in table_access.cpp.
[[nodiscard]] ScreenField* FindField(ScreenField* table, const char* name);

// --- Values (field_store.cpp) ---

// Gives every field of `table` an empty value buffer and every FLD_DYNLABEL row an empty label of
// kDynamicLabelSize bytes. Returns 0, or -1 at the first allocation that fails: rows before it keep
// their buffers. FreeScreenFields releases them and must be called before the next
// AllocScreenFields.
int AllocScreenFields(ScreenField* table);

// Releases what AllocScreenFields gave to `table`. Returns 0.
int FreeScreenFields(ScreenField* table);

// Makes `text` the value of the field, cut to its width. Does nothing when the field is null or has
// no value buffer.
void SetValue(ScreenField* field, const char* text);

// The value of the field, "" when the field is null or has no value buffer.
[[nodiscard]] const char* Value(const ScreenField* field);

// --- Drawing (form_engine.cpp, as a form that runs on the window follows) ---

// Paints the whole screen: border, title (may be null) over the top border, labels, and values from
// their first characters. The window keeps the border characters it has. The cursor ends on the
// first enterable field, or at row 0, column 0. Returns the result of the refresh.
int PaintScreen(WINDOW* window, ScreenField* table, const char* title);

// Moves to the first character of the field, showing the value from there in the form that runs on
// the window. Returns the curses result of the move; a field outside the window changes nothing.
int MoveToField(WINDOW* window, ScreenField* field);

// Draws the field anew after its value was changed, at its present scroll offset, and refreshes the
// window. The cursor stays.
void RedrawField(WINDOW* window, const ScreenField* field);

// --- Forms (form_engine.cpp) ---

// Set to 1 when the operator changes a value. The toolkit never clears it.
extern int FieldsModified;

// The codes of keys for a KeyHandler: Enter is 1, the function key Fn is n + 1.
enum HandlerCode : int {
  CODE_ENTER = 1,
  CODE_F3 = 4,
  CODE_F4 = 5,
};

// A screen's part in its form: called for Enter and the function keys F1 to F12 with the form's
// window, the code of the key and the field under the cursor (null when there is none). It may draw
// on the window and move its cursor. A result other than 0 ends the form.
using KeyHandler = int (*)(WINDOW* window, int code, ScreenField* field);

// Runs the form that PaintScreen has painted on `window` until `handler` ends it. All fields must
// have buffers, which keep the values. After a resize the form draws the edited field only; a layer
// below it (forms/layer.h) draws the rest, as the one of RunScreen does.
void ProcessWindowData(WINDOW* window, ScreenField* table, KeyHandler handler);

// --- Screens (form_screen.cpp) ---

// A form on a window that fills the screen.
struct FormScreen {
  const char* operation;  // its name in the trace
  ScreenField* table;
  const char* title;  // may be null
};

// Opens the screen over the window `parent`, lets `prepare` preset its fields, runs its form with
// `handler`, closes it and shows the parent again. Without `prepare` the fields start empty; when
// it returns false the form is not shown. A `prepare` that has shown a box must return false: a
// resize while the box was open has not drawn this window anew. Open screens must not share a
// table. Returns 0, or -1 when there is no memory for the window or the fields.
int RunScreen(const FormScreen& screen, WINDOW* parent, KeyHandler handler,
              const std::function<bool()>& prepare = nullptr);

// --- List box (list_box.cpp) ---

inline constexpr int kMaxItemLength = 64;  // longer items are cut
inline constexpr int kMaxItems = 1024;     // items beyond are fetched and dropped

// Returns the next item text to list for `field`, or null at the end, after which the next call
// starts a new list. The text must stay valid until the next call only.
using ItemProvider = const char* (*)(ScreenField* field);

// Shows the items of `provider` in a box over `parent` and stores the one the operator chooses in
// `field`, cut to its width, setting FieldsModified; F3 leaves the field as it is. Returns 0, or -1
// when the box does not fit on the screen (the provider is then not called), or no longer does.
int ListBox(WINDOW* parent, ScreenField* field, ItemProvider provider);

// --- Message box (message_box.cpp) ---

enum MessageBoxType : int {
  MBOX_YESNO = 1,
  MBOX_YESNOCANCEL = 2,
  MBOX_OK = 3,
  MBOX_OKCANCEL = 4,
};

enum MessageBoxAnswer : int {
  MBOX_ANS_YES = 1,
  MBOX_ANS_NO = 2,
  MBOX_ANS_OK = 3,
  MBOX_ANS_CANCEL = 4,
};

// Shows `text` with the buttons of `type` in a box over `parent` until one is chosen. Returns the
// MessageBoxAnswer, or -1 when the box does not fit on the screen, or no longer does, and when
// there is no such type.
int MessageBox(WINDOW* parent, const char* text, int type);
