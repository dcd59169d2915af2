#pragma once

#include <exception>
#include <optional>
#include <string>

#include "conf/ConfText.h"
#include "conf/MessageBoxes.h"
#include "conf/SeriesView.h"
#include "docmodel/Document.h"
#include "files/Files.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// What is known of a file from its opening to its last save.
struct OpenedFile {
  Path path;
  std::optional<std::string> bytes = {};  ///< when it was read; nothing where it was missing
  bool copied = false;                    ///< PATH.bak has been made, or must not be made

  /// @return the file as it is on the disk now. Throws `FileError` when it cannot be read.
  [[nodiscard]] static OpenedFile FromDisk(const Path& path);
};

/// Writes configuration files: every setting as an active line, then every series entry that is on,
/// and with the option SaveCommentedSeries those that are off as commented-out lines. No comment
/// line and no parameter of a field ("Comments", "Disabled") is written.
class ConfWriter {
 public:
  /// The arguments outlive the writer.
  ConfWriter(const Options& options, const Language& language, MessageBoxes& messages);

  /// Saves the file in its own character set; see `SaveBytes`.
  [[nodiscard]] bool SaveConfFile(const Path& path, const Document& settings,
                                  const SeriesView& window) const;

  /// Gives the file its new content and shows "Saved!", or shows what went wrong, in which case the
  /// file is unchanged.
  ///
  /// A file that already has the content is left alone. One that is no longer what was read is
  /// saved only if the user agrees. Just before the first save its old content is copied to
  /// PATH.bak; a copy that cannot be made is reported after "Saved!". Then the file is replaced
  /// wholly or not at all (`ReplaceBytes`).
  /// @param file is updated by the save
  /// @return whether the file has the content.
  [[nodiscard]] bool SaveBytes(OpenedFile& file, const std::string& bytes) const;

  /// Shows that a file could not be saved.
  void TellFailure(const Path& path, const std::exception& error) const;

 private:
  [[nodiscard]] bool MayReplace(const OpenedFile& file,
                                const std::optional<std::string>& onDisk) const;

  const Options& options_;
  const Language& language_;
  MessageBoxes& messages_;
};

/// @return the content that a save of settings writes, every line ended by CR LF. Throws
/// `RuntimeError` that names the setting whose characters the character set lacks.
[[nodiscard]] std::string ConfFileBytes(const Document& settings, const SeriesView& window,
                                        ConfCharset charset, const Options& options,
                                        const Language& language);

}  // namespace quenmar
