#pragma once

#include <string>
#include <vector>

#include "conf/MessageBoxes.h"
#include "conf/SeriesView.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// Writes configuration files: every setting as an active line, then every checked series item, and
/// every unchecked one as a commented line when the option SaveCommentedSeries is on. No comment
/// line and no parameter of a field ("Comments", "Disabled") is written.
class ConfWriter {
 public:
  /// The arguments outlive the writer.
  ConfWriter(const Options& options, const Language& language, MessageBoxes& messages);

  /// Saves the file at `path` and shows "Saved!", or shows what went wrong. A regular file that
  /// stands there is first copied to PATH.bak; then it is emptied and written from the start, so
  /// that lines already written stay when writing fails. Nothing is touched when the copy fails or
  /// a character has no place in Windows-1252.
  /// @return whether the file was saved.
  [[nodiscard]] bool SaveConfFile(const Path& path, const Document& settings,
                                  const SeriesView& window) const;

  /// @return the lines that a save writes, without their ends.
  [[nodiscard]] std::vector<String> ConfFileLines(const Document& settings,
                                                  const SeriesView& window) const;

  /// @return the bytes of those lines, each ended by CR LF. Throws `RuntimeError` naming the
  /// setting whose characters Windows-1252 lacks.
  [[nodiscard]] static std::string EncodeLines(const std::vector<String>& lines);

 private:
  const Options& options_;
  const Language& language_;
  MessageBoxes& messages_;
};

}  // namespace quenmar
