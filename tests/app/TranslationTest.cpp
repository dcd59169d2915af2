#include <QListWidget>
#include <QMap>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

#include "app/MainFixture.h"

namespace quenmar {
namespace {

const std::string kSource = QUENMAR_SOURCE_DIR;

/// Texts of one language, by where they are.
using Texts = QMap<QString, QString>;

/// @return whether what the control shows is the user's own data.
bool ShowsData(const QWidget* control) {
  return control->inherits("QLineEdit") || control->inherits("QPlainTextEdit") ||
         control->objectName().startsWith("lstSeries");
}

/// Collects the captions of a window and its controls, those read out loud included.
void Collect(const QWidget* window, Texts& texts) {
  QList<QWidget*> controls = window->findChildren<QWidget*>();
  controls.prepend(const_cast<QWidget*>(window));
  for (qsizetype i = 0; i < controls.size(); ++i) {
    const QWidget* const control = controls[i];
    // The toolkit's, or in its words.
    if (control->objectName() == "dragComments") continue;
    if (qobject_cast<const QTabBar*>(control->parentWidget()) != nullptr) continue;
    const QString place =
        window->objectName() + QString(": %1 ").arg(i) + control->objectName() + ' ';
    for (const char* const kind : {"windowTitle", "title", "text", "placeholderText", "toolTip",
                                   "accessibleName", "accessibleDescription"}) {
      const bool data = ShowsData(control) && qstrcmp(kind, "toolTip") != 0;
      if (!data) texts[place + kind] = control->property(kind).toString();
    }
    if (const auto* const tabs = qobject_cast<const QTabWidget*>(control);
        tabs != nullptr && tabs->objectName() != "TSeries") {
      for (int tab = 0; tab < tabs->count(); ++tab) {
        texts[place + QString("tab %1").arg(tab)] = tabs->tabText(tab);
      }
    }
    if (const auto* const table = qobject_cast<const QTableView*>(control); table != nullptr) {
      const QAbstractItemModel& cells = *table->model();
      for (int col = 0; col < cells.columnCount(); ++col) {
        texts[place + QString("header %1").arg(col)] =
            cells.headerData(col, Qt::Horizontal).toString();
      }
      texts[place + "type"] = cells.index(0, cells.columnCount() - 1).data().toString();
    }
  }
}

}  // namespace

class TranslationTest : public MainFixture {
  Q_OBJECT

  /// @return what the three windows show on the sample folders.
  Texts Shown(const Language& language) {
    Texts texts;
    language_ = language;
    const auto folder = [](const char* name) { return QString::fromStdString(kSource + name); };
    Open(Main::Folders{folder("/examples/conf-dist"), folder("/examples/conf")});
    Collect(window_.get(), texts);
    Files()->setCurrentText("drops.conf");
    for (const char* const command : {"Command3", "Command5"}) {
      PressAndClose(command, [&texts](QWidget* opened) {
        // A tick on a new setting brings up the hint on what ticks mean.
        if (auto* const news = opened->findChild<QListWidget*>("lstParameters0"); news != nullptr) {
          const bool ticked = news->item(0)->checkState() == Qt::Checked;
          news->item(0)->setCheckState(ticked ? Qt::Unchecked : Qt::Checked);
        }
        Collect(opened, texts);
      });
    }
    return texts;
  }

 private slots:
  void TheSampleTranslatesAllThatIsVisible() {
    const Path file(kSource + "/examples/spanish.reg");
    const Language spanish = Language::LoadLanguage(FileRegistry(file));
    const Language english;
    QStringList lacking;
    for (size_t number = 0; number < kMessages; ++number) {
      const String& text = spanish.Text(static_cast<Message>(number));
      const String& original = english.Text(static_cast<Message>(number));
      bool same = text == original;
      for (const StringView mark : {u"%1", u"%2", u"\\n", u"->", u"<-"}) {
        same |= Contains(text, mark) != Contains(original, mark);
      }
      // Their blanks give the grid's columns their widths.
      same |= text.find(u'|') != original.find(u'|') || text.rfind(u'|') != original.rfind(u'|');
      if (same) lacking << QString("LNG%1").arg(number + 1);
    }
    const Texts before = Shown(english);
    const Texts after = Shown(spanish);
    QCOMPARE(after.keys(), before.keys());
    for (auto text = before.begin(); text != before.end(); ++text) {
      const bool same = after[text.key()] == *text && !text->isEmpty() && *text != "...";
      if (same) lacking << text.key() + " = " + *text;
    }
    QVERIFY2(lacking.empty(), qPrintable(lacking.join('\n')));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::TranslationTest)
#include "TranslationTest.moc"
#include "moc_MainFixture.cpp"
