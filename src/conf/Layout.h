/// What a save keeps of the files' own lines.
#pragma once

#include <string>
#include <vector>

#include "conf/ConfFile.h"
#include "registry/Language.h"
#include "registry/Options.h"
#include "text/String.h"

namespace quenmar {

/// What a file is to contain after a save.
struct Wishes {
  struct Setting {
    String name;
    String value;
    bool active = true;
  };
  struct Entry {
    String type;
    String name;  ///< the value of the repeatable setting
    bool on = true;
  };

  std::vector<Setting> settings;  ///< those that remain, each name once
  std::vector<Entry> entries;     ///< in the order of the lists
};

struct LaidOut {
  std::string bytes;
  ConfCharset charset = ConfCharset::kWindows1252;
};

/// Makes a new text from `base` that has what is wanted; what `base` lacks comes from `other`.
/// Lines of the base that need no change stay byte for byte. A lone LF is a line end.
///
/// Settings that are not wanted are removed, series entries stay. A "note" or "example" always
/// stays active: commented out it would be a comment.
/// @param base, other files that the reader reads to their ends
/// @param wishes have the values and states that the reader returns where nothing is to change; no
/// value contains a line end
/// @param options only `series` and `saveCommentedSeries` are used
/// @return the new file. Throws `RuntimeError` that names what the file's character set lacks.
[[nodiscard]] LaidOut LayOut(const ConfFile& base, const ConfFile& other, const Wishes& wishes,
                             const Options& options, const Language& language);

}  // namespace quenmar
