#pragma once

// Overwrite editing of a value on a single line, on which only part of it may show. Nothing here
// draws or reads keys. Indices and lengths count characters of the value, which are bytes.

// What came of a key.
enum class Edit {
  kNothing,
  kRefused,  // the key cannot act here: the bell is due
  kMoved,    // the cursor or the part that shows, not the value
  kChanged,  // the value
};

struct LineEditor {
  char* value;     // zero-terminated, zero-filled to its width + 1 bytes
  int width;       // most characters of the value
  int room = 0;    // characters that show at a time
  int reach = 0;   // how far right of the first column the key Right takes the cursor
  int offset = 0;  // index of the first character that shows
  int cursor = 0;  // index of the character under the cursor

  [[nodiscard]] int Length() const;

  Edit Left();
  Edit Right();
  // Puts the character in the place of the one under the cursor or behind the last one.
  Edit Type(char character);
  // Remove the character to the left of the cursor, respectively under it.
  Edit EraseLeft();
  Edit EraseUnder();

  // Makes the value show after its room has changed: whole if it fits, else moved by the least that
  // brings the character under the cursor into sight.
  void Fit();

 private:
  Edit Remove(int index);
};
