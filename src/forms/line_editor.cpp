#include "forms/line_editor.h"

#include <algorithm>
#include <cstring>

int LineEditor::Length() const { return static_cast<int>(std::strlen(value)); }

EditResult LineEditor::Left() {
  if (cursor > ScrollOffset) {
    --cursor;
    return EditResult::kMoved;
  }
  if (ScrollOffset > 0) {
    cursor = --ScrollOffset;
    return EditResult::kMoved;
  }
  return EditResult::kNothing;
}

EditResult LineEditor::Right() {
  const int length = Length();
  if (cursor >= length) return EditResult::kRefused;
  if (cursor - ScrollOffset < reach) {
    ++cursor;
    return EditResult::kMoved;
  }
  if (cursor + 1 < length) {
    ++cursor;
    ++ScrollOffset;
    return EditResult::kMoved;
  }
  return EditResult::kNothing;
}

EditResult LineEditor::Type(char character) {
  if (cursor >= width || cursor > Length()) return EditResult::kRefused;
  value[cursor] = character;
  if (cursor - ScrollOffset == visible_width) {
    ++ScrollOffset;
  }
  ++cursor;
  return EditResult::kChanged;
}

EditResult LineEditor::EraseLeft() {
  return cursor > ScrollOffset && cursor <= Length() ? Remove(cursor - 1) : EditResult::kRefused;
}

EditResult LineEditor::EraseUnder() {
  return cursor - ScrollOffset < visible_width && cursor < Length() ? Remove(cursor)
                                                                    : EditResult::kRefused;
}

EditResult LineEditor::Remove(int index) {
  const int length = Length();
  std::memmove(value + index, value + index + 1, static_cast<std::size_t>(length - index));
  cursor = index;
  if (length - 1 <= visible_width) {
    ScrollOffset = 0;
  }
  return EditResult::kChanged;
}

void LineEditor::Fit() {
  const int length = Length();
  cursor = std::min(cursor, length);
  const int last_place = std::max(cursor < length ? visible_width - 1 : visible_width, 0);
  const int fullest = std::max(length - visible_width, 0);
  ScrollOffset = std::max(std::min(ScrollOffset, fullest), cursor - last_place);
}
