#include "forms/table_access.h"

#include <algorithm>
#include <cstring>

namespace {

bool IsSentinel(const ScreenField& row) {
  return row.label_row == kTableEnd && row.label_column == kTableEnd &&
         row.field_row == kTableEnd && row.field_column == kTableEnd;
}

// The leftmost enterable field on the line of `field`, not above `first`: tables list the fields of
// a line from left to right.
ScreenField* StartOfLine(ScreenField* field, const ScreenField* first) {
  ScreenField* leftmost = field;
  for (ScreenField* row = field; row > first;) {
    --row;
    if (!IsEnterable(*row)) continue;
    if (row->field_row != field->field_row) break;
    leftmost = row;
  }
  return leftmost;
}

}  // namespace

std::span<ScreenField> Rows(ScreenField* table) {
  std::size_t count = 0;
  while (!IsSentinel(table[count])) {
    ++count;
  }
  return {table, count};
}

bool HasField(const ScreenField& row) { return row.field_row >= 0 && row.field_column >= 0; }

bool IsEnterable(const ScreenField& row) {
  return row.field_row != -1 && (row.flags & FLD_PROTECTED) == 0;
}

ScreenField* FindField(ScreenField* table, const char* name) {
  for (ScreenField& row : Rows(table)) {
    if (row.name != nullptr && std::strcmp(row.name, name) == 0) return &row;
  }
  return nullptr;
}

ScreenField* FindFieldAt(ScreenField* table, int row, int column) {
  for (ScreenField& field : Rows(table)) {
    if (field.field_row == row && field.field_column <= column &&
        field.field_column + field.width >= column) {
      return &field;
    }
  }
  return nullptr;
}

ScreenField* FirstField(ScreenField* table) {
  const std::span<ScreenField> rows = Rows(table);
  const auto found = std::ranges::find_if(rows, IsEnterable);
  return found != rows.end() ? &*found : nullptr;
}

ScreenField* LastField(ScreenField* table) {
  const std::span<ScreenField> rows = Rows(table);
  const auto found = std::find_if(rows.rbegin(), rows.rend(), IsEnterable);
  return found != rows.rend() ? &*found : nullptr;
}

ScreenField* NextField(ScreenField* table, ScreenField* current) {
  ScreenField* last = LastField(table);
  if (last == nullptr) return current;
  if (current == last) return FirstField(table);
  for (ScreenField* row = current + 1; row <= last; ++row) {
    if (IsEnterable(*row) && row->field_row != current->field_row) return row;
  }
  return current;
}

ScreenField* PrevField(ScreenField* table, ScreenField* current) {
  ScreenField* first = FirstField(table);
  if (first == nullptr) return current;
  ScreenField* candidate = first;
  if (current == first) {
    candidate = LastField(table);
  } else {
    for (ScreenField* row = current; row > first;) {
      --row;
      if (IsEnterable(*row) && row->field_row != current->field_row) {
        candidate = row;
        break;
      }
    }
  }
  return StartOfLine(candidate, first);
}
