#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <map>
#include <vector>

#include "compare/FileReport.h"
#include "files/Folder.h"
#include "merge/SeenFiles.h"

namespace quenmar {

/// Reports on every file of two folders, one file for each turn of the event loop, and notices when
/// something in the folders changes. A file whose time and size stay the same is not read again, as
/// long as the layout and the sorting of the options stay the same.
class FolderReports : public QObject {
  Q_OBJECT

 public:
  /// The references outlive this object.
  /// @param seen the distribution's files as they were
  FolderReports(const Options& options, const Language& language, const SeenFiles& seen,
                QObject* parent);

  /// Begins to report on the files, and watches the folders afterwards. Other folders than last
  /// time are read from the start.
  /// @param files their names, in the order of the reports
  void Read(const Path& distribution, const Path& server, const std::vector<String>& files);

  [[nodiscard]] bool IsFor(const Path& distribution, const Path& server) const {
    return distribution == distribution_ && server == server_;
  }

  /// Looks again for what has changed, in the files or in the options.
  void Refresh();

  /// Treats the file as changed, even if its time and size are the same.
  void Forget(const String& file) { read_.erase(file); }

  /// Stops reading and watching, and forgets the folders.
  void Stop();

 signals:
  /// A file was read.
  void Reported(const quenmar::FileReport& report);

  /// `done` of `all` files have been read.
  void Progressed(int done, int all);

  /// Something in the folders has changed. Changes that follow each other closely are reported
  /// once.
  void DiskChanged();

 private:
  /// What a report was made from: all versions of the file and the options that the user changes.
  struct Basis {
    FileStamp distribution;
    FileStamp server;
    FileStamp old;
    Layout layout;
    int sort;

    bool operator==(const Basis&) const = default;
  };

  void TakeTurn();
  [[nodiscard]] FileReport ReportOn(const Path& name) const;
  void Watch();

  const Options& options_;
  const Language& language_;
  const SeenFiles& seen_;
  QTimer turns_;
  QTimer settling_;  ///< joins changes that follow each other closely
  QFileSystemWatcher watcher_;
  Path distribution_;
  Path server_;
  std::vector<String> files_;
  size_t next_ = 0;  ///< in `files_`
  std::map<String, Basis> read_;
  bool replaced_ = false;  ///< one of the folders may be another one than is watched
};

}  // namespace quenmar
