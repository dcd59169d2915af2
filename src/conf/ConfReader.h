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

#include "conf/MessageBoxes.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// Reads configuration files; keeps nothing between two calls.
class ConfReader {
 public:
  /// What becomes of a file with bare LF line ends when the user wants them repaired.
  enum class LineEndRepair {
    kInFile,    ///< the file is rewritten
    kInMemory,  ///< the file stays as it is; only this reading sees the repaired text
  };

  /// The arguments outlive the reader.
  ConfReader(const Options& options, const Language& language, MessageBoxes& messages,
             LineEndRepair repair = LineEndRepair::kInFile);

  /// Reads the file at `path`, asking about bare LF line ends and duplicates on the way. Failures
  /// are shown to the user here. Throws `EndApplication` when the user refuses the repair.
  /// @param settings, series receive new trees that hold what was read, also when reading stopped
  /// @return whether the file was read to its end.
  [[nodiscard]] bool LoadConfFile(const Path& path, std::shared_ptr<Document>& settings,
                                  std::shared_ptr<Document>& series) const;

 private:
  const Options& options_;
  const Language& language_;
  MessageBoxes& messages_;
  LineEndRepair repair_;
};

/// @return `text` with every LF replaced by CR LF; an LF that has its CR gets a second one.
[[nodiscard]] String RepairLineEnds(StringView text);

}  // namespace quenmar
