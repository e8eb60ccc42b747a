#include "screens/mask_check.h"

MaskFault CheckMask(std::string_view mask) {
  if (mask.empty()) {
    return MaskFault::kMissing;
  }
  for (std::size_t index = 0; index < mask.size(); ++index) {
    switch (mask[index]) {
      case '?':
        return MaskFault::kQuestionMark;
      case ',':
        return MaskFault::kComma;
      case '*':
        if (index + 1 < mask.size()) {
          return MaskFault::kEmbeddedStar;
        }
        break;
      default:
        break;
    }
  }
  return MaskFault::kNone;
}
