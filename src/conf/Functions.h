/// Small procedures that the reader, the writer and the windows share.
#pragma once

#include <initializer_list>
#include <vector>

#include "conf/MessageBoxes.h"
#include "files/Files.h"
#include "registry/Language.h"
#include "text/String.h"

namespace quenmar {

/// One entry of a list with check boxes.
struct CheckItem {
  String text;
  bool checked = false;
};
using CheckList = std::vector<CheckItem>;

/// Reads a whole file of 8-bit text, also an empty one.
/// @param text receives the content; unchanged on failure
/// @return whether the file exists and could be read.
[[nodiscard]] bool ReadTextFile(const Path& path, String& text);

/// Writes the text unchanged as 8-bit text, replacing an existing file wholly or not at all.
/// @return whether the file was written.
[[nodiscard]] bool WriteTextFile(const Path& path, StringView text);

/// @return a text of the message table as it is shown: every backslash followed by "n" is a line
/// break, and "%1", "%2" and "%3" are the placeholders. Text from a placeholder is searched neither
/// for breaks nor for placeholders.
[[nodiscard]] String FinishedText(StringView text,
                                  std::initializer_list<StringView> placeholders = {});

/// Shows the message that `FinishedText` makes of `text` and the placeholders.
/// @param buttons a sum of `message_style` numbers
/// @param details what the user may look up before the answer; empty for none
/// @param offer see `MessageBoxes::ShowWithDetails`
/// @return the pressed button.
Button ShowMessage(MessageBoxes& messages, StringView text, int buttons,
                   std::initializer_list<StringView> placeholders = {}, const String& details = {},
                   const String& offer = {});

/// Shows "Error: " (`Message::kError`) with a description and, on a line of its own, what failed.
/// @param about a path, or a place in a file
void ShowError(MessageBoxes& messages, const Language& language, StringView description,
               StringView about);

/// Replaces an empty text by "** n/a **".
/// @return `text`.
String& NotAvailable(String& text);

/// @return the caption's text before its first "(", not trimmed, or all of it when it has none.
[[nodiscard]] StringView TabLabel(StringView caption);

/// Checks the first item whose text is exactly `text`; does nothing when there is none.
void SelectListItem(StringView text, CheckList& list);

/// @return whether the first character is an ASCII letter; false for an empty text.
[[nodiscard]] bool IsLetter(StringView text);

}  // namespace quenmar
