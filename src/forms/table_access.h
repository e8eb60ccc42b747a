#pragma once

// Searching a screen table and moving between its fields. The tables and their rows are described
// in forms/forms.h.

#include <span>

#include "forms/forms.h"

// The rows of `table` before its sentinel.
std::span<ScreenField> Rows(ScreenField* table);

// Whether the row has an input field.
bool HasField(const ScreenField& row);

// Whether the cursor may stop at the row's input field.
bool IsEnterable(const ScreenField& row);

// Returns the field that covers the window position, the column after its last one included, or
// null.
[[nodiscard]] ScreenField* FindFieldAt(ScreenField* table, int row, int column);

// Returns the first enterable row, null when there is none.
[[nodiscard]] ScreenField* FirstField(ScreenField* table);

// Returns the last enterable row, null when there is none.
[[nodiscard]] ScreenField* LastField(ScreenField* table);

// Returns the field that Down leads to from `current`: the first one of the next line that has
// enterable fields, wrapping around; where all fields stand on one line, the first or `current`.
[[nodiscard]] ScreenField* NextField(ScreenField* table, ScreenField* current);

// Returns the field that Up leads to from `current`: the first one of the previous line that has
// enterable fields, wrapping around.
[[nodiscard]] ScreenField* PrevField(ScreenField* table, ScreenField* current);
