#include "forms/line_editor.h"

#include <gtest/gtest.h>

#include <string>

using enum EditResult;
using Key = EditResult (*)(LineEditor&);

constexpr Key kLeft = [](LineEditor& line) { return line.Left(); };
constexpr Key kRight = [](LineEditor& line) { return line.Right(); };
constexpr Key kTypeX = [](LineEditor& line) { return line.Type('X'); };
constexpr Key kEraseLeft = [](LineEditor& line) { return line.EraseLeft(); };
constexpr Key kEraseUnder = [](LineEditor& line) { return line.EraseUnder(); };
constexpr Key kFit = [](LineEditor& line) { return line.Fit(), kNothing; };

constexpr int kWidth = 5;

struct Line {
  std::string value;
  int offset, cursor;
};

constexpr int kCut = 3;  // characters of a longer value that show up to the right margin
constexpr int kNoPlace = 0;

TEST(LineEditor, KeysActOnValueOffsetAndCursor) {
  const struct {
    const char* name;
    Line before;
    Key key;
    Line after;
    EditResult outcome;
    int visible_width = kWidth;
  } cases[] = {
      {"left at the start", {"abc", 0, 0}, kLeft, {"abc", 0, 0}, kNothing},
      {"left scrolls", {"abcde", 2, 2}, kLeft, {"abcde", 1, 1}, kMoved, kCut},

      {"right at the end", {"abc", 0, 3}, kRight, {"abc", 0, 3}, kRefused},
      {"right to the margin", {"abcde", 1, 2}, kRight, {"abcde", 1, 3}, kMoved, kCut},
      {"right scrolls", {"abcde", 1, 3}, kRight, {"abcde", 2, 4}, kMoved, kCut},
      {"right on the last one", {"abcde", 2, 4}, kRight, {"abcde", 2, 4}, kNothing, kCut},
      {"right where nothing shows", {"abc", 0, 0}, kRight, {"abc", 1, 1}, kMoved, kNoPlace},

      {"beyond the end", {"abc", 0, 4}, kTypeX, {"abc", 0, 4}, kRefused},
      {"where nothing shows", {"", 0, 0}, kTypeX, {"X", 1, 1}, kChanged, kNoPlace},
      {"after the margin", {"abcd", 1, 4}, kTypeX, {"abcdX", 2, 5}, kChanged, kCut},

      {"erase out of sight", {"abcde", 1, 1}, kEraseLeft, {"abcde", 1, 1}, kRefused, kCut},
      {"erase what is scrolled", {"abcde", 1, 3}, kEraseLeft, {"abde", 1, 2}, kChanged, kCut},
      {"erase until it fits", {"abcd", 1, 3}, kEraseLeft, {"abd", 0, 2}, kChanged, kCut},

      {"delete at the end", {"abc", 0, 3}, kEraseUnder, {"abc", 0, 3}, kRefused},
      {"delete out of sight", {"abcde", 1, 4}, kEraseUnder, {"abcde", 1, 4}, kRefused, kCut},
      {"delete what is scrolled", {"abcde", 1, 3}, kEraseUnder, {"abce", 1, 3}, kChanged, kCut},
      {"delete until it fits", {"abcd", 1, 2}, kEraseUnder, {"abd", 0, 2}, kChanged, kCut},

      {"all fits now", {"abc", 2, 3}, kFit, {"abc", 0, 3}, kNothing, kCut},
      {"under the mark", {"abcde", 1, 4}, kFit, {"abcde", 2, 4}, kNothing, kCut},
      {"the end out of sight", {"abcde", 1, 5}, kFit, {"abcde", 2, 5}, kNothing, kCut},
      {"no place left empty", {"abcde", 4, 4}, kFit, {"abcde", 2, 4}, kNothing, kCut},
      {"nothing shows any more", {"abc", 0, 2}, kFit, {"abc", 2, 2}, kNothing, kNoPlace},
  };
  for (const auto& [name, before, key, after, outcome, visible_width] : cases) {
    std::string buffer = before.value;
    buffer.resize(kWidth + 1);
    const bool is_cut = visible_width < kWidth;  // the key Right then stops before the margin
    const int reach = is_cut ? visible_width - 1 : visible_width;
    LineEditor line{buffer.data(), kWidth, visible_width, reach, before.offset, before.cursor};
    EXPECT_EQ(key(line), outcome) << name;
    EXPECT_EQ(buffer, after.value + std::string(buffer.size() - after.value.size(), '\0')) << name;
    EXPECT_EQ(line.ScrollOffset, after.offset) << name;
    EXPECT_EQ(line.cursor, after.cursor) << name;
  }
}
