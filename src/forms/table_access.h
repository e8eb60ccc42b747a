#pragma once

// Walking and searching a screen table. The tables and their rows are described in forms/forms.h.

#include <span>

#include "forms/forms.h"

// The rows of `table` before its sentinel.
std::span<ScreenField> Rows(ScreenField* table);

// Whether the row has an input field, and whether the cursor may stop at it.
bool HasField(const ScreenField& row);
bool IsEnterable(const ScreenField& row);

// Returns the field that covers the window position, the column behind its last one included, or
// null.
ScreenField* FindFieldAt(ScreenField* table, int row, int column);

// Return the first and the last enterable row, null when there is none.
ScreenField* FirstField(ScreenField* table);
ScreenField* LastField(ScreenField* table);

// Return the field that Down and Up lead to from `current`: the first one of the next line, or of
// the previous line, that has enterable fields, wrapping around; where all fields stand on one
// line, the first of them or `current`.
ScreenField* NextField(ScreenField* table, ScreenField* current);
ScreenField* PrevField(ScreenField* table, ScreenField* current);
