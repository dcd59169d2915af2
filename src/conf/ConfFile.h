#pragma once

#include <string>
#include <utility>
#include <vector>

#include "conf/ConfLine.h"
#include "conf/ConfText.h"
#include "files/Files.h"
#include "text/SharedText.h"

namespace quenmar {

/// Something in a file that is reported, whether or not the file can be read.
struct Finding {
  enum class Kind {
    kBareLineFeed,  ///< from this line on lines end in a lone LF
    kDuplicate,     ///< an active line of a setting that has had one before; `text` is its name
    kRejectedName,  ///< the tree rejects such a name: reading stopped; `text` is the line
    kUtf8,          ///< the file is UTF-8 text; the line is the first one that shows it
    kNoText,        ///< the line has bytes that are not UTF-8 in a file that is marked as UTF-8
    kUnreadable,    ///< the file as a whole could not be read; `text` says why
  };

  int line;  ///< counted from 1; 0 for the file as a whole
  Kind kind;
  String text;
};

/// One configuration file without loss: its bytes, and its lines as views of them. No content is an
/// error.
class ConfFile {
 public:
  /// An empty file without a path.
  ConfFile() = default;

  ConfFile(Path path, std::string bytes);

  /// @param charset of the bytes, also where reading would recognise another one
  ConfFile(Path path, std::string bytes, ConfCharset charset);

  /// Throws `FileError` when the file cannot be read.
  [[nodiscard]] static ConfFile Read(const Path& path) { return {path, ReadBytes(path)}; }

  [[nodiscard]] const Path& FilePath() const { return path_; }

  /// @return the bytes as they were read, a byte order mark included.
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

  /// @return the bytes, moved out of this object.
  [[nodiscard]] std::string TakeBytes() && { return std::move(bytes_); }

  /// @return the bytes behind the byte order mark.
  [[nodiscard]] std::string_view Body() const;

  [[nodiscard]] const ConfEncoding& Encoding() const { return encoding_; }
  [[nodiscard]] ConfCharset Charset() const { return encoding_.charset; }

  /// @param part of the file, such as a line's name or value
  /// @return its text.
  [[nodiscard]] String Text(std::string_view part) const {
    return DecodeConfText(part, encoding_.charset);
  }

  /// The same as a text that a tree keeps.
  [[nodiscard]] SharedText Shared(std::string_view part) const;

  /// Parses every line and calls `take` with it; a lone LF is a line end.
  /// @param series the option that names the repeatable settings
  /// @param take is called with a `const ConfLine&` whose views are parts of this object
  template <class Take>
  void ForEachLine(StringView series, Take take) const {
    const ConfGrammar grammar(series, encoding_.charset);
    ConfLines lines(Body());
    for (std::string_view bytes; lines.Next(bytes);) {
      ConfLine line = grammar.Parse(TrimBytes(bytes));
      line.bytes = bytes;
      line.end = lines.End();
      line.number = lines.Number();
      take(line);
    }
  }

  /// @return every line that `ForEachLine` gives.
  [[nodiscard]] std::vector<ConfLine> Lines(StringView series) const;

  [[nodiscard]] bool HasBareLineFeed() const;

  /// @return the findings about the bytes, in the order of the lines: bare line feeds, UTF-8, and
  /// bytes that are not text. The reader adds the others.
  [[nodiscard]] std::vector<Finding> Findings() const;

 private:
  [[nodiscard]] int LineAt(size_t position) const;

  Path path_;
  std::string bytes_;
  ConfEncoding encoding_;
};

/// @return the character set in which a server's file is saved: its own, or the distribution's
/// where it is ASCII throughout.
[[nodiscard]] ConfCharset CharsetForSaving(const ConfEncoding& server,
                                           const ConfEncoding& distribution);

}  // namespace quenmar
