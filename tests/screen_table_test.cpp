#include "support/toolkit.h"

// A failing allocation is told to the program, as without the sanitizer. NOLINTNEXTLINE
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

static std::string Name(const ScreenField* field) { return field == nullptr ? "-" : field->name; }

TEST(ScreenTable, FieldsAreFoundByNameAndByPosition) {
  std::string found = Name(FindField(SelectScreen, "mode")) + Name(FindField(SelectScreen, "nod"));
  for (const Position at : {Position{5, 24}, {5, 25}, {5, 89}, {5, 90}, {6, 57}, {-1, -1}}) {
    found += ' ' + Name(FindFieldAt(SelectScreen, at.row, at.col));
  }
  EXPECT_EQ(found, "-- - node node - userid -");
}

TEST(ScreenTable, DownAndUpGoToTheFirstEnterableFieldOfALine) {
  // the protected fields; for each of the others where Down and Up lead; the last one
  std::istringstream cases(R"(- ce.ca.ea.ea.ac.e a ce.eb.eb.bc.e b ce.ea.ea.ac.e c de.da.ea.ad.e
      cd ee.ea.aa.e e cc.ca.ca.aa.d ad ce.eb.bc.e abcd ee.e bcde aa.a)");
  for (std::string off, targets, seen; cases >> off >> targets; seen.clear()) {
    ScreenField table[] = {
        Field(1, 5, 3, "a"),  Field(1, 15, 3, "b"), Field(-1, -1, -1, "label"), Field(3, 5, 3, "c"),
        Field(3, 15, 3, "d"), Field(5, 5, 3, "e"),  Field(255, 255, 0, "end")};
    for (auto& f : Rows(table)) f.flags = off.find(f.name) < off.size() ? FLD_PROTECTED : 0;
    for (auto& f : Rows(table)) {
      if (IsEnterable(f)) seen += Name(NextField(table, &f)) + Name(PrevField(table, &f)) + ".";
    }
    EXPECT_EQ(seen + Name(LastField(table)), targets) << off;
  }
}

TEST(FieldStore, BuffersComeAndGoWithTheScreenAlsoWhenOneCannotBeHad) {
  ScreenField table[] = {Field(1, 5, 3, "a"), Field(2, 5, 3, "b"), Field(3, 5, 3, "c"), kEnd};
  table[0].flags = table[2].flags = FLD_DYNLABEL;
  for (const int width : {-1000, 3}) {
    table[1].width = width;
    EXPECT_EQ(AllocScreenFields(table), width < 0 ? -1 : 0);
    EXPECT_EQ(table[2].label == nullptr && table[2].value == nullptr, width < 0);
    for (ScreenField& row : Rows(table)) SetLabel(&row, std::string(100, 'x').c_str());
    SetValue(table, "abcdef");
    SetValue(table, (Value(table) + 2));
    EXPECT_EQ(table[0].label + std::string(table[1].label), std::string(79, 'x') + "-");
    EXPECT_EQ(std::string(table[0].value, 4), std::string("c\0\0\0", 4));
    EXPECT_EQ(FreeScreenFields(table), 0);
    for (auto& row : Rows(table)) EXPECT_EQ(!row.value && !row.label, row.flags != 0) << row.name;
  }
}

// Shows a table (S, U or P), two characters of border, node's length or P's protected rows, title.
static std::string Show(const std::string& start) {
  ScreenField* table = start[0] == 'S' ? SelectScreen : UpdateScreen;
  const std::string digits = start.substr(3, start.find_last_of("0123456789") - 2);
  for (const char row : start[0] == 'P' ? digits : "") table[row - '0'].flags = FLD_PROTECTED;
  WINDOW* window = OpenForm(table, "");
  SetValue(FindField(table, "node"), std::string(std::stoul(digits), 'n').c_str());
  box(window, static_cast<chtype>(start[1]), static_cast<chtype>(start[2]));
  for (int times = 0; times < 3; ++times) PaintScreen(window, table, &start[3 + digits.size()]);
  return ReadKey(window) == KEY_NEWLINE ? "." : "other";
}

TEST(PaintScreen, ShowsTheTableCutToTheTerminalInTheBorderOfTheWindow) {
  Play(R"(U|-53Title +---@0,0 -Title-@0,35 |_Press_<enter>_AFTER_all_changes_are_complete.___@2,0
      |____Node_name_mask_____[nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn]|@4,0
      |____Userid_mask________[]__@5,0 |____Security_mode______[]__@6,0 +---@23,0
      |____ENTER=Update__F3=Cancel__F4=List__@22,0 $ = .
    S:=54T :____Node_Name__________[nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn>:@5,0
      :____Userid_mask________[]__@6,0 :____ENTER=Select__F3=Cancel__F4=List__@22,0 =T=@0,37 $ = .
    P|-0 !@4,25 $ = . P|-1 !@5,25 $ = . P|-12 !@6,25 $ = . P|-3 !@4,25 $ = . P|-123 !@0,0 $ = .)",
       Show);
  Play(R"(U|-27Title -Title-@0,22 |____Node_name_mask_____[nnnnnnnnnnnnnnnnnnnnnnnnnn>|@4,0 $ = .
    S|-26Title -Title-@0,22 |____Node_Name__________[nnnnnnnnnnnnnnnnnnnnnnnnnn]|@5,0 $ = .)",
       Show, {.cols = 53});
  Play(R"(S|-0A.title.of.twenty.ch +A.title.of.twenty.ch---+@0,0 +-----------------@7,0 $ = .
    S|-0A.title.of.twenty-two. A.title.of.twenty-two.--+@0,0 +-----------------------+@7,0 $ = .
    S|-0This.is.far.too.long.for.it This.is.far.too.long.for.@0,0 +------@7,0 ___|@5,21 $ = .)",
       Show, {.rows = 8, .cols = 25});
}
