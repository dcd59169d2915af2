/// What a save would change in a file that is on the disk.
#pragma once

#include <optional>
#include <vector>

#include "conf/ConfFile.h"
#include "registry/Language.h"
#include "registry/Options.h"
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
    kSwitchedOff,  ///< an active series entry or setting becomes commented out
  };

  Kind kind;
  String name;             ///< of the setting; for series entries the kind of series
  String oldValue;         ///< as the file's text has it, remarks included; empty when added
  String newValue;         ///< as it would be written; empty when removed
  bool commented = false;  ///< the new line is commented out, or the removed one
};

struct SaveChanges {
  std::vector<SaveChange> changes;        ///< in the order of the new file, what is removed last
  int lostCommentLines = 0;               ///< comment lines that the new file does not have
  int addedCommentLines = 0;              ///< comment lines that only the new file has
  bool reordered = false;                 ///< lines that stay come in another order
  bool reformatted = false;               ///< other blanks in lines that stay, blank lines that go
  bool otherLineEnds = false;             ///< not every line ends in CR LF yet
  bool lineFeeds = false;                 ///< lines end in LF from now on, and did not all before
  bool markGoes = false;                  ///< the file begins with a byte order mark
  bool markComes = false;                 ///< the new file begins with one
  std::optional<ConfCharset> newCharset;  ///< the one of the new file, where it is another one

  /// @return whether the bytes of the file stay as they are.
  [[nodiscard]] bool Empty() const;
};

/// Compares texts, not trees, so that a value that reading cuts at a tab or a remark is a change,
/// too.
/// @param before the file as it is, in any character set and with any line ends
/// @param after the file as a save writes it
/// @param series the option that names the repeatable settings
/// @param layout of the new file; only `Layout::kSettings` gives all lines a form of its own
[[nodiscard]] SaveChanges ListSaveChanges(const ConfFile& before, const ConfFile& after,
                                          StringView series, Layout layout = Layout::kSettings);

/// @return what changes in the file as a whole, each in a few words.
[[nodiscard]] std::vector<String> WholeFileEffects(const SaveChanges& changes,
                                                   const Language& language);

/// @return the changes as a diff: "-" before each removed line, "+" before each added one, "- //"
/// before the number of lost comment lines, and then a sentence for each change of the whole file.
/// Lines end in CR LF.
[[nodiscard]] String DiffText(const SaveChanges& changes, const Language& language);

}  // namespace quenmar
