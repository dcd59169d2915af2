#include "updater/ParameterList.h"

#include <QFocusEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>

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

void ParameterList::Fill(const CheckList& items) {
  const int current = RowAmong(items);
  const int scrolled = verticalScrollBar()->value();
  {
    const Hidden hidden(this);
    clear();
    for (const CheckItem& item : items) {
      auto* const added = new QListWidgetItem(ToQString(item.text), this);
      added->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
      added->setCheckState(StateOf(item.checked));
    }
    setEnabled(count() > 0);
    setCurrentRow(current);
  }
  doItemsLayout();  // before which nothing can be scrolled
  verticalScrollBar()->setValue(scrolled);
  scrollToItem(currentItem());
}

int ParameterList::RowAmong(const CheckList& items) const {
  const int last = static_cast<int>(items.size()) - 1;
  for (int row = std::max(0, currentRow()); row < count(); ++row) {
    const String name = FromQString(item(row)->text());
    const auto named = [&name](const CheckItem& candidate) { return candidate.text == name; };
    if (row <= last && named(items[static_cast<size_t>(row)])) return row;
    const auto hit = std::find_if(items.begin(), items.end(), named);
    if (hit != items.end()) return static_cast<int>(hit - items.begin());
  }
  return count() > 0 ? last : std::min(0, last);
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
