#pragma once

// The forms under way: how far the field being edited is scrolled is known to the engine, which
// acts on keys, and to the painter, so that the drawing of a field and the keys in it never
// disagree.

#include "forms/forms.h"

// One run of ProcessWindowData. Forms nest: a handler may open another screen.
struct FormRun {
  WINDOW* window;
  ScreenField* table;
  FormRun* outer;                 // the form that this one was opened from, or null
  ScreenField* field = nullptr;   // the field under the cursor, to which the offset belongs
  ScreenField* edited = nullptr;  // the last field that the cursor was in
  int ScrollOffset = 0;           // index of the character shown in the field's first column
};

// The innermost form under way, null when there is none.
extern FormRun* CurrentForm;

// Returns the form that runs on `window`, or null.
FormRun* FindForm(const WINDOW* window);

// Notes that the window now shows every value from its first character.
void ForgetScroll(const WINDOW* window);
