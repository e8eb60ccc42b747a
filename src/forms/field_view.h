#pragma once

// How an input field stands on its line, given the width of its window and how far the value is
// scrolled. Nothing here draws.

#include <string>

#include "forms/forms.h"

inline constexpr int kMaxFieldWidth = 256;  // most bytes of a value that are drawn on a line

// The column just right of the last one that shows a character of the value; `columns` is the width
// of the window. The closing mark stands there when the visible part is full, always left of the
// right border.
int VisibleEnd(const ScreenField& field, int columns);

// How many characters of the value can show at a time.
int VisibleWidth(const ScreenField& field, int columns);

// The field as it is drawn from the opening mark on, with the value from index `offset` on: the
// marks are "[" and "]", or "<" and ">" where characters are hidden on that side, and blanks fill
// the line up to VisibleEnd.
[[nodiscard]] std::string FieldLine(const ScreenField& field, int offset, int columns);
