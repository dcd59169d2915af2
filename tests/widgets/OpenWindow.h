#pragma once

#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>
#include <memory>
#include <string>

#include "widgets/FileContext.h"
#include "widgets/WindowTest.h"

namespace quenmar {

/// A window on two versions of a file, which are read from texts.
template <class Window>
class OpenWindow : public QObject {
 protected:
  /// @param apply the name of the button that saves
  OpenWindow(FileMerge::Purpose purpose, const char* apply) : purpose_(purpose), apply_(apply) {}

  /// Gives a new window what it shows.
  virtual void Fill() = 0;

  /// Reads the two texts, and an old version of the first if there is one, and shows the window on
  /// them.
  void Open(std::string_view distribution, std::string_view server,
            Layout layout = Layout::kSettings, std::string_view old = {}) {
    window_.reset();
    messages_.Take();
    folder_ = std::make_unique<ScratchFolder>();
    WriteFile(*folder_ / "dist", distribution);
    WriteFile(*folder_ / "a.conf", server);
    if (!old.empty()) WriteFile(*folder_ / "old", old);
    request_ = {*folder_ / "dist", *folder_ / "a.conf", purpose_};
    request_.layout = layout;
    request_.base = *folder_ / "old";
    OpenAgain();
  }

  void OpenAgain() {
    window_.reset();
    merge_ = FileMerge::Open(request_, with_);
    if (!merge_) qFatal("the files cannot be read");
    window_ = std::make_unique<Window>(
        FileContext{*merge_, with_, PathText(folder_->Folder()), u"a.conf"}, nullptr);
    Fill();
    window_->show();
    if (!QTest::qWaitForWindowActive(window_.get())) qFatal("the window does not open");
  }

  template <class Control>
  Control* Find(const QString& name) {
    return window_->template findChild<Control*>(name);
  }
  QPlainTextEdit* Comments() { return window_->template findChild<QPlainTextEdit*>(); }
  QString Comment() { return Comments()->toPlainText(); }

  void Keys(const QString& keys) { PressKeys(*window_, keys); }
  void Press(const QString& button) {
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
  }

  /// Presses Apply and then Yes. @return what the file contains then.
  std::string Applied() {
    messages_.Answer({Button::kYes});
    Press(apply_);
    return ReadFile(*folder_ / "a.conf");
  }

  const FileMerge::Purpose purpose_;
  const QString apply_;
  PrivateState state_;
  std::unique_ptr<ScratchFolder> folder_;
  Options options_;
  Language language_;
  GuiMessages messages_;
  const MergeContext with_{options_, language_, messages_};
  FileMerge::Request request_;
  std::unique_ptr<FileMerge> merge_;
  std::unique_ptr<Window> window_;
};

}  // namespace quenmar
