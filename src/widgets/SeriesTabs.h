#pragma once

#include <QTabWidget>
#include <vector>

#include "conf/SeriesGroups.h"

class QListWidget;

namespace quenmar {

/// The tab strip of the repeatable settings: ten tabs, each with a list of check boxes, of which
/// those with items are shown. Its object name is "TSeries", the lists are "lstSeries0" to
/// "lstSeries9".
class SeriesTabs : public QTabWidget {
  Q_OBJECT

 public:
  explicit SeriesTabs(QWidget* parent = nullptr);

  /// Shows at most ten groups, yet without check marks; the first item of each list becomes
  /// current. Nothing is signalled.
  void Load(const SeriesGroups& groups);

  /// Shows the check marks of the groups that were loaded. Nothing is signalled.
  void ShowChecks(const SeriesGroups& groups);

  [[nodiscard]] const QList<QListWidget*>& Lists() const { return lists_; }

  /// Shows a sign behind these entries and no others, and a remark in their tool tips. Nothing is
  /// signalled.
  void Mark(const std::vector<String>& names, StringView sign, const QString& remark);

  /// @return the entry of an item, without a sign.
  [[nodiscard]] String Item(int group, int item) const;

  /// Sets the size of every list, centred in its tab; a smaller tab limits it.
  void SetListSize(QSize size);

  /// @return how many tabs have items.
  [[nodiscard]] int UsedTabs() const { return usedTabs_; }

 signals:
  /// The user ticked or unticked an item.
  void ItemChecked(int group, int item, bool checked);

  /// Another item became current.
  void ItemSelected(int group, int item);

 private:
  void AddList(int index);

  int usedTabs_ = 0;
  QList<QListWidget*> lists_;
};

}  // namespace quenmar
