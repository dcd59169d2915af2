#include "widgets/SelectionLead.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <utility>

#include "widgets/Colours.h"

namespace quenmar {

namespace {

constexpr float kPale = 0.25F;  // of the highlight's colour, over the list's

}  // namespace

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
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
      const QColor base = pale.color(group, QPalette::Base);
      const QColor highlight = pale.color(group, QPalette::Highlight);
      pale.setColor(group, QPalette::Highlight, Mixed(base, highlight, kPale));
      pale.setColor(group, QPalette::HighlightedText, pale.color(group, QPalette::Text));
    }
    view->setPalette(pale);
  }
}

/// The colours may change while the window is open.
bool SelectionLead::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange && !colouring_) Colour();
  return QObject::eventFilter(watched, event);
}

}  // namespace quenmar
