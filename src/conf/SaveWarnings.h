#pragma once

#include <optional>
#include <string_view>

#include "conf/ConfText.h"
#include "conf/SaveChanges.h"
#include "docmodel/Document.h"
#include "registry/Language.h"

namespace quenmar {

/// What the user should know before a save: how much of each is in it.
struct SaveWarnings {
  int otherValues = 0;                ///< settings whose values will be read back otherwise
  int lostCommentLines = 0;           ///< comment lines that go
  int activated = 0;                  ///< commented-out settings that become active
  int missingMandatory = 0;           ///< mandatory settings that the saved file will lack
  std::optional<ConfCharset> readAs;  ///< the character set for which the saved file will be taken,
                                      ///< where it is another one than it is written in
};

/// @return the character set for which `bytes`, written in `charset`, will be taken when they are
/// read; nothing when it is the same one.
[[nodiscard]] std::optional<ConfCharset> OtherCharset(std::string_view bytes, ConfCharset charset);

/// @param settings the settings to be saved
/// @param distribution the distribution's settings
/// @param changes what the save changes
/// @param bytes, charset the bytes to be saved, and in which character set they are
[[nodiscard]] SaveWarnings ListSaveWarnings(const Document& settings, const Document& distribution,
                                            const SaveChanges& changes, std::string_view bytes,
                                            ConfCharset charset);

/// @return a sentence for each warning, joined by CR LF; empty for none.
[[nodiscard]] String WarningText(const SaveWarnings& warnings, const Language& language);

}  // namespace quenmar
