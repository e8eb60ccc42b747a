#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <new>
#include <string_view>

#include "forms/forms.h"
#include "forms/text.h"
#include "forms/window.h"
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
class ItemTable {
 public:
  ItemTable() = default;
  ItemTable(const ItemTable&) = delete;
  ItemTable& operator=(const ItemTable&) = delete;
  ~ItemTable() {
    std::for_each_n(texts_.begin(), count_, [](const char* text) { delete[] text; });
  }

  // Calls the provider until its end, keeping what there is room for.
  void Gather(ItemProvider provider, ScreenField* field) {
    while (const char* text = provider(field)) {
      const auto length = static_cast<int>(strnlen(text, kMaxItemLength));
      TraceFormat("ListBox Item:  %.*s", length, text);
      Add(text, static_cast<std::size_t>(length));
    }
  }

  [[nodiscard]] const char* const* texts() const { return texts_.data(); }
  [[nodiscard]] int count() const { return count_; }

 private:
  void Add(const char* text, std::size_t length) {
    if (count_ == kMaxItems) {
      return;
    }
    char* copy = new (std::nothrow) char[length + 1];
    if (copy != nullptr) {
      std::memcpy(copy, text, length);
      copy[length] = '\0';
      texts_[static_cast<std::size_t>(count_++)] = copy;
    }
  }

  std::array<const char*, kMaxItems> texts_{};
  int count_ = 0;
};

// Which items show, and which of them the cursor marks.
struct Page {
  int count;
  int size = kPageSize;  // item rows that show; fewer where a terminal that shrank has cut the box
  int top = 0;
  int row = kFirstItemRow;

  [[nodiscard]] int Item() const { return top + row - kFirstItemRow; }

  void Down() {
    if (row < kFirstItemRow + size - 1 && Item() + 1 < count) {
      ++row;
    } else if (top + size < count) {
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

// Acts on a cursor key, drawing the page anew when it has scrolled.
void MoveInList(WINDOW* box, const ItemTable& items, Page& page, int key) {
  const int top_before = page.top;
  if (key == KEY_DOWN) {
    page.Down();
  } else if (key == KEY_UP) {
    page.Up();
  }
  if (page.top != top_before) {
    PaintListBox(box, items.texts(), page.top, items.count(), page.size);
  }
}

// Puts the cursor on the marked item, or on the last one that a box which has shrunk still shows.
// Returns whether there is one to see.
bool PlaceCursor(WINDOW* box, Page& page) {
  page.size = std::clamp(getmaxy(box) - kFirstItemRow, 1, kPageSize);
  page.row = std::min(page.row, kFirstItemRow + page.size - 1);
  return wmove(box, page.row, kTextColumn) == OK && page.count > 0;
}

// Lets the operator move through the list. Returns the index of the chosen item, -1 when the list
// was left without a choice.
int ChooseItem(WINDOW* box, const ItemTable& items) {
  Page page{items.count()};
  for (;;) {
    const bool item_shows = PlaceCursor(box, page);
    Refresh(box);
    const int key = ReadKey(box);
    if (IsEnterKey(key) && item_shows) {
      FieldsModified = 1;
      TraceFormat("Cursor position:  (%d,%d)", page.row, kTextColumn);
      return page.Item();
    }
    if (key == KEY_F(3) || IsEnterKey(key)) {
      return -1;
    }
    MoveInList(box, items, page, key);
  }
}

}  // namespace

int ListBox(WINDOW* parent, ScreenField* field, ItemProvider provider) {
  TraceLog("Enter ListBox");
  ItemTable items;
  WindowPtr box = OpenCentredWindow(kBoxRows, kBoxColumns);
  if (!box) {
    return -1;
  }
  DrawText(box.get(), kPromptRow, kTextColumn, "Press ENTER after selecting an item");
  DrawText(box.get(), kTopMarkerRow, kTextColumn, kTopMarker);
  items.Gather(provider, field);
  DrawText(box.get(), kKeyLineRow, kTextColumn, "ENTER=Select  F3=Cancel");
  PaintListBox(box.get(), items.texts(), 0, items.count(), kPageSize);

  const int chosen = ChooseItem(box.get(), items);
  box.reset();
  Restore(parent);
  if (chosen >= 0) {
    SetValue(field, items.texts()[chosen]);
  }
  return 0;
}

void PaintListBox(WINDOW* box, const char* const* items, int first, int count, int page_size) {
  TraceLog("Enter PaintListBox");
  DrawMarker(box, kTopMarkerRow, first, kTopMarker);
  const int shown = std::min(page_size, count - first);
  for (int line = 0; line < shown; ++line) {
    BlankRow(box, kFirstItemRow + line, kTextColumn);
    DrawText(box, kFirstItemRow + line, kTextColumn,
             std::string_view(items[first + line]).substr(0, kMaxItemLength));
  }
  DrawMarker(box, kFirstItemRow + shown, count - shown - first, kBottomMarker);
  Refresh(box);
  TraceLog("Exit PaintListBox");
}
