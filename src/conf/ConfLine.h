/// The grammar of one line of a configuration file.
#pragma once

#include "text/String.h"

namespace quenmar {

/// One line taken apart; the views point into the line.
struct ConfLine {
  StringView text;         ///< the line without its leading slashes
  bool slashes = false;    ///< the line began with "//"
  bool commented = false;  ///< behind the slashes stands what looks like a setting
  bool setting = false;    ///< the line is a setting, active or commented out
  StringView name;         ///< of a setting: the text before the first ":"
  StringView value;        ///< of a setting: the text behind it, trimmed, remarks still in it
};

/// @param line one line without its end.
[[nodiscard]] ConfLine ParseConfLine(StringView line);

/// @return `value` before the first `mark`, trimmed; `value` as it is when it has none.
[[nodiscard]] StringView CutBefore(StringView value, StringView mark);

/// @return the part of a setting's value that counts: before a "//" remark, then before a tab.
[[nodiscard]] StringView EffectiveValue(StringView value);

/// What a value that somebody gives to a setting will be when the saved file is read again. It
/// differs from `Trim(value)` where a part would be taken for a remark or an entity form would
/// fold.
/// @param value one line of text
/// @return the value without blanks around it, its entity forms folded as in a `Field`, cut before
/// a "//" and before a tab.
[[nodiscard]] String ReadBackValue(StringView value);

/// @return whether a commented-out line of that name is comment text by convention: "note" and
/// "example" in any case.
[[nodiscard]] bool IsRemarkName(StringView name);

/// @return whether the setting `name` may stand in a file many times: its small form in braces
/// occurs in `series` (such as "{map}{npc}"), which is therefore held in small letters.
[[nodiscard]] bool IsRepeatable(StringView name, StringView series);

/// Hands out the lines of a text one by one. CR and CR LF end a line; a last line without an end is
/// a line. A lone LF stays inside the line, or ends it as well.
class ConfLines {
 public:
  enum class LineFeed {
    kStays,     ///< a lone LF is a character like others
    kEndsLine,  ///< a lone LF is a line end
  };
  enum class End { kNone, kCr, kCrLf, kLf };

  /// @param text outlives this object and the lines that it hands out.
  explicit ConfLines(StringView text, LineFeed lineFeed = LineFeed::kStays)
      : rest_(text), lineFeed_(lineFeed) {}

  /// @return whether there was a further line.
  [[nodiscard]] bool Next(StringView& line);

  /// @return the number of the line that was handed out last; the first one is 1.
  [[nodiscard]] int Number() const { return number_; }

  /// @return how that line ended.
  [[nodiscard]] End LineEnd() const { return end_; }

 private:
  StringView rest_;
  LineFeed lineFeed_;
  int number_ = 0;
  End end_ = End::kNone;
};

}  // namespace quenmar
