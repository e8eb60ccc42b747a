#pragma once

// A form under way: which of its fields is edited, at which character, and how that field shows.

#include "forms/forms.h"
#include "forms/layer.h"
#include "forms/line_editor.h"

// One run of ProcessWindowData, over the layer that shows the rest of the screen. Forms nest: a
// handler may open another screen, on a window of its own.
class FormRun final : public Layer {
 public:
  // Begins with the first field that may be entered.
  FormRun(WINDOW* window, ScreenField* table);

  // Returns the form that runs on `window`, or null.
  [[nodiscard]] static FormRun* On(const WINDOW* window);

  // Fits the edited field to the width of its line and puts the cursor on its character again. How
  // the field shows does not depend on the sizes that went before.
  bool LayOut() override;

  // The field under the cursor. None while its line is outside the screen: the cursor is then at
  // row 0, column 0, until the line shows again.
  [[nodiscard]] ScreenField* Current() const;

  // Moves to the first character of the field, null for none.
  void MoveTo(ScreenField* field);

  // Moves to the field and character under the window's cursor if others have moved it.
  void FollowCursor();

  // Acts on a key in the field under the cursor.
  void EditKey(int key);

  // Index of the first character of `field` that shows.
  [[nodiscard]] int ScrollOffsetOf(const ScreenField& field) const;

 private:
  struct Cursor {
    int row, column;
    bool operator==(const Cursor&) const = default;
  };
  // Where this form puts the cursor.
  [[nodiscard]] Cursor CursorPosition() const;
  [[nodiscard]] bool InSight(const ScreenField& field) const;
  void SetField(ScreenField* field);
  void Measure();
  void Show();

  ScreenField* table_;
  ScreenField* field_ = nullptr;  // kept while it is out of sight
  LineEditor line_{nullptr, 0};   // the value of field_ as it shows
  // line_ before it was fitted to a new width; every fit starts from it.
  LineEditor unfitted_{nullptr, 0};
};
