#include "widgets/SeriesTabs.h"

#include <QBoxLayout>
#include <QListWidget>
#include <QSignalBlocker>
#include <algorithm>

#include "widgets/ListDelegate.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

constexpr int kName = Qt::UserRole;  // the entry without a sign behind it

}  // namespace

SeriesTabs::SeriesTabs(QWidget* parent) : QTabWidget(parent) {
  setObjectName("TSeries");
  setUsesScrollButtons(true);
  for (int index = 0; index < SeriesGroups::kMostGroups; ++index) AddList(index);
}

void SeriesTabs::AddList(int index) {
  auto* const list = new QListWidget;
  list->setObjectName(QString("lstSeries%1").arg(index));
  list->setUniformItemSizes(true);
  list->setSpacing(1);
  new ListDelegate(list);
  lists_.append(list);
  auto* const page = new QWidget;
  auto* const room = new QVBoxLayout(page);
  room->setContentsMargins({});
  room->addWidget(list);
  addTab(page, QString());
  connect(list, &QListWidget::itemChanged, this, [this, index, list](QListWidgetItem* item) {
    emit ItemChecked(index, list->row(item), item->checkState() == Qt::Checked);
  });
  connect(list, &QListWidget::currentRowChanged, this, [this, index](int row) {
    if (row >= 0) emit ItemSelected(index, row);
  });
}

void SeriesTabs::SetListSize(QSize size) {
  for (QListWidget* const list : lists_) list->setMaximumSize(size);
}

void SeriesTabs::Load(const SeriesGroups& groups) {
  usedTabs_ = groups.GroupCount();
  for (int index = 0; index < static_cast<int>(lists_.size()); ++index) {
    QListWidget* const list = lists_[index];
    const QSignalBlocker blocker(list);
    list->clear();
    const bool used = index < groups.GroupCount();
    setTabVisible(index, used);
    const String caption = used ? groups.TabCaption(index) : String();
    setTabText(index, ToCaption(caption));
    list->setAccessibleName(ToQString(caption));
    for (int item = 0; used && item < groups.ItemCount(index); ++item) {
      const QString name = ToQString(groups.List(index, item));
      auto* const entry = new QListWidgetItem(name, list);
      entry->setData(kName, name);
    }
    if (used) list->setCurrentRow(0);
  }
}

void SeriesTabs::ShowChecks(const SeriesGroups& groups) {
  for (int group = 0; group < usedTabs_; ++group) {
    const QSignalBlocker blocker(lists_[group]);
    for (int item = 0; item < groups.ItemCount(group); ++item) {
      lists_[group]->item(item)->setCheckState(groups.Selected(group, item) ? Qt::Checked
                                                                            : Qt::Unchecked);
    }
  }
}

void SeriesTabs::Mark(const std::vector<String>& names, StringView sign, const QString& remark) {
  for (QListWidget* const list : lists_) {
    const QSignalBlocker blocker(list);
    for (int row = 0; row < list->count(); ++row) {
      QListWidgetItem* const entry = list->item(row);
      const QString name = entry->data(kName).toString();
      const bool marked = std::find(names.begin(), names.end(), FromQString(name)) != names.end();
      entry->setText(marked ? name + "  " + ToQString(sign) : name);
      entry->setToolTip(marked ? ToToolTip(remark) : QString());
      entry->setData(Qt::AccessibleTextRole, name);
      entry->setData(Qt::AccessibleDescriptionRole, marked ? remark : QString());
    }
  }
}

String SeriesTabs::Item(int group, int item) const {
  return FromQString(lists_[group]->item(item)->data(kName).toString());
}

}  // namespace quenmar
