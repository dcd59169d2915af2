#pragma once

#include "text/String.h"

namespace quenmar {

/// Decides which settings of a list are shown: those of one kind that contain a text.
class SettingFilter {
 public:
  /// The kinds of settings to choose from.
  enum class Choice { kAll, kChanged, kDefaults, kNotInDistribution, kCommentedOut };

  /// What the filter looks at. The texts must outlive the call.
  struct Item {
    StringView name;
    StringView value;
    StringView originalValue;  ///< the distribution's
    StringView comment;
    bool inDistribution = true;
    bool commentedOut = false;
    bool newDefault = false;  ///< the release has changed its default

    /// @return whether the value differs from the distribution's; false where that has none.
    [[nodiscard]] bool IsChanged() const { return inDistribution && value != originalValue; }
  };

  /// Shows everything.
  SettingFilter() = default;

  /// @param text is looked for in name, value and comment without regard to letter case; blanks
  ///   around it do not count
  SettingFilter(StringView text, Choice choice);

  [[nodiscard]] bool ShowsAll() const { return text_.empty() && choice_ == Choice::kAll; }
  [[nodiscard]] bool Shows(const Item& item) const;

 private:
  [[nodiscard]] bool IsChosen(const Item& item) const;
  [[nodiscard]] bool IsIn(StringView text) const;

  String text_;  // in small letters
  Choice choice_ = Choice::kAll;
};

}  // namespace quenmar
