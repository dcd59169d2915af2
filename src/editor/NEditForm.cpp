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
#include <QScreen>
#include <QStyle>
#include <QTabBar>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <algorithm>
#include <utility>

#include "conf/Functions.h"
#include "docmodel/XmlText.h"
#include "editor/EditGridView.h"
#include "widgets/QtText.h"
#include "widgets/ScreenFit.h"
#include "widgets/SeriesTabs.h"
#include "widgets/ValueEdit.h"
#include "widgets/WindowGeometry.h"

namespace quenmar {

namespace {

enum Column : int { kName, kActualValue, kOriginalValue, kType, kColumns };

constexpr int kCommentLines = 4;   // more would leave the series no room in the smallest window
constexpr int kFirstHeight = 600;  // logical pixels
constexpr int kBottomMargin = 90;  // twips below the buttons, as at the sides

/// @return the smallest number of pixels that are no fewer twips.
constexpr int PixelsFor(int twips) { return (twips + kTwipsPerPixel - 1) / kTwipsPerPixel; }

LayoutSize Twips(QSize pixels) { return {ToTwips(pixels.width()), ToTwips(pixels.height())}; }

void Place(QWidget& widget, const LayoutRectangle& twips, QPoint offset = {}) {
  const LayoutRectangle pixels = ToPixels(twips);
  widget.setGeometry(
      QRect(pixels.left, pixels.top, pixels.width, pixels.height).translated(offset));
}

}  // namespace

NEditForm::NEditForm(FileContext context, QWidget* parent)
    : FileWindow(std::move(context), parent) {
  CreateControls();
  SetUpGrid();
  SetCaptions();
  AddClipboardActions();
  Connect();
  SetUpSize();
}

// The order in which the controls are made is the order in which Tab visits them.
void NEditForm::CreateControls() {
  setObjectName("NEditForm");
  frame_ = new QGroupBox(this);
  frame_->setObjectName("Frame1");
  xEDG_ = new EditGridView(*this, frame_);
  xEDG_->setObjectName("xEDG");
  comments_ = new QPlainTextEdit(frame_);
  comments_->setObjectName("Comments");
  comments_->setReadOnly(true);
  comments_->setTabChangesFocus(true);
  comments_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  series_ = new SeriesTabs(frame_);
  // In front of the frame, which would cut off what a large font lets reach over its edge.
  apply_ = new QPushButton(this);
  apply_->setObjectName("Command3");
  close_ = new QPushButton(this);
  close_->setObjectName("Command4");
  for (QPushButton* const button : {apply_, close_}) button->setAutoDefault(false);
  xEDG_->setFocus();
}

void NEditForm::SetUpGrid() {
  xEditGrid& grid = xEDG_->Grid();
  grid.SetCols(kColumns);
  for (const int col : {kName, kOriginalValue, kType}) grid.SetReadOnly(col, true);
  grid.SetColType(kActualValue, u"0");
  grid.SetFormatString(TheLanguage().Text(Message::kGridColumns));
  xEDG_->Reload();
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
  for (QWidget* const control :
       std::initializer_list<QWidget*>{xEDG_->TextEditor(), comments_, xEDG_}) {
    UndoInMerge(control);
  }
}

void NEditForm::ShowContextMenu(QAbstractScrollArea* box, QPoint place) {
  std::unique_ptr<QMenu> menu;
  if (auto* const comments = qobject_cast<QPlainTextEdit*>(box)) {
    menu.reset(comments->createStandardContextMenu());
  } else {
    menu = std::make_unique<QMenu>(box);
    menu->addAction(copy_);
  }
  // Areas that scroll count from within their margins.
  ShowMenu(*menu, box->viewport()->mapToGlobal(place));
}

void NEditForm::Connect() {
  connect(xEDG_->TextEditor(), &ValueEdit::TypingEnded, this, [this] { Merge().EndTyping(); });
  connect(series_, &SeriesTabs::ItemChecked, this, &NEditForm::EditSeries);
  connect(series_, &SeriesTabs::ItemSelected, this, &NEditForm::ShowSeriesComment);
  connect(apply_, &QPushButton::clicked, this, &NEditForm::Save);
  connect(close_, &QPushButton::clicked, this, &NEditForm::reject);
}

void NEditForm::SetUpSize() {
  setMinimumSize(PixelsFor(EditorLayout::kSmallestWindow.width),
                 PixelsFor(EditorLayout::kSmallestWindow.height));
  const EditorLayout empty = EditorLayout::Of({}, 0, {}, {}, mode_);
  const int besideGrid = PixelsFor(empty.window.width - empty.xEDG.width);
  resize(xEDG_->FullWidth() + besideGrid, kFirstHeight);
  new WindowGeometry(this, "NEditForm");
  if (!isMaximized() && !isFullScreen()) resize(size().boundedTo(LargestSize(*this)));
}

void NEditForm::WantHeight(int height) {
  setMinimumHeight(std::max(std::min(height, LargestSize(*this).height()),
                            PixelsFor(EditorLayout::kSmallestWindow.height)));
}

int NEditForm::CommentsHeight(int lines) const {
  const int margins = comments_->frameWidth() + qRound(comments_->document()->documentMargin());
  return ToTwips(lines * comments_->fontMetrics().lineSpacing() + 2 * margins);
}

int NEditForm::TabsHeight() const { return ToTwips(2 * series_->tabBar()->sizeHint().height()); }

EditorLayout NEditForm::LayoutFor(int height) const {
  const auto with = [this, height](int lines) {
    return EditorLayout::Of(Twips({width(), height}), CommentsHeight(lines),
                            Twips(apply_->sizeHint()), Twips(close_->sizeHint()), mode_);
  };
  // In a small window or a large font the comments leave room for the tabs and one entry.
  const int tabs = TabsHeight();
  int lines = kCommentLines;
  EditorLayout layout = with(lines);
  while (mode_ != LayoutMode::kSettings && lines > 1 && layout.TSeries.height < tabs) {
    layout = with(--lines);
  }
  return layout;
}

void NEditForm::LayOut() {
  EditorLayout layout = LayoutFor(height());
  if (const int lacking = TabsHeight() - layout.TSeries.height;
      mode_ != LayoutMode::kSettings && lacking > 0) {
    // The tabs get no less than 13 of 30 parts of what the window grows by.
    const QSize before = size();
    WantHeight(height() + PixelsFor(lacking * 30 / 13));
    if (size() != before) return;  // laid out anew on the way
  }
  Place(*frame_, layout.Frame1);
  // How high the frame's caption is depends on style and font, and so does what is left for the
  // buttons: where it is too little, all above them gets lower.
  const int caption = std::min(frame_->contentsRect().top(), frame_->fontMetrics().height() + 1);
  const QPoint inFrame(0, std::max(0, caption - ToPixels(layout.xEDG.top)));
  const int cutOff = frame_->y() + inFrame.y() + ToPixels(layout.Command3.Bottom()) +
                     PixelsFor(kBottomMargin) - height();
  if (cutOff > 0) {
    WantHeight(PixelsFor(EditorLayout::kSmallestWindow.height) + cutOff);
    layout = LayoutFor(height() - cutOff);
  }
  Place(*xEDG_, layout.xEDG, inFrame);
  Place(*comments_, layout.Comments, inFrame);
  Place(*series_, layout.TSeries, inFrame);
  series_->SetListSize({ToPixels(layout.lstSeries.width), ToPixels(layout.lstSeries.height)});
  Place(*apply_, layout.Command3, frame_->pos() + inFrame);
  Place(*close_, layout.Command4, frame_->pos() + inFrame);
  // A screen may be too low for all; the buttons can be reached there, too.
  for (QPushButton* const button : {apply_, close_}) {
    button->move(button->x(), std::min(button->y(), height() - button->height()));
  }
  series_->setVisible(mode_ != LayoutMode::kSettings);
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
    const bool mandatory = Merge().IsMandatory(field->Name());
    grid.SetCellValue(row, kName, field->Name());
    grid.SetCellValue(row, kActualValue, field->Value());
    grid.SetCellValue(row, kOriginalValue, original->Value());
    grid.SetCellValue(row, kType,
                      TheLanguage().Text(mandatory ? Message::kMandatory : Message::kOptional));
  }
  xEDG_->Reload();
  xEDG_->show();
  ShowSettingComment();
}

void NEditForm::LoadSeries() {
  series_->Load(Merge().Series());
  mode_ = LayoutModeOf(series_->UsedTabs() > 0, xEDG_->Grid().Rows());
  LayOut();
}

void NEditForm::ShowMerge() {
  xEditGrid& grid = xEDG_->Grid();
  for (int row = 1; row < grid.Rows(); ++row) {
    grid.SetCellValue(row, kActualValue, SettingOf(row)->Value());
  }
  grid.EditorKeyPress(xEditGrid::kEnter);  // which closes the editor
  xEDG_->Follow();
  series_->ShowChecks(Merge().Series());
}

void NEditForm::Click() { ShowSettingComment(); }

void NEditForm::RowColChange() { ShowSettingComment(); }

void NEditForm::SureChange(bool& /*cancel*/, String& /*newValue*/, int& /*row*/, int& /*col*/) {}

void NEditForm::Change(int& row, int& col) {
  if (col != kActualValue) return;
  Merge().SetServerValue(row - 1, xEDG_->Grid().Text(row, kActualValue));
  ShowChanged();
}

std::int16_t NEditForm::Changed() const { return Merge().IsModified() ? 1 : 0; }

void NEditForm::EditSeries(int group, int item, bool checked) {
  if (series_->widget(group)->isHidden()) return;
  Merge().SetEntry(group, item, checked);
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

void NEditForm::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  LayOut();
}

Fields::Pointer NEditForm::SettingOf(int row) const {
  // While the grid is filled anew, its current row may be the header.
  if (row < 1) return MakeRef<Field>();
  return Merge().ServerSettings().Fields().Field(row - 1);
}

void NEditForm::ShowSettingComment() {
  // By its name: of several settings with one name, the first has the comments of all.
  const SharedText name = SettingOf(xEDG_->Grid().Row())->Name();
  ShowComment(comments_, name, Merge().Comment(name));
}

}  // namespace quenmar
