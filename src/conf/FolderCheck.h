/// Checks the two folders that the main window's boxes name.
#pragma once

#include <optional>
#include <vector>

#include "registry/Language.h"
#include "text/String.h"

namespace quenmar {

/// The result of checking a folder box's new text.
struct FolderCheck {
  enum class Commands {
    kUnchanged,  ///< Edit and Check Changes stay as they are
    kEnabled,
    kDisabled,
  };

  std::optional<Message> message;
  String placeholder;
  Commands commands = Commands::kUnchanged;
  std::optional<std::vector<String>> files;  ///< the new content of the file list, if it changes

  bool operator==(const FolderCheck&) const = default;
};

/// Checks the distribution folder after its box was given a text. An entry that matches *.conf
/// makes it a candidate, even a folder; only files are listed.
[[nodiscard]] FolderCheck CheckDistributionFolder(StringView distribution, StringView server);

/// Checks the server folder after its box was given a text. A valid one brings back the file list,
/// which the distribution folder's check may have emptied.
[[nodiscard]] FolderCheck CheckServerFolder(StringView distribution, StringView server);

/// @return `folder`, a separator unless it ends in one, and `name`. Windows takes both slashes for
/// separators and gets a backslash.
[[nodiscard]] String JoinPath(StringView folder, StringView name);

}  // namespace quenmar
