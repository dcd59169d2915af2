#pragma once

#include <string>

#include "conf/ConfFile.h"
#include "conf/SaveChanges.h"
#include "conf/SaveWarnings.h"
#include "docmodel/Document.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// What a save writes and what that does. It is made once for every save: what the user is shown is
/// what is written.
struct SavePlan {
  std::string bytes;
  ConfCharset charset = ConfCharset::kWindows1252;  ///< of the bytes
  SaveChanges changes;  ///< none exactly when the file already holds the bytes
  SaveWarnings warnings;

  /// Finds out what writing the bytes changes.
  /// @param before the file as it is; an empty one when there is none
  /// @param settings what the saved file is to contain
  /// @param distribution the distribution's settings
  void Compare(const ConfFile& before, const Document& settings, const Document& distribution,
               const Options& options, const Language& language);
};

}  // namespace quenmar
