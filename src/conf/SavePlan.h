#pragma once

#include <functional>
#include <string>

#include "conf/ConfFile.h"
#include "conf/SaveChanges.h"
#include "conf/SaveWarnings.h"
#include "conf/SeriesGroups.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// What is to be saved. All references outlive the planning.
struct SaveRequest {
  Layout layout;
  const ConfFile& distribution;
  const ConfFile& server;  ///< the server's file as it was read
  const Document& distributionSettings;
  const Document& settings;  ///< those that remain
  const SeriesGroups& series;
  /// Whether a setting is to be active rather than commented out. `Layout::kSettings` does not ask.
  std::function<bool(StringView)> isActive;
};

/// What a save writes, and what that changes. It is made once for every save: what the user is
/// shown is what is written.
struct SavePlan {
  std::string bytes;
  SaveChanges changes;  ///< none exactly when the file already has the bytes
  SaveWarnings warnings;
  String diff;  ///< the changed lines, to be shown

  /// @param before the file that is written over; an empty one when there is none
  /// Throws `RuntimeError` that names what the character set lacks.
  [[nodiscard]] static SavePlan Of(const SaveRequest& request, const ConfFile& before,
                                   const Options& options, const Language& language);
};

}  // namespace quenmar
