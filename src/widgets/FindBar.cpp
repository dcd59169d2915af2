#include "widgets/FindBar.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "conf/Functions.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

Message CaptionOf(SettingFilter::Choice choice) {
  switch (choice) {
    case SettingFilter::Choice::kAll:
      return Message::kShowAll;
    case SettingFilter::Choice::kChanged:
      return Message::kShowChanged;
    case SettingFilter::Choice::kDefaults:
      return Message::kShowDefaults;
    case SettingFilter::Choice::kNotInDistribution:
      return Message::kShowNotInDistribution;
    case SettingFilter::Choice::kCommentedOut:
      return Message::kShowCommentedOut;
  }
  return Message::kShowAll;
}

}  // namespace

FindBar::FindBar(const Language& language, const std::vector<SettingFilter::Choice>& choices,
                 QWidget* window)
    : QWidget(window),
      language_(language),
      action_(new QAction(WithoutColon(ToCaption(language.Text(Message::kFind))), window)),
      caption_(new QLabel(ToCaption(language.Text(Message::kFind)))),
      text_(new QLineEdit),
      choice_(new QComboBox),
      count_(new QLabel) {
  setObjectName("pnlFind");
  action_->setObjectName("Find");
  action_->setShortcuts(QKeySequence::Find);
  window->addAction(action_);
  Fill(choices);
  LayOut();
  hide();
  connect(action_, &QAction::triggered, this, &FindBar::Open);
  connect(text_, &QLineEdit::textChanged, this, &FindBar::FilterChanged);
  connect(text_, &QLineEdit::returnPressed, this, &FindBar::Accepted);
  connect(choice_, &QComboBox::currentIndexChanged, this, &FindBar::FilterChanged);
  window->installEventFilter(this);
}

void FindBar::Fill(const std::vector<SettingFilter::Choice>& choices) {
  text_->setObjectName("txtFind");
  choice_->setObjectName("cmbFind");
  count_->setObjectName("lblFind");
  caption_->setBuddy(text_);
  const QString name = WithoutColon(ToQString(language_.Text(Message::kFind)));
  const QString tip = name + ' ' + action_->shortcut().toString(QKeySequence::NativeText);
  for (QWidget* const control : std::initializer_list<QWidget*>{text_, choice_}) {
    control->setAccessibleName(name);
    control->setToolTip(ToToolTip(tip));
  }
  text_->setClearButtonEnabled(true);
  // A small window cuts the choice off, not the count, and the text last.
  constexpr int kLettersOfChoice = 8;
  constexpr int kLettersOfText = 12;
  choice_->setMinimumWidth(kLettersOfChoice * fontMetrics().averageCharWidth());
  text_->setMinimumWidth(kLettersOfText * fontMetrics().averageCharWidth());
  for (const SettingFilter::Choice choice : choices) {
    choice_->addItem(ToQString(language_.Text(CaptionOf(choice))), static_cast<int>(choice));
  }
}

void FindBar::LayOut() {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins({});
  row->addWidget(caption_);
  row->addWidget(text_, 1);
  row->addWidget(choice_);
  row->addWidget(count_);
}

SettingFilter FindBar::Filter() const {
  if (!IsOpen()) return {};
  return {FromQString(text_->text()),
          static_cast<SettingFilter::Choice>(choice_->currentData().toInt())};
}

void FindBar::ShowCount(int shown, int all) {
  count_->setText(
      ToQString(FinishedText(language_.Text(Message::kCountOf), {ToText(shown), ToText(all)})));
}

void FindBar::Open() {
  if (!IsOpen()) {
    show();
    emit Toggled();
    emit FilterChanged();
  }
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
}

void FindBar::Close() {
  if (!IsOpen()) return;
  const bool focused = isAncestorOf(window()->focusWidget());
  hide();
  {
    const QSignalBlocker quiet(this);
    text_->clear();
    choice_->setCurrentIndex(0);
  }
  emit Toggled();
  emit FilterChanged();
  if (focused) emit Accepted();
}

/// Escape in any control of the window that does not use it.
bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && IsOpen() &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel)) {
    Close();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace quenmar
