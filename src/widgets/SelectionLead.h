#pragma once

#include <QList>
#include <QObject>

class QAbstractItemView;

namespace quenmar {

/// Shows which of several lists the texts beside them are about: the list that had the focus last
/// keeps its highlight; the highlights of the others are pale.
class SelectionLead : public QObject {
  Q_OBJECT

 public:
  /// @param views begin with the one that leads first; they outlive the object
  SelectionLead(QList<QAbstractItemView*> views, QObject* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  void LeadChanged(QAbstractItemView* lead);

 private:
  void Follow(const QWidget* focused);
  void Colour();

  QList<QAbstractItemView*> views_;
  QAbstractItemView* lead_;
  bool colouring_ = false;
};

}  // namespace quenmar
