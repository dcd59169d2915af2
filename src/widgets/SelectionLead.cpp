#include "widgets/SelectionLead.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <utility>

#include "widgets/Colours.h"

namespace quenmar {

SelectionLead::SelectionLead(QList<QAbstractItemView*> views, QObject* parent)
    : QObject(parent), views_(std::move(views)), lead_(views_.front()) {
  for (QAbstractItemView* const view : views_) view->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget* /*before*/, const QWidget* now) { Follow(now); });
  Colour();
}

void SelectionLead::Follow(const QWidget* focused) {
  for (QAbstractItemView* const view : views_) {
    if (view == lead_ || (view != focused && !view->isAncestorOf(focused))) continue;
    lead_ = view;
    Colour();
    emit LeadChanged(view);
    return;
  }
}

void SelectionLead::Colour() {
  const QScopedValueRollback colouring(colouring_, true);
  for (QAbstractItemView* const view : views_) {
    view->setPalette({});  // the inherited one
    if (view == lead_) continue;
    QPalette pale = view->palette();
    MakeHighlightPale(pale);
    view->setPalette(pale);
  }
}

/// The colours may change while the window is open.
bool SelectionLead::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange && !colouring_) Colour();
  return QObject::eventFilter(watched, event);
}

}  // namespace quenmar
