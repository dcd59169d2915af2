#include <QAccessible>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

#include "app/MainFixture.h"

namespace quenmar {
namespace {

const std::string kSource = QUENMAR_SOURCE_DIR;

/// @return whether what the control shows is the user's own data.
bool ShowsData(const QWidget* control) {
  return control->inherits("QLineEdit") || control->inherits("QPlainTextEdit") ||
         control->objectName().startsWith("lstSeries");
}

/// @return the captions of a control, those read out loud included.
QStringList CaptionsOf(const QWidget* control) {
  QStringList captions{control->toolTip()};
  for (const char* const kind : {"windowTitle", "title", "text", "placeholderText",
                                 "accessibleName", "accessibleDescription"}) {
    if (!ShowsData(control)) captions << control->property(kind).toString();
  }
  if (const auto* const tabs = qobject_cast<const QTabWidget*>(control);
      tabs != nullptr && tabs->objectName() != "TSeries") {
    for (int tab = 0; tab < tabs->count(); ++tab) captions << tabs->tabText(tab);
  }
  if (const auto* const table = qobject_cast<const QTableView*>(control); table != nullptr) {
    const QAbstractItemModel& cells = *table->model();
    for (int col = 0; col < cells.columnCount(); ++col) {
      captions << cells.headerData(col, Qt::Horizontal).toString();
    }
    captions << cells.index(0, cells.columnCount() - 1).data().toString();  // a setting's type
  }
  return captions;
}

/// @return whether a screen reader has no name for a control that can get the focus.
bool IsNameless(QWidget* control) {
  if (control->focusPolicy() == Qt::NoFocus || control->focusProxy() != nullptr) return false;
  if (control->isHidden()) return false;
  const auto* const list = qobject_cast<QListWidget*>(control);
  if (list != nullptr && list->count() == 0) return false;  // of a tab that is not used
  return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty();
}

/// @return whether a control is cut off, or another one is at the same place.
bool IsMisplaced(const QWidget* control) {
  const QWidget* const around = control->parentWidget();
  if (!control->isVisible() || control->isWindow() || around->layout() == nullptr) return false;
  if (control->inherits("QSizeGrip")) return false;
  const QRect place = control->geometry();
  const QSize size = place.size();
  if (!around->rect().contains(place) || size != size.expandedTo(control->minimumSizeHint())) {
    return true;
  }
  const auto others = around->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  return std::any_of(others.begin(), others.end(), [&](const QWidget* other) {
    return other != control && other->isVisible() && !other->inherits("QSizeGrip") &&
           other->geometry().intersects(place);
  });
}

}  // namespace

class TranslationTest : public MainFixture {
  Q_OBJECT

 private slots:
  void TheSampleTranslatesEveryText() {
    const Path file(kSource + "/examples/spanish.reg");
    const Language spanish = Language::LoadLanguage(FileRegistry(file));
    QStringList lacking;
    for (size_t number = 0; number < kMessages; ++number) {
      const String& text = spanish.Text(static_cast<Message>(number));
      const String& original = language_.Text(static_cast<Message>(number));
      bool same = text == original;
      for (const StringView mark : {u"%1", u"%2", u"\\n", u"->", u"<-"}) {
        same |= Contains(text, mark) != Contains(original, mark);
      }
      // Their blanks give the grid's columns their widths.
      same |= text.find(u'|') != original.find(u'|') || text.rfind(u'|') != original.rfind(u'|');
      if (same) lacking << QString("LNG%1").arg(number + 1);
    }
    QCOMPARE(lacking.join(' '), "");
  }

  void ControlsAreTranslatedNamedAndInPlace() {
    for (size_t number = 0; number < kMessages; ++number) {
      const String name = u"LNG" + ToText(static_cast<int>(number) + 1);
      const String& text = language_.Text(static_cast<Message>(number));
      Register(u"Language", name.c_str(), u"~" + ReplaceAll(text, u"|", u"|~"));
    }
    language_ = Language::LoadLanguage(*registry_);
    QStringList lacking;
    const auto look = [&lacking](QWidget* window) {
      QList<QWidget*> controls = window->findChildren<QWidget*>();
      controls.prepend(window);
      for (QWidget* const control : controls) {
        if (IsNameless(control)) lacking << control->objectName() + " has no name";
        if (IsMisplaced(control)) lacking << control->objectName() + " is misplaced";
        // The toolkit's, or in its words.
        if (control->objectName() == "dragComments") continue;
        if (qobject_cast<const QTabBar*>(control->parentWidget()) != nullptr) continue;
        for (const QString& caption : CaptionsOf(control)) {
          const bool given = caption.isEmpty() || caption == "..." || caption.contains('~');
          if (!given) lacking << control->objectName() + " = " + caption;
        }
      }
    };
    const auto folder = [](const char* name) { return QString::fromStdString(kSource + name); };
    Open(Main::Folders{folder("/examples/conf-dist"), folder("/examples/conf")});
    look(window_.get());
    Files()->setCurrentText("drops.conf");
    for (const char* const command : {"Command3", "Command5"}) {
      PressAndClose(command, [&look](QWidget* opened) {
        // A tick on a new setting brings up the hint on what ticks mean.
        if (auto* const news = opened->findChild<QListWidget*>("lstParameters0"); news != nullptr) {
          const bool ticked = news->item(0)->checkState() == Qt::Checked;
          news->item(0)->setCheckState(ticked ? Qt::Unchecked : Qt::Checked);
        }
        look(opened);
      });
    }
    QCOMPARE(lacking.join('\n'), "");
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::TranslationTest)
#include "TranslationTest.moc"
#include "moc_MainFixture.cpp"
