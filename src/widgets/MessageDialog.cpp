#include "widgets/MessageDialog.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QClipboard>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

#include "widgets/DiffColours.h"
#include "widgets/ScreenFit.h"

namespace quenmar {

namespace {

constexpr int kWidestText = 75;  // characters; longer lines read badly
constexpr int kNarrowestText = 20;
constexpr int kFewestLines = 2;
constexpr double kSlack = 1.03;    // letters may be wider on a scaled screen than they are measured
constexpr int kTitleButtons = 50;  // pixels beside a title

/// Screen readers read out the labels of an alert; in the details the user looks around.
QAccessibleInterface* MakeAccessibleMessage(const QString& className, QObject* object) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (className == MessageDialog::staticMetaObject.className()) {
    return new QAccessibleWidget(widget, QAccessible::AlertMessage);
  }
  if (const auto* const text = qobject_cast<MessageText*>(widget);
      text != nullptr && text->Wraps()) {
    return new QAccessibleWidget(widget, QAccessible::StaticText);
  }
  return nullptr;
}

/// @return the caption of the button, in the toolkit's words, which it translates.
QString DetailsCaption(bool shown) {
  return shown ? QMessageBox::tr("Hide Details...") : QMessageBox::tr("Show Details...");
}

}  // namespace

MessageText::MessageText(const QString& text, LineWrapMode mode) {
  setLineWrapMode(mode);
  setPlainText(text);
  setReadOnly(true);
  setTabChangesFocus(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void MessageText::SetRoom(int widest) {
  // The layout of the text on the screen counts in lines; this one in pixels.
  QTextDocument measured;
  measured.documentLayout()->setPaintDevice(viewport());
  measured.setDefaultFont(font());
  measured.setDocumentMargin(document()->documentMargin());
  QTextOption option;
  option.setWrapMode(Wraps() ? wordWrapMode() : QTextOption::NoWrap);
  measured.setDefaultTextOption(option);
  measured.setPlainText(toPlainText());
  const int beside = 2 * frameWidth();
  const double needed = measured.idealWidth() * kSlack + cursorWidth() + beside;
  int width = static_cast<int>(std::ceil(needed));
  if (Wraps()) {
    width = std::min(width, widest);
    measured.setTextWidth((width - beside) / kSlack);
  }
  // Without a margin more below the text, the last line does not count as seen.
  const qreal height = measured.size().height() + document()->documentMargin() + 1;
  room_ = {width, static_cast<int>(std::ceil(height)) + beside};
  updateGeometry();
}

QSize MessageText::minimumSizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  return QSize(metrics.averageCharWidth() * kNarrowestText, metrics.lineSpacing() * kFewestLines)
      .boundedTo(room_);
}

QMimeData* MessageText::createMimeDataFromSelection() const {
  auto* const copied = new QMimeData;
  // The toolkit's own way makes blanks of the blanks that do not break.
  copied->setText(textCursor().selectedText().replace(QChar::ParagraphSeparator, '\n'));
  return copied;
}

void MessageText::resizeEvent(QResizeEvent* event) {
  // A scroll bar that a smaller size needed leaves less room for the lines, and would stay for
  // that.
  const bool fits = size().boundedTo(room_) == room_;
  const auto policy = fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
  if (policy != verticalScrollBarPolicy()) setVerticalScrollBarPolicy(policy);
  QPlainTextEdit::resizeEvent(event);
}

MessageDialog::MessageDialog(const QString& text, std::optional<QStyle::StandardPixmap> icon,
                             QDialogButtonBox::StandardButtons buttons, const QString& details,
                             QWidget* parent)
    : QDialog(parent), buttons_(new QDialogButtonBox(buttons)) {
  QAccessible::installFactory(MakeAccessibleMessage);  // once, however often it is called
  text_ = new MessageText(text, QPlainTextEdit::WidgetWidth);
  text_->setObjectName("messageText");
  text_->setAccessibleName(text);
  text_->setFrameShape(QFrame::NoFrame);
  text_->viewport()->setAutoFillBackground(false);
  text_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  connect(buttons_, &QDialogButtonBox::clicked, this, [this](QAbstractButton* button) {
    const auto answer = buttons_->standardButton(button);
    if (answer != QDialogButtonBox::NoButton) done(answer);
  });
  if (!details.isEmpty()) AddDetails(details);
  const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
  LayOut(icon ? style()
                    ->standardIcon(*icon, nullptr, this)
                    .pixmap(QSize(size, size), devicePixelRatio())
              : QPixmap());
}

void MessageDialog::AddDetails(const QString& details) {
  // Lines of files are read best unwrapped, below each other.
  details_ = new MessageText(details, QPlainTextEdit::NoWrap);
  details_->setObjectName("messageDetails");
  const bool shown = DiffColours::IsDiff(details);  // what the question is about
  if (shown) new DiffColours(details_);
  details_->setAccessibleName(text_->accessibleName());
  details_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  details_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  if (!shown) details_->hide();
  auto* const button = buttons_->addButton(DetailsCaption(shown), QDialogButtonBox::ActionRole);
  button->setObjectName("showDetails");
  connect(button, &QPushButton::clicked, this, [this, button] {
    const bool show = details_->isHidden();
    details_->setVisible(show);
    button->setText(DetailsCaption(show));
    Fit();
    FitToScreen(this);
  });
}

void MessageDialog::LayOut(const QPixmap& icon) {
  auto* const grid = new QGridLayout(this);
  int besideText = grid->contentsMargins().left() + grid->contentsMargins().right();
  if (!icon.isNull()) {
    auto* const label = new QLabel;
    label->setPixmap(icon);
    grid->addWidget(label, 0, 0, Qt::AlignTop);
    besideText += label->sizeHint().width() + grid->horizontalSpacing();
  }
  grid->addWidget(text_, 0, 1);
  if (details_ != nullptr) grid->addWidget(details_, 1, 0, 1, 2);
  grid->addWidget(buttons_, 2, 0, 1, 2);
  const int room = LargestSize(*this).width() - besideText;
  text_->SetRoom(std::min(fontMetrics().averageCharWidth() * kWidestText, room));
  if (details_ != nullptr) details_->SetRoom(room);
}

void MessageDialog::AddOffer(const QString& caption) {
  auto* const button = buttons_->addButton(caption, QDialogButtonBox::ActionRole);
  button->setObjectName("offer");
  connect(button, &QPushButton::clicked, this, [this] { done(kOffer); });
}

void MessageDialog::SetDefaultButton(QDialogButtonBox::StandardButton button) {
  buttons_->button(button)->setDefault(true);
  buttons_->button(button)->setFocus();
}

void MessageDialog::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    QGuiApplication::clipboard()->setText(text_->accessibleName());
  } else if (QPushButton* const button = ButtonOf(*event)) {
    button->click();
  } else {
    QDialog::keyPressEvent(event);
  }
}

QPushButton* MessageDialog::ButtonOf(const QKeyEvent& event) const {
  if ((event.modifiers() & ~Qt::ShiftModifier) != Qt::NoModifier || event.text().isEmpty()) {
    return nullptr;
  }
  for (QAbstractButton* const button : buttons_->buttons()) {
    const QKeySequence key = QKeySequence::mnemonic(button->text());
    if (!key.isEmpty() && key[0].key() == event.key()) return qobject_cast<QPushButton*>(button);
  }
  return nullptr;
}

void MessageDialog::showEvent(QShowEvent* event) {
  Fit();
  QDialog::showEvent(event);
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void MessageDialog::Fit() {
  layout()->activate();
  const int title = fontMetrics().horizontalAdvance(windowTitle()) + kTitleButtons;
  resize(layout()->totalSizeHint().expandedTo({title, 0}).boundedTo(LargestSize(*this)));
}

}  // namespace quenmar
