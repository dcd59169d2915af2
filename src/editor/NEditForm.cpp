#include "editor/NEditForm.h"

#include <QAction>
#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextDocumentFragment>
#include <algorithm>
#include <utility>

#include "conf/Functions.h"
#include "docmodel/XmlText.h"
#include "editor/EditGridView.h"
#include "widgets/ApplyChanges.h"
#include "widgets/QtText.h"
#include "widgets/SeriesTabs.h"
#include "widgets/WindowGeometry.h"

namespace quenmar {

namespace {

enum Column : int { kName, kActualValue, kOriginalValue, kType, kColumns };

constexpr int kCommentLines = 4;   // more would leave the series no room in the smallest window
constexpr int kFirstHeight = 600;  // logical pixels

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
    : QDialog(parent), context_(std::move(context)) {
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
  setModal(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
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
  grid.SetFormatString(context_.language.Text(LNG23));
  xEDG_->Reload();
}

void NEditForm::SetCaptions() {
  const String title = ReplaceAll(context_.language.Text(LNG13), u"%1", context_.fileName) +
                       u" - " + context_.serverFolder;
  // A doubled mark stands for itself.
  setWindowTitle(ToQString(title).replace("[*]", "[*][*]") + "[*]");
  const String caption =
      ReplaceAll(context_.language.Text(LNG12), u"%1",
                 ReplaceAll(context_.fileName, u"&", u"&&"));  // no key of the file name's
  frame_->setTitle(ToQString(caption));
  apply_->setText(Text(LNG24));
  close_->setText(Text(LNG9));
  xEDG_->setAccessibleName(Text(LNG38));
}

void NEditForm::AddClipboardActions() {
  // In the toolkit's words, which it translates.
  auto* const copy = new QAction(QLineEdit::tr("&Copy"), this);
  auto* const paste = new QAction(QLineEdit::tr("&Paste"), this);
  copy->setObjectName("Copy");
  copy->setShortcut(QKeySequence::Copy);
  paste->setObjectName("Paste");
  paste->setShortcut(QKeySequence::Paste);
  connect(copy, &QAction::triggered, this, &NEditForm::Copy);
  connect(paste, &QAction::triggered, this, &NEditForm::Paste);
  addActions({copy, paste});

  QLineEdit* const editor = xEDG_->TextEditor();
  editor->addActions({copy, paste});
  comments_->addAction(copy);
  xEDG_->addAction(copy);
  for (QWidget* const widget : std::initializer_list<QWidget*>{editor, comments_, xEDG_}) {
    widget->setContextMenuPolicy(Qt::ActionsContextMenu);
  }
  editor->installEventFilter(this);
  comments_->installEventFilter(this);
}

void NEditForm::Connect() {
  connect(series_, &SeriesTabs::ItemChecked, this, &NEditForm::EditSeries);
  connect(series_, &SeriesTabs::ItemSelected, this, &NEditForm::EditSeries);
  connect(apply_, &QPushButton::clicked, this, &NEditForm::Apply);
  connect(close_, &QPushButton::clicked, this, &NEditForm::reject);
}

void NEditForm::SetUpSize() {
  using Layout = EditorLayout;
  setMinimumSize(PixelsFor(Layout::kSmallestWindow.width),
                 PixelsFor(Layout::kSmallestWindow.height));
  const Layout empty = Layout::Of({}, 0, {}, {}, mode_);
  const int besideGrid = PixelsFor(empty.window.width - empty.xEDG.width);
  const QSize most = screen()->availableSize();
  resize(QSize(xEDG_->FullWidth() + besideGrid, kFirstHeight).boundedTo(most));
  new WindowGeometry(this, "NEditForm");
}

void NEditForm::LayOut() {
  const int commentsHeight =
      kCommentLines * comments_->fontMetrics().lineSpacing() +
      2 * (comments_->frameWidth() + static_cast<int>(comments_->document()->documentMargin()));
  const EditorLayout layout =
      EditorLayout::Of(Twips(size()), ToTwips(commentsHeight), Twips(apply_->sizeHint()),
                       Twips(close_->sizeHint()), mode_);
  Place(*frame_, layout.Frame1);
  // How high the frame's caption is depends on style and font.
  const int caption = std::min(frame_->contentsRect().top(), frame_->fontMetrics().height() + 1);
  const QPoint inFrame(0, std::max(0, caption - ToPixels(layout.xEDG.top)));
  Place(*xEDG_, layout.xEDG, inFrame);
  Place(*comments_, layout.Comments, inFrame);
  Place(*series_, layout.TSeries, inFrame);
  Place(*apply_, layout.Command3, frame_->pos() + inFrame);
  Place(*close_, layout.Command4, frame_->pos() + inFrame);
  series_->setVisible(mode_ != LayoutMode::kSettings);
}

void NEditForm::LoadGrid() {
  const Fields& fields = context_.documents.server->Fields();
  const Fields& originals = context_.documents.distribution->Fields();
  xEDG_->hide();
  xEditGrid& grid = xEDG_->Grid();
  grid.Clear();
  grid.SetRows(1);
  grid.SetRows(fields.Count() + 1);
  for (int row = 1; row < grid.Rows(); ++row) {
    const auto field = fields.Field(row - 1);
    const auto original = originals.Field(field->Name());
    const bool mandatory = original->Parameters().Parameter(1)->Value() == u"1";
    grid.SetCellValue(row, kName, field->Name());
    grid.SetCellValue(row, kActualValue, field->Value());
    grid.SetCellValue(row, kOriginalValue, original->Value());
    grid.SetCellValue(row, kType, context_.language.Text(mandatory ? LNG47 : LNG48));
  }
  xEDG_->Reload();
  xEDG_->show();
  ShowSettingComment();
}

bool NEditForm::LoadSeries() {
  Document& serverSeries = *context_.documents.serverSeries;
  AddMissingSeries(*context_.documents.distributionSeries, serverSeries);
  const SeriesGroups groups(serverSeries);
  if (groups.GroupCount() > SeriesGroups::kMostGroups) {
    ShowMessage(context_.messages, String(context_.language.Text(LNG22)),
                message_style::kOk | message_style::kCritical);
    return false;
  }
  series_->Load(groups);
  mode_ = LayoutModeOf(groups.GroupCount() > 0, xEDG_->Grid().Rows());
  LayOut();
  return true;
}

void NEditForm::Click() { ShowSettingComment(); }

void NEditForm::RowColChange() { ShowSettingComment(); }

void NEditForm::SureChange(bool& /*cancel*/, String& /*newValue*/, int& /*row*/, int& /*col*/) {
  SetChanged(1);
}

void NEditForm::Change(int& row, int& col) {
  if (col != kActualValue) return;
  const xEditGrid& grid = xEDG_->Grid();
  const auto field = context_.documents.server->Fields().Field(grid.Text(row, kName));
  field->SetValue(grid.Text(row, kActualValue));
}

void NEditForm::EditSeries(int group, int item) {
  if (series_->widget(group)->isHidden() || series_->Groups().ItemCount(group) < 2) return;
  const String name = series_->Groups().List(group, item);
  const auto entry = context_.documents.serverSeries->Fields().Field(name);
  const bool checked = series_->Groups().Selected(group, item);
  entry->Parameters().Parameter(u"Disabled")->SetValue(checked ? u"1" : u"0");
  ShowComment(name, entry->Parameters().Parameter(u"Comments")->Value());
  SetChanged(1);
}

void NEditForm::Apply() {
  if (ApplyChanges(context_, *context_.documents.server, series_->Groups())) SetChanged(0);
}

void NEditForm::reject() {
  using namespace message_style;
  if (changed_ > 0 && ShowMessage(context_.messages, String(context_.language.Text(LNG21)),
                                  kYesNo | kQuestion | kDefaultButton2) != Button::kYes) {
    return;
  }
  QDialog::reject();
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
  return QDialog::eventFilter(watched, event);
}

void NEditForm::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  LayOut();
}

void NEditForm::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QDialog::keyPressEvent(event);
    return;
  }
  // Enter belongs to the grid: it presses the button that it is typed on, and no default one.
  if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) button->click();
}

void NEditForm::ShowSettingComment() {
  const xEditGrid& grid = xEDG_->Grid();
  const StringView name = grid.Text(grid.Row(), kName);
  const auto field = context_.documents.server->Fields().Field(name);
  ShowComment(name, field->Parameters().Parameter(0)->Value());
}

void NEditForm::ShowComment(StringView name, String comment) {
  comments_->setAccessibleName(ToQString(name));
  comments_->setPlainText(ToQString(NotAvailable(XmlUnescape(comment))));
}

void NEditForm::SetChanged(std::int16_t changed) {
  changed_ = changed;
  setWindowModified(changed_ > 0);
}

QString NEditForm::Text(MessageKey key) const { return ToQString(context_.language.Text(key)); }

}  // namespace quenmar
