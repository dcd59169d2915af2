#include "updater/ParameterList.h"

#include <QFocusEvent>
#include <QSignalBlocker>

#include "widgets/QtText.h"

namespace quenmar {

namespace {

/// Hides a list for the time of a change, during which it signals nothing either.
class Hidden {
 public:
  explicit Hidden(ParameterList* list) : list_(list), silence_(list), hadFocus_(list->hasFocus()) {
    list_->hide();
  }
  Hidden(const Hidden&) = delete;
  Hidden& operator=(const Hidden&) = delete;
  ~Hidden() {
    list_->show();
    if (hadFocus_) list_->setFocus();  // hiding has passed it on
  }

 private:
  ParameterList* list_;
  QSignalBlocker silence_;
  bool hadFocus_;
};

Qt::CheckState StateOf(bool ticked) { return ticked ? Qt::Checked : Qt::Unchecked; }

}  // namespace

ParameterList::ParameterList(QWidget* parent) : QListWidget(parent) {
  setUniformItemSizes(true);
  setSpacing(1);
  connect(this, &QListWidget::currentRowChanged, this, &ParameterList::Chosen);
  connect(this, &QListWidget::itemClicked, this, &ParameterList::Chosen);
  connect(this, &QListWidget::itemChanged, this, &ParameterList::ItemTicked);
}

void ParameterList::Fill(const Document& source, const std::function<bool(StringView)>& ticked) {
  const Hidden hidden(this);
  clear();
  for (int i = 0; i < source.Fields().Count(); ++i) {
    const String name = source.Fields().Field(i)->Name();
    auto* const item = new QListWidgetItem(ToQString(name), this);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(StateOf(ticked(name)));
  }
  setEnabled(count() > 0);
  setCurrentRow(count() > 0 ? 0 : -1);
}

void ParameterList::TickAll() {
  const Hidden hidden(this);
  for (int i = 0; i < count(); ++i) item(i)->setCheckState(Qt::Checked);
}

void ParameterList::SetTicked(QListWidgetItem* item, bool ticked) {
  const QSignalBlocker silence(this);
  item->setCheckState(StateOf(ticked));
}

std::optional<String> ParameterList::CurrentName() const {
  if (currentItem() == nullptr) return {};
  return FromQString(currentItem()->text());
}

std::vector<String> ParameterList::TickedNames() const {
  std::vector<String> names;
  for (int i = 0; i < count(); ++i) {
    if (item(i)->checkState() == Qt::Checked) names.push_back(FromQString(item(i)->text()));
  }
  return names;
}

void ParameterList::focusInEvent(QFocusEvent* event) {
  QListWidget::focusInEvent(event);
  // Coming back from another window or a menu is no turn to another list.
  const Qt::FocusReason reason = event->reason();
  if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) emit Chosen();
}

QItemSelectionModel::SelectionFlags ParameterList::selectionCommand(const QModelIndex& index,
                                                                    const QEvent* /*event*/) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

}  // namespace quenmar
