#include "updater/ParameterList.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <algorithm>

#include "updater/SettingDelegate.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

/// Hides a list and blocks its signals during a change.
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

ParameterList::ParameterList(QWidget* parent)
    : QListWidget(parent), delegate_(new SettingDelegate(this, 1)) {
  setUniformItemSizes(true);
  setSpacing(1);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(this, &QListWidget::currentRowChanged, this, &ParameterList::Chosen);
  connect(this, &QListWidget::itemClicked, this, &ParameterList::Chosen);
  connect(this, &QListWidget::itemChanged, this, &ParameterList::ItemTicked);
}

void ParameterList::ShowBothValues(const QStringList& headers) {
  delete delegate_;
  delegate_ = new SettingDelegate(this, 2);
  header_ = new QHeaderView(Qt::Horizontal, this);
  auto* const captions = new QStandardItemModel(0, static_cast<int>(headers.size()), this);
  captions->setHorizontalHeaderLabels(headers);
  header_->setModel(captions);
  header_->setSectionResizeMode(QHeaderView::Fixed);
  header_->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
  header_->setMinimumSectionSize(0);
  header_->setTextElideMode(Qt::ElideRight);
  setViewportMargins(0, header_->sizeHint().height(), 0, 0);
}

void ParameterList::Fill(const std::vector<SettingRow>& rows) {
  const int current = RowAmong(rows);
  const int scrolled = verticalScrollBar()->value();
  const bool following =
      currentItem() == nullptr || viewport()->rect().intersects(visualItemRect(currentItem()));
  {
    const Hidden hidden(this);
    clear();
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int width = header_ == nullptr ? 0 : header_->sectionSizeHint(0);
    for (const SettingRow& row : rows) {
      // Ready before it is in the list, which would look at every change.
      auto* const added = new QListWidgetItem(ToQString(row.name));
      added->setCheckState(StateOf(row.ticked));
      SetData(added, row);
      addItem(added);
      if (!row.shown) added->setHidden(true);
      width = std::max(width, metrics.horizontalAdvance(added->text()));
    }
    delegate_->SetNameWidth(width);
    setEnabled(count() > 0);
    setCurrentRow(current);
  }
  LayColumns();
  doItemsLayout();  // before which nothing can be scrolled
  verticalScrollBar()->setValue(scrolled);
  if (following && currentItem() != nullptr) scrollToItem(currentItem());
}

void ParameterList::SetData(QListWidgetItem* item, const SettingRow& row) const {
  const QString value = ToQString(row.value);
  const QString original = ToQString(row.originalValue);
  const QString remark = ToQString(row.remark);
  item->setData(SettingDelegate::kValue, value);
  item->setData(SettingDelegate::kOriginalValue, original);
  item->setData(SettingDelegate::kMark, ToQString(row.mark));
  item->setData(SettingDelegate::kShortRemark, ToQString(row.shortRemark));
  item->setData(SettingDelegate::kCommentedOut, row.commentedOut);
  item->setData(SettingDelegate::kStruckOut, row.staysCommentedOut);
  QFont bold = font();
  bold.setBold(true);
  item->setData(Qt::FontRole, row.changed ? QVariant(bold) : QVariant());
  QStringList parts{item->text() + ": " + value};
  if (header_ != nullptr && row.changed) {
    const QVariant caption = header_->model()->headerData(2, Qt::Horizontal);
    parts << caption.toString() + ": " + original;
  }
  if (!remark.isEmpty()) parts << remark;
  item->setToolTip(ToToolTip(parts.join('\n')));
  parts.front() = value;
  if (!row.need.empty()) parts << ToQString(row.need);
  item->setData(Qt::AccessibleDescriptionRole, parts.join("; "));
}

void ParameterList::Refresh(const std::map<int, SettingRow>& rows) {
  if (rows.empty()) return;
  const QSignalBlocker silence(this);
  {
    const QSignalBlocker together(model());  // else the view would look for the place of each row
    for (const auto& [index, row] : rows) SetData(item(index), row);
  }
  emit model()->dataChanged(model()->index(rows.begin()->first, 0),
                            model()->index(rows.rbegin()->first, 0));
}

int ParameterList::RowAmong(const std::vector<SettingRow>& rows) const {
  std::map<StringView, int> places;
  int first = -1, last = -1;
  for (int row = static_cast<int>(rows.size()) - 1; row >= 0; --row) {
    const SettingRow& candidate = rows[static_cast<size_t>(row)];
    if (!candidate.shown) continue;
    last = std::max(last, row);
    first = row;
    places[candidate.name] = row;
  }
  if (count() == 0 || currentRow() < 0) return first;
  for (int row = currentRow(); row < count(); ++row) {
    const String name = FromQString(item(row)->text());
    const auto inPlace = static_cast<size_t>(row);
    if (inPlace < rows.size() && rows[inPlace].shown && rows[inPlace].name == name) return row;
    if (const auto hit = places.find(name); hit != places.end()) return hit->second;
  }
  return last;
}

void ParameterList::LayColumns() {
  if (header_ == nullptr) return;
  QStyleOptionViewItem row;
  initViewItemOption(&row);
  row.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  row.text = "x";
  row.rect = QRect(spacing(), 0, viewport()->width() - 2 * spacing(), sizeHintForRow(0));
  const QList<QRect> columns = delegate_->Columns(row);
  // The captions begin where the texts do, but for the room that a header leaves to its own.
  const int room = header_->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header_);
  int begin = 0;
  for (int i = 0; i < columns.size(); ++i) {
    const bool isLast = i + 1 == columns.size();
    const int end = isLast ? viewport()->width() : columns[i + 1].left() - room;
    header_->resizeSection(i, end - begin);
    begin = end;
  }
  const QRect place = viewport()->geometry();
  const int height = header_->sizeHint().height();
  header_->setGeometry(place.left(), place.top() - height, place.width(), height);
}

void ParameterList::resizeEvent(QResizeEvent* event) {
  QListWidget::resizeEvent(event);
  LayColumns();
}

void ParameterList::TickAll() {
  const Hidden hidden(this);
  for (int i = 0; i < count(); ++i) {
    if (!item(i)->isHidden()) item(i)->setCheckState(Qt::Checked);
  }
  if (selectionMode() == ExtendedSelection) selectAll();
}

void ParameterList::SetTicked(QListWidgetItem* item, bool ticked) {
  const QSignalBlocker silence(this);
  item->setCheckState(StateOf(ticked));
}

std::optional<String> ParameterList::CurrentName() const {
  if (currentItem() == nullptr || currentItem()->isHidden()) return {};
  return FromQString(currentItem()->text());
}

std::vector<String> ParameterList::HighlightedNames() const {
  std::vector<String> names;
  for (int i = 0; i < count(); ++i) {
    if (item(i)->isSelected() && !item(i)->isHidden())
      names.push_back(FromQString(item(i)->text()));
  }
  const auto current = CurrentName();
  if (names.empty() && current) names.push_back(*current);
  return names;
}

std::vector<String> ParameterList::TickedNames() const {
  std::vector<String> names;
  for (int i = 0; i < count(); ++i) {
    if (item(i)->checkState() == Qt::Checked) names.push_back(FromQString(item(i)->text()));
  }
  return names;
}

std::vector<String> ParameterList::TickedNames(bool shown) const {
  std::vector<String> names;
  for (int i = 0; i < count(); ++i) {
    const bool counts = item(i)->checkState() == Qt::Checked && item(i)->isHidden() != shown;
    if (counts) names.push_back(FromQString(item(i)->text()));
  }
  return names;
}

int ParameterList::ShownCount() const {
  int shown = 0;
  for (int i = 0; i < count(); ++i) shown += item(i)->isHidden() ? 0 : 1;
  return shown;
}

void ParameterList::focusInEvent(QFocusEvent* event) {
  QListWidget::focusInEvent(event);
  // Coming back from another window or a menu does not choose another list.
  const Qt::FocusReason reason = event->reason();
  if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) emit Chosen();
}

QItemSelectionModel::SelectionFlags ParameterList::selectionCommand(const QModelIndex& index,
                                                                    const QEvent* event) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  if (selectionMode() != SingleSelection) return QListWidget::selectionCommand(index, event);
  return QItemSelectionModel::ClearAndSelect;
}

}  // namespace quenmar
