#pragma once

// How the painter and the form engine draw a single field.

#include "forms/forms.h"

// Width in columns within which fields of `window` are laid out.
int FormColumns(const WINDOW* window);

// Draws the field, its value from index `offset` on, without touching the right border. The cursor
// of the window is left anywhere.
void DrawField(WINDOW* window, const ScreenField& field, int offset);
