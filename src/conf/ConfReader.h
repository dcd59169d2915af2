/// The only parser of configuration files: one file becomes a settings and a series tree.
///
/// Settings tree: one `Field` per setting, named and valued as the file has it, with the parameters
/// "Comments" (index 0: the comment block, lines joined by CR LF, tabs and "//" replaced by spaces)
/// and "Disabled" (index 1). Series tree: one `Field` per value of a repeatable setting, named by
/// the value, with the parameters "Type" (index 0: the setting's name) and "Disabled" (index 1).
/// "Disabled" is "1" for a line that stands active and "0" for one that is commented out: the
/// reverse of what it says, and everything that reads or writes the trees relies on it.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "conf/ConfText.h"
#include "conf/MessageBoxes.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// Something in a file that is worth telling, though it may not keep the file from being read.
struct Finding {
  enum class Kind {
    kBareLineFeed,  ///< from this line on lines end in a lone LF
    kDuplicate,     ///< an active line of a setting that has had one before; `text` is its name
    kRejectedName,  ///< the tree takes no such name: reading stopped; `text` is the line
    kUtf8,          ///< the file is UTF-8 text; the line is the first one that shows it
    kNoText,        ///< the line has bytes that are no UTF-8 in a file that is marked as UTF-8
  };

  int line;  ///< counted from 1
  Kind kind;
  String text;
};

/// What reading a file tells beside its trees.
struct ConfNotes {
  std::string bytes;  ///< the content of the file on the disk, after a repair in the file
  ConfCharset charset = ConfCharset::kWindows1252;
  bool ascii = true;              ///< the file fits every character set
  std::vector<Finding> findings;  ///< in the order of the lines
  std::set<String> activeNames;   ///< the settings that have an active line
  String trouble;       ///< why reading stopped; empty when the user declined or it did not
  int troubleLine = 0;  ///< the line at which it stopped; 0 where no line is to blame
};

/// @return the character set in which a server's file is saved: its own, or the distribution's
/// where it is ASCII throughout.
[[nodiscard]] ConfCharset CharsetForSaving(const ConfNotes& server, const ConfNotes& distribution);

/// Reads configuration files; keeps nothing between two calls.
class ConfReader {
 public:
  /// What becomes of a file with bare LF line ends.
  enum class BareLineFeeds {
    kAsk,             ///< the user is asked; Yes rewrites the file
    kRepairInFile,    ///< the file is rewritten without a question
    kRepairInMemory,  ///< the file stays as it is; only this reading sees the repaired text
    kEndLines,        ///< the file is read as it is, and a lone LF ends a line
  };

  /// The arguments outlive the reader.
  ConfReader(const Options& options, const Language& language, MessageBoxes& messages,
             BareLineFeeds bareLineFeeds = BareLineFeeds::kAsk);

  /// Reads the file at `path`, asking about bare LF line ends and duplicates on the way. Failures
  /// are shown to the user here. Throws `EndApplication` when the user answers No to the repair;
  /// a question that is closed without an answer only ends the reading.
  /// @param settings, series receive new trees that hold what was read, also when reading stopped
  /// @param notes receives what else was seen, if given
  /// @return whether the file was read to its end.
  [[nodiscard]] bool LoadConfFile(const Path& path, std::shared_ptr<Document>& settings,
                                  std::shared_ptr<Document>& series,
                                  ConfNotes* notes = nullptr) const;

 private:
  const Options& options_;
  const Language& language_;
  MessageBoxes& messages_;
  BareLineFeeds bareLineFeeds_;
};

/// @return `text` with every LF replaced by CR LF; an LF that has its CR gets a second one.
[[nodiscard]] String RepairLineEnds(StringView text);

}  // namespace quenmar
