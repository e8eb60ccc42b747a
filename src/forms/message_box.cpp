#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "forms/forms.h"
#include "forms/text.h"
#include "forms/window.h"
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

// The buttons of a box from left to right, none for an unknown type.
std::span<const Button> ButtonsOf(int type) {
  switch (type) {
    case MBOX_YESNO:
      return kYesNo;
    case MBOX_YESNOCANCEL:
      return kYesNoCancel;
    case MBOX_OK:
      return kOkOnly;
    case MBOX_OKCANCEL:
      return kOkCancel;
    default:
      return {};
  }
}

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
    if ((key | kLowerCaseBit) == ButtonIn(buttons, slot).letter) {
      return slot;
    }
  }
  return 0;
}

// Puts the cursor on the button in `slot`, or on the next one to its left that a terminal which has
// shrunk still shows. Returns the slot it stands in, 0 when none of the buttons shows.
int PlaceCursor(WINDOW* box, int first, int slot) {
  while (slot >= first && wmove(box, kButtonRow, SlotColumn(slot)) == ERR) {
    --slot;
  }
  return slot >= first ? slot : 0;
}

// Lets the operator move between the buttons; returns the slot of the chosen one, 0 once there is
// no button left to see.
int ChooseSlot(WINDOW* box, std::span<const Button> buttons) {
  const int first = FirstSlot(buttons);
  int slot = first;
  while ((slot = PlaceCursor(box, first, slot)) != 0) {
    Refresh(box);
    const int key = ReadKey(box);
    if (IsEnterKey(key)) {
      return slot;
    }
    if (const int chosen = SlotOfLetter(buttons, key); chosen != 0) {
      return chosen;
    }
    if (key == KEY_LEFT) {
      slot = slot > first ? slot - 1 : kLastSlot;
    } else if (key == KEY_RIGHT) {
      slot = slot < kLastSlot ? slot + 1 : first;
    }
  }
  return 0;
}

}  // namespace

int MessageBox(WINDOW* parent, const char* text, int type) {
  TraceLog("Enter MessageBox");
  const std::span<const Button> buttons = ButtonsOf(type);
  if (buttons.empty()) {
    return -1;
  }
  WindowPtr box = OpenCentredWindow(MBOX_ROWS, MBOX_COLS);
  if (!box) {
    return -1;
  }
  DrawMessage(box.get(), text);
  DrawButtons(box.get(), buttons);
  const int slot = ChooseSlot(box.get(), buttons);
  box.reset();
  Restore(parent);
  if (slot == 0) {
    return -1;
  }
  TraceFormat("Message box type: %d, Button selected: %d", type, kLastSlot - slot);
  TraceLog("Exit MessageBox");
  return ButtonIn(buttons, slot).answer;
}
