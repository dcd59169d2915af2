/// The one interface through which the core asks and informs the user.
#pragma once

#include "text/String.h"

namespace quenmar {

/// Style numbers of a message box: one set of buttons, at most one icon, at most one default.
namespace message_style {
inline constexpr int kOk = 0;
inline constexpr int kYesNoCancel = 3;
inline constexpr int kYesNo = 4;
inline constexpr int kButtons = 7;  ///< mask of the sets of buttons
inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kInformation = 64;
inline constexpr int kDefaultButton2 = 256;
}  // namespace message_style

/// What the user pressed, by the numbers of the message boxes' home platform.
enum class Button {
  kOk = 1,
  kCancel = 2,
  kYes = 6,
  kNo = 7,
  kOffer = 100,  ///< beside those: what a question offers to do first
};

/// Shows message boxes: in a window, on a terminal, or answered by a script.
class MessageBoxes {
 public:
  MessageBoxes() = default;
  MessageBoxes(const MessageBoxes&) = delete;
  MessageBoxes& operator=(const MessageBoxes&) = delete;
  virtual ~MessageBoxes() = default;

  /// @param text the finished text, line breaks as CR LF or LF
  /// @param style a sum of `message_style` numbers
  /// @return the pressed button, one of those that the style names; `kCancel` also when a box with
  /// Yes and No was closed without an answer, which counts as No unless a caller says otherwise.
  virtual Button Show(const String& text, int style) = 0;

  /// The same, with something to look up before the answer and something to do first, for boxes
  /// that have a place for them.
  /// @param details lines that end in CR LF or LF; empty for none
  /// @param offer the caption of a further button, whose answer is `kOffer`; empty for none
  virtual Button ShowWithDetails(const String& text, int style, const String& /*details*/,
                                 const String& /*offer*/) {
    return Show(text, style);
  }
};

}  // namespace quenmar
