#include "app/FolderReports.h"

#include <QSet>
#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "widgets/QtText.h"

namespace quenmar {

namespace {

constexpr int kSettlingTime = 250;  // milliseconds

/// @return the folder above, however the path is written: also `conf/` and `.` are in one.
QString ParentOf(const Path& folder) {
  std::error_code error;
  const Path whole = std::filesystem::absolute(folder, error).lexically_normal();
  const Path named = whole.has_filename() ? whole : whole.parent_path();
  return ToQString(PathText(named.parent_path()));
}

QSet<QString> AsSet(const QStringList& list) { return {list.begin(), list.end()}; }

}  // namespace

FolderReports::FolderReports(const Options& options, const Language& language,
                             const SeenFiles& seen, QObject* parent)
    : QObject(parent), options_(options), language_(language), seen_(seen) {
  settling_.setSingleShot(true);
  settling_.setInterval(kSettlingTime);
  const auto settle = [this] {
    if (!settling_.isActive()) settling_.start();
  };
  connect(&turns_, &QTimer::timeout, this, &FolderReports::TakeTurn);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this](const QString& folder) {
    replaced_ = replaced_ || folder == ParentOf(distribution_) || folder == ParentOf(server_);
  });
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, settle);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, settle);
  connect(&settling_, &QTimer::timeout, this, &FolderReports::DiskChanged);
}

void FolderReports::Read(const Path& distribution, const Path& server,
                         const std::vector<String>& files) {
  if (!IsFor(distribution, server)) read_.clear();
  std::erase_if(read_, [&files](const auto& known) {
    return std::find(files.begin(), files.end(), known.first) == files.end();
  });
  distribution_ = distribution;
  server_ = server;
  files_ = files;
  Refresh();
}

void FolderReports::Refresh() {
  next_ = 0;
  if (files_.empty()) return;
  Watch();  // first, so that no change falls between reading and watching
  turns_.start(0);
}

void FolderReports::Stop() {
  turns_.stop();
  settling_.stop();
  files_.clear();
  read_.clear();
  distribution_.clear();
  server_.clear();
  Watch();
}

void FolderReports::TakeTurn() {
  const String& file = files_[next_++];
  const Path name = PathFromText(file);
  const Basis now = {StampOf(distribution_ / name), StampOf(server_ / name),
                     StampOf(seen_.EntryOf(server_ / name)), options_.layout, options_.sort};
  const auto [known, isNew] = read_.try_emplace(file, now);
  if (isNew || known->second != now) {
    known->second = now;
    emit Reported(ReportOn(name));
  }
  if (next_ == files_.size()) turns_.stop();
  emit Progressed(static_cast<int>(next_), static_cast<int>(files_.size()));
}

FileReport FolderReports::ReportOn(const Path& name) const {
  SeenFiles seen = seen_;  // a copy: each file's row says why its old version cannot be read
  return FileReport::Of(distribution_, server_, name, options_, language_,
                        ConfReader::BareLineFeeds::kEndLines,
                        FindOldFile({}, &seen, server_ / name));
}

/// Watching a folder reports files that are added, removed or replaced; only watching a file
/// reports that it is written in place. A file that was replaced is no longer watched. A folder
/// that was replaced still is, by its old contents: its parent reports that, and all is watched
/// from the start.
void FolderReports::Watch() {
  QSet<QString> wanted;
  for (const Path& folder : {distribution_, server_}) {
    if (folder.empty()) continue;
    wanted << ToQString(PathText(folder)) << ParentOf(folder);
    for (const String& file : files_) {
      const Path path = folder / PathFromText(file);
      if (KindOf(path) == FileKind::kFile) wanted << ToQString(PathText(path));
    }
  }
  const QSet<QString> watching = AsSet(watcher_.files()) + AsSet(watcher_.directories());
  if (std::exchange(replaced_, false)) watcher_.removePaths(watching.values());
  const QSet<QString> watched = AsSet(watcher_.files()) + AsSet(watcher_.directories());
  const QStringList old = (watched - wanted).values();
  const QStringList fresh = (wanted - watched).values();
  // What cannot be watched is looked at when the user comes back to the window.
  if (!old.isEmpty()) watcher_.removePaths(old);
  if (!fresh.isEmpty()) watcher_.addPaths(fresh);
}

}  // namespace quenmar
