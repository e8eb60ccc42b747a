#pragma once

// What the form engine and the painter share: how far the field being edited is scrolled, so that
// the drawing of a field and the keys that act on it never disagree.

#include "forms/forms.h"

// One run of ProcessWindowData. Forms nest: a handler may open another screen.
struct FormRun {
  WINDOW* window;
  ScreenField* table;
  FormRun* outer;                // the form that this one was opened from, or null
  ScreenField* field = nullptr;  // the field that the offset belongs to
  int ScrollOffset = 0;          // index of the character shown in the field's first column
};

// The innermost form under way, null when there is none.
extern FormRun* CurrentForm;

// Returns the form that runs on `window`, or null.
FormRun* FindForm(const WINDOW* window);

// Width in columns within which fields of `window` are laid out.
int FormColumns(const WINDOW* window);

// Draws the field, its value from index `offset` on, without touching the right border. The cursor
// of the window is left anywhere.
void DrawField(WINDOW* window, const ScreenField& field, int offset);

// Notes that the window now shows every value from its first character.
void ForgetScroll(const WINDOW* window);
