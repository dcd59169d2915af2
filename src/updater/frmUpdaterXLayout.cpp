// The making of the updater window: its controls, their names and their places.
#include <QAction>
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
#include "widgets/FindBar.h"
#include "widgets/QtText.h"
#include "widgets/RememberedState.h"
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

/// @return a button for an action, whose key is in the tool tip.
QPushButton* MakeActionButton(QAction* action) {
  auto* const button = new QPushButton(action->text());
  button->setAutoDefault(false);
  button->setToolTip(ToToolTip(action->text().replace("&&", "&") + ' ' +
                               action->shortcut().toString(QKeySequence::NativeText)));
  QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
  const auto follow = [action, button] { button->setEnabled(action->isEnabled()); };
  QObject::connect(action, &QAction::enabledChanged, button, follow);
  return button;
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
  for (ParameterList*& list : lists_) {
    list = new ParameterList;
    list->setContextMenuPolicy(Qt::CustomContextMenu);
  }
  for (const int k : {kNew, kKept}) {
    lists_[k]->setSelectionMode(QAbstractItemView::ExtendedSelection);
  }
  lists_[kKept]->ShowBothValues({WithoutColon(Text(Message::kParameters)),
                                 WithoutColon(Text(Message::kActualValue)),
                                 WithoutColon(Text(Message::kOriginalValue))});
  moves_ = {button(Message::kAdd), button(Message::kRemove), button(Message::kRestore)};
  selectAlls_ = {button(Message::kSelectAll), nullptr, button(Message::kSelectAll)};
  helps_ = {button(Message::kHelp), button(Message::kHelp)};
  apply_ = button(Message::kApply);
  close_ = button(Message::kClose);
  MakeActions();
  MakeLabels();
  originalValue_ = new ValueEdit;
  actualValue_ = new ValueEdit;
  value_ = new ValueEdit;
  value_->setReadOnly(true);
  QPalette flat;
  flat.setColor(QPalette::Base, Qt::transparent);  // looks like what it is
  value_->setPalette(flat);
  comments_ = MakeComments(nullptr);
  series_ = new SeriesTabs;
  tabLists_ = new QTabWidget;
}

void frmUpdaterX::MakeLabels() {
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
  for (QLabel*& remark : remarks_) {
    remark = MakePlainLabel();
    remark->setWordWrap(true);
    remark->setMinimumHeight(remark->fontMetrics().lineSpacing());  // empty, too: nothing jumps
    remark->hide();
  }
}

void frmUpdaterX::MakeActions() {
  const auto make = [this](Message caption, const char* name, const char* key) {
    auto* const action = new QAction(Caption(caption), this);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(key));
    addAction(action);
    return action;
  };
  addMandatory_ = make(Message::kAddMandatory, "AddMandatory", "Ctrl+M");
  takeOldValue_ = make(Message::kTakeOldValue, "TakeOldValue", "Ctrl+O");
  switch_ = make(Message::kSwitchSetting, "Switch", "Ctrl+T");
  takeNewDefault_ = make(Message::kTakeNewDefault, "TakeNewDefault", "Ctrl+D");
  takeAllDefaults_ = make(Message::kTakeAllDefaults, "TakeAllDefaults", "Ctrl+Shift+D");
  defaultButtons_ = {MakeActionButton(takeNewDefault_), MakeActionButton(takeAllDefaults_)};
  actionButtons_ = {MakeActionButton(addMandatory_), MakeActionButton(takeOldValue_)};
  using Choice = SettingFilter::Choice;
  find_ =
      new FindBar(TheLanguage(),
                  {Choice::kAll, Choice::kChanged, Choice::kDefaults, Choice::kCommentedOut}, this);
  openFind_ = MakeActionButton(find_->Action());
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
  name(openFind_, "cmdFind");
  name(actionButtons_[0], "cmdAddMandatory");
  name(actionButtons_[1], "cmdTakeOldValue");
  for (QPushButton* const button : actionButtons_) {
    button->setAccessibleDescription(Text(Message::kNewSettings));
  }
  name(defaultButtons_[0], "cmdTakeNewDefault");
  name(defaultButtons_[1], "cmdTakeAllDefaults");
  for (QPushButton* const button : defaultButtons_) {
    button->setAccessibleDescription(Text(Message::kParameters));
  }
  for (QLabel* const hint : hints_) name(hint, "lblHint");
  for (QLabel* const remark : remarks_) name(remark, "lblRemark");
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
  QList<QPushButton*> buttons{moves_[list], selectAlls_[list], help};
  if (list == kNew) {
    buttons.insert(1, actionButtons_[0]);
    buttons.insert(2, actionButtons_[1]);
  }
  row->addLayout(MakeButtonColumn(buttons));
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
  splitter->addWidget(MakeFrame(kObsolete, Message::kObsoleteSettings, helps_[1], {}));

  // Both frames' buttons are as wide as each other.
  const QList<QPushButton*> buttons = {moves_[kNew],      selectAlls_[kNew],      helps_[0],
                                       moves_[kObsolete], selectAlls_[kObsolete], helps_[1],
                                       actionButtons_[0], actionButtons_[1]};
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
  column->addWidget(remarks_[kChangesPage]);
  tabLists_->addTab(page, Caption(Message::kChanges));
}

void frmUpdaterX::BuildCurrentPage() {
  auto* const page = new QWidget;
  page->setObjectName("pageCurrent");
  auto* const row = new QHBoxLayout;
  row->addWidget(lists_[kKept], 1);
  row->addLayout(MakeButtonColumn({moves_[kKept], defaultButtons_[0], defaultButtons_[1]}));
  auto* const column = new QVBoxLayout(page);
  column->addWidget(MakeLabel(Caption(Message::kParameters), lists_[kKept]));
  column->addLayout(row, 1);
  column->addLayout(MakeRow({MakeLabel(Caption(Message::kActualValue), actualValue_), actualValue_,
                             hints_[kCurrentPage]}));
  column->addWidget(remarks_[kCurrentPage]);
  tabLists_->addTab(page, Caption(Message::kCurrentFields));
}

void frmUpdaterX::BuildWindow() {
  tabLists_->setCornerWidget(openFind_);
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
  new RememberedState(upper, "frmUpdaterX/Upper");
  new RememberedState(whole, "frmUpdaterX/Whole");

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(apply_);
  buttons->addWidget(close_);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(find_);
  // On a small screen the window's own buttons stay in reach.
  column->addWidget(MakeScrollable(whole), 1);
  column->addLayout(buttons);

  setSizeGripEnabled(true);
  SetTitle(TheLanguage().Text(Message::kCheckChanges) + u" - " + FileName());
  const QFontMetrics metrics = fontMetrics();
  const QSize first(metrics.averageCharWidth() * 145, metrics.height() * 46);
  setMinimumSize((first / 2).boundedTo(LargestSize(*this)));
  resize(first);
  new WindowGeometry(this, "frmUpdaterX");
}

void frmUpdaterX::OrderTabs() {
  const QList<QWidget*> order = {find_,
                                 tabLists_,
                                 openFind_,
                                 lists_[kNew],
                                 moves_[kNew],
                                 actionButtons_[0],
                                 actionButtons_[1],
                                 selectAlls_[kNew],
                                 helps_[0],
                                 originalValue_,
                                 lists_[kObsolete],
                                 moves_[kObsolete],
                                 selectAlls_[kObsolete],
                                 helps_[1],
                                 value_,
                                 lists_[kKept],
                                 moves_[kKept],
                                 defaultButtons_[0],
                                 defaultButtons_[1],
                                 actualValue_,
                                 comments_,
                                 series_,
                                 apply_,
                                 close_};
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace quenmar
