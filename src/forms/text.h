#pragma once

// Text as the screen takes it: ASCII whatever the locale, one byte a column.

#include <curses.h>

#include <string_view>

// Whether the byte is a letter, digit, punctuation mark or blank of ASCII.
constexpr bool IsPrintable(int byte) { return byte >= ' ' && byte <= '~'; }

// Writes `text`, with a '?' for every byte that is not printable, from (row, column) of the window,
// cut at its right edge. Does nothing when the position is not in the window.
void DrawText(WINDOW* window, int row, int column, std::string_view text);

// Blanks the row from `column` up to the border of the window.
void BlankRow(WINDOW* window, int row, int column);

// Writes `title` centred over the top border of the window; a title too long for that begins where
// the window's cursor stands.
void DrawTitle(WINDOW* window, const char* title);
