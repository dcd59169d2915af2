#include "editor/NEditForm.h"

#include <QAction>
#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <utility>

#include "conf/Functions.h"
#include "editor/EditGridView.h"
#include "widgets/DefaultRemark.h"
#include "widgets/DragBar.h"
#include "widgets/FindBar.h"
#include "widgets/QtText.h"
#include "widgets/SelectionLead.h"
#include "widgets/SeriesTabs.h"
#include "widgets/ValueEdit.h"

namespace quenmar {

namespace {

enum Column : int { kName, kActualValue, kOriginalValue, kType, kColumns };

}  // namespace

NEditForm::NEditForm(FileContext context, QWidget* parent)
    : FileWindow(std::move(context), parent) {
  CreateControls();
  SetUpGrid();
  SetCaptions();
  AddClipboardActions();
  AddSettingActions();
  Connect();
  SetUpSize();
}

// The controls report as they are hidden, so the window must still be whole.
NEditForm::~NEditForm() { hide(); }

// The order in which the controls are made is the order in which Tab visits them.
void NEditForm::CreateControls() {
  setObjectName("NEditForm");
  frame_ = new QGroupBox(this);
  frame_->setObjectName("Frame1");
  using Choice = SettingFilter::Choice;
  find_ = new FindBar(TheLanguage(),
                      {Choice::kAll, Choice::kChanged, Choice::kDefaults,
                       Choice::kNotInDistribution, Choice::kCommentedOut},
                      this);
  find_->setParent(frame_);
  xEDG_ = new EditGridView(*this, frame_);
  xEDG_->setObjectName("xEDG");
  comments_ = MakeComments(frame_);
  comments_->setObjectName("Comments");
  series_ = new SeriesTabs(frame_);
  // In front of the frame, which would cut off what a large font lets reach over its edge.
  apply_ = new QPushButton(this);
  apply_->setObjectName("Command3");
  close_ = new QPushButton(this);
  close_->setObjectName("Command4");
  for (QPushButton* const button : {apply_, close_}) button->setAutoDefault(false);
  dragBar_ = new DragBar(frame_);
  dragBar_->setObjectName("dragComments");
  setTabOrder(comments_, dragBar_);
  xEDG_->setFocus();
}

void NEditForm::SetUpGrid() {
  xEditGrid& grid = xEDG_->Grid();
  grid.SetCols(kColumns);
  grid.SetRows(1);
  for (const int col : {kName, kOriginalValue, kType}) grid.SetReadOnly(col, true);
  grid.SetColType(kActualValue, u"0");
  grid.SetFormatString(TheLanguage().Text(Message::kGridColumns));
  xEDG_->SetMarks([this](int row, int col) { return MarksOf(row, col); },
                  [this](int row) {
                    const bool edited = Merge().IsEdited(row - 1);
                    return edited ? TheLanguage().Text(Message::kEdited) : String();
                  });
  xEDG_->Reload();
}

CellMarks NEditForm::MarksOf(int row, int col) const {
  CellMarks marks;
  if (col == kOriginalValue) return OriginalMarksOf(SettingOf(row)->Name());
  if (col != kName && col != kActualValue) return marks;
  const auto state = Merge().StateOf(SettingOf(row)->Name());
  marks.pale = state != FileMerge::SettingState::kActive;
  marks.struckOut = col == kName && state == FileMerge::SettingState::kCommentedOut;
  marks.bold = col == kActualValue && Merge().IsChanged(row - 1);
  marks.remark = StateRemark(state, TheLanguage());
  return marks;
}

CellMarks NEditForm::OriginalMarksOf(StringView name) const {
  CellMarks marks;
  if (const auto change = Merge().DefaultChangeOf(name)) {
    marks.sign = DefaultMark(change->kind);
    marks.remark = DefaultRemark(*change, TheLanguage());
  }
  return marks;
}

void NEditForm::SetCaptions() {
  const auto naming = [this](Message key) {
    return ReplaceAll(TheLanguage().Text(key), u"%1", FileName());
  };
  SetTitle(naming(Message::kEditingTitle) + u" - " + ServerFolder());
  frame_->setTitle(ToCaption(naming(Message::kEditingFrame)));
  apply_->setText(Caption(Message::kApply));
  close_->setText(Caption(Message::kClose));
  xEDG_->setAccessibleName(Text(Message::kParameters));
  xEDG_->SetWarning(TheLanguage().Text(Message::kReadBackAs));
}

void NEditForm::AddClipboardActions() {
  // In the toolkit's words, which it translates.
  copy_ = new QAction(QLineEdit::tr("&Copy"), this);
  paste_ = new QAction(QLineEdit::tr("&Paste"), this);
  copy_->setObjectName("Copy");
  copy_->setShortcut(QKeySequence::Copy);
  paste_->setObjectName("Paste");
  paste_->setShortcut(QKeySequence::Paste);
  connect(copy_, &QAction::triggered, this, &NEditForm::Copy);
  connect(paste_, &QAction::triggered, this, &NEditForm::Paste);
  addActions({copy_, paste_});
  for (QAbstractScrollArea* const box :
       std::initializer_list<QAbstractScrollArea*>{comments_, xEDG_}) {
    box->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(box, &QWidget::customContextMenuRequested, this,
            [this, box](QPoint place) { ShowContextMenu(box, place); });
  }
  UndoInMerge(xEDG_->TextEditor());
  UndoInMerge(xEDG_);
}

void NEditForm::AddSettingActions() {
  const auto add = [this](Message caption, const char* name, const char* key, auto act) {
    auto* const action = new QAction(Caption(caption), this);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(key));
    connect(action, &QAction::triggered, this, act);
    addAction(action);
    xEDG_->TextEditor()->addAction(action);  // for its context menu
    return action;
  };
  setToOriginal_ =
      add(Message::kSetToOriginal, "SetToOriginal", "Ctrl+R", &NEditForm::SetToOriginal);
  switch_ = add(Message::kSwitchSetting, "Switch", "Ctrl+T", &NEditForm::Switch);
  // The other layout makes every setting active.
  switch_->setEnabled(Merge().SaveLayout() != Layout::kSettings);
}

void NEditForm::SetToOriginal() {
  std::vector<int> indexes;
  for (const int row : xEDG_->SelectedRows()) indexes.push_back(row - 1);
  if (Merge().ResetServerValues(indexes) == 0) return;
  ShowValues();
  xEDG_->Refresh();
  ShowChanged();
}

void NEditForm::Switch() {
  std::vector<String> names;
  for (const int row : xEDG_->SelectedRows()) names.emplace_back(SettingOf(row)->Name());
  if (names.empty()) return;
  SwitchSettings(names, SettingOf(xEDG_->Grid().Row())->Name(), [this] { xEDG_->Refresh(); });
}

void NEditForm::ShowContextMenu(QAbstractScrollArea* box, QPoint place) {
  std::unique_ptr<QMenu> menu;
  if (auto* const comments = qobject_cast<QPlainTextEdit*>(box)) {
    menu.reset(comments->createStandardContextMenu());
  } else {
    menu = std::make_unique<QMenu>(box);
    menu->addAction(copy_);
    menu->addSeparator();
    menu->addActions({setToOriginal_, switch_});
    menu->addSeparator();
    menu->addAction(find_->Action());
  }
  // Areas that scroll count from within their margins.
  ShowMenu(*menu, box->viewport()->mapToGlobal(place));
}

void NEditForm::Connect() {
  connect(xEDG_->TextEditor(), &ValueEdit::TypingEnded, this, [this] { Merge().EndTyping(); });
  connect(series_, &SeriesTabs::ItemChecked, this, &NEditForm::EditSeries);
  connect(series_, &SeriesTabs::ItemSelected, this, &NEditForm::ShowSeriesComment);
  connect(apply_, &QPushButton::clicked, this, [this] {
    Save();
    xEDG_->Refresh();  // what was edited
  });
  connect(find_, &FindBar::Toggled, this, &NEditForm::LayOut);
  connect(find_, &FindBar::FilterChanged, this, [this] { Filter(Shown::kGo); });
  connect(find_, &FindBar::Accepted, this, [this] { xEDG_->setFocus(); });
  connect(dragBar_, &DragBar::Begun, this, [this] { draggedHeight_ = comments_->height(); });
  connect(dragBar_, &DragBar::Dragged, this, &NEditForm::DragComments);
  QList<QAbstractItemView*> views{xEDG_};
  for (QListWidget* const list : series_->Lists()) views << list;
  auto* const lead = new SelectionLead(views, this);
  connect(lead, &SelectionLead::LeadChanged, this, &NEditForm::ShowCommentOf);
  connect(close_, &QPushButton::clicked, this, &NEditForm::reject);
}

void NEditForm::LoadGrid() {
  const Fields& fields = Merge().ServerSettings().Fields();
  const Fields& originals = Merge().DistributionSettings().Fields();
  xEDG_->hide();
  xEditGrid& grid = xEDG_->Grid();
  grid.Clear();
  grid.SetRows(1);
  grid.SetRows(fields.Count() + 1);
  for (int row = 1; row < grid.Rows(); ++row) {
    const auto field = fields.Field(row - 1);
    const auto original = originals.Field(field->Name());
    grid.SetCellValue(row, kName, field->Name());
    grid.SetCellValue(row, kActualValue, field->Value());
    grid.SetCellValue(row, kOriginalValue, original->Value());
    grid.SetCellValue(row, kType, NeedOf(field->Name()));
  }
  xEDG_->Reload();
  xEDG_->show();
  ShowSettingComment();
}

void NEditForm::LoadSeries() {
  Load(series_);
  mode_ = LayoutModeOf(series_->UsedTabs() > 0, xEDG_->Grid().Rows());
  find_->Action()->setEnabled(mode_ != LayoutMode::kSeries);
  LayOut();
}

void NEditForm::ShowMerge() {
  ShowValues();
  xEDG_->Refresh();
  Filter(Shown::kStay);
  ShowEntries(series_);
}

void NEditForm::ShowValues() {
  xEditGrid& grid = xEDG_->Grid();
  for (int row = 1; row < grid.Rows(); ++row) {
    grid.SetCellValue(row, kActualValue, SettingOf(row)->Value());
  }
}

void NEditForm::Filter(Shown before) {
  const SettingFilter filter = find_->Filter();
  const int rows = xEDG_->Grid().Rows();
  std::vector<bool> hidden(static_cast<size_t>(rows));
  int shown = 0;
  for (int row = 1; row < rows; ++row) {
    const bool stays = before == Shown::kStay && !xEDG_->Grid().IsRowHidden(row);
    const bool show = stays || Merge().IsShown(row - 1, filter);
    hidden[static_cast<size_t>(row)] = !show;
    if (show) ++shown;
  }
  xEDG_->SetHiddenRows(hidden);
  find_->ShowCount(shown, rows - 1);
  ShowSettingComment();
}

void NEditForm::Click() { ShowSettingComment(); }

void NEditForm::RowColChange() { ShowSettingComment(); }

void NEditForm::SureChange(bool& /*cancel*/, String& /*newValue*/, int& /*row*/, int& /*col*/) {}

void NEditForm::Change(int& row, int& col) {
  if (col != kActualValue) return;
  Merge().SetServerValue(row - 1, xEDG_->Grid().Text(row, kActualValue));
  if (Merge().SaveLayout() != Layout::kSettings) ShowValues();  // all lines of the name have it
  ShowChanged();
}

std::int16_t NEditForm::Changed() const { return Merge().IsModified() ? 1 : 0; }

void NEditForm::EditSeries(int group, int item, bool checked) {
  if (series_->widget(group)->isHidden()) return;
  Merge().SetEntry(group, item, checked);
  ShowEntries(series_);
  ShowSeriesComment(group, item);
  ShowChanged();
}

void NEditForm::ShowSeriesComment(int group, int item) {
  if (series_->widget(group)->isHidden()) return;
  const String name = series_->Item(group, item);
  ShowComment(comments_, name, {});  // series entries have none
}

void NEditForm::Copy() {
  QString text;
  QWidget* const active = focusWidget();
  if (const auto* const line = qobject_cast<QLineEdit*>(active)) {
    text = line->hasSelectedText() ? line->selectedText() : line->text();
  } else if (const auto* const box = qobject_cast<QPlainTextEdit*>(active)) {
    const QTextCursor cursor = box->textCursor();
    text = cursor.hasSelection() ? cursor.selection().toPlainText() : box->toPlainText();
  } else if (const auto* const view = qobject_cast<QAbstractItemView*>(active)) {
    text = view->currentIndex().data().toString();
  } else {
    return;
  }
  QGuiApplication::clipboard()->setText(text);
}

void NEditForm::Paste() {
  auto* const line = qobject_cast<QLineEdit*>(focusWidget());
  if (line != nullptr) line->insert(QGuiApplication::clipboard()->text());
}

/// Leaves the shortcuts of Copy and Paste to the window's actions, which text controls would take.
bool NEditForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.matches(QKeySequence::Copy) || key.matches(QKeySequence::Paste)) {
      event->ignore();
      return true;
    }
  }
  return FileWindow::eventFilter(watched, event);
}

Fields::Pointer NEditForm::SettingOf(int row) const {
  return Merge().ServerSettings().Fields().Field(row - 1);
}

void NEditForm::ShowSettingComment() {
  // By its name: of several settings with one name, the first has the comments of all.
  const xEditGrid& grid = xEDG_->Grid();
  // While the grid is filled again, its current row may be the header.
  const bool none = grid.Row() < 1 || grid.IsRowHidden(grid.Row());
  const SharedText name = none ? SharedText() : SettingOf(grid.Row())->Name();
  String text = Merge().Comment(name);
  if (const String original = Merge().DistributionComment(name); !original.empty()) {
    if (!text.empty()) text.append(kLineEnd).append(kLineEnd);
    text.append(TheLanguage().Text(Message::kDistributionComment))
        .append(kLineEnd)
        .append(original);
  }
  ShowComment(comments_, name, text);
}

void NEditForm::ShowCommentOf(const QAbstractItemView* view) {
  const QList<QListWidget*>& lists = series_->Lists();
  for (int group = 0; group < lists.size(); ++group) {
    if (lists[group] != view) continue;
    if (lists[group]->currentRow() >= 0) ShowSeriesComment(group, lists[group]->currentRow());
    return;
  }
  ShowSettingComment();
}

}  // namespace quenmar
