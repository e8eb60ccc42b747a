#pragma once

// Drawing a screen and its fields, without putting the cursor anywhere.

#include "forms/forms.h"

// Draws the title (may be null), the labels, and the fields from their first characters on a window
// that has nothing but its border.
void DrawScreen(WINDOW* window, ScreenField* table, const char* title);

// Draws the field, its value from index `offset` on, without touching the right border. The cursor
// of the window is left anywhere.
void DrawField(WINDOW* window, const ScreenField& field, int offset);
