/// The only parser of configuration files: one file becomes a settings and a series tree.
///
/// `ConfSetting.h` describes the fields of the trees. Settings tree: one `Field` per
/// setting, in the order of their first lines. Series tree: one `Field` per value of a repeatable
/// setting.
#pragma once

#include <memory>
#include <vector>

#include "conf/ConfFile.h"
#include "conf/MessageBoxes.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// What reading a file returns besides its trees.
struct ConfNotes {
  ConfFile file;                  ///< as it is on the disk, after a repair in the file
  std::vector<Finding> findings;  ///< in the order of the lines, as far as the file was read
  String reason;      ///< why reading stopped; empty when the user declined or it did not
  int errorLine = 0;  ///< the line at which it stopped; 0 where no line is the reason

  /// For each field of the settings tree, by its index: whether any line of that name is active.
  /// Only the first field of a name counts.
  std::vector<unsigned char> active;
};

/// Reads configuration files; keeps nothing between two calls.
class ConfReader {
 public:
  /// How a file with bare LF line ends is read.
  enum class BareLineFeeds {
    kAsk,             ///< the user is asked; Yes rewrites the file
    kRepairInFile,    ///< the file is rewritten without a question
    kRepairInMemory,  ///< the file stays as it is; only this reading sees the repaired text
    kEndLines,        ///< the file is read as it is, and a lone LF ends a line
  };

  enum class Comments {
    kKept,     ///< every setting gets its comment block
    kLeftOut,  ///< every comment is empty: for callers that show none
  };

  /// The arguments outlive the reader.
  ConfReader(const Options& options, const Language& language, MessageBoxes& messages,
             BareLineFeeds bareLineFeeds = BareLineFeeds::kAsk,
             Comments comments = Comments::kKept);

  /// Reads the file at `path`, asking about bare LF line ends and duplicates on the way. Failures
  /// are shown to the user here. Throws `EndApplication` when the user answers No to the repair;
  /// a question that is closed without an answer only ends the reading.
  /// @param settings, series receive new trees with what was read, also when reading stopped
  /// @param notes receives the findings and the reason for stopping, if not null
  /// @return whether the file was read to its end.
  [[nodiscard]] bool LoadConfFile(const Path& path, std::shared_ptr<Document>& settings,
                                  std::shared_ptr<Document>& series,
                                  ConfNotes* notes = nullptr) const;

 private:
  const Options& options_;
  const Language& language_;
  MessageBoxes& messages_;
  BareLineFeeds bareLineFeeds_;
  Comments comments_;
};

/// Reads a file that is in memory, without a user: a lone LF ends a line, duplicates are accepted,
/// and comments are left out.
/// @param settings, series empty trees; receive what was read, also when reading stopped
/// @param notes receives the active lines, the duplicates and what stopped the reading, if given
/// @return whether the file was read to its end; false where it has a name that a tree rejects.
[[nodiscard]] bool ReadQuietly(const ConfFile& file, const Options& options, Document& settings,
                               Document& series, ConfNotes* notes = nullptr);

/// @return where reading stopped, for a message: the file and, if one is the reason, the line.
[[nodiscard]] String PlaceOfError(const Path& path, const ConfNotes& notes,
                                  const Language& language);

}  // namespace quenmar
