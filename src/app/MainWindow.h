/// The main window: the two folders, the list of configuration files, and the two commands on the
/// chosen one.
#pragma once

#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "app/FolderPicker.h"
#include "conf/FolderCheck.h"
#include "conf/MessageBoxes.h"
#include "merge/SeenFiles.h"
#include "registry/Language.h"
#include "registry/Options.h"
#include "registry/Registry.h"
#include "widgets/FileContext.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace quenmar {

class FolderBox;
class Overview;

class Main : public QWidget {
  Q_OBJECT

 public:
  /// Folders that this run uses without storing them.
  struct Folders {
    QString distribution;
    QString server;
  };

  /// Loads the options and sets the folder boxes from them, or from `folders`, which checks them.
  /// The references outlive the window.
  Main(Registry& registry, const Language& language, MessageBoxes& messages, FolderPicker picker,
       const std::optional<Folders>& folders = {});

 signals:
  /// The window has become the active one.
  void Activated();

 protected:
  /// Emits `Activated` when the window becomes the active one.
  bool event(QEvent* event) override;

  /// Enter presses the button that has the focus.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void CreateControls();
  void SetCaptions();
  void OfferLayouts();
  void LayOut();
  void Connect();
  void ConnectOverview();
  void SetFolders(const std::optional<Folders>& folders);
  /// Stores what saved files are made of from now on. Only the program's own form can be sorted.
  void ChooseLayout(Layout layout);

  /// The results of checking both folders.
  struct FolderChecks {
    FolderCheck distribution;
    FolderCheck server;

    bool operator==(const FolderChecks&) const = default;
  };
  [[nodiscard]] FolderChecks LookAtFolders() const;

  /// Checks the folder in a box whose text is complete.
  void CheckFolder(FolderBox& box);
  /// Checks both folders again and shows what has changed. Does nothing while a window or a message
  /// box is open.
  void Reread();
  /// Sets the list of files and the buttons.
  void Take(const FolderCheck& check);
  void ListFiles(const std::vector<String>& files);
  void SelectFile(const QString& file);
  void SelectInOverview();
  /// Shows what the listed files need, or why there is nothing to show.
  void ShowOverview();
  [[nodiscard]] QString WhyNothingIsShown() const;
  /// Shows what has changed on the disk. A new message waits until the window is active.
  void FollowDisk();
  /// Shows the check's message, if any, and gives the box the focus.
  void Refuse(FolderBox& box, const FolderCheck& check);
  /// Takes the boxes' texts as complete, and checks those that are new.
  void CompleteBoxes();
  void Pick(FolderBox& box, Message title);
  void Store(FolderBox& box, const QString& folder);

  /// Runs a command. Ends the application when the command throws `EndApplication`.
  void Run(void (Main::*command)());
  void Edit();
  void CheckChanges();

  /// @return the chosen file; when there is none, says so and returns nothing.
  [[nodiscard]] std::optional<String> ChosenFile();
  [[nodiscard]] static Path FileIn(const FolderBox& box, const String& file);
  [[nodiscard]] MergeContext With() const { return {options_, language_, messages_}; }
  /// Reads both versions of a file.
  /// @param begun see `FileMerge::Request`
  /// @return nothing when a reading failed or was declined, which was shown.
  [[nodiscard]] std::unique_ptr<FileMerge> Open(const String& file, FileMerge::Purpose purpose,
                                                bool begun = false);
  [[nodiscard]] FileContext ContextOf(FileMerge& merge, const String& file) const;
  [[nodiscard]] QString Caption(Message key) const;  ///< to be shown
  [[nodiscard]] QString Text(Message key) const;     ///< to be read out, or passed on

  Registry& registry_;
  const Language& language_;
  MessageBoxes& messages_;
  FolderPicker picker_;
  Options options_;
  SeenFiles seenFiles_;   ///< the distribution's files as they were
  FolderChecks checks_;   ///< as they were when list and buttons were set last
  QString listedFolder_;  ///< whose files are listed
  bool busy_ = false;     ///< a command or the folder picker is at work

  QGroupBox* frame_ = nullptr;
  QLabel* distributionLabel_ = nullptr;
  FolderBox* distribution_ = nullptr;
  QPushButton* browseDistribution_ = nullptr;
  QLabel* serverLabel_ = nullptr;
  FolderBox* server_ = nullptr;
  QPushButton* browseServer_ = nullptr;
  QLabel* filesLabel_ = nullptr;
  QComboBox* files_ = nullptr;
  QCheckBox* sort_ = nullptr;
  QLabel* layoutLabel_ = nullptr;
  QComboBox* layout_ = nullptr;
  QPushButton* edit_ = nullptr;
  QPushButton* checkChanges_ = nullptr;
  QPushButton* close_ = nullptr;
  Overview* overview_ = nullptr;
};

}  // namespace quenmar
