#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <new>

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
class ItemTable {
 public:
  ItemTable() = default;
  ItemTable(const ItemTable&) = delete;
  ItemTable& operator=(const ItemTable&) = delete;
  ~ItemTable() {
    std::for_each_n(texts_.begin(), count_, [](const char* text) { delete[] text; });
  }

  // Calls the provider until its end, keeping what there is room for. Returns how many that are.
  int Gather(ItemProvider provider, ScreenField* field) {
    while (const char* text = provider(field)) {
      const auto length = static_cast<int>(strnlen(text, kMaxItemLength));
      TraceFormat("ListBox Item:  %.*s", length, text);
      Add(text, static_cast<std::size_t>(length));
    }
    return count_;
  }

  [[nodiscard]] const char* const* texts() const { return texts_.data(); }

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

class ListBoxLayer final : public Box {
 public:
  ListBoxLayer() : Box(kBoxRows, kBoxColumns) {}

  void Gather(ItemProvider provider, ScreenField* field) {
    page_.count = items_.Gather(provider, field);
  }

  // Lets the operator move through the list. Returns the chosen text, null when the list was left
  // without a choice.
  const char* Choose();

 private:
  void Draw() override;
  void DrawKeys();
  void DrawPage();
  void PaintListBox();
  void Move(int key);

  ItemTable items_;
  Page page_;
};

void ListBoxLayer::Draw() {
  DrawKeys();
  DrawPage();
  wmove(window(), page_.row, kTextColumn);
}

void ListBoxLayer::DrawKeys() {
  DrawText(window(), kPromptRow, kTextColumn, "Press ENTER after selecting an item");
  DrawText(window(), kKeyLineRow, kTextColumn, "ENTER=Select  F3=Cancel");
}

// Draws the items of the page between their markers.
void ListBoxLayer::DrawPage() {
  DrawMarker(window(), kTopMarkerRow, page_.top, kTopMarker);
  const int shown = std::min(kPageSize, page_.count - page_.top);
  for (int line = 0; line < shown; ++line) {
    BlankRow(window(), kFirstItemRow + line, kTextColumn);
    DrawText(window(), kFirstItemRow + line, kTextColumn, items_.texts()[page_.top + line]);
  }
  DrawMarker(window(), kFirstItemRow + shown, page_.count - shown - page_.top, kBottomMarker);
}

void ListBoxLayer::PaintListBox() {
  TraceLog("Enter PaintListBox");
  DrawPage();
  wrefresh(window());
  TraceLog("Exit PaintListBox");
}

// Acts on a cursor key, painting the page anew when it has scrolled.
void ListBoxLayer::Move(int key) {
  const int top_before = page_.top;
  if (key == KEY_DOWN) {
    page_.Down();
  } else if (key == KEY_UP) {
    page_.Up();
  }
  if (page_.top != top_before) {
    PaintListBox();
  }
}

const char* ListBoxLayer::Choose() {
  DrawKeys();
  PaintListBox();
  for (;;) {
    wmove(window(), page_.row, kTextColumn);
    wrefresh(window());
    const int key = ReadBoxKey();
    if (!open() || key == KEY_F(3) || (IsEnterKey(key) && page_.count == 0)) {
      return nullptr;
    }
    if (IsEnterKey(key)) {
      FieldsModified = 1;
      TraceFormat("Cursor position:  (%d,%d)", page_.row, kTextColumn);
      return items_.texts()[page_.Item()];
    }
    Move(key);
  }
}

}  // namespace

int ListBox(WINDOW* parent, ScreenField* field, ItemProvider provider) {
  TraceLog("Enter ListBox");
  ListBoxLayer box;
  if (!box.open()) {
    return -1;
  }
  box.Gather(provider, field);
  const char* chosen = box.Choose();
  box.Close(parent);
  if (chosen != nullptr) {
    SetValue(field, chosen);
  }
  return box.open() ? 0 : -1;
}
