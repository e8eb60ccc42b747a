#include "forms/field_view.h"

#include "support/toolkit.h"

TEST(FieldView, LineFitsTheWindowAndMarksWhatIsHidden) {
  // columns of the window; the value and the first index shown; the line, "." being a blank
  std::istringstream cases(R"(80 abc 0 [abc]...... 80 abcdefghi 0 [abcdefghi] 10 abcd 0 [abcd]
      15 abcdefghi 0 [abcdefghi] 14 abcdefghi 0 [abcdefgh> 10 abcdefg 0 [abcd> 10 abcdefg 1 <bcde>
      10 abcdefg 3 <defg] 10 abcdefg 4 <efg]. 10 abc 9 <].... 5 abc 0 [> 1 a 1 <])");
  ScreenField field = Field(1, 4, 9, "field");
  EXPECT_EQ(FieldLine(field, 0, 10), "[]    ");
  for (std::string columns, value, offset, line; cases >> columns >> value >> offset >> line;) {
    field.value = value.data();
    std::replace(line.begin(), line.end(), '.', ' ');
    EXPECT_EQ(FieldLine(field, std::stoi(offset), std::stoi(columns)), line)
        << value << " on " << columns;
  }
  EXPECT_EQ(VisibleEnd(Field(1, 4, 300, "wide"), 400), 4 + kMaxFieldWidth);
}
