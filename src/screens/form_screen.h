#pragma once

// What the maintenance screens do alike: open and close their window and fields, share out the
// keys, list values for a field, report in boxes, and name a record by its two masks.

#include <curses.h>

#include "config/record.h"
#include "forms/forms.h"
#include "forms/window.h"

// What becomes of a form after a key.
inline constexpr int kStay = 0;
inline constexpr int kClose = 1;

// What makes one screen differ from another. Static data of the screen's own source.
struct FormScreen {
  const char* operation;  // the screen's name in the trace
  ScreenField* table;
  const char* title;
  KeyHandler handler;
  int (*on_enter)(WINDOW* win);  // what Enter and F3 do: kStay or kClose
  int (*on_cancel)(WINDOW* win);
  ItemProvider provider;  // what F4 lists
};

// A screen over the window `parent`, from its opening to its Close.
class OpenScreen {
 public:
  // Opens a full-screen window and the field store of the table.
  OpenScreen(const FormScreen& screen, WINDOW* parent);
  ~OpenScreen();
  OpenScreen(const OpenScreen&) = delete;
  OpenScreen& operator=(const OpenScreen&) = delete;

  // Whether window and fields could be had. There is nothing to run or close otherwise.
  [[nodiscard]] bool complete() const { return complete_; }

  // Shows the screen and runs its form.
  void Run();

  // Ends window and fields and shows the parent again. Returns 0.
  int Close();

 private:
  void Release();

  const FormScreen& screen_;
  WINDOW* parent_;
  WindowPtr window_;
  bool complete_;
};

// Opens the screen, runs its form and closes it. Returns 0, or -1 when it could not be opened.
int RunFormScreen(const FormScreen& screen, WINDOW* parent);

// Acts on a key of the screen's form: Enter and F3 as the screen has it, F4 with the list of the
// field, which may be null. Returns kStay or kClose.
int HandleFormKey(const FormScreen& screen, WINDOW* win, int code, ScreenField* field);

// Leaves the screen: what F3 does where nothing can be lost.
int CloseScreen(WINDOW* win);

// Asks `question` in a box over `parent`, traces the answer and returns whether it is yes.
bool Confirm(WINDOW* parent, const char* question);

// Returns a new record with the two masks and no mode, null with a trace line when there is no
// memory for it.
RecordPtr NewRecord(const char* nodeMask, const char* useridMask);

// Report over `parent` that there was no memory for a record, and that there is no record with the
// masks of `key`.
void ShowNoStorage(WINDOW* parent);
void ShowNotFound(WINDOW* parent, const WLNSRec& key);
