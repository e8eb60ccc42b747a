#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "forms/box.h"
#include "forms/forms.h"
#include "forms/key_input.h"
#include "forms/text.h"
#include "shell/trace_log.h"

namespace {

constexpr int MBOX_ROWS = 10;
constexpr int MBOX_COLS = 50;

constexpr int kTextRow = 2;
constexpr int kPieceColumn = 2;
constexpr std::size_t kPieceLength = MBOX_COLS - 4;
constexpr int kMaxPieces = MBOX_ROWS - 3;
constexpr int kSeparatorRow = MBOX_ROWS - 3;
constexpr int kButtonRow = MBOX_ROWS - 2;

// Buttons stand in slots of ten columns and fill them from the right.
constexpr int kSlotColumns = 10;
constexpr int kLastSlot = 4;

struct Button {
  const char* label;
  char letter;  // chooses the button, in either case
  MessageBoxAnswer answer;
};

constexpr Button kYes{"Yes", 'y', MBOX_ANS_YES};
constexpr Button kNo{"No", 'n', MBOX_ANS_NO};
constexpr Button kOk{"OK", 'o', MBOX_ANS_OK};
constexpr Button kCancel{"Cancel", 'c', MBOX_ANS_CANCEL};

constexpr std::array kYesNo{kYes, kNo};
constexpr std::array kYesNoCancel{kYes, kNo, kCancel};
constexpr std::array kOkOnly{kOk};
constexpr std::array kOkCancel{kOk, kCancel};

// The buttons of each MessageBoxType from left to right.
constexpr std::array<std::span<const Button>, 5> kButtons{
    {{}, kYesNo, kYesNoCancel, kOkOnly, kOkCancel}};

int FirstSlot(std::span<const Button> buttons) {
  return kLastSlot + 1 - static_cast<int>(buttons.size());
}

int SlotColumn(int slot) { return kSlotColumns * slot + 2; }

const Button& ButtonIn(std::span<const Button> buttons, int slot) {
  return buttons[static_cast<std::size_t>(slot - FirstSlot(buttons))];
}

void DrawMessage(WINDOW* box, std::string_view text) {
  if (text.size() < MBOX_COLS) {
    DrawText(box, kTextRow, (MBOX_COLS - static_cast<int>(text.size())) / 2, text);
    return;
  }
  for (int piece = 0; piece < kMaxPieces && !text.empty(); ++piece) {
    DrawText(box, kTextRow + piece, kPieceColumn, text.substr(0, kPieceLength));
    text.remove_prefix(std::min(kPieceLength, text.size()));
  }
}

void DrawButtons(WINDOW* box, std::span<const Button> buttons) {
  mvwhline(box, kSeparatorRow, 1, '-', MBOX_COLS - 2);
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    DrawText(box, kButtonRow, kSlotColumns * slot, "|");
  }
  for (int slot = FirstSlot(buttons); slot <= kLastSlot; ++slot) {
    wstandout(box);
    DrawText(box, kButtonRow, SlotColumn(slot), ButtonIn(buttons, slot).label);
    wstandend(box);
  }
}

// Returns the slot of the button that the letter chooses, 0 for none.
int SlotOfLetter(std::span<const Button> buttons, int key) {
  constexpr int kLowerCaseBit = 0x20;
  for (int slot = FirstSlot(buttons); slot <= kLastSlot; ++slot) {
    if ((key | kLowerCaseBit) == ButtonIn(buttons, slot).letter) return slot;
  }
  return 0;
}

class MessageBoxLayer final : public Box {
 public:
  MessageBoxLayer(WINDOW* parent, std::string_view text, std::span<const Button> buttons)
      : Box(parent, MBOX_ROWS, MBOX_COLS),
        text_(text),
        buttons_(buttons),
        slot_(FirstSlot(buttons)) {}

  // Lets the operator move between the buttons. Returns the slot of the chosen one, or nothing when
  // the box does not fit on the screen, or no longer does.
  std::optional<int> Choose();

 private:
  void Draw() override {
    DrawMessage(window(), text_);
    DrawButtons(window(), buttons_);
    PutCursor();
  }
  void PutCursor() { wmove(window(), kButtonRow, SlotColumn(slot_)); }
  void Move(int key);

  std::string_view text_;
  std::span<const Button> buttons_;
  int slot_;  // the button under the cursor
};

void MessageBoxLayer::Move(int key) {
  const int first = FirstSlot(buttons_);
  if (key == KEY_LEFT) {
    slot_ = slot_ > first ? slot_ - 1 : kLastSlot;
  } else if (key == KEY_RIGHT) {
    slot_ = slot_ < kLastSlot ? slot_ + 1 : first;
  }
  PutCursor();
}

std::optional<int> MessageBoxLayer::Choose() {
  if (!fits()) return std::nullopt;
  Draw();
  while (const std::optional<int> key = NextKey()) {
    if (const int chosen = IsEnterKey(*key) ? slot_ : SlotOfLetter(buttons_, *key); chosen != 0) {
      return chosen;
    }
    Move(*key);
  }
  return std::nullopt;
}

}  // namespace

int MessageBox(WINDOW* parent, const char* text, int type) {
  TraceLog("Enter MessageBox");
  if (type < MBOX_YESNO || type > MBOX_OKCANCEL) return -1;
  const std::span<const Button> buttons = kButtons[static_cast<std::size_t>(type)];
  const std::optional<int> slot = MessageBoxLayer(parent, text, buttons).Choose();
  if (!slot) return -1;
  TraceFormat("Message box type: %d, Button selected: %d", type, kLastSlot - *slot);
  TraceLog("Exit MessageBox");
  return ButtonIn(buttons, *slot).answer;
}
