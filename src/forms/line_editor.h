#pragma once

// Overwrite editing of a value on a single line, on which only part of it may show. Nothing here
// draws or reads keys. Indices and lengths count characters of the value, which are bytes.

// What a key did.
enum class EditResult {
  kNothing,
  kRefused,  // the key cannot act here: the bell is due
  kMoved,    // changed the cursor or the part that shows, not the value
  kChanged,  // changed the value
};

struct LineEditor {
  char* value;            // zero-terminated, zero-filled to its width + 1 bytes
  int width;              // most characters of the value
  int visible_width = 0;  // characters that show at a time
  int reach = 0;          // how far right of the first column the key Right takes the cursor
  int ScrollOffset = 0;   // index of the first character that shows
  int cursor = 0;         // index of the character under the cursor

  [[nodiscard]] int Length() const;

  EditResult Left();
  EditResult Right();

  // Replaces the character under the cursor, or appends to the value.
  EditResult Type(char character);

  // Removes the character to the left of the cursor.
  EditResult EraseLeft();

  // Removes the character under the cursor.
  EditResult EraseUnder();

  // Scrolls to a new visible width by the least that keeps the character under the cursor in sight
  // and leaves no place empty that could show part of the value. A cursor beyond the place after
  // the last character moves there.
  void Fit();

 private:
  EditResult Remove(int index);
};
