#include <cstddef>
#include <cstring>
#include <new>
#include <utility>

#include "forms/table_access.h"
#include "shell/trace_log.h"

constinit int FieldsModified = 0;

namespace {

// Returns a zero-filled buffer, null when there is no memory for it.
char* NewBuffer(int size) { return new (std::nothrow) char[static_cast<std::size_t>(size)]{}; }

bool IsDynamic(const ScreenField& row) { return (row.flags & FLD_DYNLABEL) != 0; }

}  // namespace

int AllocScreenFields(ScreenField* table) {
  // FreeScreenFields deletes whatever it finds, also in the rows after one that gets no buffer.
  for (ScreenField& row : Rows(table)) {
    row.value = nullptr;
    if (IsDynamic(row)) {
      row.label = nullptr;
    }
  }
  for (ScreenField& row : Rows(table)) {
    if (HasField(row)) {
      row.value = NewBuffer(row.width + 1);
      if (row.value == nullptr) {
        TraceFormat("malloc for %d bytes failed on field <%s>", row.width + 1, row.name);
        return -1;
      }
    }
    if (IsDynamic(row)) {
      row.label = NewBuffer(kDynamicLabelSize);
      if (row.label == nullptr) return -1;
    }
  }
  return 0;
}

int FreeScreenFields(ScreenField* table) {
  for (ScreenField& row : Rows(table)) {
    delete[] std::exchange(row.value, nullptr);
    if (IsDynamic(row)) {
      delete[] std::exchange(row.label, nullptr);
    }
  }
  return 0;
}

void SetValue(ScreenField* field, const char* text) {
  if (field != nullptr && field->value != nullptr) {
    const auto width = static_cast<std::size_t>(field->width);
    const std::size_t used = strnlen(text, width);
    std::memmove(field->value, text, used);
    std::memset(field->value + used, 0, width + 1 - used);
  }
}

const char* Value(const ScreenField* field) {
  return field != nullptr && field->value != nullptr ? field->value : "";
}
