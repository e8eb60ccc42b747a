#pragma once

// The maintenance screens behind the main menu. Each operation named ...Cfg runs its screen over
// the window `parent` until the operator leaves it, and returns 0, or -1 when the screen could not
// be opened. The key handlers and item providers follow the protocols of forms/forms.h.

#include <curses.h>

#include "forms/forms.h"

// --- Add / update screen ---

// The mode words in the order in which they are listed, closed by "".
extern const char* const ModeNames[];

// Opens the form with empty masks and the mode "ENABLED", to add a record.
int AddCfg(WINDOW* parent);

// Opens the form for the record with the two masks, to change its mode; an empty `nodeMask` means
// to add a record. A record that is not there is reported over `parent`, and the result is 0. The
// program is shut down when there is no memory to look it up.
int UpdCfg(WINDOW* parent, const char* nodeMask, const char* useridMask);

int UpdCfgKeys(WINDOW* win, int code, ScreenField* field);

// Checks the fields of the form and stores the record, reporting what is wrong in boxes over `win`.
// Returns 0 when the record was stored, -1 or the store's result otherwise.
int UpdCfgData(WINDOW* win);

// Lists the mode words for the field "mode", nothing for other fields.
const char* AddCfgItem(ScreenField* field);

// --- Selection screen ---

// Lets the operator name one record after another and opens each in the add / update screen.
int SelectCfg(WINDOW* parent);

int SelCfgKeys(WINDOW* win, int code, ScreenField* field);

// Lists the distinct masks in the file for a field of SelectScreen: node masks for the field
// "node", userid masks for any other, of the records that have the other field's mask when it is
// not empty.
const char* SelCfgItem(ScreenField* field);

// --- Delete screen ---

// Lets the operator name a record and, asked once more, removes it.
int DelCfg(WINDOW* parent);

int DelCfgKeys(WINDOW* win, int code, ScreenField* field);
