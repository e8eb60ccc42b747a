#pragma once

// What a mask may look like when a record is added. Masks are not evaluated anywhere in this
// program: a '*' at the end stands for any text only to those who read the configuration.

#include <string_view>

enum class MaskFault {
  kNone,
  kMissing,
  kQuestionMark,
  kComma,         // would end the mask when the file is read again
  kEmbeddedStar,  // a '*' before the last character
};

// Returns the fault of the leftmost character that has one.
MaskFault CheckMask(std::string_view mask);
