#pragma once

#include <optional>
#include <utility>

#include "compare/ReleaseChanges.h"
#include "conf/ConfFile.h"
#include "files/Files.h"

namespace quenmar {

/// The distribution's files as they were when the server's files were saved last, in a folder of
/// the user's own. Each is an entry named after the absolute path of the server's file, whose
/// folder is the one behind links; its first lines name that path and the date on which it was
/// kept, the file's bytes follow.
///
/// Looking something up never writes. Nothing is kept in a folder of configuration files.
class SeenFiles {
 public:
  /// @param folder is created when something is kept; empty where there is none
  explicit SeenFiles(Path folder) : folder_(std::move(folder)) {}

  /// @return the path of a server's file's entry, whether or not it is there.
  [[nodiscard]] Path EntryOf(const Path& server) const;

  /// @param server the server's file
  /// @return the distribution's file that was kept for it, under the path of its entry; nothing
  /// where none was. Throws `FileError` when the entry cannot be read.
  [[nodiscard]] std::optional<ConfFile> Find(const Path& server) const;

  /// Like `Find`, but a failure is returned in `OldFile::reason`. That the folder cannot be read is
  /// reported the first time only, as a program may look up many files.
  [[nodiscard]] OldFile Look(const Path& server);

  /// Keeps the distribution's file for the server's, replacing an older one wholly or not at all.
  /// The first time it also clears the entries of files that no longer exist and that were kept
  /// more than a year ago.
  /// @param distribution its bytes are kept, and its folder is one of configuration files
  /// @return why it could not be kept, in words for the user; empty on success and after the first
  /// failure, so that a program that saves many files reports it once.
  [[nodiscard]] String Keep(const Path& server, const ConfFile& distribution);

 private:
  [[nodiscard]] String TryToKeep(const Path& server, const ConfFile& distribution);
  void ClearOldEntries() const;

  Path folder_;
  bool cleared_ = false;
  bool unreadableTold_ = false;  // that the folder cannot be read
  bool unwritableTold_ = false;  // that nothing can be kept
};

/// @param base the old distribution's file as the user has named it, which may be missing
/// @param seen where to look when the user has named none; may be null
/// @param server the server's file
/// @return the old version; for a file that the server lacks, none.
[[nodiscard]] OldFile FindOldFile(const std::optional<Path>& base, SeenFiles* seen,
                                  const Path& server);

}  // namespace quenmar
