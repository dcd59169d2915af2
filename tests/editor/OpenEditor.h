#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <memory>
#include <string>
#include <utility>

#include "ScratchFolder.h"
#include "Trees.h"
#include "editor/EditGridView.h"
#include "editor/NEditForm.h"
#include "widgets/GuiMessages.h"
#include "widgets/PrivateState.h"
#include "widgets/WindowVerbs.h"

namespace quenmar {

inline constexpr auto kDistribution =
    "// About a & &lt;b>\r\na: 1\r\n\r\n//b: 2\r\nmap: m1\r\nmap: m3\r\n";
inline constexpr auto kServer =
    "// About a & &lt;b>\r\na: 5\r\n\r\nb: 6\r\nown: 7\r\nmap: m1\r\n//map: m2\r\nnpc: n1\r\n";

/// An editor window on a file of each folder.
struct Editor {
  explicit Editor(const std::string& distribution = kDistribution,
                  const std::string& server = kServer, Options chosen = {},
                  const std::string& old = {})
      : options(std::move(chosen)) {
    for (const auto& [name, text] : {std::pair("dist", distribution), std::pair("conf", server)}) {
      std::filesystem::create_directory(folder / name);
      WriteFile(folder / name / "a.conf", text);
    }
    if (!old.empty()) WriteFile(folder / "old", old);
    Open();
  }

  void Open() {
    form.reset();
    FileMerge::Request request{folder / "dist" / "a.conf", folder / "conf" / "a.conf",
                               FileMerge::Purpose::kEdit};
    request.layout = options.layout;
    request.base = folder / "old";
    merge = FileMerge::Open(request, with);
    form = std::make_unique<NEditForm>(
        FileContext{*merge, with, PathText(folder / "conf"), u"a.conf"}, nullptr);
    form->LoadGrid();
    form->LoadSeries();
    form->resize(700, 600);
    form->show();
    if (!QTest::qWaitForWindowActive(form.get())) qFatal("the window does not open");
  }

  template <class Widget>
  Widget* Find(const char* name) const {
    return form->findChild<Widget*>(name);
  }
  [[nodiscard]] EditGridView* Grid() const { return Find<EditGridView>("xEDG"); }
  [[nodiscard]] QLineEdit* T() const { return Find<QLineEdit>("T"); }
  [[nodiscard]] QListWidget* List(int i) const {
    return Find<QListWidget>(qPrintable(QString("lstSeries%1").arg(i)));
  }
  [[nodiscard]] QString Comment() const { return Find<QPlainTextEdit>("Comments")->toPlainText(); }
  [[nodiscard]] QString Cell(int row, int col) const {
    return Grid()->model()->index(row, col).data().toString();
  }
  /// @return the cells of a row, joined by "|".
  [[nodiscard]] QString Row(int row) const {
    return QStringList({Cell(row, 0), Cell(row, 1), Cell(row, 2), Cell(row, 3)}).join('|');
  }
  [[nodiscard]] bool Changed() const { return form->isWindowModified(); }

  /// @return the server's settings as they would be saved.
  [[nodiscard]] std::string Settings() const { return Values(merge->ServerSettings()); }

  void ClickCell(int row, int col) const {
    const QRect cell = Grid()->visualRect(Grid()->model()->index(row, col));
    QTest::mouseClick(Grid()->viewport(), Qt::LeftButton, {}, cell.center());
  }
  void Press(const char* button) const {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
  }
  void Keys(const QString& keys) const { PressKeys(*form, keys); }

  /// Presses Apply and then Yes. @return what the file contains then.
  std::string Applied() {
    messages.Answer({Button::kYes});
    Press("Command3");
    return ReadFile(folder / "conf" / "a.conf");
  }

  ScratchFolder folder;
  Options options;
  Language language;
  GuiMessages messages;
  const MergeContext with{options, language, messages};
  std::unique_ptr<FileMerge> merge;
  std::unique_ptr<NEditForm> form;
};

}  // namespace quenmar
