#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "conf/ConfReader.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"
#include "text/String.h"

namespace quenmar {

/// A kept setting whose default the release has changed, and whose new default the server lacks.
struct DefaultChange {
  enum class Kind {
    kDefault,  ///< the server has the old default: the administrator has never touched it
    kBoth,     ///< the server has a value of its own
  };

  String name;
  String oldDefault;
  String newDefault;
  String actual;
  Kind kind = Kind::kDefault;

  [[nodiscard]] bool IsUntouched() const { return kind == Kind::kDefault; }
};

struct SeriesEntry {
  String type;
  String name;
};

/// What a release itself has changed, from three versions of a file.
struct ReleaseChanges {
  std::vector<DefaultChange> defaults;  ///< in the order of the settings that were passed
  /// The entries that the release has withdrawn and that the server still has on, in the order of
  /// the server's.
  std::vector<SeriesEntry> withdrawn;

  [[nodiscard]] bool Empty() const { return defaults.empty() && withdrawn.empty(); }
};

/// The settings tree and the series tree of one version.
struct VersionTrees {
  const Document& settings;
  const Document& series;
};

/// The distribution's file as it was, or why there is none.
struct OldFile {
  std::optional<ConfFile> file = {};  ///< nothing where none is known, or where it cannot be read
  Path path = {};                     ///< where it was looked for
  String reason = {};                 ///< why it cannot be read, in words for the user
  bool named = false;                 ///< the user has named it, so it must be readable
};

/// The distribution's file as it was when the server's file was saved last.
struct OldVersion {
  std::shared_ptr<Document> settings = std::make_shared<Document>();
  std::shared_ptr<Document> series = std::make_shared<Document>();

  /// Reads the old file without asking anything.
  /// @param notes receives why the file cannot be read to its end; empty where no old version is
  /// known
  /// @return the old version; nothing when it is not known or cannot be read.
  [[nodiscard]] static std::optional<OldVersion> Read(const OldFile& found, const Options& options,
                                                      const Language& language, ConfNotes& notes);
};

/// @param now the distribution's settings as they are
/// @param setting one of the server's, with its value there
/// @return what the release has changed, unless the server has the new default; nothing for a
/// setting that either distribution lacks.
[[nodiscard]] std::optional<DefaultChange> FindDefaultChange(const OldVersion& old,
                                                             const Document& now,
                                                             const Field& setting);

/// Only values count, not whether a line is active. A setting or entry that the old distribution
/// lacks is not a change of the release, and of several lines of a name the first one counts.
/// @param now the distribution's file as it is
/// @param server the server's values; the order of the settings is the caller's
/// @return what the release has changed and the server has not followed.
[[nodiscard]] ReleaseChanges FindReleaseChanges(const OldVersion& old, const VersionTrees& now,
                                                const VersionTrees& server);

}  // namespace quenmar
