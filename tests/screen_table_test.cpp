#include "forms/field_view.h"
#include "support/toolkit.h"

static constexpr ScreenField kLabel{2, 2, "Label", -1, -1, nullptr, -1, 0, nullptr};

static std::string Name(const ScreenField* row) { return row->name ? row->name : "-"; }

TEST(ScreenTable, DownAndUpGoToTheFirstEnterableFieldOfALine) {
  const struct {
    std::string protected_fields, from;
    const char *down, *up;
  } cases[] = {{"", "a", "c", "e"},     {"", "b", "c", "a"},    {"", "d", "e", "a"},
               {"", "e", "a", "c"},     {"a", "b", "c", "e"},   {"a", "e", "b", "c"},
               {"c", "a", "d", "e"},    {"cd", "b", "e", "a"},  {"e", "c", "c", "a"},
               {"abcd", "e", "e", "e"}, {"cde", "a", "a", "a"}, {"abcde", "c", "c", "c"}};
  for (const auto& [protected_fields, from, down, up] : cases) {
    ScreenField table[] = {
        Field(1, 5, 3, "a"),  Field(1, 15, 3, "b"), kLabel,   Field(3, 5, 3, "c"),
        Field(3, 15, 3, "d"), Field(5, 5, 3, "e"),  kSentinel};
    for (ScreenField& row : Rows(table)) {
      if (protected_fields.find(Name(&row)) != std::string::npos) row.flags = FLD_PROTECTED;
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
  for (const int refused : {6, kDynamicLabelSize}) {
    ScreenField table[] = {Field(2, 5, 3, "a"), kLabel, Field(4, 5, 5, "b"), kSentinel};
    table[1].flags = FLD_DYNLABEL;
    StartTrace();
    refused_size = static_cast<std::size_t>(refused);
    EXPECT_EQ(AllocScreenFields(table), -1);
    refused_size = 0;
    EXPECT_EQ(ReadFile(LogFileName),
              refused == 6 ? "malloc for 6 bytes failed on field <b>\n" : "");
    EXPECT_TRUE(table[0].value && !table[1].value && !table[2].value) << refused;
    EXPECT_EQ(table[1].label != nullptr, refused == 6) << refused;
    EXPECT_EQ(FreeScreenFields(table), 0);
    EXPECT_TRUE(table[0].label && !table[0].value && !table[1].label) << refused;
  }
}

TEST(FieldStore, ValuesAreCutToTheFieldAndClearedBehind) {
  ScreenField table[] = {Field(2, 5, 3, "a"), kSentinel};
  AllocScreenFields(table);
  SetValue(table, "abcdef");
  SetValue(table, table->value + 1);
  EXPECT_EQ(std::string(table->value, 4), std::string("bc\0\0", 4));
  FreeScreenFields(table);
  SetValue(table, "closed");
  EXPECT_STREQ(Value(table), "");
}

TEST(FieldView, EndsAtTheBorderAndAfter256CharactersAtMost) {
  EXPECT_EQ(VisibleEnd(Field(1, 4, 9, "field"), 5), 4);
  EXPECT_EQ(VisibleEnd(Field(1, 4, 300, "wide"), 400), 260);
}

// A form that F2 paints twice in a border of its own: the title is not taken for the border.
static Body Painting(const std::string& value, const char* title) {
  return RunForm(SelectScreen, value, [=](WINDOW* window, ScreenField* /*field*/) {
    box(window, ':', '=');
    PaintScreen(window, SelectScreen, title);
    return PaintScreen(window, SelectScreen, title);
  });
}

TEST(PaintScreen, ShowsTheTableInTheBorderOfTheWindow) {
  const std::string value = Times(54, "n");
  Play({{"paint_select_screen", Painting(value, "T"), kF2, "", "0 " + value}}, {});
  Play({{"paint_long_title", Painting("", "Longer than all this line."), kF2, "", "0 1- "}},
       {.rows = 8, .cols = 25});
}
