#include "support/toolkit.h"

static constexpr ScreenField kLabel{2, 2, "Label", -1, -1, nullptr, -1, 0, nullptr};

static std::string Name(const ScreenField* row) { return row && row->name ? row->name : "-"; }

TEST(ScreenTable, FieldsAreFoundByNameAndByPosition) {
  EXPECT_EQ(FindField(UpdateScreen, "mode"), &UpdateScreen[3]);
  EXPECT_EQ(FindField(SelectScreen, "mode"), nullptr);
  ScreenField table[] = {Field(4, 5, 3, "a"), Field(4, 15, 3, "b"), Field(6, 5, 3, "c"), kSentinel};
  const std::pair<Position, const char*> cases[] = {{{4, 4}, "-"}, {{4, 5}, "a"},  {{4, 8}, "a"},
                                                    {{4, 9}, "-"}, {{4, 16}, "b"}, {{6, 5}, "c"},
                                                    {{5, 7}, "-"}, {{-1, -1}, "-"}};
  for (const auto& [at, found] : cases) {
    EXPECT_EQ(Name(FindFieldAt(table, at.row, at.col)), found) << at.row << "," << at.col;
  }
}

TEST(ScreenTable, DownAndUpGoToTheFirstEnterableFieldOfALine) {
  const struct {
    std::string protected_fields, from;
    const char *down, *up;
  } cases[] = {{"", "a", "c", "e"},    {"", "b", "c", "a"},     {"", "c", "e", "a"},
               {"", "d", "e", "a"},    {"", "e", "a", "c"},     {"a", "b", "c", "e"},
               {"a", "e", "b", "c"},   {"c", "a", "d", "e"},    {"cd", "b", "e", "a"},
               {"e", "c", "c", "a"},   {"e", "d", "a", "a"},    {"abcd", "e", "e", "e"},
               {"cde", "a", "a", "a"}, {"abcde", "c", "c", "c"}};
  for (const auto& [protected_fields, from, down, up] : cases) {
    ScreenField table[] = {
        Field(1, 5, 3, "a"),  Field(1, 15, 3, "b"), kLabel,   Field(3, 5, 3, "c"),
        Field(3, 15, 3, "d"), Field(5, 5, 3, "e"),  kSentinel};
    for (ScreenField& row : Rows(table)) {
      const bool is_protected = protected_fields.find(Name(&row)) != std::string::npos;
      row.flags = is_protected ? FLD_PROTECTED : 0;
    }
    ScreenField* field = FindField(table, from.c_str());
    EXPECT_EQ(Name(NextField(table, field)) + Name(PrevField(table, field)), down + std::string(up))
        << from << " without " << protected_fields;
  }
}

static std::size_t refused_size = 0;  // of an allocation that fails

// NOLINTNEXTLINE(misc-new-delete-overloads): what it gives is released as usual.
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return size == refused_size ? nullptr : operator new[](size);
}

TEST(FieldStore, FieldsGetBuffersUntilOneCannotBeHad) {
  for (const std::size_t refused : {0, 6, kDynamicLabelSize}) {
    ScreenField table[] = {Field(2, 5, 3, "a"), kLabel, Field(4, 5, 5, "b"), kSentinel};
    table[1].flags = FLD_DYNLABEL;
    StartTrace();
    refused_size = refused;
    EXPECT_EQ(AllocScreenFields(table), refused == 0 ? 0 : -1);
    refused_size = 0;
    EXPECT_EQ(ReadFile(LogFileName),
              refused == 6 ? "malloc for 6 bytes failed on field <b>\n" : "");
    EXPECT_TRUE(table[0].value != nullptr && table[1].value == nullptr) << refused;
    EXPECT_EQ(table[1].label != nullptr, refused != kDynamicLabelSize) << refused;
    EXPECT_EQ(table[2].value != nullptr, refused == 0) << refused;
    EXPECT_EQ(FreeScreenFields(table), 0);
    EXPECT_TRUE(table[0].label && !table[0].value && !table[1].label && !table[2].value) << refused;
  }
}

TEST(FieldStore, ValuesAreCutToTheFieldAndClearedBehind) {
  ScreenField table[] = {Field(2, 5, 3, "a"), kSentinel};
  AllocScreenFields(table);
  SetValue(table, "abcdef");
  EXPECT_STREQ(Value(table), "abc");
  SetValue(table, table->value + 2);
  EXPECT_EQ(std::string(table->value, 4), std::string("c\0\0\0", 4));
  FreeScreenFields(table);
  SetValue(table, "closed");
  EXPECT_STREQ(Value(table), "");
}

// Paints a table twice, the first value being of that length: the title is not its border.
static Body Painting(ScreenField* table, int length, const char* title) {
  return [=] {
    const FormScreen screen(table, Times(length, "n"));
    if (length > 0) box(screen.window(), ':', '=');
    PaintScreen(screen.window(), table, title);
    PaintScreen(screen.window(), table, title);
    return std::to_string(ReadKey(screen.window()));
  };
}

TEST(PaintScreen, ShowsTheTableInTheBorderOfTheWindow) {
  Play({{"paint_update_screen", Painting(UpdateScreen, 53, "Title"), "", "", "10"},
        {"paint_select_screen", Painting(SelectScreen, 54, "T"), "", "", "10"}},
       {});
  Play(
      {{"paint_wide_title", Painting(SelectScreen, 0, "As wide as all this line."), "", "", "10"},
       {"paint_long_title", Painting(SelectScreen, 0, "Longer than all this line."), "", "", "10"}},
      {.rows = 8, .cols = 25});
}
