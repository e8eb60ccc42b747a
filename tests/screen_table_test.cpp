#include "forms/field_view.h"
#include "support/toolkit.h"

static constexpr ScreenField kLabel{2, 2, "Label", -1, -1, nullptr, -1, 0, nullptr};

static std::string Name(const ScreenField* row) { return row->name ? row->name : "-"; }

TEST(ScreenTable, DownAndUpGoToTheFirstEnterableFieldOfALine) {
  const struct {
    std::string protected_fields, from;
    const char *down, *up;
  } cases[] = {{"", "a", "c", "f"},      {"", "b", "c", "a"},     {"", "d", "f", "a"},
               {"", "f", "a", "c"},      {"a", "b", "c", "f"},    {"a", "f", "b", "c"},
               {"c", "a", "d", "f"},     {"cde", "b", "f", "a"},  {"f", "c", "c", "a"},
               {"c", "f", "a", "d"},     {"d", "f", "a", "c"},    {"e", "f", "a", "c"},
               {"abcde", "f", "f", "f"}, {"cdef", "a", "a", "a"}, {"abcdef", "c", "c", "c"}};
  for (const auto& [protected_fields, from, down, up] : cases) {
    ScreenField table[] = {Field(1, 5, 3, "a"),
                           Field(1, 15, 3, "b"),
                           kLabel,
                           Field(3, 5, 3, "c"),
                           Field(3, 15, 3, "d"),
                           Field(3, 25, 3, "e"),
                           Field(5, 5, 3, "f"),
                           kSentinel};
    for (ScreenField& row : Rows(table)) {
      if (protected_fields.find(Name(&row)) != std::string::npos) row.flags = FLD_PROTECTED;
    }
    ScreenField* field = FindField(table, from.c_str());
    EXPECT_EQ(Name(NextField(table, field)) + Name(PrevField(table, field)), down + std::string(up))
        << from << " without " << protected_fields;
  }
}

TEST(ScreenTable, HasBuffersForValuesAndDynamicLabelsWhileItIsOpen) {
  ScreenField table[] = {Field(2, 5, 3, "a"), kLabel, kSentinel};
  table[1].flags = FLD_DYNLABEL;
  AllocScreenFields(table);
  SetValue(table, "abcdef");
  SetValue(table, table->value + 1);
  EXPECT_EQ(std::string(table->value, 4), std::string("bc\0\0", 4)) << "not cut or not cleared";
  EXPECT_EQ(std::string(table[1].label, kDynamicLabelSize), std::string(kDynamicLabelSize, '\0'));
  EXPECT_EQ(FreeScreenFields(table), 0);
  SetValue(table, "closed");
  EXPECT_STREQ(Value(table), "");
  EXPECT_TRUE(table[0].label != nullptr && table[1].label == nullptr);
}

TEST(ScreenTable, AFieldShowsAtMost256Characters) {
  EXPECT_EQ(VisibleWidth(Field(2, 5, 257, "wider"), 300), 256);
}

// A form that F2 paints twice in a border of its own: the title is not taken for the border.
static Body Painting(const std::string& value, const char* title) {
  return RunForm(SelectScreen, value, [=](WINDOW* window, ScreenField* /*field*/) {
    mvwaddstr(window, 7, 5, "what a handler drew");
    box(window, ':', '=');
    PaintScreen(window, SelectScreen, title);
    return PaintScreen(window, SelectScreen, title) == OK ? "" : "not painted, ";
  });
}

TEST(ScreenTable, IsPaintedInTheBorderOfTheWindow) {
  const std::string value = Times(54, "n");
  Play({{"paint_select_screen", Painting(value, "T"), kF2, "", "[" + value + "]"}}, {});
  Play({{"paint_long_title", Painting("", "Longer than all this line."), kF2, "", "no field, []"}},
       {.rows = 8, .cols = 25});
}
