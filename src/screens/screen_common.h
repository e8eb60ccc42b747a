#pragma once

// What the maintenance screens do alike: act on the keys of their forms, report in boxes, and name
// a record by its two masks.

#include <curses.h>

#include "config/record.h"
#include "forms/forms.h"

// The results of a key handler.
inline constexpr int kStay = 0;
inline constexpr int kClose = 1;

// What the keys of a screen's form do.
struct ScreenKeys {
  int (*on_enter)(WINDOW* win);   // Enter: returns kStay or kClose
  int (*on_cancel)(WINDOW* win);  // F3: returns kStay or kClose
  ItemProvider provider;          // what F4 lists
};

// Acts on a key of the screen's form: Enter and F3 as `keys` say, F4 with the list of the field,
// which may be null. Returns kStay or kClose.
int HandleScreenKey(const FormScreen& screen, const ScreenKeys& keys, WINDOW* win, int code,
                    ScreenField* field);

// Returns kClose: F3 in screens that hold no unsaved changes.
int CloseScreen(WINDOW* win);

// Asks `question` in a box over `parent`, traces the answer and returns whether it is yes.
bool Confirm(WINDOW* parent, const char* question);

// Returns a new record with the two masks and no mode, null with a trace line when there is no
// memory for it.
[[nodiscard]] RecordPtr NewRecord(const char* nodeMask, const char* useridMask);

// Reports over `parent` that there was no memory for a record.
void ShowNoStorage(WINDOW* parent);

// Reports over `parent` that there is no record with the masks of `key`.
void ShowNotFound(WINDOW* parent, const WLNSRec& key);
