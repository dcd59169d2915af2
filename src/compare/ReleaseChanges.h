#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "conf/ConfFile.h"
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
};

/// A series entry that the release has taken away and that the server still has on.
struct WithdrawnEntry {
  String type;
  String name;
};

/// What a release itself has changed, from three versions of a file.
struct ReleaseChanges {
  std::vector<DefaultChange> defaults;    ///< in the order of the server's settings
  std::vector<WithdrawnEntry> withdrawn;  ///< in the order of the server's entries

  [[nodiscard]] bool Empty() const { return defaults.empty() && withdrawn.empty(); }
};

/// The settings and series entries of one version as it is.
struct VersionTrees {
  const Document& settings;
  const Document& series;
};

/// The distribution's file as it was when the server's file was saved last.
struct OldVersion {
  std::shared_ptr<Document> settings = std::make_shared<Document>();
  std::shared_ptr<Document> series = std::make_shared<Document>();

  /// Reads it, without a user.
  /// @param trouble receives why there is no result
  /// @return nothing where the file cannot be read to its end.
  [[nodiscard]] static std::optional<OldVersion> Read(const ConfFile& file, const Options& options,
                                                      const Language& language, String& trouble);
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
/// @return what the release has changed and the server has not followed.
[[nodiscard]] ReleaseChanges FindReleaseChanges(const OldVersion& old, const VersionTrees& now,
                                                const VersionTrees& server);

}  // namespace quenmar
