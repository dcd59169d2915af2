#pragma once

#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QtTest>
#include <functional>
#include <memory>
#include <optional>

#include "ScratchFolder.h"
#include "Trees.h"
#include "app/MainWindow.h"
#include "registry/FileRegistry.h"
#include "widgets/FolderBox.h"
#include "widgets/GuiMessages.h"
#include "widgets/PrivateState.h"

namespace quenmar {

/// The main window on folders of its own, which a test fills and opens.
class MainFixture : public QObject {
  Q_OBJECT

 private slots:
  void init();

 protected:
  void Open(const std::optional<Main::Folders>& folders = {});
  void OpenOnFolders() { Open(Main::Folders{Folder("dist"), Folder("conf")}); }
  QString Folder(const char* name) { return ToQString(PathText(scratch_->Folder() / name)); }
  void Choose(const QString& file) { Get<QComboBox>("ConfFiles")->setCurrentText(file); }
  /// Presses a command and closes the window that it opens, whose title is returned.
  /// @param look gets that window before it closes
  QString PressAndClose(const char* button, const std::function<void(QWidget*)>& look = {});
  /// Presses a command in a running application. @return whether that ended the application, and
  /// with status 0.
  bool PressEnds(const char* button);
  /// Comes back to the window from another program.
  void ComeBack() {
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(window_.get(), &back);
    QCoreApplication::processEvents();
  }
  /// Leaves a folder box for the next control.
  void Leave(FolderBox* box) {
    QFocusEvent leaving(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(box, &leaving);
    QCoreApplication::sendPostedEvents();
  }
  void Drop(FolderBox* box, const QByteArray& url) {
    QMimeData data;
    data.setData("text/uri-list", url);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(box, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    const QString before = box->text();
    QApplication::sendEvent(box, &drop);
    QCOMPARE(box->text(), before);  // the other program comes first
    QCoreApplication::sendPostedEvents();
  }
  bool Enabled() {
    return Get<QPushButton>("Command3")->isEnabled() && Get<QPushButton>("Command5")->isEnabled();
  }

  template <class Widget>
  Widget* Get(const char* name) {
    return window_->findChild<Widget*>(name);
  }

  PrivateState state_;
  std::unique_ptr<ScratchFolder> scratch_;
  std::unique_ptr<FileRegistry> registry_;
  Language language_;
  GuiMessages messages_;
  QString picked_;
  std::function<void()> whilePicking_;
  QStringList pickerCalls_;
  std::unique_ptr<Main> window_;
};

inline void MainFixture::init() {
  window_.reset();
  scratch_ = std::make_unique<ScratchFolder>();
  for (const char* name : {"dist", "conf", "empty"}) {
    std::filesystem::create_directory(*scratch_ / name);
  }
  WriteFile(*scratch_ / "dist/a.conf", "a: 1\r\nnpc: x\r\n");
  WriteFile(*scratch_ / "dist/NEW.CONF", "n: 1\r\n");
  WriteFile(*scratch_ / "conf/a.conf", "a: 2\r\n");
  registry_ = std::make_unique<FileRegistry>(*scratch_ / "options.reg");
  language_ = Language();
  messages_.Take();
  pickerCalls_.clear();
  picked_.clear();
  whilePicking_ = {};
}

inline void MainFixture::Open(const std::optional<Main::Folders>& folders) {
  window_ = std::make_unique<Main>(
      *registry_, language_, messages_,
      [this](QWidget* owner, const QString& title, const QString& folder) {
        pickerCalls_ << owner->objectName() + "|" + title + "|" + folder;
        if (whilePicking_) whilePicking_();
        return picked_;
      },
      folders);
  window_->show();
}

inline QString MainFixture::PressAndClose(const char* button,
                                          const std::function<void(QWidget*)>& look) {
  QString title;
  QTimer poll;
  connect(&poll, &QTimer::timeout, this, [&title, &look] {
    QWidget* const window = QApplication::activeModalWidget();
    if (window == nullptr) return;
    title = window->windowTitle();
    if (look) look(window);
    window->close();
  });
  poll.start(0);
  QTest::mouseClick(Get<QPushButton>(button), Qt::LeftButton);
  return title;
}

inline bool MainFixture::PressEnds(const char* button) {
  constexpr int kStillRunning = 77;
  QTimer limit;
  connect(&limit, &QTimer::timeout, this, [] { QCoreApplication::exit(kStillRunning); });
  limit.start(5000);
  QTimer::singleShot(0, window_.get(), [this, button] { Get<QPushButton>(button)->click(); });
  return QApplication::exec() == 0;
}

}  // namespace quenmar
