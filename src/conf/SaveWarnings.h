#pragma once

#include <optional>
#include <string_view>

#include "conf/ConfText.h"
#include "conf/SaveChanges.h"
#include "docmodel/Document.h"
#include "registry/Language.h"

namespace quenmar {

/// What the user should know before a save, as counts.
struct SaveWarnings {
  int otherValues = 0;  ///< settings whose values will be read back otherwise
  int lostCommentLines = 0;
  int activated = 0;         ///< commented-out settings that become active
  int missingMandatory = 0;  ///< mandatory settings that the saved file will lack
  String charset;            ///< see `CharsetWarning`
};

/// @return the character set in which `bytes`, written in `charset`, will be read; nothing when it
/// is the same one.
[[nodiscard]] std::optional<ConfCharset> OtherCharset(std::string_view bytes, ConfCharset charset);

/// @return the warning that `OtherCharset` asks for; empty for none.
[[nodiscard]] String CharsetWarning(std::string_view bytes, ConfCharset charset,
                                    const Language& language);

/// @param settings the settings to be saved
/// @param distribution the distribution's settings
/// @param changes what the save changes
/// @return the counts.
[[nodiscard]] SaveWarnings ListSaveWarnings(const Document& settings, const Document& distribution,
                                            const SaveChanges& changes, Layout layout);

/// @return a sentence for each warning, joined by CR LF; empty for none.
[[nodiscard]] String WarningText(const SaveWarnings& warnings, const Language& language);

}  // namespace quenmar
