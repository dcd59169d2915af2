#include "editor/EditGridView.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <set>

#include "widgets/Colours.h"
#include "widgets/ColumnWidths.h"
#include "widgets/QtText.h"
#include "widgets/ValueEdit.h"

namespace quenmar {

namespace {

constexpr int kCellMargin = 3;  // logical pixels between a cell's edge and its text

bool IsEnter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// @return whether the key types a character, and is no shortcut.
bool IsTyped(const QKeyEvent& event) {
  constexpr Qt::KeyboardModifiers kAltGr = Qt::ControlModifier | Qt::AltModifier;
  const Qt::KeyboardModifiers held = event.modifiers() & (kAltGr | Qt::MetaModifier);
#ifdef Q_OS_WIN
  if (held != Qt::NoModifier && held != kAltGr) return false;  // AltGr is both there
#else
  if (held != Qt::NoModifier) return false;
#endif
  return !event.text().isEmpty() && event.text().front().isPrint();
}

/// Shows the cells' own roles: frames warnings, and makes texts pale.
class CellDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    if (index.data(EditGridModel::kWarning).toString().isEmpty()) return;
    PaintWarningFrame(*painter, option.rect, option.palette);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QString sign = index.data(EditGridModel::kSign).toString();
    if (!sign.isEmpty()) option->text.prepend(sign + ' ');
    if (!index.data(EditGridModel::kPale).toBool()) return;
    option->palette.setColor(QPalette::Text, QuietText(option->palette));
  }
};

/// @return whether the focus comes back to the editor after such a loss.
bool KeepsFocusInWindow(const QFocusEvent& event) {
  return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason;
}

}  // namespace

EditGridView::EditGridView(xEditGridEvents& events, QWidget* parent)
    : QTableView(parent),
      grid_(events),
      model_(new EditGridModel(grid_, this)),
      widths_(new ColumnWidths(this)) {
  CreateEditors();
  SetUpTable();
  Reload();
}

void EditGridView::SetUpTable() {
  setModel(model_);
  setItemDelegate(new CellDelegate(this));
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ExtendedSelection);
  setTabKeyNavigation(false);  // Tab leaves the grid; the arrow keys move within it
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollMode(ScrollPerPixel);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  // Rows of one height need no measuring.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * kCellMargin);
  verticalHeader()->setFixedWidth(fontMetrics().horizontalAdvance('*') + 4 * kCellMargin);
  verticalHeader()->setSectionsClickable(false);
  verticalHeader()->setHighlightSections(false);
  connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
    constexpr Qt::KeyboardModifiers kSelecting = Qt::ShiftModifier | Qt::ControlModifier;
    if ((QGuiApplication::keyboardModifiers() & kSelecting) != 0) return;
    grid_.ClickCell(EditGridModel::RowOf(index), index.column());
    Follow();
  });
}

void EditGridView::CreateEditors() {
  text_ = new ValueEdit(viewport());
  text_->setObjectName("T");
  connect(text_, &QLineEdit::textChanged, this, &EditGridView::ChangeText);

  list_ = new QComboBox(viewport());
  list_->setObjectName("C");
  connect(list_, &QComboBox::activated, this, [this](int entry) {
    grid_.ChooseEntry(entry);
    Follow();
  });

  for (QWidget* const editor : std::initializer_list<QWidget*>{text_, list_}) {
    editor->installEventFilter(this);
    editor->hide();
  }
}

void EditGridView::BeginColumns() {
  if (header_ == grid_.FormatString() && widths_->Count() == grid_.Cols()) return;
  header_ = grid_.FormatString();
  const QFontMetrics metrics = horizontalHeader()->fontMetrics();
  QList<int> widths;
  for (const xEditGrid::Header& header : grid_.Headers()) {
    const QString blanks(header.width - static_cast<int>(header.caption.size()), ' ');
    const int text = metrics.horizontalAdvance(ToQString(header.caption) + blanks);
    widths << (header.width == 0 ? horizontalHeader()->defaultSectionSize()
                                 : text + 2 * kCellMargin);
  }
  widths_->Begin(widths);
}

void EditGridView::Reload() {
  {
    const QScopedValueRollback following(following_, true);
    model_->Reload();
    BeginColumns();
    HideRows();
  }
  Follow();
}

void EditGridView::Refresh() {
  grid_.CloseEditor();
  Follow();
}

void EditGridView::SetHiddenRows(const std::vector<bool>& hidden) {
  if (!grid_.SetHiddenRows(hidden)) return;  // keep the scroll position
  HideRows();
  Follow();
  if (currentIndex().isValid())
    selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
  scrollTo(currentIndex());
}

void EditGridView::HideRows() {
  // Else the header would count all rows again for each of them.
  verticalHeader()->setUpdatesEnabled(false);
  for (int row = 1; row < grid_.Rows(); ++row) setRowHidden(row - 1, grid_.IsRowHidden(row));
  verticalHeader()->setUpdatesEnabled(true);
}

std::vector<int> EditGridView::SelectedRows() const {
  std::set<int> rows;
  for (const QModelIndex& index : selectedIndexes()) rows.insert(EditGridModel::RowOf(index));
  if (grid_.Row() > 0 && !grid_.IsRowHidden(grid_.Row())) rows.insert(grid_.Row());
  return {rows.begin(), rows.end()};
}

void EditGridView::SetMarks(CellMarksOf cells, RowRemarkOf rows) {
  model_->SetMarks(std::move(cells), std::move(rows));
}

void EditGridView::RememberColumns(const QString& window) { widths_->Remember(window); }

int EditGridView::HeightOf(int rows) const {
  return horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() +
         2 * frameWidth();
}

void EditGridView::SetWarning(const String& warning) {
  text_->SetWarning(warning);
  model_->SetWarning(warning);
}

int EditGridView::FullWidth() const {
  return widths_->Total() + verticalHeader()->width() + verticalScrollBar()->sizeHint().width() +
         2 * frameWidth();
}

/// Ctrl+Home and Ctrl+End clear the selection, which the toolkit would keep.
QItemSelectionModel::SelectionFlags EditGridView::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const {
  if (event != nullptr && event->type() == QEvent::KeyPress) {
    const auto* const key = static_cast<const QKeyEvent*>(event);
    const bool far = key->key() == Qt::Key_Home || key->key() == Qt::Key_End;
    if (far && key->modifiers() == Qt::ControlModifier) {
      return QItemSelectionModel::ClearAndSelect;
    }
  }
  return QTableView::selectionCommand(index, event);
}

void EditGridView::Follow() {
  const QScopedValueRollback following(following_, true);
  model_->Follow();
  const QModelIndex current = model_->IndexOf(grid_.Row(), grid_.Col());
  const bool moved = current != currentIndex();
  if (moved) setCurrentIndex(current);
  switch (grid_.State()) {
    case xEditGrid::EditState::kIdle:
      HideEditors();
      break;
    case xEditGrid::EditState::kText:
      ShowTextEditor(moved || text_->isHidden());
      break;
    case xEditGrid::EditState::kList:
      ShowList(moved || list_->isHidden());
      break;
  }
}

void EditGridView::ShowTextEditor(bool started) {
  const QString text = ToQString(grid_.EditorText());
  if (started) {
    text_->Begin(text);  // with the caret at its end
  } else if (text != text_->text()) {
    text_->setText(text);
  }
  if (!started) return;  // the user goes on typing; the caret and the focus stay
  list_->hide();
  scrollTo(currentIndex());
  text_->setAccessibleName(SpokenCell());
  LayEditors();
  text_->show();
  text_->setFocus();
}

QString EditGridView::SpokenCell() const {
  return ToQString(String(grid_.Text(grid_.Row(), 0)) + u", " + String(grid_.Text(0, grid_.Col())));
}

void EditGridView::ShowList(bool started) {
  if (started) {
    text_->hide();
    list_->clear();
    for (const String& entry : grid_.Entries()) list_->addItem(ToQString(entry));
    scrollTo(currentIndex());
    list_->setAccessibleName(SpokenCell());
    LayEditors();
    list_->show();
    list_->setFocus();
  }
  list_->setCurrentIndex(grid_.SelectedEntry());
}

void EditGridView::HideEditors() {
  // A hidden widget would pass the focus on to some other one.
  const QWidget* const focused = window()->focusWidget();
  if (focused == text_ || focused == list_) setFocus();
  text_->hide();
  list_->hide();
}

void EditGridView::ChangeText(const QString& text) {
  if (following_) return;
  grid_.ChangeEditorText(FromQString(text));
  Follow();
}

bool EditGridView::PressKeyInEditor(const QKeyEvent& event) {
  if (IsEnter(event)) {
    grid_.EditorKeyPress(xEditGrid::kEnter);
  } else if (event.key() == Qt::Key_Up) {
    grid_.EditorKeyDown(xEditGrid::kKeyUp);
  } else if (event.key() == Qt::Key_Down) {
    grid_.EditorKeyDown(xEditGrid::kKeyDown);
  } else {
    return false;
  }
  Follow();
  return true;
}

void EditGridView::LeaveEditor(const QObject* editor) {
  if (following_) return;
  grid_.EditorLostFocus(editor == text_ ? xEditGrid::EditState::kText
                                        : xEditGrid::EditState::kList);
  Follow();
}

bool EditGridView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == text_ || watched == list_) {
    if (event->type() == QEvent::KeyPress) {
      const auto& key = *static_cast<QKeyEvent*>(event);
      // The arrow keys of the list choose an entry.
      if ((watched == text_ || IsEnter(key)) && PressKeyInEditor(key)) return true;
    } else if (event->type() == QEvent::FocusOut &&
               !KeepsFocusInWindow(*static_cast<QFocusEvent*>(event))) {
      LeaveEditor(watched);
    }
  }
  return QTableView::eventFilter(watched, event);
}

void EditGridView::keyPressEvent(QKeyEvent* event) {
  if (IsEnter(*event)) {
    grid_.GridKeyPress(xEditGrid::kEnter);
    Follow();
    return;
  }
  if (IsTyped(*event) && grid_.TakesText()) {
    TypeOver(event);
    return;
  }
  if (const QString typed = event->text(); !typed.isEmpty()) {
    grid_.GridKeyPress(typed.front().unicode());
    Follow();
  }
  QTableView::keyPressEvent(event);
}

/// Only complete text of an input method opens the editor: opening it earlier would cancel the
/// composition.
void EditGridView::inputMethodEvent(QInputMethodEvent* event) {
  if (!grid_.TakesText()) {
    QTableView::inputMethodEvent(event);
  } else if (!event->commitString().isEmpty()) {
    TypeOver(event);
  }
}

void EditGridView::TypeOver(QEvent* event) {
  grid_.StartEdit();
  Follow();
  text_->selectAll();
  QApplication::sendEvent(text_, event);
}

void EditGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  if (!following_ && current.isValid()) {
    grid_.MoveTo(EditGridModel::RowOf(current), current.column());
    Follow();
  }
  QTableView::currentChanged(current, previous);
}

void EditGridView::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  if (following_) return;
  grid_.Scrolled();
  Follow();
}

void EditGridView::updateEditorGeometries() {
  QTableView::updateEditorGeometries();
  LayEditors();
}

bool EditGridView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
  const auto& help = *static_cast<QHelpEvent*>(event);
  const QModelIndex cell = indexAt(help.pos());
  const bool cut = sizeHintForIndex(cell).width() > visualRect(cell).width();
  QString text = cell.data(Qt::ToolTipRole).toString();
  if (text.isEmpty() && cut) text = cell.data().toString();
  QToolTip::showText(help.globalPos(), ToToolTip(text), viewport(), visualRect(cell));
  return true;
}

void EditGridView::LayEditors() {
  const QRect cell = visualRect(currentIndex());
  text_->setGeometry(cell);
  list_->setGeometry(cell);
}

}  // namespace quenmar
