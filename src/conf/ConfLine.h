/// The grammar of one line of a configuration file. It depends on characters below 128, which are
/// the same bytes in every character set that a file may have, so lines are taken apart as bytes.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "conf/ConfText.h"
#include "text/String.h"

namespace quenmar {

/// How a line of a file ends.
enum class LineEnd : std::uint8_t { kNone, kCr, kCrLf, kLf };

/// @return the bytes of a line end.
[[nodiscard]] std::string_view BytesOf(LineEnd end);

/// One line taken apart; all views point into the line.
struct ConfLine {
  enum class Kind : std::uint8_t {
    kBlank,
    kComment,
    kNote,         ///< a commented-out "note" or "example": comment text by convention
    kSetting,      ///< active or commented out
    kSeriesEntry,  ///< a line of a repeatable setting, active or commented out
  };

  std::string_view bytes;    ///< the whole line without its end
  std::string_view text;     ///< the line without blanks around it and without leading slashes
  std::string_view name;     ///< the text before the first ":"; empty for blank lines and comments
  std::string_view value;    ///< behind the ":", before a "//" remark and before a tab, trimmed
  std::string_view written;  ///< behind the ":", trimmed; remark and tabs are still in it
  Kind kind = Kind::kBlank;
  bool commented = false;  ///< commented out: "//" is directly before the name
  bool hasRemark = false;  ///< "//" follows the ":"
  bool hasTab = false;     ///< a tab follows the ":", before a remark
  LineEnd end = LineEnd::kNone;
  int number = 0;  ///< in its file, from 1

  [[nodiscard]] bool IsEntry() const { return kind >= Kind::kSetting; }
};

/// Parses the lines of one file.
class ConfGrammar {
 public:
  /// @param series the option that names the repeatable settings; outlives this object
  /// @param charset of the file
  ConfGrammar(StringView series, ConfCharset charset);

  /// @param line one line without its end and without blanks around it: leading blanks make a
  /// comment of it
  [[nodiscard]] ConfLine Parse(std::string_view line) const;

 private:
  [[nodiscard]] bool Repeats(std::string_view name) const;

  StringView series_;
  std::vector<StringView> listed_;  // what follows each "{" of the option
  ConfCharset charset_;
};

/// @return the line without its leading and trailing blanks (U+0020).
[[nodiscard]] std::string_view TrimBytes(std::string_view line);

/// What a value will be when the saved file is read again. It differs from `Trim(value)` where a
/// part is read as a remark or an entity form folds.
/// @param value one line of text
/// @return the value without blanks around it, its entity forms folded as in a `Field`, cut before
/// a "//" and before a tab.
[[nodiscard]] String ReadBackValue(StringView value);

/// @return whether a commented-out line of that name is comment text by convention: "note" and
/// "example" in any case.
[[nodiscard]] bool IsNoteName(StringView name);

/// @return whether the setting `name` may occur in a file many times: its small form in braces
/// is part of `series` (such as "{map}{npc}"), which is therefore in small letters.
[[nodiscard]] bool IsRepeatable(StringView name, StringView series);

/// Returns the lines of a file one by one. CR and CR LF end a line; a last line without an end is
/// a line. A lone LF stays inside the line, or ends it as well.
class ConfLines {
 public:
  enum class LineFeed {
    kStays,     ///< a lone LF is a character like others
    kEndsLine,  ///< a lone LF is a line end
  };

  /// @param bytes without a byte order mark; they outlive this object and the lines
  explicit ConfLines(std::string_view bytes, LineFeed lineFeed = LineFeed::kEndsLine);

  /// @return whether there was a further line.
  [[nodiscard]] bool Next(std::string_view& line);

  /// @return the number of the last line returned; the first one is 1.
  [[nodiscard]] int Number() const { return number_; }

  /// @return how that line ended.
  [[nodiscard]] LineEnd End() const { return end_; }

 private:
  [[nodiscard]] size_t Find(char end) const;

  std::string_view bytes_;
  bool lineFeedEnds_;
  size_t position_ = 0;
  size_t nextCr_ = 0;  // where the next one is; found once, however many lines come before it
  size_t nextLf_ = 0;
  int number_ = 0;
  LineEnd end_ = LineEnd::kNone;
};

}  // namespace quenmar
