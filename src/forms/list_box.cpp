#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <optional>

#include "forms/box.h"
#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/text.h"
#include "shell/trace_log.h"

namespace {

constexpr int kPageSize = 10;
constexpr int kBoxRows = kPageSize + 9;
constexpr int kBoxColumns = 70;

constexpr int kTextColumn = 2;
constexpr int kPromptRow = 2;
constexpr int kTopMarkerRow = 4;
constexpr int kFirstItemRow = 5;
constexpr int kKeyLineRow = kPageSize + 7;

constexpr const char* kTopMarker = "[TOP]       ";
constexpr const char* kBottomMarker = "[BOTTOM]   ";

// Copies of the texts that a provider gave.
using ItemTable = std::array<std::unique_ptr<char[]>, kMaxItems>;

// Returns a copy of the first `length` bytes of `text`, null when there is no memory for it.
std::unique_ptr<char[]> Copy(const char* text, std::size_t length) {
  std::unique_ptr<char[]> copy(new (std::nothrow) char[length + 1]{});
  if (copy) {
    std::memcpy(copy.get(), text, length);
  }
  return copy;
}

// Calls the provider until its end and keeps what the table has room for. Returns the number of
// items kept.
int Gather(ItemTable& items, ItemProvider provider, ScreenField* field) {
  std::size_t count = 0;
  while (const char* text = provider(field)) {
    const std::size_t length = strnlen(text, kMaxItemLength);
    TraceFormat("ListBox Item:  %.*s", static_cast<int>(length), text);
    if (count == items.size()) continue;
    items[count] = Copy(text, length);
    count += items[count] != nullptr ? 1 : 0;
  }
  return static_cast<int>(count);
}

// Which items show, and which of them the cursor marks.
struct Page {
  int count = 0;
  int top = 0;
  int row = kFirstItemRow;

  [[nodiscard]] int Item() const { return top + row - kFirstItemRow; }

  void Down() {
    if (row < kFirstItemRow + kPageSize - 1 && Item() + 1 < count) {
      ++row;
    } else if (top + kPageSize < count) {
      ++top;
    }
  }

  void Up() {
    if (row > kFirstItemRow) {
      --row;
    } else if (top > 0) {
      --top;
    }
  }
};

void DrawMarker(WINDOW* box, int row, int hidden_items, const char* end_marker) {
  char more[32];
  (void)std::snprintf(more, sizeof more, "[MORE...%d]", hidden_items);
  BlankRow(box, row, kTextColumn);
  DrawText(box, row, kTextColumn, hidden_items > 0 ? more : end_marker);
}

// Draws `page_size` of the `count` items from the index `first` on, between their markers.
void DrawPage(WINDOW* box, const ItemTable& items, int first, int count, int page_size) {
  DrawMarker(box, kTopMarkerRow, first, kTopMarker);
  const int shown = std::min(page_size, count - first);
  for (int line = 0; line < shown; ++line) {
    BlankRow(box, kFirstItemRow + line, kTextColumn);
    DrawText(box, kFirstItemRow + line, kTextColumn,
             items[static_cast<std::size_t>(first + line)].get());
  }
  DrawMarker(box, kFirstItemRow + shown, count - shown - first, kBottomMarker);
}

void PaintListBox(WINDOW* box, const ItemTable& items, int first, int count, int page_size) {
  TraceLog("Enter PaintListBox");
  DrawPage(box, items, first, count, page_size);
  wrefresh(box);
  TraceLog("Exit PaintListBox");
}

void DrawFrameTexts(WINDOW* box) {
  DrawText(box, kPromptRow, kTextColumn, "Press ENTER after selecting an item");
  DrawText(box, kKeyLineRow, kTextColumn, "ENTER=Select  F3=Cancel");
}

class ListBoxLayer final : public Box {
 public:
  explicit ListBoxLayer(WINDOW* parent) : Box(parent, kBoxRows, kBoxColumns) {}

  // Runs the box for ListBox, whose result it returns.
  int Run(ScreenField* field, ItemProvider provider);

 private:
  void Draw() override {
    DrawFrameTexts(window());
    DrawPage(window(), items_, page_.top, page_.count, kPageSize);
    PutCursor();
  }
  void PutCursor() { wmove(window(), page_.row, kTextColumn); }
  void Paint() { PaintListBox(window(), items_, page_.top, page_.count, kPageSize); }
  void Move(int key);
  void Store(ScreenField* field);

  ItemTable items_{};
  Page page_;
};

int ListBoxLayer::Run(ScreenField* field, ItemProvider provider) {
  if (!fits()) return -1;
  page_.count = Gather(items_, provider, field);
  DrawFrameTexts(window());
  Paint();
  PutCursor();
  while (const std::optional<int> key = NextKey()) {
    if (IsEnterKey(*key)) {
      Store(field);
      return 0;
    }
    if (*key == KEY_F(3)) return 0;
    Move(*key);
  }
  return -1;
}

// Moves the cursor, painting the page anew when it has scrolled.
void ListBoxLayer::Move(int key) {
  const int top_before = page_.top;
  if (key == KEY_DOWN) {
    page_.Down();
  } else if (key == KEY_UP) {
    page_.Up();
  }
  if (page_.top != top_before) {
    Paint();
  }
  PutCursor();
}

// Stores the item under the cursor in the field; an empty list has none.
void ListBoxLayer::Store(ScreenField* field) {
  if (page_.count > 0) {
    FieldsModified = 1;
    TraceFormat("Cursor position:  (%d,%d)", page_.row, kTextColumn);
    SetValue(field, items_[static_cast<std::size_t>(page_.Item())].get());
  }
}

}  // namespace

int ListBox(WINDOW* parent, ScreenField* field, ItemProvider provider) {
  TraceLog("Enter ListBox");
  return ListBoxLayer(parent).Run(field, provider);
}
