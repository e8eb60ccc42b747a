#pragma once

// What the maintenance screens do alike: open and close their window and fields, share out the
// keys, list values for a field, report in boxes, and name a record by its two masks.

#include <curses.h>

#include "config/record.h"
#include "forms/forms.h"

// What becomes of a form after a key.
inline constexpr int kStay = 0;
inline constexpr int kClose = 1;

// What makes one screen differ from another. Static data of the screen's own source.
struct FormScreen {
  const char* operation;  // the screen's name in the trace
  ScreenField* table;
  const char* title;
  // Sets the fields before the form runs, for the record with the two masks (both empty for none);
  // false when the form is not to run. Null when there is nothing to set.
  bool (*prepare)(WINDOW* parent, const char* nodeMask, const char* useridMask);
  KeyHandler handler;
  int (*on_enter)(WINDOW* win);  // what Enter and F3 do: kStay or kClose
  int (*on_cancel)(WINDOW* win);
  ItemProvider provider;  // what F4 lists
};

// Opens the screen over `parent`, prepares its fields for the record with the two masks, and runs
// its form. Returns 0 when the screen has closed again, -1 when its window or its fields could not
// be had.
int RunFormScreen(const FormScreen& screen, WINDOW* parent, const char* nodeMask = "",
                  const char* useridMask = "");

// Acts on a key of the screen's form: Enter and F3 as the screen has it, F4 with the list of the
// field, which may be null. Returns kStay or kClose.
int HandleFormKey(const FormScreen& screen, WINDOW* win, int code, ScreenField* field);

// Shows a message, formatted as printf does and cut to 255 bytes, in a box of the type over
// `parent`, and returns the answer as MessageBox does.
[[gnu::format(printf, 3, 4)]] int ShowMessage(WINDOW* parent, int type, const char* format, ...);

// Asks a question in the same way, traces the answer and returns whether it is yes.
[[gnu::format(printf, 2, 3)]] bool Confirm(WINDOW* parent, const char* format, ...);

// Returns a new record with the two masks and no mode, null with a trace line when there is no
// memory for it.
RecordPtr NewRecord(const char* nodeMask, const char* useridMask);

// Report over `parent` that there was no memory for a record, and that there is no record with the
// masks of `key`.
void ShowNoStorage(WINDOW* parent);
void ShowNotFound(WINDOW* parent, const WLNSRec& key);
