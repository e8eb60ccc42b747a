#pragma once

// Drawing a screen and its fields. The cursor of the window is left anywhere.

#include "forms/forms.h"

// Clears the window but for its border, which keeps the characters that it is drawn with.
void ClearToBorder(WINDOW* window);

// Draws the title (may be null), the labels, and the fields from their first characters on a window
// that has nothing but its border.
void DrawScreen(WINDOW* window, ScreenField* table, const char* title);

// Draws the field, its value from index `offset` on, without touching the right border.
void DrawField(WINDOW* window, const ScreenField& field, int offset);
