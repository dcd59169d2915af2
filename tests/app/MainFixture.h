#pragma once

#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QtTest>
#include <functional>
#include <memory>
#include <optional>

#include "app/MainWindow.h"
#include "registry/FileRegistry.h"
#include "widgets/FolderBox.h"
#include "widgets/StateFile.h"
#include "widgets/WindowTest.h"

namespace quenmar {

/// The main window on folders of its own, which a test fills and opens.
class MainFixture : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    window_.reset();
    scratch_ = std::make_unique<ScratchFolder>();
    for (const char* const name : {"dist", "conf", "empty"}) {
      std::filesystem::create_directory(*scratch_ / name);
    }
    Write("dist/a.conf", "a: 1\r\nnpc: x\r\n");
    Write("dist/NEW.CONF", "n: 1\r\n");
    Write("conf/a.conf", "a: 2\r\n");
    qputenv("QUENMAR_STATE", Folder("state").toUtf8());
    registry_ = std::make_unique<FileRegistry>(*scratch_ / "options.reg");
    StateFile().clear();
    language_ = Language();
    messages_.Take();
  }

 protected:
  void Open(const std::optional<Main::Folders>& folders = {}) {
    window_ = std::make_unique<Main>(
        *registry_, language_, messages_,
        [this](QWidget* owner, const QString& title, const QString& folder) {
          return pick_(owner, title, folder);
        },
        folders);
    window_->show();
  }
  void OpenOnFolders(const QString& file = {}) {
    Open(Main::Folders{Folder("dist"), Folder("conf")});
    if (!file.isEmpty()) Files()->setCurrentText(file);
  }
  void Write(const Path& file, std::string_view bytes) { WriteFile(*scratch_ / file, bytes); }
  std::string Read(const Path& file) { return ReadFile(*scratch_ / file); }
  /// Stores a value as the user's options or texts.
  void Register(const char16_t* key, const char16_t* name, const String& value) {
    registry_->RegWriteString(RegistryRoot::kLocalMachine, String(u"Software\\Quenmar\\") + key,
                              name, value);
  }
  QString Folder(const char* name) { return ToQString(PathText(scratch_->Folder() / name)); }

  template <class Widget>
  Widget* Get(const char* name) {
    return window_->findChild<Widget*>(name);
  }
  FolderBox* From() { return Get<FolderBox>("txt_FileFrom"); }
  FolderBox* To() { return Get<FolderBox>("txt_FileTo"); }
  QComboBox* Files() { return Get<QComboBox>("ConfFiles"); }
  void Click(const char* button) { QTest::mouseClick(Get<QPushButton>(button), Qt::LeftButton); }
  bool Enabled() {
    return Get<QPushButton>("Command3")->isEnabled() && Get<QPushButton>("Command5")->isEnabled();
  }

  /// Presses a command and closes the window that it opens, whose title is returned.
  /// @param look gets that window before it closes
  QString PressAndClose(const char* button, const std::function<void(QWidget*)>& look = {}) {
    return DoAndClose([this, button] { Click(button); }, look);
  }

  /// The same for another way to give the command.
  QString DoAndClose(const std::function<void()>& way,
                     const std::function<void(QWidget*)>& look = {}) {
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
    way();
    return title;
  }

  /// Presses a command in a running application. @return whether that ended the application, and
  /// with status 0.
  bool PressEnds(const char* button) {
    constexpr int kStillRunning = 77;
    QTimer limit;
    connect(&limit, &QTimer::timeout, this, [] { QCoreApplication::exit(kStillRunning); });
    limit.start(5000);
    QTimer::singleShot(0, window_.get(), [this, button] { Get<QPushButton>(button)->click(); });
    return QApplication::exec() == 0;
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

  PrivateState state_;
  std::unique_ptr<ScratchFolder> scratch_;
  std::unique_ptr<FileRegistry> registry_;
  Language language_;
  GuiMessages messages_;
  FolderPicker pick_;
  std::unique_ptr<Main> window_;
};

}  // namespace quenmar
