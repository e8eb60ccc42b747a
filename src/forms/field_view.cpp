#include "forms/field_view.h"

#include <algorithm>
#include <string_view>

int VisibleEnd(const ScreenField& field, int columns) {
  const int full = field.field_column + std::min(field.width, kMaxFieldWidth);
  return std::max(std::min(full, columns - 2), field.field_column);
}

int VisibleWidth(const ScreenField& field, int columns) {
  return VisibleEnd(field, columns) - field.field_column;
}

std::string FieldLine(const ScreenField& field, int offset, int columns) {
  const std::string_view value = Value(&field);
  const auto width = static_cast<std::size_t>(VisibleWidth(field, columns));
  const auto first = std::min(static_cast<std::size_t>(offset), value.size());
  std::string shown(value.substr(first, width));
  if ((field.flags & FLD_HIDDEN) != 0) {
    shown.assign(shown.size(), '*');
  }
  const bool more = first + width < value.size();
  std::string line = (offset > 0 ? "<" : "[") + shown + (more ? ">" : "]");
  line.resize(width + 2, ' ');
  return line;
}
