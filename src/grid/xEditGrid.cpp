#include "grid/xEditGrid.h"

#include <algorithm>
#include <limits>

namespace quenmar {

namespace {

constexpr StringView kDefaultFormatString = u"Columna 1   |Columna 2   ";
constexpr int kDefaultCols = 2;
constexpr int kDefaultRows = 2;

constexpr StringView kTextColumn = u"0";

[[noreturn]] void RaiseSubscriptOutOfRange() {
  throw RuntimeError(xEditGrid::kSubscriptOutOfRange, u"xEditGrid", u"Subscript out of range");
}

void CheckCount(int count) {
  if (count < 1) RaiseSubscriptOutOfRange();
}

String PropertyOr(const xEditGrid::Properties& properties, StringView key, StringView missing) {
  const auto property =
      std::find_if(properties.begin(), properties.end(),
                   [key](const auto& candidate) { return candidate.first == key; });
  return property == properties.end() ? String(missing) : property->second;
}

}  // namespace

xEditGrid::xEditGrid(xEditGridEvents& events)
    : events_(events), cells_(kDefaultRows, kDefaultCols), formatString_(kDefaultFormatString) {
  FillHeader(0);
}

void xEditGrid::SetCols(int cols) {
  CheckCount(cols);
  const int before = Cols();
  cells_.SetCols(cols);
  if (cols > before) FillHeader(before);
  propertiesChanged_ = true;
  MoveTo(row_, col_);
}

void xEditGrid::SetRows(int rows) {
  CheckCount(rows);
  cells_.SetRows(rows);
  propertiesChanged_ = true;
  MoveTo(row_, col_);
}

void xEditGrid::SetFormatString(StringView format) {
  formatString_ = format;
  FillHeader(0);
  propertiesChanged_ = true;
}

std::vector<xEditGrid::Header> xEditGrid::Headers() const {
  std::vector<Header> headers(static_cast<size_t>(Cols()));
  const std::vector<StringView> parts = Split(formatString_, u'|');
  for (size_t i = 0; i < std::min(headers.size(), parts.size()); ++i) {
    const StringView part = parts[i];
    headers[i].caption = part.substr(0, part.find_last_not_of(u' ') + 1);
    headers[i].width = static_cast<int>(part.size());
  }
  return headers;
}

void xEditGrid::FillHeader(int firstCol) {
  const std::vector<Header> headers = Headers();
  for (int col = firstCol; col < Cols(); ++col) {
    cells_.SetText(0, col, headers[static_cast<size_t>(col)].caption);
  }
}

bool xEditGrid::SetHiddenRows(std::vector<bool> hidden) {
  hidden.resize(static_cast<size_t>(Rows()));
  hidden_.resize(static_cast<size_t>(Rows()));
  if (hidden == hidden_) return false;
  hidden_ = std::move(hidden);
  if (!IsRowHidden(row_)) return true;
  const int below = VisibleRow(row_, 1);
  const int row = below > 0 ? below : VisibleRow(row_, -1);
  CloseEditor();
  if (row > 0) MoveTo(row, col_);
  return true;
}

int xEditGrid::VisibleRow(int row, int step) const {
  for (row += step; row > 0 && row < Rows(); row += step) {
    if (!IsRowHidden(row)) return row;
  }
  return 0;
}

void xEditGrid::SetAutoCrecimiento(int growth) {
  autoCrecimiento_ = growth;
  propertiesChanged_ = true;
}

String xEditGrid::ColType(int col) const {
  String type = settings_.Type(col);
  return type.empty() ? String(kTextColumn) : type;
}

void xEditGrid::SetColType(int col, StringView type) { settings_.SetType(col, type); }

void xEditGrid::AddListContent(int col, StringView label, StringView value) {
  settings_.AddEntry(col, label, value);
}

String xEditGrid::Etiqueta(int col, int row) const {
  if (IsList(col)) {
    String label = settings_.Etiqueta(col);
    if (!label.empty()) return label;
  }
  // Kept: owners name the cell with its row first here, whatever the arguments are called.
  return String(Text(col, row));  // NOLINT(*-suspicious-call-argument): meant
}

void xEditGrid::CheckCell(int row, int col) const {
  if (!cells_.Has(row, col)) RaiseSubscriptOutOfRange();
}

StringView xEditGrid::Text(int row, int col) const {
  CheckCell(row, col);
  return cells_.Text(row, col);
}

String xEditGrid::CellValue(int row, int col) const {
  const StringView text = Text(row, col);
  return IsList(col) ? settings_.ValueOf(col, text) : String(text);
}

void xEditGrid::SetCellValue(int row, int col, StringView value) {
  CheckCell(row, col);
  // Kept: the row, not the column, picks the settings. Owners fill list columns with labels, one of
  // which could be the value of another entry.
  const auto label = IsList(row) ? settings_.LabelOf(col, value) : std::nullopt;
  cells_.SetText(row, col, label ? StringView(*label) : value);
}

void xEditGrid::Clear() {
  cells_.Clear();
  hidden_.clear();
  FillHeader(0);
  CloseEditor();
}

std::shared_ptr<Document> xEditGrid::XMLData() const {
  auto data = std::make_shared<Document>();
  // Kept: readers of the export expect "Fila_" (row) to name the columns and "Columna" (column) to
  // name the cells below.
  for (int col = 0; col < Cols(); ++col) {
    const int index = data->Childs().AddChild(u"Fila_" + ToText(col));
    const auto child = data->Childs().Child(index);
    const bool list = IsList(col);
    child->Parameters().AddParameter(u"ID", ToText(col + 1));
    for (int row = 1; row < Rows(); ++row) {
      const String value = CellValue(row, col);
      const auto field = child->Fields().Field(child->Fields().AddField(u"Columna", value));
      field->Parameters().AddParameter(u"ID", ToText(row));
      if (list && !value.empty()) {
        field->Parameters().AddParameter(u"Etiqueta", Text(row, col));
      }
    }
  }
  return data;
}

void xEditGrid::ReadProperties(const Properties& properties) {
  SetFormatString(PropertyOr(properties, u"FormatString", kDefaultFormatString));
  SetCols(ToInteger(PropertyOr(properties, u"Cols", u"2")));
  SetRows(ToInteger(PropertyOr(properties, u"Rows", u"2")));
  SetAutoCrecimiento(ToInteger(PropertyOr(properties, u"AutoCrecimiento", u"0")));
  propertiesChanged_ = false;
}

xEditGrid::Properties xEditGrid::WriteProperties() {
  propertiesChanged_ = false;
  return {{u"FormatString", formatString_},
          {u"Cols", ToText(Cols())},
          {u"Rows", ToText(Rows())},
          {u"AutoCrecimiento", ToText(autoCrecimiento_)}};
}

void xEditGrid::MoveTo(int row, int col) {
  row = std::clamp(row, std::min(1, Rows() - 1), Rows() - 1);
  col = std::clamp(col, 0, Cols() - 1);
  if (row == row_ && col == col_) return;
  CloseEditor();
  row_ = row;
  col_ = col;
  events_.RowColChange();
}

void xEditGrid::ClickCell(int row, int col) {
  if (row < 1 || !cells_.Has(row, col)) return;
  MoveTo(row, col);
  StartEdit();
}

void xEditGrid::GrowAtLastRow() {
  if (autoCrecimiento_ != 1 || row_ != Rows() - 1) return;
  if (Rows() == std::numeric_limits<int>::max()) {
    throw RuntimeError(kOverflow, u"xEditGrid", u"Overflow");
  }
  SetRows(Rows() + 1);
}

bool xEditGrid::TakesText() const {
  return state_ == EditState::kIdle && row_ > 0 && !IsRowHidden(row_) && !ReadOnly(col_) &&
         ColType(col_) == kTextColumn;
}

void xEditGrid::StartEdit() {
  GrowAtLastRow();
  CloseEditor();
  if (row_ > 0 && !IsRowHidden(row_) && !ReadOnly(col_)) {
    // Any type but "0" opens the list, though only "1" has its labels translated.
    const bool text = TakesText();
    if (!text) entries_ = settings_.Labels(col_);
    state_ = text ? EditState::kText : EditState::kList;
    ShowCellInEditor();
  }
  events_.Click();
}

void xEditGrid::CloseEditor() {
  state_ = EditState::kIdle;
  editorText_.clear();
  entries_.clear();
  selectedEntry_ = -1;
}

/// Where several entries equal the cell's text, the last one is selected.
void xEditGrid::ShowCellInEditor() {
  const StringView text = Text(row_, col_);
  if (state_ == EditState::kText) {
    editorText_ = text;
  } else if (state_ == EditState::kList) {
    const auto last = std::find(entries_.rbegin(), entries_.rend(), text);
    selectedEntry_ = static_cast<int>(entries_.rend() - last) - 1;
  }
}

/// Offers a value for the current cell to the owner.
/// @return whether it was stored.
bool xEditGrid::Commit(const String& value) {
  const int row = row_;
  const int col = col_;
  bool cancel = false;
  String offered = value;
  int offeredRow = row;
  int offeredCol = col;
  events_.SureChange(cancel, offered, offeredRow, offeredCol);
  if (cancel || !cells_.Has(row, col)) return false;  // the handler may have taken the cell away
  cells_.SetText(row, col, value);
  int changedRow = row;
  int changedCol = col;
  events_.Change(changedRow, changedCol);
  return true;
}

void xEditGrid::ChangeEditorText(StringView text) {
  if (state_ != EditState::kText) return;
  const String value(text);  // outlives an editor that a handler hides
  editorText_ = value;
  if (value != Text(row_, col_) && !Commit(value)) ShowCellInEditor();
}

void xEditGrid::ChooseEntry(int entry) {
  if (state_ != EditState::kList || entry < 0 || static_cast<size_t>(entry) >= entries_.size()) {
    return;
  }
  selectedEntry_ = entry;
  const String label = entries_[static_cast<size_t>(entry)];
  if (label != Text(row_, col_) && !Commit(label)) ShowCellInEditor();
}

void xEditGrid::EditorKeyDown(int keyCode) {
  if (state_ != EditState::kText) return;
  if (keyCode != kKeyUp && keyCode != kKeyDown) return;
  const int row = VisibleRow(row_, keyCode == kKeyUp ? -1 : 1);
  if (row == 0) return;
  MoveTo(row, col_);
  StartEdit();
}

void xEditGrid::EditorKeyPress(char16_t character) {
  if (character == kEnter) CloseEditor();
}

void xEditGrid::GridKeyPress(char16_t character) {
  GrowAtLastRow();
  if (character == kEnter) StartEdit();
}

void xEditGrid::EditorLostFocus(EditState editor) {
  if (editor == state_) CloseEditor();
}

void xEditGrid::Scrolled() {
  CloseEditor();
  int row = row_;
  int col = col_;
  events_.Scroll(row, col);
}

}  // namespace quenmar
