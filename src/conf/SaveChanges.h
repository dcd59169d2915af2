/// What a save would change in a file that stands on the disk.
#pragma once

#include <vector>

#include "text/String.h"

namespace quenmar {

/// One line that a save adds, takes away or changes.
struct SaveChange {
  enum class Kind {
    kAdded,        ///< the file has no such setting or series entry
    kRemoved,      ///< nothing takes its place
    kChanged,      ///< it stays active with another value
    kActivated,    ///< a commented-out setting becomes active
    kSwitchedOn,   ///< a commented-out series entry becomes active
    kSwitchedOff,  ///< an active series entry becomes commented out
  };

  Kind kind;
  String name;             ///< of the setting; for series entries the kind of series
  String oldValue;         ///< as the file's text has it, remarks included; empty when added
  String newValue;         ///< as it would be written; empty when removed
  bool commented = false;  ///< the new line is commented out, or the removed one
};

struct SaveChanges {
  std::vector<SaveChange> changes;  ///< in the order of the new file, what is removed last
  int lostCommentLines = 0;         ///< comment lines that the new file does not have
};

/// Compares texts, not trees, so that a value which reading cuts at a tab or a remark shows.
/// @param oldText what the file holds now; bare LF line ends are read as if repaired
/// @param newLines the lines that a save writes, see `ConfWriter::ConfFileLines`
/// @param series the option that names the repeatable settings
[[nodiscard]] SaveChanges ListSaveChanges(StringView oldText, const std::vector<String>& newLines,
                                          StringView series);

/// @return the changes without a word of any language, as comparisons of text files show them: each
/// line that goes behind "-", each that comes behind "+", and last, behind "- //", how many comment
/// lines go. Lines end in CR LF.
[[nodiscard]] String DiffText(const SaveChanges& changes);

}  // namespace quenmar
