// The making of the updater window: its controls, their names and their places.
#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <algorithm>

#include "updater/ParameterList.h"
#include "updater/frmUpdaterX.h"
#include "widgets/QtText.h"
#include "widgets/ScreenFit.h"
#include "widgets/SeriesTabs.h"
#include "widgets/ValueEdit.h"
#include "widgets/WindowGeometry.h"

namespace quenmar {

namespace {

QLabel* MakePlainLabel() {
  auto* const label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* MakeLabel(const QString& caption, QWidget* buddy) {
  QLabel* const label = MakePlainLabel();
  label->setBuddy(buddy);
  label->setText(caption);
  return label;
}

QHBoxLayout* MakeRow(const QList<QWidget*>& widgets) {
  auto* const row = new QHBoxLayout;
  for (QWidget* const widget : widgets) {
    row->addWidget(widget, qobject_cast<QLineEdit*>(widget) != nullptr ? 1 : 0);
  }
  return row;
}

/// Puts buttons below each other, at the top.
QVBoxLayout* MakeButtonColumn(const QList<QPushButton*>& buttons) {
  auto* const column = new QVBoxLayout;
  for (QPushButton* const button : buttons) column->addWidget(button);
  column->addStretch();
  return column;
}

}  // namespace

void frmUpdaterX::MakeControls() {
  const auto button = [this](Message key) {
    auto* const made = new QPushButton(Caption(key));
    made->setAutoDefault(false);
    return made;
  };
  for (ParameterList*& list : lists_) list = new ParameterList;
  moves_ = {button(Message::kAdd), button(Message::kRemove), button(Message::kRestore)};
  selectAlls_ = {button(Message::kSelectAll), nullptr, button(Message::kSelectAll)};
  helps_ = {button(Message::kHelp), button(Message::kHelp)};
  apply_ = button(Message::kApply);
  close_ = button(Message::kClose);
  for (QLabel*& hint : hints_) {
    hint = MakePlainLabel();
    const QFontMetrics metrics = hint->fontMetrics();
    for (const Message key :
         {Message::kMandatory, Message::kOptional}) {  // so that neighbours do not move to and fro
      const QString text = ToQString(u" [" + TheLanguage().Text(key) + u"]");
      hint->setMinimumWidth(std::max(hint->minimumWidth(), metrics.horizontalAdvance(text)));
    }
  }
  checkHint_ = MakePlainLabel();
  checkHint_->setWordWrap(true);
  originalValue_ = new ValueEdit;
  actualValue_ = new ValueEdit;
  value_ = new ValueEdit;
  value_->setReadOnly(true);
  comments_ = new QPlainTextEdit;
  comments_->setReadOnly(true);
  comments_->setTabChangesFocus(true);
  comments_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  series_ = new SeriesTabs;
  tabLists_ = new QTabWidget;
}

void frmUpdaterX::NameControls() {
  const auto name = [](QWidget* control, const QString& objectName, const QString& spoken = {}) {
    control->setObjectName(objectName);
    control->setAccessibleName(spoken);
  };
  setObjectName("frmUpdaterX");
  const std::array<Message, 3> titles{Message::kNewSettings, Message::kParameters,
                                      Message::kObsoleteSettings};
  for (int k = 0; k < 3; ++k) {
    const QString title = Text(titles[k]);
    name(lists_[k], QString("lstParameters%1").arg(k), title);
    name(moves_[k], QString("cmdMove%1").arg(k));
    moves_[k]->setAccessibleDescription(title);
    if (selectAlls_[k] == nullptr) continue;
    name(selectAlls_[k], QString("cmdSelectAll%1").arg(k));
    selectAlls_[k]->setAccessibleDescription(title);
  }
  name(helps_[0], "cmdHelp0");
  helps_[0]->setAccessibleDescription(Text(Message::kNewSettings));
  name(helps_[1], "cmdHelp1");
  helps_[1]->setAccessibleDescription(Text(Message::kObsoleteSettings));
  for (QLabel* const hint : hints_) name(hint, "lblHint");
  name(checkHint_, "lblCheckHint");
  name(originalValue_, "txtOriginalValue", Text(Message::kOriginalValue));
  name(actualValue_, "txtActualValue", Text(Message::kActualValue));
  name(value_, "txtValue", Text(Message::kValue));
  name(comments_, "txtComments");
  name(apply_, "cmdApply");
  name(close_, "cmdClose");
  name(tabLists_, "tabLists", Text(Message::kParameters));
}

/// Puts a list with its buttons beside it, and what belongs below it, into a frame.
QGroupBox* frmUpdaterX::MakeFrame(int list, Message caption, QPushButton* help,
                                  const QList<QWidget*>& below) {
  auto* const frame = new QGroupBox(Caption(caption));
  auto* const withHint = new QVBoxLayout;
  withHint->addWidget(lists_[list], 1);
  // The hint takes its room from the list, so that the buttons never have less.
  if (list == kNew) withHint->addWidget(checkHint_);
  auto* const row = new QHBoxLayout;
  row->addLayout(withHint, 1);
  row->addLayout(MakeButtonColumn({moves_[list], selectAlls_[list], help}));
  auto* const column = new QVBoxLayout(frame);
  column->addLayout(row, 1);
  for (QWidget* const widget : below) column->addWidget(widget);
  return frame;
}

void frmUpdaterX::BuildChangesPage() {
  auto* const splitter = new QSplitter(Qt::Vertical);
  splitter->setChildrenCollapsible(false);
  auto* const original = new QWidget;
  original->setLayout(
      MakeRow({MakeLabel(Caption(Message::kOriginalValue), originalValue_), originalValue_}));
  original->layout()->setContentsMargins({});
  splitter->addWidget(MakeFrame(kNew, Message::kNewSettings, helps_[0], {original}));
  splitter->addWidget(MakeFrame(kDeleted, Message::kObsoleteSettings, helps_[1], {}));

  // Both frames' buttons stand below each other.
  const QList<QPushButton*> buttons = {moves_[kNew],     selectAlls_[kNew],     helps_[0],
                                       moves_[kDeleted], selectAlls_[kDeleted], helps_[1]};
  int width = 0;
  for (const QPushButton* const button : buttons)
    width = std::max(width, button->sizeHint().width());
  for (QPushButton* const button : buttons) button->setMinimumWidth(width);

  auto* const page = new QWidget;
  page->setObjectName("pageChanges");
  auto* const column = new QVBoxLayout(page);
  column->addWidget(splitter, 1);
  column->addLayout(
      MakeRow({MakeLabel(Caption(Message::kValue), value_), hints_[kChangesPage], value_}));
  tabLists_->addTab(page, Caption(Message::kChanges));
}

void frmUpdaterX::BuildCurrentPage() {
  auto* const page = new QWidget;
  page->setObjectName("pageCurrent");
  auto* const row = new QHBoxLayout;
  row->addWidget(lists_[kActual], 1);
  row->addLayout(MakeButtonColumn({moves_[kActual]}));
  auto* const column = new QVBoxLayout(page);
  column->addWidget(MakeLabel(Caption(Message::kParameters), lists_[kActual]));
  column->addLayout(row, 1);
  column->addLayout(MakeRow({MakeLabel(Caption(Message::kActualValue), actualValue_), actualValue_,
                             hints_[kCurrentPage]}));
  tabLists_->addTab(page, Caption(Message::kCurrentFields));
}

void frmUpdaterX::BuildWindow() {
  auto* const upper = new QSplitter(Qt::Horizontal);
  upper->addWidget(tabLists_);
  upper->addWidget(comments_);
  upper->setStretchFactor(0, 3);
  upper->setStretchFactor(1, 1);
  auto* const whole = new QSplitter(Qt::Vertical);
  whole->addWidget(upper);
  whole->addWidget(series_);
  whole->setStretchFactor(0, 3);
  whole->setStretchFactor(1, 1);
  for (QSplitter* const splitter : {upper, whole}) splitter->setChildrenCollapsible(false);

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(apply_);
  buttons->addWidget(close_);
  auto* const column = new QVBoxLayout(this);
  // On a small screen the window's own buttons stay in reach.
  column->addWidget(MakeScrollable(whole), 1);
  column->addLayout(buttons);

  setSizeGripEnabled(true);
  SetTitle(TheLanguage().Text(Message::kCheckChanges) + u" - " + FileName());
  const QFontMetrics metrics = fontMetrics();
  resize(metrics.averageCharWidth() * 145, metrics.height() * 46);
  new WindowGeometry(this, "frmUpdaterX");
}

void frmUpdaterX::OrderTabs() {
  const QList<QWidget*> order = {tabLists_,         lists_[kNew],     moves_[kNew],
                                 selectAlls_[kNew], helps_[0],        originalValue_,
                                 lists_[kDeleted],  moves_[kDeleted], selectAlls_[kDeleted],
                                 helps_[1],         value_,           lists_[kActual],
                                 moves_[kActual],   actualValue_,     comments_,
                                 series_,           apply_,           close_};
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace quenmar
