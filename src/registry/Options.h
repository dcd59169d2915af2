#pragma once

#include <optional>

#include "registry/Registry.h"
#include "text/String.h"

namespace quenmar {

/// What a saved file is made of.
enum class Layout {
  kSettings,      ///< settings and series entries only, in the program's own form
  kServer,        ///< the server's file with only the wanted changes made in it
  kDistribution,  ///< the distribution's file with the server's values and states in it
};

/// @return the layout of that name ("settings", "server", "distribution"); nothing for another.
[[nodiscard]] std::optional<Layout> LayoutNamed(StringView name);

/// @return the name under which the layout is stored.
[[nodiscard]] StringView NameOf(Layout layout);

/// What the user has chosen for all files. A new `Options` has the defaults.
struct Options {
  String svnPath;     ///< the distribution's conf folder
  String serverPath;  ///< the running server's conf folder
  int sort = 0;       ///< the state of the sort check box: 0 unchecked, 1 checked
  String series = u"{map}{npc}{addon}{import}";  ///< repeatable settings, lower case, in braces
  bool saveCommentedSeries = true;    ///< write series entries that are off as commented-out lines
  bool alwaysIgnoreDupParam = false;  ///< accept duplicate settings without asking

  Layout layout = Layout::kSettings;  ///< what a save makes the file of

  /// @return whether parameter lists are sorted for a save in this layout. Layouts that keep lines
  /// are never sorted: that could move another line of a doubled setting to the first place, and
  /// its value would be written.
  [[nodiscard]] bool IsSorted(Layout saved) const {
    return sort == 1 && saved == Layout::kSettings;
  }
};

/// @return the options as they are stored, those that are missing or empty with their defaults.
[[nodiscard]] Options ReadOptions(const Registry& registry);

/// Reads the options at the start of the windows. Of the values that are missing or empty, Series,
/// SaveCommentedSeries and AlwaysIgnoreDupParam are stored with their defaults, so that the user
/// can change them there; a failure is ignored.
[[nodiscard]] Options LoadOptions(Registry& registry);

/// Each stores one option at once when the user has changed it.
/// @return whether it was stored.
bool StoreSvnPath(Registry& registry, StringView path);
bool StoreServerPath(Registry& registry, StringView path);
bool StoreSort(Registry& registry, int sort);
bool StoreLayout(Registry& registry, Layout layout);

}  // namespace quenmar
