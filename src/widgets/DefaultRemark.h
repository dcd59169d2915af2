#pragma once

#include "compare/ReleaseChanges.h"
#include "merge/FileMerge.h"
#include "registry/Language.h"

namespace quenmar {

/// @return the sign of a default that the release has changed; another sign where the server has a
/// value of its own.
[[nodiscard]] StringView DefaultMark(DefaultChange::Kind kind);

/// @return what the release has changed, in words: what the sign means and both defaults.
[[nodiscard]] String DefaultRemark(const DefaultChange& change, const Language& language);

/// @return the old default alone, in words.
[[nodiscard]] String OldDefaultRemark(const DefaultChange& change, const Language& language);

/// @return what a save makes of a setting's line, in words; empty for one that is active already.
[[nodiscard]] String StateRemark(FileMerge::SettingState state, const Language& language);

/// The sign of a series entry that the release has withdrawn and that is still on.
inline constexpr StringView kWithdrawnMark = u"\u25CB";  // a circle

}  // namespace quenmar
