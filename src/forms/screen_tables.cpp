#include "config/record.h"
#include "forms/forms.h"

namespace {

constexpr ScreenField LabelRow(int row, int column, const char* label) noexcept {
  return {row, column, label, -1, -1, nullptr, -1, 0, nullptr};
}

// A label with its input field on the same line.
constexpr ScreenField FieldRow(int row, const char* label, int width, const char* name) noexcept {
  constexpr int kLabelColumn = 5;
  constexpr int kFieldColumn = 25;
  return {row, kLabelColumn, label, row, kFieldColumn, nullptr, width, 0, name};
}

constexpr ScreenField Sentinel() noexcept {
  return {kTableEnd, kTableEnd, "", kTableEnd, kTableEnd, nullptr, 0, 0, nullptr};
}

}  // namespace

constinit ScreenTable UpdateScreen = {
    LabelRow(2, 2, "Press <enter> AFTER all changes are complete."),
    FieldRow(4, "Node name mask", kNodeMaskLength, "node"),
    FieldRow(5, "Userid mask", kUserMaskLength, "userid"),
    FieldRow(6, "Security mode", 9, "mode"),
    LabelRow(22, 5, "ENTER=Update  F3=Cancel  F4=List"),
    Sentinel(),
};

constinit ScreenTable SelectScreen = {
    FieldRow(5, "Node Name", kNodeMaskLength, "node"),
    FieldRow(6, "Userid mask", kUserMaskLength, "userid"),
    LabelRow(22, 5, "ENTER=Select  F3=Cancel  F4=List"),
    Sentinel(),
};
