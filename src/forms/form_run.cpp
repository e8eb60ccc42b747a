#include "forms/form_run.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "forms/field_view.h"
#include "forms/screen_drawing.h"
#include "forms/table_access.h"
#include "forms/text.h"
#include "shell/trace_log.h"

namespace {

constexpr int kCtrlH = 8;
constexpr int kDelete = 127;
constexpr int kLowByte = 0xff;

EditResult ApplyKey(LineEditor& line, int key) {
  switch (key) {
    case KEY_LEFT:
      return line.Left();
    case KEY_RIGHT:
      return line.Right();
    case kCtrlH:
    case KEY_BACKSPACE:
      return line.EraseLeft();
    case kDelete:
    case KEY_DC:
      return line.EraseUnder();
    default:
      // Of any other key the low byte is typed.
      static_assert(!IsPrintable(KEY_RESIZE & kLowByte), "a resize would type a character");
      const int character = key & kLowByte;
      return IsPrintable(character) ? line.Type(static_cast<char>(character))
                                    : EditResult::kNothing;
  }
}

void TraceValue(const char* which, const char* value) {
  TraceFormat("%s String:  <%s>; Len=%d", which, value, static_cast<int>(std::strlen(value)));
}

// Traces a change, `text` being the value before it, `before` and `after` the editor's states: both
// values and, after a removal, every other character that was visible.
void TraceChange(const std::string& text, const LineEditor& before, const LineEditor& after) {
  const int length = static_cast<int>(text.size());
  TraceValue("Old", text.c_str());
  if (after.Length() < length) {
    for (int index = before.ScrollOffset;
         index < std::min(length, before.ScrollOffset + before.visible_width); ++index) {
      if (index != after.cursor) {  // which is where the removed one was
        TraceFormat("Extract char:  <%c>", text[static_cast<std::size_t>(index)]);
      }
    }
  }
  TraceValue("New", after.value);
}

}  // namespace

FormRun::FormRun(WINDOW* window, ScreenField* table) : Layer(window), table_(table) {
  SetField(FirstField(table));
}

FormRun* FormRun::On(const WINDOW* window) {
  for (Layer* layer = Bottom(); layer != nullptr; layer = layer->above()) {
    if (auto* form = dynamic_cast<FormRun*>(layer); form != nullptr && form->window() == window) {
      return form;
    }
  }
  return nullptr;
}

bool FormRun::LayOut() {
  if (Current() != nullptr) {
    line_ = unfitted_;
    Measure();
    if (line_.visible_width != unfitted_.visible_width) {
      line_.Fit();
    }
  }
  Show();
  return true;
}

ScreenField* FormRun::Current() const {
  return field_ != nullptr && InSight(*field_) ? field_ : nullptr;
}

void FormRun::MoveTo(ScreenField* field) {
  SetField(field);
  Show();
}

void FormRun::FollowCursor() {
  const Cursor at{getcury(window()), getcurx(window())};
  if (field_ != nullptr && at == CursorPosition()) return;
  ScreenField* found = FindFieldAt(table_, at.row, at.column);
  if (found != field_) {
    SetField(found);
  }
  if (field_ == nullptr) return;
  const int shown_at = at.column - field_->field_column;
  if (shown_at <= line_.visible_width) {
    line_.cursor = line_.ScrollOffset + shown_at;
    unfitted_ = line_;
  } else {
    SetField(field_);
  }
  Show();
}

void FormRun::EditKey(int key) {
  ScreenField* field = Current();
  if (field == nullptr) return;
  if (key == KEY_DOWN || key == KEY_UP) {
    ScreenField* next = key == KEY_DOWN ? NextField(table_, field) : PrevField(table_, field);
    if (InSight(*next)) {
      MoveTo(next);
    }
    return;
  }
  const std::string text = line_.value;  // for the trace
  const LineEditor before = line_;
  switch (ApplyKey(line_, key)) {
    case EditResult::kNothing:
      return;
    case EditResult::kRefused:
      beep();
      return;
    case EditResult::kChanged:
      FieldsModified = 1;
      TraceChange(text, before, line_);
      break;
    case EditResult::kMoved:
      break;
  }
  unfitted_ = line_;
  Show();
}

int FormRun::ScrollOffsetOf(const ScreenField& field) const {
  return &field == field_ ? line_.ScrollOffset : 0;
}

FormRun::Cursor FormRun::CursorPosition() const {
  return Current() != nullptr
             ? Cursor{field_->field_row, field_->field_column + line_.cursor - line_.ScrollOffset}
             : Cursor{0, 0};
}

bool FormRun::InSight(const ScreenField& field) const {
  return field.field_row < getmaxy(window()) && field.field_column < getmaxx(window());
}

// Makes the field the edited one, at its first character.
void FormRun::SetField(ScreenField* field) {
  field_ = field;
  if (field_ != nullptr) {
    line_ = {.value = field_->value, .width = field_->width};
    Measure();
    unfitted_ = line_;
  }
}

void FormRun::Measure() {
  const int columns = getmaxx(window());
  line_.visible_width = VisibleWidth(*field_, columns);
  // Right moves the cursor at most to the column before the closing mark.
  line_.reach = std::min(line_.visible_width, columns - 3 - field_->field_column);
}

// Draws the edited field as it stands and puts the cursor on its character.
void FormRun::Show() {
  if (Current() != nullptr) {
    DrawField(window(), *field_, line_.ScrollOffset);
  }
  const auto [row, column] = CursorPosition();
  wmove(window(), row, column);
}
