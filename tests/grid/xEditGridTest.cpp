#include "grid/xEditGrid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "docmodel/DocError.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
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

  std::string Take() { return std::exchange(log, {}); }

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

  /// @return the visible editor: "text old|" with the caret, or "list one [two]" with the choice.
  [[nodiscard]] std::string Shown() const {
    if (grid_.State() == EditState::kIdle) return grid_.EditorText().empty() ? "none" : "leftover";
    if (grid_.State() == EditState::kText) {
      String text = grid_.EditorText();
      return "text " + ToUtf8(text.insert(static_cast<size_t>(grid_.Caret()), u"|"));
    }
    std::string list = "list";
    for (size_t i = 0; i < grid_.Entries().size(); ++i) {
      const std::string label = ToUtf8(grid_.Entries()[i]);
      list += static_cast<int>(i) == grid_.SelectedEntry() ? " [" + label + "]" : " " + label;
    }
    return list;
  }

  Recorder events_;
  xEditGrid grid_{events_};
};

using Action = void (*)(xEditGrid&);

constexpr Action kClick = [](xEditGrid& grid) { grid.ClickCell(grid.Row(), 0); };
constexpr Action kKey = [](xEditGrid& grid) { grid.GridKeyPress(u'a'); };
constexpr Action kEnter = [](xEditGrid& grid) { grid.GridKeyPress(xEditGrid::kEnter); };

const std::vector<Action> kHiding = {
    [](xEditGrid& grid) { grid.EditorKeyPress(xEditGrid::kEnter); },
    [](xEditGrid& grid) { grid.EditorLostFocus(EditState::kText); },
    [](xEditGrid& grid) { grid.Scrolled(); },
    [](xEditGrid& grid) { grid.Clear(); },
    [](xEditGrid& grid) { grid.MoveTo(1, 1); },
};

MATCHER_P(RaisesNumber, number, "") {
  try {
    arg();
  } catch (const RuntimeError& error) {
    return error.Number() == number;
  }
  return false;
}

TEST_F(xEditGridTest, OffersEveryChangeOfTheTextToTheOwner) {
  grid_.SetCellValue(1, 1, u"old");
  grid_.ClickCell(1, 1);
  EXPECT_EQ(Shown(), "text old|");
  grid_.ChangeEditorText(u"old");
  EXPECT_EQ(events_.Take(), "RowColChange Click ");

  grid_.ChangeEditorText(u"new");
  EXPECT_EQ(events_.Take(), "SureChange=new@1,1 Change@1,1 ");
  events_.refuse = true;
  grid_.ChangeEditorText(u"refused");
  EXPECT_EQ(events_.Take(), "SureChange=refused@1,1 ");
  EXPECT_EQ(grid_.CellValue(1, 1), u"new");
  EXPECT_EQ(Shown(), "text new|");

  events_.refuse = false;
  events_.shrink = &grid_;
  grid_.ChangeEditorText(u"gone");
  EXPECT_EQ(events_.Take(), "SureChange=gone@1,1 RowColChange ");
  EXPECT_EQ(Shown(), "none");
}

TEST_F(xEditGridTest, ChoosesFromAList) {
  MakeListColumn();
  grid_.SetCellValue(1, 1, u"v-ReadOnly");  // row 1 and list column 1: a value, kept as its label
  grid_.ClickCell(1, 1);
  EXPECT_EQ(Shown(), "list one [ReadOnly] two one");
  events_.Take();
  grid_.ChooseEntry(1);
  grid_.ChooseEntry(4);
  EXPECT_EQ(events_.Take(), "");
  grid_.ChooseEntry(0);
  EXPECT_EQ(events_.Take(), "SureChange=one@1,1 Change@1,1 ");
  EXPECT_EQ(grid_.CellValue(1, 1), u"v-one");
  events_.refuse = true;
  grid_.ChooseEntry(2);
  EXPECT_EQ(Shown(), "list one ReadOnly two [one]");  // the last one that equals the cell
}

TEST_F(xEditGridTest, TranslatesWrittenValuesByTheRow) {
  MakeListColumn();
  grid_.SetRows(3);
  grid_.SetCellValue(2, 1, u"v-two");
  EXPECT_EQ(grid_.Text(2, 1), u"v-two");
  EXPECT_EQ(grid_.CellValue(2, 1), u"");
  grid_.ClickCell(2, 1);
  EXPECT_EQ(Shown(), "list one ReadOnly two one");
  grid_.SetCellValue(1, 1, u"no such value");
  EXPECT_EQ(grid_.Text(1, 1), u"no such value");
  grid_.SetCellValue(1, 0, u"v-one");  // column 0 has no entries
  EXPECT_EQ(grid_.CellValue(1, 0), u"v-one");
}

TEST_F(xEditGridTest, KeepsListEntriesApartFromTheReadOnlySetting) {
  MakeListColumn();
  grid_.SetReadOnly(1, true);
  grid_.RemoveListContent(1, u"ReadOnly");
  grid_.RemoveListContent(1, u"ReadOnly");
  EXPECT_TRUE(grid_.ReadOnly(1));
  grid_.SetReadOnly(1, false);
  EXPECT_THROW(grid_.AddListContent(1, u"a b", u"v"), DocError);
  grid_.ClickCell(1, 1);
  EXPECT_EQ(Shown(), "list one two one");
  grid_.SetReadOnly(1, true);
  events_.Take();
  grid_.StartEdit();
  EXPECT_EQ(Shown() + " " + events_.Take(), "none Click ");
  grid_.ClearList(1);
  EXPECT_EQ(grid_.ColType(1), u"0");
  grid_.StartEdit();
  EXPECT_EQ(Shown(), "text |");
  grid_.SetColType(1, u"2");  // opens a list, yet its labels are plain texts
  grid_.SetCellValue(1, 1, u"plain");
  grid_.StartEdit();
  EXPECT_EQ(Shown(), "list");
  EXPECT_EQ(grid_.CellValue(1, 1), u"plain");
}

TEST_F(xEditGridTest, MovesTheEditWithTheArrowKeys) {
  grid_.SetRows(4);
  struct Case {
    int from, key, to;
    const char* events;
  };
  const std::vector<Case> cases = {{1, 38, 1, ""},
                                   {2, 38, 1, "RowColChange Click "},
                                   {3, 40, 3, ""},
                                   {2, 40, 3, "RowColChange Click "},
                                   {2, 39, 2, ""}};
  for (const Case& step : cases) {
    grid_.ClickCell(step.from, 0);
    events_.Take();
    grid_.EditorKeyDown(step.key);
    EXPECT_EQ(grid_.Row(), step.to) << step.from << " " << step.key;
    EXPECT_EQ(events_.Take(), step.events) << step.from << " " << step.key;
    EXPECT_EQ(Shown(), "text |");
  }
}

TEST_F(xEditGridTest, HidesTheEditor) {
  for (const Action hide : kHiding) {
    grid_.ClickCell(1, 0);
    grid_.EditorKeyPress(u'a');
    grid_.EditorLostFocus(EditState::kList);
    grid_.ClickCell(0, 1);
    EXPECT_EQ(Shown(), "text |");
    hide(grid_);
    EXPECT_EQ(Shown(), "none");
  }
  events_.Take();
  grid_.Scrolled();
  EXPECT_EQ(events_.Take(), "Scroll@1,1 ");
}

TEST_F(xEditGridTest, GrowsAtTheLastRowOnly) {
  struct Case {
    int growth, row;
    Action action;
    int rows;
  };
  const std::vector<Case> cases = {{0, 2, kClick, 3}, {0, 2, kEnter, 3}, {1, 1, kClick, 3},
                                   {1, 1, kKey, 3},   {1, 2, kClick, 4}, {1, 2, kKey, 4},
                                   {1, 2, kEnter, 4}, {2, 2, kClick, 3}};
  grid_.SetReadOnly(0, true);
  for (const Case& step : cases) {
    grid_.SetRows(3);
    grid_.SetAutoCrecimiento(step.growth);
    grid_.MoveTo(step.row, 0);
    step.action(grid_);
    EXPECT_EQ(grid_.Rows(), step.rows) << &step - cases.data();
  }

  grid_.SetAutoCrecimiento(1);
  grid_.SetRows(std::numeric_limits<int>::max());
  grid_.MoveTo(grid_.Rows(), 0);
  EXPECT_THAT([this] { kKey(grid_); }, RaisesNumber(6));
  EXPECT_THAT([this] { kClick(grid_); }, RaisesNumber(6));
}

TEST_F(xEditGridTest, KeepsCellsAndCurrentCellWhenResized) {
  grid_.SetCols(3);
  grid_.SetRows(4);
  grid_.SetCellValue(2, 0, u"a");
  grid_.SetCellValue(2, 2, u"c");
  grid_.MoveTo(7, 7);
  EXPECT_EQ(std::pair(grid_.Row(), grid_.Col()), std::pair(3, 2));
  grid_.SetCols(4);
  EXPECT_EQ(grid_.Text(2, 2), u"c");
  grid_.SetCols(2);
  EXPECT_EQ(grid_.Col(), 1);
  grid_.SetCols(3);
  EXPECT_EQ(grid_.Text(2, 2), u"");
  EXPECT_EQ(grid_.Text(2, 0), u"a");
  grid_.SetRows(1);
  EXPECT_EQ(grid_.Row(), 0);
  grid_.StartEdit();
  EXPECT_EQ(Shown(), "none");
  grid_.SetRows(3);
  EXPECT_EQ(grid_.Row(), 1);
  EXPECT_EQ(grid_.Text(2, 0), u"");
}

TEST_F(xEditGridTest, RefusesWhatLiesOutside) {
  EXPECT_THAT([this] { grid_.SetRows(0); }, RaisesNumber(9));
  EXPECT_THAT([this] { grid_.SetCols(-1); }, RaisesNumber(9));
  EXPECT_THAT([this] { (void)grid_.CellValue(2, 0); }, RaisesNumber(9));
  EXPECT_THAT([this] { grid_.SetCellValue(1, -1, u""); }, RaisesNumber(9));
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
  std::vector<std::pair<String, int>> headers;
  for (const auto& header : grid_.Headers()) headers.emplace_back(header.caption, header.width);
  EXPECT_THAT(headers,
              ElementsAre(Pair(u"Name", 8), Pair(u"Two words", 10), Pair(u"", 0), Pair(u"", 0)));
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
  EXPECT_THAT(written, ElementsAre(Pair(u"FormatString", u"A|B|C"), Pair(u"Cols", u"3"),
                                   Pair(u"Rows", u"7"), Pair(u"AutoCrecimiento", u"1")));
  grid_.ReadProperties({});
  EXPECT_EQ(grid_.WriteProperties(),
            (xEditGrid::Properties{{u"FormatString", u"Columna 1   |Columna 2   "},
                                   {u"Cols", u"2"},
                                   {u"Rows", u"2"},
                                   {u"AutoCrecimiento", u"0"}}));
  grid_.ReadProperties(written);
  EXPECT_EQ(grid_.WriteProperties(), written);
  EXPECT_EQ(grid_.Text(0, 2), u"C");
}

}  // namespace
}  // namespace quenmar
