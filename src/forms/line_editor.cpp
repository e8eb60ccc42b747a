#include "forms/line_editor.h"

#include <algorithm>
#include <cstring>

int LineEditor::Length() const { return static_cast<int>(std::strlen(value)); }

Edit LineEditor::Left() {
  if (cursor > offset) {
    --cursor;
    return Edit::kMoved;
  }
  if (offset > 0) {
    cursor = --offset;
    return Edit::kMoved;
  }
  return Edit::kNothing;
}

Edit LineEditor::Right() {
  const int length = Length();
  if (cursor >= length) {
    return Edit::kRefused;
  }
  if (cursor - offset < reach) {
    ++cursor;
    return Edit::kMoved;
  }
  if (cursor + 1 < length) {
    ++cursor;
    ++offset;
    return Edit::kMoved;
  }
  return Edit::kNothing;
}

Edit LineEditor::Type(char character) {
  if (cursor >= width || cursor > Length()) {
    return Edit::kRefused;
  }
  value[cursor] = character;
  if (cursor - offset == room) {
    ++offset;
  }
  ++cursor;
  return Edit::kChanged;
}

Edit LineEditor::EraseLeft() {
  return cursor > offset && cursor <= Length() ? Remove(cursor - 1) : Edit::kRefused;
}

Edit LineEditor::EraseUnder() {
  return cursor - offset < room && cursor < Length() ? Remove(cursor) : Edit::kRefused;
}

Edit LineEditor::Remove(int index) {
  const int length = Length();
  std::memmove(value + index, value + index + 1, static_cast<std::size_t>(length - index));
  cursor = index;
  if (length - 1 <= room) {
    offset = 0;
  }
  return Edit::kChanged;
}

void LineEditor::Fit() {
  const int length = Length();
  const int last_place = std::max(cursor < length ? room - 1 : room, 0);
  offset = length <= room ? 0 : std::max(offset, cursor - last_place);
}
