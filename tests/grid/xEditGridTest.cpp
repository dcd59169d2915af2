#include "grid/xEditGrid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <tuple>

#include "docmodel/DocError.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

using EditState = xEditGrid::EditState;

/// Writes the events down, one word each, and answers `SureChange`.
class Recorder : public xEditGridEvents {
 public:
  void Click() override { log += "Click "; }
  void Change(int& Row, int& Col) override {
    log += "Change" + At(Row, Col);
    Row = Col = 99;
  }
  void SureChange(bool& Cancel, String& NewValue, int& Row, int& Col) override {
    log += "SureChange=" + ToUtf8(NewValue) + At(Row, Col);
    Cancel = refuse;
    NewValue = u"other";
    Row = Col = 99;
    if (shrink != nullptr) shrink->SetCols(1);
  }
  void Scroll(int& Row, int& Col) override { log += "Scroll" + At(Row, Col); }
  void RowColChange() override { log += "RowColChange "; }

  std::string log;
  bool refuse = false;
  xEditGrid* shrink = nullptr;  // loses its second column while the change is offered

 private:
  static std::string At(int row, int col) {
    return "@" + std::to_string(row) + "," + std::to_string(col) + " ";
  }
};

class xEditGridTest : public ::testing::Test {
 protected:
  void MakeListColumn() {
    grid_.SetColType(1, u"1");
    for (const auto* label : {u"one", u"ReadOnly", u"two", u"one"}) {
      grid_.AddListContent(1, label, String(u"v-") + label);
    }
  }

  /// @return the visible editor, "text old" or "list  one [two]" with the choice,
  /// and the events since the last call.
  [[nodiscard]] std::string Seen() {
    String text = grid_.State() == EditState::kIdle ? u"none" : u"list";
    if (grid_.State() == EditState::kText) text = u"text";
    text += u" " + grid_.EditorText();
    for (size_t i = 0; i < grid_.Entries().size(); ++i) {
      const bool selected = static_cast<int>(i) == grid_.SelectedEntry();
      text += (selected ? u" [" : u" ") + grid_.Entries()[i] + (selected ? u"]" : u"");
    }
    return ToUtf8(text) + " " + std::exchange(events_.log, {});
  }

  Recorder events_;
  xEditGrid grid_{events_};
};

using Action = void (*)(xEditGrid&);

/// Matches an action that raises an error of that number.
auto Raises(int number) {
  return ::testing::Throws<RuntimeError>(::testing::Property(&RuntimeError::Number, number));
}

TEST_F(xEditGridTest, OffersEveryChangeOfTheTextToTheOwner) {
  grid_.SetCellValue(1, 1, u"old");
  grid_.ClickCell(1, 1);
  grid_.ChangeEditorText(u"old");
  EXPECT_EQ(Seen(), "text old RowColChange Click ");
  grid_.ChangeEditorText(u"new");
  EXPECT_EQ(Seen(), "text new SureChange=new@1,1 Change@1,1 ");
  events_.refuse = true;
  grid_.ChangeEditorText(u"refused");
  EXPECT_EQ(Seen(), "text new SureChange=refused@1,1 ");
  EXPECT_EQ(grid_.CellValue(1, 1), u"new");
  events_.refuse = false;
  events_.shrink = &grid_;
  grid_.ChangeEditorText(u"gone");
  EXPECT_EQ(Seen(), "none  SureChange=gone@1,1 RowColChange ");
}

TEST_F(xEditGridTest, ChoosesFromAList) {
  MakeListColumn();
  grid_.SetCellValue(1, 1, u"v-ReadOnly");  // row 1 and list column 1: a value, kept as its label
  grid_.ClickCell(1, 1);
  EXPECT_EQ(Seen(), "list  one [ReadOnly] two one RowColChange Click ");
  grid_.ChooseEntry(1);
  grid_.ChooseEntry(4);
  EXPECT_EQ(Seen(), "list  one [ReadOnly] two one ");
  grid_.ChooseEntry(0);
  EXPECT_EQ(Seen(), "list  [one] ReadOnly two one SureChange=one@1,1 Change@1,1 ");
  EXPECT_EQ(grid_.CellValue(1, 1), u"v-one");
  events_.refuse = true;
  grid_.ChooseEntry(2);  // of those that equal the cell the last one is selected
  EXPECT_EQ(Seen(), "list  one ReadOnly two [one] SureChange=two@1,1 ");
}

TEST_F(xEditGridTest, TranslatesWrittenValuesByTheRow) {
  MakeListColumn();
  grid_.SetRows(3);
  grid_.SetCellValue(2, 1, u"v-two");
  EXPECT_EQ(grid_.Text(2, 1), u"v-two");
  EXPECT_EQ(grid_.CellValue(2, 1), u"");
  grid_.SetCellValue(1, 1, u"no such value");
  EXPECT_EQ(grid_.Text(1, 1), u"no such value");
  grid_.SetCellValue(1, 0, u"v-one");  // column 0 has no entries
  EXPECT_EQ(grid_.CellValue(1, 0), u"v-one");
  grid_.ClickCell(2, 1);
  EXPECT_EQ(Seen(), "list  one ReadOnly two one RowColChange Click ");
}

TEST_F(xEditGridTest, KeepsListEntriesApartFromTheReadOnlySetting) {
  MakeListColumn();
  grid_.SetReadOnly(1, true);
  grid_.RemoveListContent(1, u"ReadOnly");
  grid_.RemoveListContent(1, u"ReadOnly");
  EXPECT_TRUE(grid_.ReadOnly(1));
  EXPECT_THROW(grid_.AddListContent(1, u"a b", u"v"), DocError);
  grid_.ClickCell(1, 1);
  EXPECT_EQ(Seen(), "none  RowColChange Click ");
  grid_.SetReadOnly(1, false);
  grid_.StartEdit();
  EXPECT_EQ(Seen(), "list  one two one Click ");
  grid_.ClearList(1);
  grid_.StartEdit();
  EXPECT_EQ(Seen(), "text  Click ");
  grid_.SetColType(1, u"2");  // opens a list, yet its labels are plain texts
  grid_.SetCellValue(1, 1, u"plain");
  grid_.StartEdit();
  EXPECT_EQ(Seen(), "list  Click ");
  EXPECT_EQ(grid_.CellValue(1, 1), u"plain");
}

TEST_F(xEditGridTest, MovesTheEditPastHiddenRows) {
  grid_.SetRows(7);
  grid_.ClickCell(3, 1);
  grid_.SetHiddenRows({true, false, true, false, true, true, false});
  EXPECT_EQ(grid_.State(), EditState::kText);  // its row is visible
  constexpr int kUp = xEditGrid::kKeyUp;
  constexpr int kDown = xEditGrid::kKeyDown;
  constexpr int kOther = 39;
  for (const auto& [key, row] :
       {std::pair(kOther, 3), {kDown, 6}, {kDown, 6}, {kUp, 3}, {kUp, 1}, {kUp, 1}}) {
    grid_.EditorKeyDown(key);
    EXPECT_EQ(grid_.Row(), row) << key;
    EXPECT_EQ(grid_.State(), EditState::kText);
  }
  for (const auto& [hidden, row] :
       {std::pair(std::vector<bool>{false, true, true}, 3),
        std::pair(std::vector<bool>{false, false, false, true, true, true, true}, 2)}) {
    grid_.SetHiddenRows(hidden);
    EXPECT_EQ(grid_.Row(), row);
    EXPECT_EQ(grid_.State(), EditState::kIdle);
  }
  grid_.SetHiddenRows(std::vector<bool>(7, true));
  EXPECT_FALSE(grid_.TakesText());
  grid_.StartEdit();
  EXPECT_EQ(grid_.State(), EditState::kIdle);
  grid_.Clear();
  EXPECT_FALSE(grid_.IsRowHidden(2));
}

TEST_F(xEditGridTest, HidesTheEditor) {
  const Action ways[] = {[](xEditGrid& grid) { grid.EditorKeyPress(xEditGrid::kEnter); },
                         [](xEditGrid& grid) { grid.EditorLostFocus(EditState::kText); },
                         [](xEditGrid& grid) { grid.Clear(); },
                         [](xEditGrid& grid) { grid.MoveTo(1, 1); },
                         [](xEditGrid& grid) { grid.Scrolled(); }};
  for (const Action hide : ways) {
    grid_.ClickCell(1, 0);
    grid_.EditorKeyPress(u'a');
    grid_.EditorLostFocus(EditState::kList);
    grid_.ClickCell(0, 1);
    EXPECT_EQ(Seen().substr(0, 6), "text  ");
    hide(grid_);
    EXPECT_EQ(grid_.State(), EditState::kIdle);
  }
  EXPECT_EQ(Seen(), "none  Scroll@1,0 ");
}

TEST_F(xEditGridTest, GrowsAtTheLastRowOnly) {
  constexpr Action kClick = [](xEditGrid& grid) { grid.ClickCell(grid.Row(), 0); };
  constexpr Action kKey = [](xEditGrid& grid) { grid.GridKeyPress(u'a'); };
  constexpr Action kEnter = [](xEditGrid& grid) { grid.GridKeyPress(xEditGrid::kEnter); };
  const std::tuple<int, int, Action, int> cases[] = {
      {0, 2, kClick, 3}, {0, 2, kEnter, 3}, {1, 1, kKey, 3},  {1, 2, kClick, 4},
      {1, 2, kKey, 4},   {1, 2, kEnter, 4}, {2, 2, kClick, 3}};
  grid_.SetReadOnly(0, true);
  for (const auto& [growth, row, action, rows] : cases) {
    grid_.SetRows(3);
    grid_.SetAutoCrecimiento(growth);
    grid_.MoveTo(row, 0);
    action(grid_);
    EXPECT_EQ(grid_.Rows(), rows) << growth << " " << row;
  }
  grid_.SetAutoCrecimiento(1);
  grid_.SetRows(std::numeric_limits<int>::max());
  grid_.MoveTo(grid_.Rows(), 0);
  EXPECT_THAT([this] { kKey(grid_); }, Raises(xEditGrid::kOverflow));
}

TEST_F(xEditGridTest, KeepsCellsAndCurrentCellWhenResized) {
  grid_.SetCols(3);
  grid_.SetRows(4);
  grid_.SetCellValue(2, 0, u"a");
  grid_.SetCellValue(2, 2, u"c");
  grid_.MoveTo(7, 7);
  const std::tuple<int, int, int, int, StringView> cases[] = {{4, 4, 3, 2, u"a,,c,,"},
                                                              {4, 2, 3, 1, u"a,,"},
                                                              {4, 3, 3, 1, u"a,,,"},
                                                              {1, 3, 0, 1, u""},
                                                              {3, 3, 1, 1, u",,,"}};
  for (const auto& [rows, cols, row, col, cells] : cases) {
    grid_.SetRows(rows);
    grid_.SetCols(cols);
    EXPECT_EQ(std::pair(grid_.Row(), grid_.Col()), std::pair(row, col));
    String texts;
    for (int i = 0; rows > 2 && i < cols; ++i) texts += String(grid_.Text(2, i)) + u",";
    EXPECT_EQ(texts, cells);
    grid_.StartEdit();
    EXPECT_EQ(grid_.State(), row > 0 ? EditState::kText : EditState::kIdle);
  }
}

TEST_F(xEditGridTest, RefusesWhatLiesOutside) {
  for (const auto& action : std::initializer_list<std::function<void()>>{
           [&] { grid_.SetRows(0); }, [&] { grid_.SetCols(-1); },
           [&] { (void)grid_.CellValue(2, 0); }, [&] { grid_.SetCellValue(1, -1, u""); }}) {
    EXPECT_THAT(action, Raises(xEditGrid::kSubscriptOutOfRange));
  }
}

TEST_F(xEditGridTest, ClearsAllButHeaderAndSettings) {
  MakeListColumn();
  grid_.SetFormatString(u"Name    |Two words |");
  grid_.SetCols(4);
  grid_.SetCellValue(1, 0, u"x");
  grid_.Clear();
  EXPECT_EQ(grid_.Text(1, 0), u"");
  EXPECT_EQ(grid_.Text(0, 1), u"Two words");
  EXPECT_EQ(grid_.ColType(1), u"1");
  String headers;
  for (const auto& [caption, width] : grid_.Headers()) headers += caption + ToText(width) + u"|";
  EXPECT_EQ(headers, u"Name8|Two words10|0|0|");
}

TEST_F(xEditGridTest, ExportsItsContents) {
  MakeListColumn();
  grid_.SetRows(3);
  grid_.SetCellValue(1, 0, u"a<b");
  grid_.SetCellValue(1, 1, u"v-two");
  grid_.SetCellValue(2, 1, u"unknown");
  EXPECT_EQ(ToUtf8(ReplaceAll(grid_.XMLData()->XMLExport(), u"\r\n", u"\n")),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<xml>\n"
            "\t<Fila_0 ID=\"1\">\n\t\t<Columna ID=\"1\">a&lt;b</Columna>\n"
            "\t\t<Columna ID=\"2\"/>\n\t</Fila_0>\n"
            "\t<Fila_1 ID=\"2\">\n\t\t<Columna ID=\"1\" Etiqueta=\"two\">v-two</Columna>\n"
            "\t\t<Columna ID=\"2\"/>\n\t</Fila_1>\n</xml>\n");

  grid_.SetEtiqueta(0, u"Label");
  EXPECT_EQ(grid_.Etiqueta(0, 1), u"Columna 2");  // a text column: the cell in row 0, column 1
  grid_.SetColType(0, u"1");
  EXPECT_EQ(grid_.Etiqueta(0, 1), u"Label");
}

TEST_F(xEditGridTest, PersistsItsProperties) {
  grid_.SetFormatString(u"A|B|C");
  grid_.SetCols(3);
  grid_.SetRows(7);
  grid_.SetAutoCrecimiento(1);
  EXPECT_TRUE(grid_.PropertiesChanged());
  const xEditGrid::Properties written = grid_.WriteProperties();
  EXPECT_FALSE(grid_.PropertiesChanged());
  EXPECT_EQ(written, (xEditGrid::Properties{{u"FormatString", u"A|B|C"},
                                            {u"Cols", u"3"},
                                            {u"Rows", u"7"},
                                            {u"AutoCrecimiento", u"1"}}));
  grid_.ReadProperties({});
  EXPECT_EQ(grid_.WriteProperties(), xEditGrid(events_).WriteProperties());
  grid_.ReadProperties(written);
  EXPECT_EQ(grid_.WriteProperties(), written);
  EXPECT_EQ(grid_.Text(0, 2), u"C");
}

}  // namespace
}  // namespace quenmar
